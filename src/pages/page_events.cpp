#include "src/pages/page_events.h"

#include "src/bindings/borderless_sizes.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/current_values.h"
#include "src/bindings/popups.h"
#include "src/features/constraints.h"
#include "src/features/control_values.h"
#include "src/features/initial_read.h"
#include "src/features/popup_filling.h"
#include "src/ink/ink_file.h"
#include "src/pages/cartridge_controls.h"
#include "src/pages/page_controls.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

int StatusOfSelectedPageSize(const SheetContext& context)
{
    const int selection = SelectedItemData(context.popups.windows[kPopupPageSize]);
    return selection >= 1 && selection <= kMaxOptions ? context.pageSizes.statuses[selection - 1]
                                                      : kBorderlessTwin;
}

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
    if (!context.popups.windows[kPopupPageSize]) return;
    const HWND checkBox = context.checkBoxes.borderless;
    const BorderlessChoice choice =
        BorderlessChoiceFor(StatusOfSelectedPageSize(context), IsChecked(checkBox));
    if (checkBox) {
        ShowWindow(checkBox, choice.shown ? SW_SHOW : SW_HIDE);
        CheckControl(checkBox, choice.checked);
        EnableWindow(checkBox, choice.enabled);
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
    context.checkStates.borderless = borderless;
    ShowBorderlessExpansion(context, borderless);
}

void StoreSelection(SheetContext& context, int row)
{
    if (const HWND popup = context.popups.windows[row])
        context.popups.selections[row] = SelectedItemData(popup);
}

// A popup whose choice decides what others offer.
void OnPopupChanged(SheetContext& context, int row, int controlId)
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
    UpdateMediaModeControls(context, controlId);
}

void OnColorModelChanged(SheetContext& context)
{
    if (!context.popups.windows[kPopupColorModel]) return;
    StoreSelection(context, kPopupColorModel);
    UpdateColorModeControls(context);
}

void OnHalftoneChanged(const SheetContext& context)
{
    const HWND popup = context.popups.windows[kPopupHalftone];
    if (popup) ShowScreenParameters(GetParent(popup), SelectedItemData(popup) == 1);
}

void OnScreenPrintingClicked(const SheetContext& context)
{
    const HWND checkBox = context.checkBoxes.windows[kCheckScreenPrinting];
    if (!checkBox) return;
    const bool on = IsChecked(checkBox);
    Current().checkBoxes[kCheckScreenPrinting] = on;
    const HWND page = GetParent(checkBox);
    EnableChildren(page, on);
    if (!on) {
        EnableWindow(checkBox, TRUE); // the way back
        return;
    }
    const HWND multiBlack = context.checkBoxes.windows[kCheckMultiBlack];
    if (multiBlack && !IsChecked(multiBlack)) EnableCartridges(context, page, false);
}

void OnMultiBlackClicked(const SheetContext& context)
{
    if (const HWND multiBlack = context.checkBoxes.windows[kCheckMultiBlack])
        EnableCartridges(context, GetParent(multiBlack), IsChecked(multiBlack));
}

void OnColorGammaClicked(SheetContext& context)
{
    if (const HWND checkBox = context.checkBoxes.windows[kCheckColorGamma])
        EnableColorControls(context, IsChecked(checkBox));
}

} // namespace

void HandlePageEvent(SheetContext& context, int event)
{
    Trace(TEXT("UI:  Handle event #%d\n"), event);
    switch (event) {
    case 1022:
        return OnPageSizeChanged(context);
    case 1072:
        return OnPopupChanged(context, kPopupResolution, event);
    case 1073:
        return OnPopupChanged(context, kPopupMediaType, event);
    case 1075:
        return OnPopupChanged(context, kPopupCartridge, event);
    case 1111:
        return OnPopupChanged(context, kPopupIntent, event);
    case 1118:
        return OnScreenPrintingClicked(context);
    case 1123:
        return OnBorderlessClicked(context);
    case 1214:
        return ResetInkCounters(context);
    case 1239:
        return OnMultiBlackClicked(context);
    case 1257:
        return OnHalftoneChanged(context);
    case 1273:
        return OnColorModelChanged(context);
    case 12342:
        return OnColorGammaClicked(context);
    default:
        return;
    }
}

} // namespace tintwerk
