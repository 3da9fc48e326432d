// The per-printer counter file that the printing side writes after each job.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Fills the sheet's counters from the file at an 8-bit path; a file that cannot be opened hides all channels.
void ReadInkFile(const char* path, SheetContext& context);

// Asks the user, then sets all counters to 0 on the page and in the file.
void ResetInkCounters(SheetContext& context);

} // namespace tintwerk
