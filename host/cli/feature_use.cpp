#include "host/cli/feature_use.h"

#include <algorithm>
#include <array>

#include "host/sheet/script.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/number_fields.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"

namespace tintwerk {

namespace {

std::string PageText(DWORD tabBit)
{
    return std::string(TextOf(PageOfTab(tabBit)));
}

constexpr std::array<std::string_view, 4> kLayoutFeatures{"%Orientation", "%PageOrder", "Duplex",
                                                          "%PagePerSheet"};
constexpr std::array<std::string_view, 4> kSpecialFeatures{"halvMirror", "halvAutorotateOnRoll",
                                                           "halvDuplexadvanced", "halvDuplexAdjust"};
constexpr std::array<std::string_view, 8> kScreenPageFeatures{
    "halvScreenmode", "halvScreenInksaturation", "halvScreenShape", "halvScreenCartridge",
    "halvScreenLPI",  "halvScreenLPI2",          "halvScreenAngle", "halvScreenAngle2"};
constexpr std::size_t kExclusionLength = 19; // characters that decide whether a keyword is excluded

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

bool IsOfScreenPage(std::string_view feature)
{
    return std::ranges::any_of(kScreenPageFeatures, [&](std::string_view excluded) {
        return feature.substr(0, kExclusionLength) == excluded.substr(0, kExclusionLength);
    });
}

} // namespace

AdvancedGroup AdvancedGroupOf(std::string_view feature)
{
    if (feature.starts_with("halvSetting")) return AdvancedGroup::PrinterOptions;
    if (std::ranges::find(kSpecialFeatures, feature) != kSpecialFeatures.end())
        return AdvancedGroup::AdvancedSettings;
    if (feature.starts_with("halvScreen") && !IsOfScreenPage(feature)) return AdvancedGroup::AdvancedSettings;
    return feature.starts_with("halvDTF") ? AdvancedGroup::Dtf : AdvancedGroup::None;
}

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
    if (std::ranges::find(kLayoutFeatures, feature) != kLayoutFeatures.end())
        return {FeatureUse::LayoutItem, "layout", "layout item"};
    if (AdvancedGroupOf(feature) != AdvancedGroup::None)
        return {FeatureUse::AdvancedItem, "advanced", "advanced item"};
    for (const Behaviour& row : kBehaviours) {
        if (feature == row.feature) return {FeatureUse::Behaviour, "", std::string(row.text)};
    }
    return {};
}

} // namespace tintwerk
