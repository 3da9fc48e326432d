// Message boxes without a display: nobody can press a button, so OK is pressed at once. The host and the
// tests put their own function in its place and answer.
#include "platform/headless/hookable.h"
#include "platform/win32.h"

namespace {

using tintwerk::headless::Hookable;

int PressOk(HWND, LPCWSTR, LPCWSTR, UINT)
{
    return IDOK;
}

// A desk like a user's: boxes can be seen and answered.
BOOL AskVisibleStation(HANDLE, int kind, LPVOID information, DWORD size, LPDWORD)
{
    if (kind != UOI_FLAGS || size < sizeof(USEROBJECTFLAGS)) return FALSE;
    *static_cast<USEROBJECTFLAGS*>(information) = {FALSE, FALSE, WSF_VISIBLE};
    return TRUE;
}

Hookable<PressOk> messageBox{"MessageBoxW"};
Hookable<AskVisibleStation> getUserObjectInformation{"GetUserObjectInformationW"};

} // namespace

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    return messageBox(owner, text, caption, type);
}

HWINSTA WINAPI GetProcessWindowStation()
{
    return reinterpret_cast<HWINSTA>(static_cast<LONG_PTR>(1)); // there is one
}

BOOL WINAPI GetUserObjectInformationW(HANDLE object, int kind, LPVOID information, DWORD size, LPDWORD needed)
{
    return getUserObjectInformation(object, kind, information, size, needed);
}
