#include "host/cli/feature_use.h"

#include "host/sheet/page_controls.h"
#include "src/bindings/advanced_features.h"
#include "src/sheets/layout_items.h"

namespace tintwerk {

FeatureUse UseOfFeature(std::string_view feature)
{
    const NumberFieldBinding* const rest = FieldOfRest(feature);
    if (const PageControl* const control = ControlOfFeature(rest ? rest->keyword : feature)) {
        const auto use = [&](std::string text) {
            return FeatureUse{std::string(TextOf(control->page)), std::move(text), control->id};
        };
        if (const ControlBinding* const slider = control->slider)
            return use("slider, " + std::to_string(slider->minimum) + " to " +
                       std::to_string(slider->maximum));
        if (rest) return use("number field, the rest");
        if (control->number) return use("number field");
        return control->checkBox ? use("check box") : use("popup");
    }
    for (const SourceEntry& entry : SourceList(kLayoutRows)) {
        if (feature == entry.row->name) return {"layout", "layout item"};
    }
    if (AdvancedGroupOf(feature)) return {"advanced", "advanced item"};
    for (const Behaviour& row : kBehaviours) {
        if (feature == row.feature) return {"", std::string(row.text)};
    }
    return {};
}

std::vector<std::string> DriverFeatures()
{
    std::vector<std::string> features(std::begin(kSpecialFeatures), std::end(kSpecialFeatures));
    for (const PageControl& control : PageControls()) {
        if (!control.PpdFeatureName().empty()) features.emplace_back(control.feature);
        if (control.number) features.emplace_back(RestFeature(*control.number).name);
    }
    for (const Behaviour& row : kBehaviours)
        features.emplace_back(row.feature);
    return features;
}

} // namespace tintwerk
