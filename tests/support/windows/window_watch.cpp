// Windows that fail for tests: the system asks a hook of the thread before it makes one, whichever library
// wants it.
#include "tests/support/testing.h"

namespace tintwerk {

namespace {

int windows = 0;
int failing = 0; // the number of a window
HHOOK hook = nullptr;

LRESULT CALLBACK OnCreation(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND && ++windows == failing) return 1;
    return CallNextHookEx(hook, code, wParam, lParam);
}

} // namespace

WindowWatch::WindowWatch()
{
    windows = failing = 0;
    hook = SetWindowsHookExW(WH_CBT, OnCreation, nullptr, GetCurrentThreadId());
}

WindowWatch::~WindowWatch()
{
    UnhookWindowsHookEx(hook);
}

void WindowWatch::FailWindow(int nth)
{
    failing = windows + nth;
}

int WindowWatch::Windows() const
{
    return windows;
}

} // namespace tintwerk
