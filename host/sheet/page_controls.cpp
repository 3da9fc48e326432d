#include "host/sheet/page_controls.h"

#include <algorithm>
#include <array>
#include <vector>

#include "host/ppd/ppd_text.h"
#include "src/records/page_kinds.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

namespace {

struct PageText
{
    PageName page;
    std::string_view text;
    DWORD tabBit; // 0 for a page without controls of the binding tables
};

constexpr std::array<PageText, 9> kPageTexts{{
    {PageName::Main, "main", kMainPage},
    {PageName::Layout, "layout", 0},
    {PageName::Colors, "colors", kColorPage},
    {PageName::Correction, "correction", kCorrectionPage},
    {PageName::Consumption, "consumption", kConsumptionPage},
    {PageName::Ink, "ink", kInkControlPage},
    {PageName::Screen, "screen", kScreenPrintingPage},
    {PageName::Advanced, "advanced", 0},
    {PageName::Information, "information", 0},
}};

// No table has it: with the page size it chooses the borderless twin.
constexpr CheckBoxBinding kBorderlessBox{kMainPage, "noppd_Borderless", IDC_MAIN_BORDERLESS};

std::vector<PageControl> AllControls()
{
    std::vector<PageControl> all;
    const auto add = [&all](const auto& row, int id) -> PageControl& {
        return all.emplace_back(PageControl{WithoutAsterisk(row.keyword), PageOfTab(row.tabBit), id});
    };
    for (const ControlBinding& row : kSliderTable)
        add(row, row.sliderId).slider = &row;
    for (const NumberFieldBinding& row : kNumberFieldTable)
        add(row, row.editId).number = &row;
    for (const CheckBoxBinding& row : kCheckBoxTable)
        add(row, row.controlId).checkBox = &row;
    add(kBorderlessBox, kBorderlessBox.controlId).checkBox = &kBorderlessBox;
    for (const PopupBinding& row : kPopupTable) {
        if (row.controlId) add(row, row.controlId).popup = &row;
    }
    return all;
}

template <typename Fits> const PageControl* FindControl(const Fits& fits)
{
    const std::span<const PageControl> all = PageControls();
    const auto control = std::ranges::find_if(all, fits);
    return control == all.end() ? nullptr : &*control;
}

} // namespace

std::string_view TextOf(PageName page)
{
    return std::ranges::find(kPageTexts, page, &PageText::page)->text;
}

std::optional<PageName> PageFromText(std::string_view text)
{
    const auto row = std::ranges::find(kPageTexts, text, &PageText::text);
    return row == kPageTexts.end() ? std::nullopt : std::optional(row->page);
}

std::string PageNamesForPeople()
{
    return Joined(kPageTexts, &PageText::text);
}

PageName PageOfTab(DWORD tabBit)
{
    return std::ranges::find(kPageTexts, tabBit, &PageText::tabBit)->page;
}

std::span<const PageControl> PageControls()
{
    static const std::vector<PageControl> all = AllControls();
    return all;
}

const PageControl* ControlOfFeature(std::string_view feature)
{
    return FindControl([feature](const PageControl& control) {
        return feature == (control.feature.empty() ? control.popup->name : control.feature);
    });
}

const NumberFieldBinding* FieldOfRest(std::string_view feature)
{
    const auto field = std::ranges::find_if(kNumberFieldTable, [feature](const NumberFieldBinding& row) {
        return feature == RestFeature(row).name;
    });
    return field == kNumberFieldTable.end() ? nullptr : &*field;
}

const PageControl* ControlOnPage(std::optional<PageName> page, int id)
{
    return FindControl([=](const PageControl& control) { return control.page == page && control.id == id; });
}

} // namespace tintwerk
