// The surroundings that the host and the tests pretend to: the Windows version that programs are told.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// What GetVersionExW reports from now on, to this program and to the plug-in. Major version 0 returns to the
// truth.
void SetWindowsVersion(DWORD major, DWORD minor, DWORD build = 0);

} // namespace tintwerk
