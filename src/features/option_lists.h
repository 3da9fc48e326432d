// The option lists of all popups, read from the core driver once per sheet.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Fills the option table, the selection of every popup row, the cartridge colour list and the screen printing
// flags. Returns 0, E_FAIL when the plug-in heap cannot give an option list, E_OUTOFMEMORY when it cannot
// give a block for names.
HRESULT getPPDComboOptions(SheetContext& context);

} // namespace tintwerk
