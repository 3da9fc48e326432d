// Colour codes of ink cartridges, as the PPD's cartridge colour list names them, and the picture of each.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/win32.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

struct CartridgeColor
{
    std::basic_string_view<WCHAR> code;
    WORD picture; // number of a bitmap resource of the module
};

// clang-format off
inline constexpr std::array<CartridgeColor, 18> kCartridgeColorTable{{
    {TEXT("R"),   IDB_RED},         // red
    {TEXT("G"),   IDB_GREEN},       // green
    {TEXT("BLU"), IDB_BLUE},        // blue
    {TEXT("W"),   IDB_WHITE},       // white
    {TEXT("BK"),  IDB_BLACK},       // black
    {TEXT("C"),   IDB_CYAN},        // cyan
    {TEXT("M"),   IDB_MAGENTA},     // magenta
    {TEXT("Y"),   IDB_YELLOW},      // yellow
    {TEXT("C2"),  IDB_CYAN},        // light cyan
    {TEXT("M2"),  IDB_MAGENTA},     // light magenta
    {TEXT("Y2"),  IDB_YELLOW},      // light yellow
    {TEXT("G"),   IDB_GREY},        // grey
    {TEXT("G2"),  IDB_LIGHT_GREY},  // light grey
    {TEXT("G3"),  IDB_LIGHT_GREY},  // very light grey
    {TEXT("O"),   IDB_ORANGE},      // orange
    {TEXT("E"),   IDB_WHITE},       // empty
    {TEXT("CR"),  IDB_WHITE},       // chroma
    {TEXT("BL2"), IDB_BLUE},        // light blue
}};
// clang-format on

// The first row whose code equals the given one exactly, so "G" is always green; null when there is none.
constexpr const CartridgeColor* FindCartridgeColor(std::basic_string_view<WCHAR> code)
{
    const auto row = std::ranges::find(kCartridgeColorTable, code, &CartridgeColor::code);
    return row != kCartridgeColorTable.end() ? &*row : nullptr;
}

} // namespace tintwerk
