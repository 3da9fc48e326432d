// Message boxes without a display: nobody can press a button, so the default one is pressed at once. Tests
// put their own function in their place and answer.
#include "platform/headless/hookable.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

int DefaultAnswer(UINT type)
{
    switch (type & 0xf) {
    case MB_ABORTRETRYIGNORE:
        return IDABORT;
    case MB_YESNO:
    case MB_YESNOCANCEL:
        return IDYES;
    case MB_RETRYCANCEL:
        return IDRETRY;
    default:
        return IDOK;
    }
}

int PressDefault(HWND owner, LPCWSTR, LPCWSTR, UINT type)
{
    return owner && !Find(owner) ? 0 : DefaultAnswer(type);
}

int PressDefaultNarrow(HWND owner, LPCSTR, LPCSTR, UINT type)
{
    return owner && !Find(owner) ? 0 : DefaultAnswer(type);
}

// A desk like a user's: boxes can be seen and answered.
BOOL AskVisibleStation(HANDLE, int kind, LPVOID information, DWORD size, LPDWORD)
{
    if (kind != UOI_FLAGS || size < sizeof(USEROBJECTFLAGS)) return FALSE;
    *static_cast<USEROBJECTFLAGS*>(information) = {FALSE, FALSE, WSF_VISIBLE};
    return TRUE;
}

Hookable<AskVisibleStation> getUserObjectInformationW{"GetUserObjectInformationW"};
Hookable<PressDefault> messageBoxW{"MessageBoxW"};
Hookable<PressDefaultNarrow> messageBoxA{"MessageBoxA"};

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    return messageBoxW(owner, text, caption, type);
}

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    return messageBoxA(owner, text, caption, type);
}

BOOL WINAPI MessageBeep(UINT)
{
    return TRUE;
}

HWINSTA WINAPI GetProcessWindowStation()
{
    return reinterpret_cast<HWINSTA>(static_cast<LONG_PTR>(1)); // there is one
}

BOOL WINAPI GetUserObjectInformationW(HANDLE object, int kind, LPVOID information, DWORD size, LPDWORD needed)
{
    return getUserObjectInformationW(object, kind, information, size, needed);
}
