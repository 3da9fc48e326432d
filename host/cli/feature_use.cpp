#include "host/cli/feature_use.h"

#include "host/sheet/page_controls.h"
#include "src/bindings/advanced_features.h"
#include "src/sheets/layout_items.h"

namespace tintwerk {

namespace {

constexpr Behaviour kBehaviours[] = {
    {"halvLanguage", "its first option chooses the pages' language", "the pages are in English"},
    {"halvGuiMode", "chooses which pages are shown", "every page is shown"},
    {"halvGuiIcon", "names the logo on the main page", "the main page has no logo of its own"},
    {"halvScreenmode", "screen printing page: shown when the feature exists",
     "there is no screen printing page"},
    {"halvCartridgeColors", "names the inks on the screen printing page",
     "the cartridges of the screen printing page have no colours"},
    {"Duplex", "", "the page layout has no duplex item"},
};

bool IsRestOf(const PageControl& control, std::string_view feature)
{
    return control.number && feature == RestFeature(*control.number).name;
}

} // namespace

FeatureUseInfo UseOfFeature(std::string_view feature)
{
    for (const PageControl& control : PageControls()) {
        if (feature.empty() || (feature != control.feature && !IsRestOf(control, feature))) continue;
        const auto use = [&](FeatureUse is, std::string text) {
            return FeatureUseInfo{is, std::string(TextOf(control.page)), std::move(text), control.id};
        };
        if (control.slider)
            return use(FeatureUse::Slider, "slider, " + std::to_string(control.slider->minimum) + " to " +
                                               std::to_string(control.slider->maximum));
        if (control.number)
            return feature == control.feature ? use(FeatureUse::NumberField, "number field")
                                              : use(FeatureUse::NumberRest, "number field, the rest");
        return control.checkBox ? use(FeatureUse::CheckBox, "check box") : use(FeatureUse::Popup, "popup");
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

std::span<const Behaviour> Behaviours()
{
    return kBehaviours;
}

std::vector<std::string> DriverFeatures()
{
    std::vector<std::string> features(std::begin(kSpecialFeatures), std::end(kSpecialFeatures));
    for (const PageControl& control : PageControls()) {
        if (!control.feature.empty() && !(control.checkBox && !IsPpdFeature(*control.checkBox)))
            features.emplace_back(control.feature);
        if (control.number) features.emplace_back(RestFeature(*control.number).name);
    }
    for (const Behaviour& row : kBehaviours)
        features.emplace_back(row.feature);
    return features;
}

} // namespace tintwerk
