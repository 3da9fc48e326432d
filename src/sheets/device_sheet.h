// The printer properties: the callback of the common property sheet UI for the device sheet, and the
// activation context in which every page is created.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// helper may be null. Returns S_OK, E_FAIL on a bad argument or when the heap has no room.
HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper);

// The module's activation context, made at the first call; INVALID_HANDLE_VALUE when that fails (the next
// call tries again).
HANDLE PageActivationContext();

} // namespace tintwerk
