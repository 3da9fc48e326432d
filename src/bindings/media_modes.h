// Media modes: what the selected media type leaves of rendering intents and colour models. Pure.
#pragma once

#include <string_view>

namespace tintwerk {

inline constexpr int kIncompleteProfile = 2; // media mode of a profile without colour data
inline constexpr int kUcrMode = 4;           // from here on black usage can be set
inline constexpr int kBrightCyanMode = 5;    // bright cyan too; in this very mode for both bright inks
inline constexpr int kBrightMagentaMode = 6; // each of them by itself
inline constexpr int kEnoughModels = 3;      // to do without colour management
inline constexpr std::string_view kNoIntent = "none_0"; // no colour management

// The media mode that an option keyword of *MediaType or *halvIntent carries: its last digit, 0 without one.
constexpr int MediaMode(std::string_view keyword)
{
    return !keyword.empty() && keyword.back() >= '0' && keyword.back() <= '9' ? keyword.back() - '0' : 0;
}

// What the popups of rendering intents and colour models offer.
struct MediaRules
{
    int mediaMode;           // of the selected media type
    int models;              // that the PPD has
    std::string_view intent; // that is selected

    constexpr bool AllowIntent(std::string_view option) const
    {
        return !(models < kEnoughModels && option == kNoIntent) && MediaMode(option) <= mediaMode;
    }
    constexpr bool AllowModel(std::string_view model) const
    {
        const bool withoutColorData = mediaMode == kIncompleteProfile || intent == kNoIntent;
        return !withoutColorData || model == "RGB" || model == "CMYKproof";
    }
};

} // namespace tintwerk
