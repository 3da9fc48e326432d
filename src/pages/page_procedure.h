// The dialog procedure of every tabbed page.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Document pages (printing preferences) and the information page (printer properties) share one procedure,
// DevicePropPageProc; the two entries differ in that alone.
INT_PTR CALLBACK DocumentPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace tintwerk
