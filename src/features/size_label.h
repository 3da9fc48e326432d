// The label under the page size popup.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Shows the size of the selected page size in millimetres, as the spooler's form of that name has it.
void ShowFormSize(SheetContext& context);

} // namespace tintwerk
