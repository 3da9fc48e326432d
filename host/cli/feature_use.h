// Which control of the driver's pages stands for a PPD feature. Used by the commands that explain PPDs.
#pragma once

#include <string>
#include <string_view>

namespace tintwerk {

enum class FeatureUse
{
    Slider,
    NumberField,
    NumberRest,
    CheckBox,
    Popup,
    LayoutItem,
    AdvancedItem,
    Behaviour,
    None
};

struct FeatureUseInfo
{
    FeatureUse use = FeatureUse::None;
    std::string page;    // "main", ...; empty for None and Behaviour
    std::string control; // for people: "slider, -10 to 10"
};

FeatureUseInfo UseOfFeature(std::string_view feature);

} // namespace tintwerk
