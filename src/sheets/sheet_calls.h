// What both property sheets, the printing preferences and the printer properties, exchange with the common
// property sheet UI.
#pragma once

#include "src/records/sheet_record.h"

namespace tintwerk {

// Traces a call by the name of its entry. False, with the last error set, when its info is none that we know.
bool AcceptSheetCall(const WCHAR* entry, const PROPSHEETUI_INFO* info, LPARAM lParam);

// PROPSHEETUI_REASON_GET_INFO_HEADER. The UI declares the title writable and never writes to it.
void GiveSheetTitle(PROPSHEETUI_INFO& info, LPARAM lParam, const WCHAR* title);

// PROPSHEETUI_REASON_SET_RESULT.
void TakeSheetResult(PROPSHEETUI_INFO& info, LPARAM lParam);

// Hands a page description to the sheet and keeps the answer as the record's last page handle. Returns the
// answer: 0 or below when the sheet refused the page.
LONG_PTR AddToSheet(SheetRecord& record, const PROPSHEETUI_INFO& info, UINT function, void* page,
                    LPARAM parameter);

// Adds a page that is one of the module's dialogs; without a title it has that of the dialog.
LONG_PTR AddDialogPage(SheetRecord& record, const PROPSHEETUI_INFO& info, WORD dialog, const WCHAR* title,
                       DLGPROC procedure, const void* parameter);

} // namespace tintwerk
