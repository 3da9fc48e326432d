// The selections of *halvScreenmode: screen printing, its halftone and multi-black in one number. Pure.
#pragma once

namespace tintwerk {

inline constexpr int kScreenModes = 7; // off, and three halftones with and without multi-black

// What one selection of *halvScreenmode means (1 screen printing off; 2, 3 first halftone without and with
// multi-black; ...).
struct ScreenMode
{
    bool on;
    int halftone; // selection of the screen halftone popup
    bool multiBlack;
};
constexpr ScreenMode DecodeScreenMode(int selection)
{
    if (selection == 1) return {false, 1, false};
    return {true, (((selection - 2) / 2) & 3) + 1, (selection & 1) != 0};
}
constexpr int EncodeScreenMode(const ScreenMode& mode)
{
    return mode.on ? 2 * mode.halftone + (mode.multiBlack ? 1 : 0) : 1;
}

} // namespace tintwerk
