// The page sizes of an open sheet and their borderless twins.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Pairs the page sizes with their borderless twins, hides the twins and turns a selected twin into its normal
// size.
void CreateBorderlessList(SheetContext& context);

} // namespace tintwerk
