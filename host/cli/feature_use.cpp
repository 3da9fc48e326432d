#include "host/cli/feature_use.h"

#include <array>

#include "host/sheet/script.h"
#include "src/bindings/advanced_features.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"
#include "src/sheets/layout_items.h"

namespace tintwerk {

namespace {

std::string PageText(DWORD tabBit)
{
    return std::string(TextOf(PageOfTab(tabBit)));
}

struct Behaviour
{
    std::string_view feature, text;
};
constexpr std::array<Behaviour, 5> kBehaviours{{
    {"halvLanguage", "its first option chooses the pages' language"},
    {"halvGuiMode", "chooses which pages are shown"},
    {"halvGuiIcon", "names the logo on the main page"},
    {"halvScreenmode", "screen printing page: shown when the feature exists"},
    {"halvCartridgeColors", "names the inks on the screen printing page"},
}};

} // namespace

FeatureUseInfo UseOfFeature(std::string_view feature)
{
    for (const ControlBinding& row : kSliderTable) {
        if (feature == row.keyword)
            return {FeatureUse::Slider, PageText(row.tabBit),
                    "slider, " + std::to_string(row.minimum) + " to " + std::to_string(row.maximum)};
    }
    for (const NumberFieldBinding& row : kNumberFieldTable) {
        if (feature == row.keyword) return {FeatureUse::NumberField, PageText(row.tabBit), "number field"};
        if (feature == std::string(row.keyword) + "2")
            return {FeatureUse::NumberRest, PageText(row.tabBit), "number field, the rest"};
    }
    for (const CheckBoxBinding& row : kCheckBoxTable) {
        if (feature == row.keyword) return {FeatureUse::CheckBox, PageText(row.tabBit), "check box"};
    }
    for (const PopupBinding& row : kPopupTable) {
        if (row.controlId && row.keyword[0] && feature == WithoutAsterisk(row.keyword))
            return {FeatureUse::Popup, PageText(row.tabBit), "popup"};
    }
    for (const SourceEntry& entry : SourceList(kLayoutRows)) {
        if (feature == entry.row->name) return {FeatureUse::LayoutItem, "layout", "layout item"};
    }
    if (AdvancedGroupOf(feature)) return {FeatureUse::AdvancedItem, "advanced", "advanced item"};
    for (const Behaviour& row : kBehaviours) {
        if (feature == row.feature) return {FeatureUse::Behaviour, "", std::string(row.text)};
    }
    return {};
}

} // namespace tintwerk
