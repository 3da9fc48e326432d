// Which control of the driver's pages stands for a PPD feature. Used by the commands that explain PPDs.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

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
    int id = 0;          // of the control; 0 for items and for none
};

FeatureUseInfo UseOfFeature(std::string_view feature);

// Features that no control stands for but that change the pages.
struct Behaviour
{
    std::string_view feature;
    std::string_view text;    // what it does; empty for one that has a control after all
    std::string_view without; // what the pages are without it
};
std::span<const Behaviour> Behaviours();

// Begins every feature of the driver's own.
inline constexpr std::string_view kFeaturePrefix = "halv";

// The features that the driver knows by name.
std::vector<std::string> DriverFeatures();

} // namespace tintwerk
