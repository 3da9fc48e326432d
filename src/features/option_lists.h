// The option lists of all popups, read from the core driver once per sheet.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Fills the option table, the selection of every popup row, the cartridge colour list and the screen printing
// flags. Returns 0, E_FAIL when the plug-in heap cannot give an option list, E_OUTOFMEMORY when it cannot
// give a block for names.
HRESULT getPPDComboOptions(SheetContext& context);

// What one selection of *halvScreenmode means (1 screen printing off; 2, 3 first halftone without and with
// multi-black; ...).
struct ScreenMode
{
    bool on;
    int halftone; // selection of the screen halftone popup
    bool multiBlack;
    bool operator==(const ScreenMode&) const = default;
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
