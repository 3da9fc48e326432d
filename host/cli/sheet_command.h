// What "preferences" and "properties" share: open a sheet, by hand or from a script, and tell what came of
// it.
#pragma once

#include "host/cli/program.h"
#include "host/sheet/property_sheet.h"

namespace tintwerk {

// The printer's options and those of the script.
std::vector<OptionRow> SheetOptions();
int RunSheetCommand(SheetKind kind, const Arguments& arguments, Output& output);

} // namespace tintwerk
