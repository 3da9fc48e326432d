// The pages of the printing preferences by name, and the one look-up of the control that stands for a PPD
// feature. Used by scripts, reports and the commands that explain PPDs.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "src/bindings/check_boxes.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"

namespace tintwerk {

// Names under which scripts know the pages, whatever the language of the tabs.
enum class PageName
{
    Main,
    Layout,
    Colors,
    Correction,
    Consumption,
    Ink,
    Screen,
    Advanced,
    Information
};

std::string_view TextOf(PageName page);
std::optional<PageName> PageFromText(std::string_view text);
std::string PageNamesForPeople(); // "main, layout, ..."
// The page of a tab bit of the binding tables.
PageName PageOfTab(DWORD tabBit);

// A control with its row of the binding tables: one of the four pointers is set.
struct PageControl
{
    std::string_view feature; // without asterisk; empty for a popup without a feature of its own
    PageName page;
    int id; // of the trackbar, edit box, check box or combo box
    const ControlBinding* slider = nullptr;
    const NumberFieldBinding* number = nullptr;
    const CheckBoxBinding* checkBox = nullptr;
    const PopupBinding* popup = nullptr;

    // The PPD feature that it stands for; empty for a flag of the process and for a popup without one.
    std::string_view PpdFeatureName() const
    {
        return checkBox && !IsPpdFeature(*checkBox) ? std::string_view() : feature;
    }
};

// Every control that has an id, table after table. Check boxes that no PPD feature stands for are among them.
std::span<const PageControl> PageControls();
// The control of a feature; a popup without a feature of its own is called by its name. Null for no control.
const PageControl* ControlOfFeature(std::string_view feature);
// The field whose rest a feature holds ("halvScreenLPI2"). Null for no such feature.
const NumberFieldBinding* FieldOfRest(std::string_view feature);
// The control with this id on a page. Null for one that the binding tables do not know.
const PageControl* ControlOnPage(std::optional<PageName> page, int id);

} // namespace tintwerk
