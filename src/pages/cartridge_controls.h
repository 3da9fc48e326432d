// The cartridges of the screen printing page: for each slot a check box, the picture of its colour and the
// colour's code.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Finds and sets the controls of all slots; a slot whose feature is missing is hidden.
void EmbedCartridges(SheetContext& context, HWND page, bool enable);

// Enables or disables the slots, up to the first whose feature is missing.
void EnableCartridges(const SheetContext& context, HWND page, bool enable);

// Gives back the pictures of a page that is about to go.
void ReleaseCartridgePictures(HWND page);

} // namespace tintwerk
