#include "platform/environment.h"

#include "platform/function_hook.h"

namespace tintwerk {

namespace {

OSVERSIONINFOW pretended;
decltype(&GetVersionExW) originalVersion;

BOOL WINAPI PretendedVersion(LPOSVERSIONINFOW information)
{
    if (!originalVersion(information)) return FALSE;
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
