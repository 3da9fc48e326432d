// Writing an applied page back to the PPD features.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Writes the settings of the page(s) whose tab bit is set. Always returns 0: a refused option shows only in
// the trace.
int SavePPDOptions(SheetContext& context, DWORD tabBits);

} // namespace tintwerk
