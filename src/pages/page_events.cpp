#include "src/pages/page_events.h"

#include "src/bindings/borderless_sizes.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/current_values.h"
#include "src/bindings/popups.h"
#include "src/features/constraints.h"
#include "src/features/control_access.h"
#include "src/features/popup_filling.h"
#include "src/features/size_label.h"
#include "src/ink/ink_file.h"
#include "src/pages/cartridge_controls.h"
#include "src/pages/page_controls.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// How the borderless check box follows the selected page size.
struct BorderlessChoice
{
    bool shown;
    bool checked;
    bool enabled;
};

BorderlessChoice BorderlessChoiceFor(int pageSizeStatus, bool checkedBefore)
{
    switch (pageSizeStatus) {
    case kBorderlessOnlySize:
        return {true, true, false};
    case kNormalSize:
        return {true, false, false};
    case kCustomSize:
        return {false, false, true};
    default:
        return {true, checkedBefore, true};
    }
}

void OnPageSizeChanged(SheetContext& context)
{
    const HWND popup = context.popups.windows[kPopupPageSize];
    if (!popup) return;
    const HWND checkBox = context.checkBoxes.borderless;
    const BorderlessChoice choice =
        BorderlessChoiceFor(StatusOfPageSize(context, SelectedItemData(popup)), IsChecked(checkBox));
    if (checkBox) {
        ShowControl(checkBox, choice.shown);
        CheckControl(checkBox, choice.checked);
        EnableControl(checkBox, choice.enabled);
        ShowBorderlessExpansion(context, choice.checked);
    }
    Trace(TEXT("Change in PageSize: BLOption=%d, BLFormat=%d Ctrl=%d\n"), choice.enabled, choice.checked,
          TraceNumber(checkBox));
    ShowFormSize(context);
}

void OnBorderlessClicked(SheetContext& context)
{
    if (!context.checkBoxes.borderless) return;
    const bool borderless = IsChecked(context.checkBoxes.borderless);
    context.pageSizes.borderless = borderless;
    ShowBorderlessExpansion(context, borderless);
}

void StoreSelection(SheetContext& context, int row)
{
    if (const HWND popup = context.popups.windows[row])
        context.popups.selections[row] = SelectedItemData(popup);
}

// A popup whose choice decides what others offer.
template <PopupRow row> void OnPopupChanged(SheetContext& context)
{
    const HWND popup = context.popups.windows[row];
    if (!popup) return;
    if (!SetPopupOption(context, row)) {
        SendMessageW(popup, CB_SETCURSEL, static_cast<WPARAM>(context.popups.selections[row] - 1), 0);
        return;
    }
    for (const int stored : {kPopupResolution, kPopupCartridge, kPopupMediaType, kPopupIntent})
        StoreSelection(context, stored);

    CheckConstraints(context, kPopupMediaType);
    CheckConstraints(context, kPopupResolution);
    if (context.popups.windows[kPopupIntent]) {
        checkAvailabilityforMenus(context, kPopupIntent);
        checkAvailabilityforMenus(context, kPopupColorModel);
    }
    UpdateMediaModeControls(context, kPopupTable[row].controlId);
}

void OnColorModelChanged(SheetContext& context)
{
    if (!context.popups.windows[kPopupColorModel]) return;
    StoreSelection(context, kPopupColorModel);
    UpdateColorModeControls(context);
}

void OnHalftoneChanged(SheetContext& context)
{
    const HWND popup = context.popups.windows[kPopupHalftone];
    if (popup) ShowScreenParameters(GetParent(popup), SelectedItemData(popup) == 1);
}

void OnScreenPrintingClicked(SheetContext& context)
{
    const HWND checkBox = context.checkBoxes.windows[kCheckScreenPrinting];
    if (!checkBox) return;
    const bool on = IsChecked(checkBox);
    Current().checkBoxes[kCheckScreenPrinting] = on;
    const HWND page = GetParent(checkBox);
    const bool focused = GetFocus() == checkBox; // a disabled window loses it
    EnableChildren(page, on);
    if (!on) {
        EnableControl(checkBox, true); // the way back
        if (focused) SetFocus(checkBox);
        return;
    }
    const HWND multiBlack = context.checkBoxes.windows[kCheckMultiBlack];
    if (multiBlack && !IsChecked(multiBlack)) EnableCartridges(context, page, false);
}

void OnMultiBlackClicked(SheetContext& context)
{
    if (const HWND multiBlack = context.checkBoxes.windows[kCheckMultiBlack])
        EnableCartridges(context, GetParent(multiBlack), IsChecked(multiBlack));
}

void OnColorGammaClicked(SheetContext& context)
{
    if (const HWND checkBox = context.checkBoxes.windows[kCheckColorGamma])
        EnableColorControls(context, IsChecked(checkBox));
}

struct PageEvent
{
    int controlId;
    void (*handle)(SheetContext& context);
};

// clang-format off
constexpr PageEvent kPageEvents[] = {
    {IDC_MAIN_PAGE_SIZE,         OnPageSizeChanged},
    {IDC_MAIN_BORDERLESS,        OnBorderlessClicked},
    {IDC_MAIN_MEDIA_TYPE,        OnPopupChanged<kPopupMediaType>},
    {IDC_MAIN_RESOLUTION,        OnPopupChanged<kPopupResolution>},
    {IDC_MAIN_CARTRIDGE,         OnPopupChanged<kPopupCartridge>},
    {IDC_COLOR_MODEL,            OnColorModelChanged},
    {IDC_COLOR_INTENT,           OnPopupChanged<kPopupIntent>},
    {IDC_CORRECTION_COLOR_GAMMA, OnColorGammaClicked},
    {IDC_CONSUMPTION_RESET,      ResetInkCounters},
    {IDC_SCREEN_PRINTING,        OnScreenPrintingClicked},
    {IDC_SCREEN_HALFTONE,        OnHalftoneChanged},
    {IDC_SCREEN_MULTI_BLACK,     OnMultiBlackClicked},
};
// clang-format on

} // namespace

void HandlePageEvent(SheetContext& context, int event)
{
    Trace(TEXT("UI:  Handle event #%d\n"), event);
    for (const PageEvent& reaction : kPageEvents)
        if (reaction.controlId == event) return reaction.handle(context);
}

} // namespace tintwerk
