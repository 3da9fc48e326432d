// Creation and destruction of windows, and the relations between them.
#include "platform/headless/window.h"

#include <algorithm>

#include "platform/handles.h"
#include "platform/headless/hookable.h"

namespace tintwerk::headless {

namespace {

// Styles that the window manager adds or takes away by itself.
void SettleStyles(Window& window)
{
    if (!window.parent) {
        window.style |= WS_CLIPSIBLINGS;
        if (!(window.style & WS_POPUP)) window.style |= WS_CAPTION;
    }
    const bool raised =
        (window.exStyle & WS_EX_DLGMODALFRAME) ||
        (!(window.exStyle & WS_EX_STATICEDGE) && (window.style & (WS_DLGFRAME | WS_THICKFRAME)));
    window.exStyle = raised ? window.exStyle | WS_EX_WINDOWEDGE : window.exStyle & ~WS_EX_WINDOWEDGE;
}

void DestroyTree(HWND handle)
{
    // Children go after their parent's WM_DESTROY.
    SendMessageW(handle, WM_DESTROY, 0, 0);
    while (Window* const window = Peek(handle)) {
        if (window->children.empty()) break;
        window->children.front()->dying = true;
        DestroyTree(window->children.front()->handle);
    }
    if (Window* const window = Peek(handle)) {
        DropFromQueue(handle);
        ThreadState& thread = Thread();
        if (thread.focus == handle) thread.focus = nullptr;
        if (thread.active == handle) thread.active = nullptr;
        Leave(*window);
    }
}

void CollectDescendants(const Window& window, std::vector<HWND>& all)
{
    for (const Window* child : window.children) {
        all.push_back(child->handle);
        CollectDescendants(*child, all);
    }
}

std::vector<HWND> TopLevelWindows()
{
    std::vector<HWND> all;
    for (const Window* window : Thread().topLevel)
        all.push_back(window->handle);
    return all;
}

BOOL EnumerateHandles(const std::vector<HWND>& handles, WNDENUMPROC procedure, LPARAM lParam)
{
    for (const HWND handle : handles) {
        if (Peek(handle) && !procedure(handle, lParam)) return FALSE;
    }
    return TRUE;
}

HWND WINAPI MakeWindow(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int width,
                       int height, HWND parent, HMENU menuOrId, HINSTANCE module, LPVOID parameter)
{
    const WindowClass* const windowClass = className ? FindClass(className) : nullptr;
    if (!windowClass) return Refuse<HWND>(ERROR_CANNOT_FIND_WND_CLASS);
    const bool child = (style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
    if (child && !parent) return Refuse<HWND>(ERROR_TLW_WITH_WSCHILD);
    Window* const relative = parent ? Find(parent) : nullptr;
    if (parent && !relative) return nullptr;

    auto fresh = std::make_unique<Window>();
    fresh->windowClass = windowClass;
    fresh->procedure = windowClass->procedure;
    fresh->parent = child ? relative : nullptr;
    fresh->owner = child || !relative ? nullptr : RootOf(*relative).handle;
    fresh->place = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
    fresh->style = style & ~WS_VISIBLE;
    fresh->exStyle = exStyle;
    fresh->id = child ? reinterpret_cast<LONG_PTR>(menuOrId) : 0;
    fresh->bytes.resize(static_cast<std::size_t>(windowClass->windowBytes));
    SettleStyles(*fresh);
    Window* window = &Enter(std::move(fresh));
    const HWND handle = window->handle;
    std::vector<Window*>& siblings = SiblingsOf(*window);
    siblings.insert(child ? siblings.end() : siblings.begin(), window);

    CREATESTRUCTW creation{
        parameter, module,    menuOrId, parent, height, width, y, x, static_cast<LONG>(style),
        text,      className, exStyle};
    SendMessageW(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&creation));
    SendMessageW(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&creation));
    if (!(window = Peek(handle))) return nullptr;
    const RECT client = ClientOf(*window);
    SendMessageW(handle, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    if (style & WS_VISIBLE) ShowWindow(handle, SW_SHOW);
    return Peek(handle) ? handle : nullptr;
}

Hookable<MakeWindow> createWindow{"CreateWindowExW"};

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;
using tintwerk::Refuse;

HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menuOrId, HINSTANCE module,
                            LPVOID parameter)
{
    return createWindow(exStyle, className, text, style, x, y, width, height, parent, menuOrId, module,
                        parameter);
}

BOOL WINAPI DestroyWindow(HWND handle)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    if (window->dying) return TRUE;
    window->dying = true;
    if (window->parent)
        ShowWindow(handle, SW_HIDE);
    else
        window->style &= ~WS_VISIBLE;            // the focus goes with it
    for (const HWND other : TopLevelWindows()) { // owned windows go with their owner
        const Window* const owned = Peek(other);
        if (owned && owned->owner == handle) DestroyWindow(other);
    }
    if (Peek(handle)) DestroyTree(handle);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND window)
{
    return Peek(window) != nullptr;
}

int WINAPI GetClassNameW(HWND handle, LPWSTR name, int size)
{
    const Window* const window = Find(handle);
    if (!window || !name || size <= 0) return 0;
    lstrcpynW(name, window->windowClass->name, size);
    return lstrlenW(name);
}

HWND WINAPI GetParent(HWND handle)
{
    const Window* const window = Find(handle);
    if (!window) return nullptr;
    if (window->parent) return window->parent->handle;
    return window->style & WS_POPUP ? window->owner : nullptr;
}

// The root; nobody asks for another one.
HWND WINAPI GetAncestor(HWND handle, UINT)
{
    Window* const window = Find(handle);
    return window ? RootOf(*window).handle : nullptr;
}

HWND WINAPI GetDlgItem(HWND dialog, int id)
{
    const Window* const window = Find(dialog);
    if (!window) return nullptr;
    for (const Window* child : window->children) {
        if (static_cast<int>(child->id) == id) return child->handle;
    }
    return Refuse<HWND>(ERROR_CONTROL_ID_NOT_FOUND);
}

int WINAPI GetDlgCtrlID(HWND handle)
{
    const Window* const window = Find(handle);
    return window ? static_cast<int>(window->id) : 0;
}

BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC procedure, LPARAM lParam)
{
    const Window* const window = Find(parent);
    if (!window) return FALSE;
    std::vector<HWND> all;
    CollectDescendants(*window, all);
    return EnumerateHandles(all, procedure, lParam);
}

BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC procedure, LPARAM lParam)
{
    if (thread != GetCurrentThreadId()) return TRUE; // another thread's windows are not seen from here
    return EnumerateHandles(TopLevelWindows(), procedure, lParam);
}

// The first child of a class; the others are not asked for.
HWND WINAPI FindWindowExW(HWND parent, HWND, LPCWSTR className, LPCWSTR)
{
    const Window* const window = Find(parent);
    if (!window) return nullptr;
    for (const Window* child : window->children) {
        if (lstrcmpiW(child->windowClass->name, className) == 0) return child->handle;
    }
    return nullptr;
}
