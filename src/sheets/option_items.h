// Turns a source list into the option items that the common property sheet UI draws, and writes the user's
// choices back. Used by the two generated pages.
#pragma once

#include "src/records/sheet_context.h"
#include "src/sheets/source_list.h"

namespace tintwerk {

// One block of the sheet's plug-in heap: the items, then their option types, then the options. Headers give
// an item of level 0, features one of level 1 that stands at the feature's selected option; a feature whose
// selection cannot be read gives none. Null when the heap has no room.
OPTITEM* BuildOptionItems(const SheetContext& context, const SourceRow* rows, int* count);

// Selects the option that each feature item stands at, in the feature from which the item was built.
void ApplyOptionItems(const SheetContext& context, const SourceRow* rows, const OPTITEM* items, int count);

} // namespace tintwerk
