// The two pages of the printing preferences that the common property sheet UI draws from option items: layout
// and advanced settings. Added while the document sheet opens.
#pragma once

#include "src/records/sheet_record.h"

namespace tintwerk {

// Orientation, page order, duplex and pages per sheet, on the standard document page.
void AddLayoutPage(SheetRecord& record, const PROPSHEETUI_INFO& info);

// The driver's own PPD features in groups, as a tree. No page when the core driver names no features or the
// heap has no room.
void AddAdvancedPages(SheetRecord& record, const PROPSHEETUI_INFO& info);

} // namespace tintwerk
