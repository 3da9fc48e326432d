// Colour codes of ink cartridges, as the PPD's cartridge colour list names them, and the picture of each.
#pragma once

#include <array>

#include "platform/win32.h"

namespace tintwerk {

struct CartridgeColor
{
    int index; // -1 ends the table
    const WCHAR* code;
    const char* name;
    const char* displayName;
    WORD picture; // number of a bitmap resource of the module
};

// clang-format off
inline constexpr std::array<CartridgeColor, 19> kCartridgeColorTable{{
    { 0, TEXT("R"),   "red",      "Red",             239},
    { 1, TEXT("G"),   "green",    "Green",           235},
    { 2, TEXT("BLU"), "blue",     "Blue",            241},
    { 3, TEXT("W"),   "white",    "White",           242},
    { 4, TEXT("BK"),  "black",    "Black",           176},
    { 5, TEXT("C"),   "cyan",     "Cyan",            174},
    { 6, TEXT("M"),   "magenta",  "Magenta",         175},
    { 7, TEXT("Y"),   "yellow",   "Yellow",          184},
    { 8, TEXT("C2"),  "cyan2",    "Light Cyan",      174},
    { 9, TEXT("M2"),  "magenta2", "Light Magenta",   175},
    {10, TEXT("Y2"),  "yellow",   "Light Yellow",    184},
    {11, TEXT("G"),   "grey",     "Grey",            234},
    {12, TEXT("G2"),  "grey2",    "Light Grey",      236},
    {13, TEXT("G3"),  "grey3",    "Very Light Grey", 236},
    {14, TEXT("O"),   "orange",   "Orange",          232},
    {15, TEXT("E"),   "empty",    "Empty",           242},
    {16, TEXT("CR"),  "white",    "Chroma",          242},
    {17, TEXT("BL2"), "blue2",    "Light Blue",      241},
    {-1, TEXT("X"),   "xxx",      "Last Color",      242},
}};
// clang-format on

// The first row whose code equals the given one exactly, so "G" is always green; null when there is none.
const CartridgeColor* FindCartridgeColor(const WCHAR* code);

} // namespace tintwerk
