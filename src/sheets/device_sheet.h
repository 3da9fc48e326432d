// The printer properties: the callback of the common property sheet UI for the device sheet.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// helper may be null. Returns S_OK, E_FAIL on a bad argument or when the heap has no room.
HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper);

} // namespace tintwerk
