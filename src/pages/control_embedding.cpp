#include "src/pages/control_embedding.h"

#include <algorithm>

#include "platform/owners.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/consumption_lines.h"
#include "src/bindings/current_values.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"
#include "src/features/constraints.h"
#include "src/features/control_access.h"
#include "src/features/popup_filling.h"
#include "src/features/size_label.h"
#include "src/ink/consumption_page.h"
#include "src/ink/ink_file.h"
#include "src/pages/cartridge_controls.h"
#include "src/pages/number_field_controls.h"
#include "src/pages/page_controls.h"
#include "src/pages/slider_controls.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kPagesScreenPrintingDisables = kColorPage | kCorrectionPage | kInkControlPage;

int Value(CheckBoxRow row)
{
    return Current().checkBoxes[row];
}

// Stores the check box of a row, marks and sets it; null when the page has none.
HWND EmbedCheckBox(SheetContext& context, HWND window, CheckBoxRow row, bool checked)
{
    const HWND checkBox = GetControlByID(window, kCheckBoxTable[row].controlId);
    context.checkBoxes.windows[row] = checkBox;
    if (checkBox) {
        MarkControl(checkBox, ControlMark::CheckBox);
        CheckControl(checkBox, checked);
    }
    return checkBox;
}

void StoreWindows(DWORD pageBits, SheetContext& context, HWND window)
{
    if (const HWND root = GetAncestor(window, GA_ROOT)) context.owner = root;
    for (size_t position = 0; position < kPageKinds; ++position) {
        if (pageBits & kPageKindTable[position].tabBit) context.pages[position] = window;
    }
}

void EmbedBorderless(SheetContext& context, HWND window)
{
    const HWND checkBox = GetControlByID(window, IDC_MAIN_BORDERLESS);
    context.checkBoxes.borderless = checkBox;
    if (!checkBox) return;
    Trace(TEXT("!!$$$ INITWINCONROLS !!!*****$$\n"));
    MarkControl(checkBox, ControlMark::CheckBox);
    if (context.pageSizes.borderless) CheckControl(checkBox, true);
    ShowBorderlessExpansion(context, context.pageSizes.borderless);
    EnableControl(checkBox, StatusOfPageSize(context, context.popups.selections[kPopupPageSize]) > 0);
}

void EmbedConsumptionLines(SheetContext& context, HWND pane)
{
    ConsumptionArea& consumption = context.consumption;
    for (size_t line = 0; line < kPaneLineTable.size(); ++line) {
        const PaneLine& controls = kPaneLineTable[line];
        for (ConsumptionView* const view : {&consumption.lastJob, &consumption.totals}) {
            view->bars[line] = GetControlByID(pane, controls.barId);
            view->numbers[line] = GetControlByID(pane, controls.numberId);
            view->names[line] = GetControlByID(pane, controls.nameId);
        }
    }
    consumption.lastJob.numbers[kSumSlot] = GetControlByID(pane, IDC_PANE_SUM);
    consumption.totals.numbers[kSumSlot] = GetControlByID(pane, IDC_PANE_SUM);
    consumption.totals.names[kSumSlot] = GetControlByID(pane, IDC_PANE_SUM_CAPTION);
    consumption.displayMode = 0; // the new tab control stands on its first tab
    consumption.firstLine = -1;  // not measured yet
    consumption.lastLine = 0;
    consumption.lineHeight = 0;
    ReadInkFile(context.inkFilePath, context);
    DrawConsumptionPage(context);
}

void EmbedPopups(DWORD pageBits, SheetContext& context, HWND window)
{
    Trace(TEXT("UI:  Init popuplists - pageidx = %d\n"), static_cast<int>(pageBits));
    Trace(TEXT("UI:  ---- INIT POPUP ----\n"));
    for (int row = 0; row < kPopups; ++row) {
        const PopupBinding& binding = kPopupTable[static_cast<size_t>(row)];
        if (!(pageBits & binding.tabBit)) continue;
        const HWND popup = GetControlByID(window, binding.controlId);
        context.popups.windows[row] = popup;
        if (!popup) continue;
        MarkControl(popup, ControlMark::Popup);
        Trace(TEXT("UI:  --- found #%d: controlid=%d\n"), row, binding.controlId);
        Trace(TEXT("UI:  FillPopUp #%d - id = %d\n"), row, binding.controlId);
        FillPopUp(popup, PopupList(context, row), PopupVisibility(context, row),
                  context.popups.selections[row]);
    }
}

// The print quality popup takes over the room of the cartridge popup. A combo box is sized together with its
// drop-down list, which keeps its height too.
void WidenQualityPopup(const SheetContext& context)
{
    const HWND quality = context.popups.windows[kPopupResolution];
    const HWND media = context.popups.windows[kPopupMediaType];
    if (!quality || !media) return;
    const RECT wide = ClientRectInParent(media);
    const RECT place = ClientRectInParent(quality);
    RECT dropped{};
    const bool drops =
        SendMessageW(quality, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped)) != 0;
    const LONG height = std::max(place.bottom - place.top, drops ? dropped.bottom - dropped.top : 0);
    MoveWindow(quality, place.left, place.top, wide.right - place.left, height, TRUE);
}

void HideSingleCartridge(SheetContext& context, HWND window)
{
    if (CountOptions(PopupList(context, kPopupCartridge)) >= 2) return;
    Trace(TEXT("UI:  HIDE CARTRIDGE POPUP\n"));
    ShowControl(context.popups.windows[kPopupCartridge], false);
    WidenQualityPopup(context);
    ShowControl(GetControlByID(window, IDC_MAIN_CARTRIDGE_CAPTION), false);
}

bool CanOpen(const char* path)
{
    return static_cast<bool>(OpenSharedFile(path, GENERIC_READ, OPEN_EXISTING));
}

bool FindPostScriptInterpreter()
{
    return CanOpen("\\usr\\share\\tintwerk\\gs\\bin\\gs") || CanOpen("\\usr\\local\\bin\\gs");
}

void EmbedMainCheckBoxes(SheetContext& context, HWND window)
{
    const HWND interpreter = EmbedCheckBox(context, window, kCheckPsInterpreter, false);
    const HWND preview = EmbedCheckBox(context, window, kCheckPreview, Value(kCheckPreview) != 0);
    UpdateMediaModeControls(context, 0);
    if (!FindPostScriptInterpreter()) {
        EnableControl(interpreter, false);
        Trace(TEXT("no Ghostscript available\n"));
    }
    if (Value(kCheckPreview) != kCheckBoxMissing) return;
    ShowControl(preview, false);
    ShowControl(GetDlgItem(window, IDC_MAIN_PREVIEW_CAPTION), false);
}

void EmbedScreenPrinting(SheetContext& context, HWND window)
{
    const bool on = Value(kCheckScreenPrinting) != 0;
    const HWND multiBlack = EmbedCheckBox(context, window, kCheckMultiBlack, Value(kCheckMultiBlack) != 0);
    const HWND mode = EmbedCheckBox(context, window, kCheckScreenPrinting, on);
    EnableChildren(window, on);
    if (!on) EnableControl(mode, true); // the way into the mode
    EmbedCartridges(context, window, on && IsChecked(multiBlack));
    ShowScreenParameters(window, context.popups.selections[kPopupHalftone] == 1);
}

void EmbedInkControl(SheetContext& context, HWND window)
{
    InkControlArea& area = context.inkControl;
    area.brightCyanLabel = GetControlByID(window, IDC_INK_BRIGHT_C_CAPTION);
    area.photoIcon = GetControlByID(window, IDC_INK_BRIGHT_INKS_PICTURE);
    area.brightCyanIcon = GetControlByID(window, IDC_INK_BRIGHT_C_PICTURE);
    const void* const noPane = nullptr;
    Trace(TEXT("UI:  iconid_brcyan=%p photo=%p magentapane=%p cyanpane=%p\n"), area.brightCyanIcon,
          area.photoIcon, noPane, noPane);
    UpdateMediaModeControls(context, 0);

    if (const HWND gamma = context.checkBoxes.windows[kCheckColorGamma]) {
        CheckControl(gamma, false);
        EnableColorControls(context, false);
    }
}

// In screen printing mode the pages about colours have nothing to say.
void FollowScreenPrinting(SheetContext& context, HWND window)
{
    const int mode = Value(kCheckScreenPrinting);
    if (mode == kCheckBoxMissing) return;
    EnableChildren(window, mode == 0);
    if (mode == 0) UpdateMediaModeControls(context, 0);
}

BOOL CALLBACK Unlink(HWND child, LPARAM)
{
    RemovePropW(child, PROP_CONTROL);
    return TRUE;
}

// Clears the windows of those rows of a binding table that belong to a page.
template <typename Table, size_t kWindows>
void Forget(const Table& table, HWND (&windows)[kWindows], DWORD pageBits)
{
    for (size_t row = 0; row < kWindows; ++row) {
        if (table[row].tabBit & pageBits) windows[row] = nullptr;
    }
}

} // namespace

int MyEmbedControls(DWORD pageBits, SheetContext& context, HWND window)
{
    Trace(TEXT("UI:  \n!!!MyEmbedControls!!! - idx=%d - window=%d\n\n"), static_cast<int>(pageBits),
          TraceNumber(window));
    const auto has = [pageBits](DWORD bits) { return (pageBits & bits) != 0; };

    StoreWindows(pageBits, context, window);
    if (has(kMainPage)) EmbedBorderless(context, window);
    if (has(kConsumptionPage)) EmbedConsumptionLines(context, window);
    EmbedPopups(pageBits, context, window);
    if (has(kMainPage)) {
        HideSingleCartridge(context, window);
        CheckConstraints(context, kPopupMediaType);
        CheckConstraints(context, kPopupResolution);
    }
    for (int row = 0; row < kNumberFieldRows; ++row) {
        if (has(kNumberFieldTable[static_cast<size_t>(row)].tabBit)) BindNumberField(window, context, row);
    }
    if (has(kConsumptionPage)) EmbedCheckBox(context, window, kCheckNoPrint, false);
    if (has(kMainPage)) EmbedMainCheckBoxes(context, window);
    for (int row = 0; row < kSliderRows; ++row) {
        if (has(kSliderTable[static_cast<size_t>(row)].tabBit)) BindSlider(window, context, row);
    }
    if (has(kColorPage)) {
        UpdateColorModeControls(context);
        UpdateMediaModeControls(context, 0);
        checkAvailabilityforMenus(context, kPopupIntent);
        checkAvailabilityforMenus(context, kPopupColorModel);
    }
    if (has(kCorrectionPage)) {
        EmbedCheckBox(context, window, kCheckColorGamma, false);
        UpdateMediaModeControls(context, 0);
    }
    if (has(kScreenPrintingPage)) EmbedScreenPrinting(context, window);
    if (has(kInkControlPage)) EmbedInkControl(context, window);
    if (has(kPagesScreenPrintingDisables)) FollowScreenPrinting(context, window);
    ShowFormSize(context);
    return 0;
}

void ForgetControls(DWORD pageBits, SheetContext& context, HWND window)
{
    if (window) EnumChildWindows(window, &Unlink, 0); // of no window it would be those of every page
    if (pageBits & kScreenPrintingPage) ReleaseCartridgePictures(window);

    const auto position = PositionOfPage(pageBits);
    if (position >= kPageKinds || context.pages[position] != window) return;
    context.pages[position] = nullptr;
    Forget(kPopupTable, context.popups.windows, pageBits);
    Forget(kSliderTable, context.sliders.windows, pageBits);
    Forget(kNumberFieldTable, context.numberFields.edits, pageBits);
    Forget(kNumberFieldTable, context.numberFields.spins, pageBits);
    Forget(kCheckBoxTable, context.checkBoxes.windows, pageBits);
    if (pageBits & kMainPage) context.checkBoxes.borderless = nullptr;
    if (pageBits & kInkControlPage) context.inkControl = {};
    if (pageBits & kConsumptionPage) context.consumption.lastJob = context.consumption.totals = {};
}

} // namespace tintwerk
