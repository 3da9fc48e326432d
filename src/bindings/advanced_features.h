// Which features of a PPD the advanced page lists, and in which group. Pure.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace tintwerk {

// Belong to the advanced settings by name; whether the printer has them shows when their options are read.
inline constexpr const char* kSpecialFeatures[] = {
    "halvMirror",
    "halvAutorotateOnRoll",
    "halvDuplexadvanced",
    "halvDuplexAdjust",
};

struct AdvancedGroup
{
    const char* title; // English
    int titleLength;   // characters that its header shows
    std::string_view prefix;
    std::span<const char* const> special = {}; // listed first; the group is never empty then
};

inline constexpr AdvancedGroup kAdvancedGroups[] = {
    {"Printer Options", 25, "halvSetting"},
    {"Advanced Settings", 25, "halvScreen", kSpecialFeatures},
    {"Special Settings DTF Printing", 40, "halvDTF"},
};

// Have controls of their own on the screen printing page.
inline constexpr std::string_view kScreenPrintingFeatures[] = {
    "halvScreenmode", "halvScreenInksaturation", "halvScreenShape", "halvScreenCartridge",
    "halvScreenLPI",  "halvScreenLPI2",          "halvScreenAngle", "halvScreenAngle2",
};
inline constexpr std::size_t kComparedCharacters = 19; // of a screen printing keyword

// Whether a group takes a feature for its prefix.
constexpr bool TakesFeature(const AdvancedGroup& group, std::string_view feature)
{
    return feature.starts_with(group.prefix) &&
           std::ranges::none_of(kScreenPrintingFeatures, [feature](std::string_view excluded) {
               return feature.substr(0, kComparedCharacters) == excluded.substr(0, kComparedCharacters);
           });
}

// The group in which the advanced page lists a feature; null when it does not.
constexpr const AdvancedGroup* AdvancedGroupOf(std::string_view feature)
{
    for (const AdvancedGroup& group : kAdvancedGroups)
        if (TakesFeature(group, feature) || std::ranges::find(group.special, feature) != group.special.end())
            return &group;
    return nullptr;
}

} // namespace tintwerk
