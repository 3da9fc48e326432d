#include "platform/environment.h"

#include "platform/function_hook.h"

namespace tintwerk {

namespace {

OSVERSIONINFOW pretended;
decltype(&GetVersionExW) originalVersion;

BOOL WINAPI PretendedVersion(LPOSVERSIONINFOW information)
{
    // Nobody in this process called the function when it was replaced: there is nothing to ask.
    if (originalVersion && !originalVersion(information)) return FALSE;
    information->dwPlatformId = VER_PLATFORM_WIN32_NT;
    information->dwMajorVersion = pretended.dwMajorVersion;
    information->dwMinorVersion = pretended.dwMinorVersion;
    information->dwBuildNumber = pretended.dwBuildNumber;
    return TRUE;
}

} // namespace

void SetWindowsVersion(DWORD major, DWORD minor, DWORD build)
{
    pretended.dwMajorVersion = major;
    pretended.dwMinorVersion = minor;
    pretended.dwBuildNumber = build;
    originalVersion = ReplaceFunction("GetVersionExW", major ? &PretendedVersion : nullptr);
}

} // namespace tintwerk
