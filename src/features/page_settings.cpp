#include "src/features/page_settings.h"

#include <charconv>

#include "src/bindings/current_values.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/screen_modes.h"
#include "src/features/control_access.h"
#include "src/features/feature_access.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// A number as an option keyword.
class DecimalText
{
public:
    explicit DecimalText(int value) { std::to_chars(text_, text_ + sizeof text_ - 1, value); }
    const char* Get() const { return text_; }

private:
    char text_[12] = {};
};

// A popup, slider or check box that its page does not have (a reduced template, a page never opened) is
// passed over everywhere here: the printer keeps the setting that the user never saw.

void TakePopupSelections(PopupArea& popups, DWORD tabBits)
{
    for (size_t row = 0; row < kPopups; ++row)
        if ((kPopupTable[row].tabBit & tabBits) && popups.windows[row])
            popups.selections[row] = SelectedItemData(popups.windows[row]);
}

// The page size popup offers the normal size only; the check box beside it chooses the twin.
void ChooseBorderlessTwin(SheetContext& context)
{
    int& selection = context.popups.selections[kPopupPageSize];
    Trace(TEXT("SAVE PPD: PAGESIZE selection = %d\n"), selection);
    if (!FindSelected(context.options->lists[kPopupPageSize].data(), selection)) return;
    const int twin = context.pageSizes.statuses[selection - 1];
    if (twin <= 0) return;
    Trace(TEXT("SAVE PPD: BORDERLESS is available\n"));
    if (!IsChecked(context.checkBoxes.borderless)) return;
    selection = twin;
    Trace(TEXT("SAVE PPD: changed pagesize to selection #%d\n"), selection);
}

void TakeCheckBox(const CheckBoxArea& checkBoxes, CheckBoxRow row)
{
    if (checkBoxes.windows[row]) Current().checkBoxes[row] = IsChecked(checkBoxes.windows[row]);
}

// Selection of *halvScreenmode; 0 when the screen halftone popup has no current item.
int ScreenModeSelection(const PopupArea& popups)
{
    const int halftone = popups.selections[kPopupHalftone];
    if (halftone == 0) return 0;
    return EncodeScreenMode({Current().checkBoxes[kCheckScreenPrinting] != 0, halftone,
                             Current().checkBoxes[kCheckMultiBlack] != 0});
}

void WritePopups(const SheetContext& context, DWORD tabBits)
{
    for (int row = 0; row < kPopups; ++row) {
        if (!(kPopupTable[static_cast<size_t>(row)].tabBit & tabBits) || !context.popups.windows[row])
            continue;
        const bool isHalftone = row == kPopupHalftone;
        const size_t written = static_cast<size_t>(isHalftone ? kPopupScreenMode : row);
        const int selection =
            isHalftone ? ScreenModeSelection(context.popups) : context.popups.selections[row];
        const OptionEntry* const option = FindSelected(context.options->lists[written].data(), selection);
        if (!option) continue;
        SetOption(context, kPopupTable[written].keyword, option->keyword);
        Trace(TEXT("Set PPD Feature '%S' to '%S'\n"), kPopupTable[written].keyword, option->keyword);
    }
}

void WriteSliders(const SheetContext& context, DWORD tabBits)
{
    for (size_t row = 0; row < kSliderTable.size(); ++row) {
        const ControlBinding& slider = kSliderTable[row];
        const HWND window = context.sliders.windows[row];
        if (!(slider.tabBit & tabBits) || !window) continue;
        SetOption(context, slider.keyword, DecimalText(PpdValue(slider, GetLogicalPosition(window))).Get());
    }
}

// Every check box of the sheet, whatever page is applied. A box whose page was never opened has no window:
// read as unchecked it would switch off what the user never saw.
void WriteCheckBoxes(const SheetContext& context)
{
    for (size_t row = 0; row < kCheckBoxTable.size(); ++row) {
        const HWND window = context.checkBoxes.windows[row];
        if (!window) continue;
        const bool checked = IsChecked(window);
        Current().checkBoxes[row] = checked;
        if (IsPpdFeature(kCheckBoxTable[row]))
            SetOption(context, kCheckBoxTable[row].keyword, checked ? "1" : "0");
    }
}

void WriteNumberFields(const SheetContext& context, DWORD tabBits)
{
    for (size_t row = 0; row < kNumberFieldTable.size(); ++row) {
        const NumberFieldBinding& field = kNumberFieldTable[row];
        if (!(field.tabBit & tabBits)) continue;
        const NumberParts parts = SplitNumber(field, context.numberFields.values[row]);
        const DecimalText rest(parts.rest);
        const DecimalText coarse(parts.coarse);
        SetOption(context, RestFeature(field).name, rest.Get());
        SetOption(context, field.keyword, coarse.Get());
        Trace(TEXT("Set PPD Number Feature '%S' to '%S' and '%S'\n"), field.keyword, rest.Get(),
              coarse.Get());
    }
}

} // namespace

int SavePPDOptions(SheetContext& context, DWORD tabBits)
{
    Trace(TEXT("Setting PPDOptions for dlgpage bits %d\n"), static_cast<int>(tabBits));
    TakePopupSelections(context.popups, tabBits);
    if (tabBits == kMainPage) ChooseBorderlessTwin(context);
    TakeCheckBox(context.checkBoxes, kCheckMultiBlack);
    TakeCheckBox(context.checkBoxes, kCheckScreenPrinting);
    WritePopups(context, tabBits);
    WriteSliders(context, tabBits);
    WriteCheckBoxes(context);
    WriteNumberFields(context, tabBits);
    return 0;
}

} // namespace tintwerk
