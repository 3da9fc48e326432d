// What tests see of this process on Windows, and windows that fail for them: the system asks a hook of the
// thread before it makes one, whichever library wants it.
#include "tests/support/testing.h"

#include <algorithm>
#include <vector>

namespace tintwerk {

namespace {

BOOL CALLBACK CountWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count)
{
    EnumChildWindows(window, CountWindow, count);
    return CountWindow(window, count);
}

// The system's count; Wine's is always 0, and what can still be made until no more fits tells as much.
template <typename Make, typename Delete> int Objects(DWORD kind, Make make, Delete end)
{
    const DWORD told = GetGuiResources(GetCurrentProcess(), kind);
    if (told > 0) return static_cast<int>(told);
    std::vector<decltype(make())> objects;
    while (const auto object = make())
        objects.push_back(object);
    for (const auto object : objects)
        end(object);
    return 0x10000 - static_cast<int>(objects.size());
}

int OpenHandles()
{
    int open = 0;
    for (ULONG_PTR value = 4; value < 0x10000; value += 4) {
        DWORD flags = 0;
        open += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
    }
    return open;
}

// The runtime library's heap is one of them.
long long BytesInHeaps()
{
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    long long bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY block{};
        while (HeapWalk(heaps[i], &block))
            if (block.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += block.cbData;
    }
    return bytes;
}

} // namespace

ProcessUse UseOfProcess()
{
    ProcessUse use{};
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&use.windows));
    use.gdiObjects = Objects(
        GR_GDIOBJECTS, [] { return CreateSolidBrush(0); }, DeleteObject);
    use.userObjects = Objects(GR_USEROBJECTS, CreateMenu, DestroyMenu);
    use.handles = OpenHandles();
    use.bytes = BytesInHeaps();
    return use;
}

bool HeapsAreSound()
{
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    return std::all_of(heaps, heaps + count, [](HANDLE heap) { return HeapValidate(heap, 0, nullptr); });
}

namespace {

CallCount windows;
HHOOK hook = nullptr;

LRESULT CALLBACK OnCreation(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND && windows.NextFails()) return 1;
    return CallNextHookEx(hook, code, wParam, lParam);
}

} // namespace

WindowWatch::WindowWatch() : CallWatch(windows)
{
    hook = SetWindowsHookExW(WH_CBT, OnCreation, nullptr, GetCurrentThreadId());
}

WindowWatch::~WindowWatch()
{
    UnhookWindowsHookEx(hook);
}

} // namespace tintwerk
