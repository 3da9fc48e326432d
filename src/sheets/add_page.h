// The one call through which every page of ours reaches the common property sheet UI.
#pragma once

#include "src/records/sheet_record.h"

namespace tintwerk {

// Hands a page description to the sheet and keeps the answer as the record's last page handle. Returns the
// answer: 0 or below when the sheet refused the page.
inline LONG_PTR AddToSheet(SheetRecord& record, const PROPSHEETUI_INFO& info, UINT function, void* page,
                           LPARAM parameter)
{
    record.sheet = info.hComPropSheet;
    record.sheetFunction = info.pfnComPropSheet;
    record.lastPageHandle =
        info.pfnComPropSheet
            ? info.pfnComPropSheet(info.hComPropSheet, function, reinterpret_cast<LPARAM>(page), parameter)
            : 0;
    return record.lastPageHandle;
}

} // namespace tintwerk
