// The printing preferences: the callback of the common property sheet UI for the document sheet.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// helper may be null. Returns 1 after INIT, GET_INFO_HEADER, DESTROY and GET_ICON, 0 after SET_RESULT, E_FAIL
// on a bad argument or when memory runs out.
HRESULT hrOEMDocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper);

} // namespace tintwerk
