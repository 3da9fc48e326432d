// The one kind of message box that the driver shows.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Shows a system-modal warning with an OK button, with a Cancel button beside it when one is wanted. Returns
// 0 when the box was shown, -1 when it could not be. answer, when given, receives 2 for Cancel and 1 for
// anything else; it is not touched when there was no box.
int ShowWarningBox(HWND owner, bool cancelWanted, const WCHAR* caption, const WCHAR* text, int* answer);

} // namespace tintwerk
