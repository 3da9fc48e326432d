// The ink channels, in the order of every counter array.
#pragma once

#include <array>

#include "src/records/sheet_context.h"

namespace tintwerk {

struct InkChannel
{
    const char* code; // key in the counter file
    const char* name; // English, translated when shown
    BYTE red, green, blue;
};

// clang-format off
inline constexpr std::array<InkChannel, kInkChannels> kInkChannelTable{{
    {"K",  "Black",            0,   0,   0},
    {"KP", "Photo Black",      0,   0,   0},
    {"K3", "Gray",           100, 100, 100},
    {"K4", "Bright Gray",    150, 150, 150},
    {"Y",  "Yellow",         255, 255,   0},
    {"M",  "Magenta",        255,   0, 255},
    {"C",  "Cyan",             0, 255, 255},
    {"M2", "Bright Magenta", 255, 150, 255},
    {"C2", "Bright Cyan",    160, 255, 255},
    {"Y2", "Bright Yellow",  255, 255, 100},
    {"R",  "Red",            255,   0,   0},
    {"G",  "Green",            0, 255,   0},
    {"B",  "Blue",             0,   0, 255},
    {"O",  "Optimizer",      150, 150, 150},
    {"OR", "Orange",         255, 128,   0},
    {"O",  "Violet",         255,   0, 128}, // never filled from a file: its code is the Optimizer's
    {"KR", "Pigment Black",    0,   0,   0},
    {"KM", "Matte Black",      0,   0,   0},
    {"KG", "Photo Black",      0,   0,   0},
    {"K2", "Dark Gray",       50,  50,  50},
}};
// clang-format on

} // namespace tintwerk
