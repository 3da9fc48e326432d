// Colour codes of ink cartridges, as the PPD's cartridge colour list names them, and the picture of each.
#pragma once

#include <array>

#include "platform/win32.h"
#include "src/resources/control_ids.h"

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
    { 0, TEXT("R"),   "red",      "Red",             IDB_RED},
    { 1, TEXT("G"),   "green",    "Green",           IDB_GREEN},
    { 2, TEXT("BLU"), "blue",     "Blue",            IDB_BLUE},
    { 3, TEXT("W"),   "white",    "White",           IDB_WHITE},
    { 4, TEXT("BK"),  "black",    "Black",           IDB_BLACK},
    { 5, TEXT("C"),   "cyan",     "Cyan",            IDB_CYAN},
    { 6, TEXT("M"),   "magenta",  "Magenta",         IDB_MAGENTA},
    { 7, TEXT("Y"),   "yellow",   "Yellow",          IDB_YELLOW},
    { 8, TEXT("C2"),  "cyan2",    "Light Cyan",      IDB_CYAN},
    { 9, TEXT("M2"),  "magenta2", "Light Magenta",   IDB_MAGENTA},
    {10, TEXT("Y2"),  "yellow",   "Light Yellow",    IDB_YELLOW},
    {11, TEXT("G"),   "grey",     "Grey",            IDB_GREY},
    {12, TEXT("G2"),  "grey2",    "Light Grey",      IDB_LIGHT_GREY},
    {13, TEXT("G3"),  "grey3",    "Very Light Grey", IDB_LIGHT_GREY},
    {14, TEXT("O"),   "orange",   "Orange",          IDB_ORANGE},
    {15, TEXT("E"),   "empty",    "Empty",           IDB_WHITE},
    {16, TEXT("CR"),  "white",    "Chroma",          IDB_WHITE},
    {17, TEXT("BL2"), "blue2",    "Light Blue",      IDB_BLUE},
    {-1, TEXT("X"),   "xxx",      "Last Color",      IDB_WHITE},
}};
// clang-format on

// The first row whose code equals the given one exactly, so "G" is always green; null when there is none.
const CartridgeColor* FindCartridgeColor(const WCHAR* code);

} // namespace tintwerk
