// Builds the advanced page's source list: asks the core driver for the display names and options of the
// chosen keywords.
#pragma once

#include "src/sheets/advanced_selection.h"
#include "src/sheets/source_list.h"

namespace tintwerk {

inline constexpr int kMaxAdvancedStrings = 64;      // headers and features of one page
inline constexpr SIZE_T kAdvancedWorkBytes = 16384; // display names and option keywords of one page

// One block of the sheet's plug-in heap: the rows and every text that they point to. Keywords that are no
// feature of the PPD give no row; when the work area runs out, the list ends before the feature that no
// longer fits. Null when the heap has no room.
SourceRow* RowsFromKeywords(const CoreArea& core, const AdvancedKeywords& keywords);

} // namespace tintwerk
