// Where windows go, whether they show, take input and have the focus; scroll bars; rectangles.
#include <algorithm>
#include <cstring>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

void BringToFront(Window& window)
{
    std::vector<Window*>& siblings = SiblingsOf(window);
    std::erase(siblings, &window);
    siblings.insert(siblings.begin(), &window);
}

bool TakesInput(const Window& window)
{
    for (const Window* level = &window; level; level = level->parent) {
        if (level->style & WS_DISABLED) return false;
    }
    return true;
}

void Activate(HWND handle)
{
    ThreadState& thread = Thread();
    if (thread.active == handle) return;
    const HWND previous = std::exchange(thread.active, handle);
    if (Peek(previous)) SendMessageW(previous, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(handle));
    if (Peek(handle)) SendMessageW(handle, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(previous));
}

void MoveFocusAway(const Window& window)
{
    const Window* const focused = Peek(Thread().focus);
    if (!focused || !IsSelfOrDescendant(focused, window)) return;
    SetFocus(window.parent ? window.parent->handle : nullptr);
}

constexpr UINT kPlaceKept = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

BOOL WINAPI ShowWindow(HWND handle, int command)
{
    const Window* const window = Find(handle);
    if (!window) return FALSE;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    const bool show = command != SW_HIDE;
    if (wasVisible == show) return wasVisible;
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 kPlaceKept | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW | SWP_NOACTIVATE));
    if (const Window* const still = Peek(handle); still && !show) MoveFocusAway(*still);
    return wasVisible;
}

BOOL WINAPI IsWindowVisible(HWND handle)
{
    const Window* const window = Find(handle);
    return window && IsShown(*window);
}

BOOL WINAPI EnableWindow(HWND handle, BOOL enable)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    if (wasDisabled == !enable) return wasDisabled;
    window->style ^= WS_DISABLED;
    if (!enable && Thread().focus == handle) SetFocus(nullptr);
    SendMessageW(handle, WM_ENABLE, enable != FALSE, 0);
    return wasDisabled;
}

BOOL WINAPI IsWindowEnabled(HWND handle)
{
    const Window* const window = Find(handle);
    return window && !(window->style & WS_DISABLED);
}

HWND WINAPI SetFocus(HWND handle)
{
    ThreadState& thread = Thread();
    const HWND previous = thread.focus;
    if (handle) {
        Window* const window = Find(handle);
        if (!window || !TakesInput(*window)) return nullptr;
        if (previous == handle) return previous;
        Activate(RootOf(*window).handle);
        if (!Peek(handle)) return nullptr;
        if (thread.focus == handle) return previous;
    }
    const HWND current = std::exchange(thread.focus, handle);
    if (Peek(current)) SendMessageW(current, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    if (handle && thread.focus == handle && Peek(handle))
        SendMessageW(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(current), 0);
    return previous;
}

HWND WINAPI GetFocus()
{
    return Thread().focus;
}

BOOL WINAPI SetForegroundWindow(HWND handle)
{
    if (!Find(handle)) return FALSE;
    Activate(handle);
    return TRUE;
}

BOOL WINAPI SetWindowPos(HWND handle, HWND, int x, int y, int width, int height, UINT flags)
{
    Window* window = Find(handle);
    if (!window) return FALSE;
    const RECT before = window->place;
    if (!(flags & SWP_NOZORDER)) BringToFront(*window); // nobody asks for another place
    if (flags & SWP_NOMOVE) {
        x = before.left;
        y = before.top;
    }
    if (flags & SWP_NOSIZE) {
        width = window->Width();
        height = window->Height();
    }
    window->place = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
    if (flags & SWP_SHOWWINDOW) window->style |= WS_VISIBLE;
    if (flags & SWP_HIDEWINDOW) window->style &= ~WS_VISIBLE;
    if (!(flags & SWP_NOREDRAW) && IsShown(*window) &&
        (std::memcmp(&before, &window->place, sizeof before) != 0 || (flags & SWP_SHOWWINDOW)))
        Invalidate(*window);
    if (window->Width() != before.right - before.left || window->Height() != before.bottom - before.top) {
        const RECT client = ClientOf(*window);
        SendMessageW(handle, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
    }
    window = Peek(handle);
    if (window && !(flags & SWP_NOACTIVATE) && !window->parent && (window->style & WS_VISIBLE))
        Activate(handle);
    return TRUE;
}

BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint)
{
    return SetWindowPos(window, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0 : SWP_NOREDRAW));
}

BOOL WINAPI GetWindowRect(HWND handle, LPRECT rectangle)
{
    const Window* const window = Find(handle);
    if (!window || !rectangle) return FALSE;
    *rectangle = OnScreen(*window);
    return TRUE;
}

BOOL WINAPI GetClientRect(HWND handle, LPRECT rectangle)
{
    const Window* const window = Find(handle);
    if (!window || !rectangle) return FALSE;
    *rectangle = ClientOf(*window);
    return TRUE;
}

int WINAPI MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count)
{
    POINT shift{0, 0};
    for (const auto& [handle, sign] : {std::pair{from, 1}, {to, -1}}) {
        if (!handle) continue;
        const Window* const window = Find(handle);
        if (!window) return 0;
        const POINT origin = ClientOriginOnScreen(*window);
        shift = {shift.x + sign * origin.x, shift.y + sign * origin.y};
    }
    for (UINT i = 0; i < count; ++i) {
        points[i].x += shift.x;
        points[i].y += shift.y;
    }
    return MAKELONG(shift.x, shift.y);
}

// Nothing is drawn of a scroll bar, and nobody drags it.
int WINAPI SetScrollInfo(HWND handle, int bar, const SCROLLINFO* info, BOOL)
{
    return bar == SB_VERT && Find(handle) && info ? info->nPos : 0;
}
