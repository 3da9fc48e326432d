// What tests see of this process on the headless platform, where bytes are those of live blocks, and windows
// that fail for them.
#include "tests/support/testing.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

#include "platform/function_hook.h"

// Of the address sanitizer, whose blocks the system's allocator does not see.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace tintwerk {

ProcessUse UseOfProcess()
{
    ProcessUse use{};
    use.gdiObjects = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    use.windows = use.userObjects =
        static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)); // windows are all there is
    use.handles = static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
    use.bytes = static_cast<long long>(__sanitizer_get_current_allocated_bytes
                                           ? __sanitizer_get_current_allocated_bytes()
                                           : mallinfo2().uordblks);
    return use;
}

bool HeapsAreSound()
{
    return true;
}

namespace {

CallCount windows;
decltype(&CreateWindowExW) create = nullptr;

HWND WINAPI WatchedCreate(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menuOrId, HINSTANCE module,
                          LPVOID parameter)
{
    if (windows.NextFails()) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return create(exStyle, className, text, style, x, y, width, height, parent, menuOrId, module, parameter);
}

} // namespace

WindowWatch::WindowWatch() : CallWatch(windows)
{
    create = ReplaceFunction("CreateWindowExW", &WatchedCreate);
}

WindowWatch::~WindowWatch()
{
    RestoreFunction("CreateWindowExW");
}

} // namespace tintwerk
