// Which control of the driver's pages stands for a PPD feature. Used by the commands that explain PPDs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tintwerk {

struct FeatureUse
{
    std::string page;    // "main", ...; empty for a feature that only changes how the pages behave
    std::string control; // for people: "slider, -10 to 10"; empty for a feature that the driver does not know
    int id = 0;          // of the control; 0 for items and for none
};

FeatureUse UseOfFeature(std::string_view feature);

// Features that no control stands for but that change the pages.
struct Behaviour
{
    std::string_view feature;
    std::string_view text;    // what it does; empty for one that has a control after all
    std::string_view without; // what the pages are without it
};
inline constexpr Behaviour kBehaviours[] = {
    {"halvLanguage", "its first option chooses the pages' language", "the pages are in English"},
    {"halvGuiMode", "chooses which pages are shown", "every page is shown"},
    {"halvGuiIcon", "names the logo on the main page", "the main page has no logo of its own"},
    {"halvScreenmode", "screen printing page: shown when the feature exists",
     "there is no screen printing page"},
    {"halvCartridgeColors", "names the inks on the screen printing page",
     "the cartridges of the screen printing page have no colours"},
    {"Duplex", "", "the page layout has no duplex item"},
};

// Begins every feature of the driver's own.
inline constexpr std::string_view kFeaturePrefix = "halv";

// The features that the driver knows by name.
std::vector<std::string> DriverFeatures();

} // namespace tintwerk
