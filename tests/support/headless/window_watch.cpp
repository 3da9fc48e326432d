// Windows that fail for tests, on the headless platform.
#include "platform/function_hook.h"
#include "tests/support/testing.h"

namespace tintwerk {

namespace {

int windows = 0;
int failing = 0; // the number of a window
decltype(&CreateWindowExW) create = nullptr;

HWND WINAPI WatchedCreate(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menuOrId, HINSTANCE module,
                          LPVOID parameter)
{
    if (++windows == failing) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return create(exStyle, className, text, style, x, y, width, height, parent, menuOrId, module, parameter);
}

} // namespace

WindowWatch::WindowWatch()
{
    windows = failing = 0;
    create = ReplaceFunction("CreateWindowExW", &WatchedCreate);
}

WindowWatch::~WindowWatch()
{
    RestoreFunction("CreateWindowExW");
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
