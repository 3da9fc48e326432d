// Where windows are, whether they show, take input and have the focus; and rectangles.
#include "platform/headless/window.h"

#include <algorithm>

namespace tintwerk::headless {

namespace {

bool HasCaption(DWORD style)
{
    return (style & WS_CAPTION) == WS_CAPTION;
}

// Puts a window behind another one of its siblings, or first or last among them.
void Reorder(Window& window, HWND after)
{
    std::vector<Window*>& siblings = window.parent->children;
    if (after == HWND_NOTOPMOST) return;
    if (after == window.handle) return;
    Window* const sibling =
        after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST ? nullptr : Peek(after);
    std::erase(siblings, &window);
    if (after == HWND_BOTTOM) {
        siblings.push_back(&window);
        return;
    }
    const auto place = std::ranges::find(siblings, sibling);
    siblings.insert(place == siblings.end() ? siblings.begin() : place + 1, &window);
}

bool CanHaveFocus(const Window& window)
{
    for (const Window* level = &window; level && level->parent; level = level->parent) {
        if (level->style & (WS_DISABLED | WS_MINIMIZE)) return false;
    }
    return true;
}

void Activate(HWND handle)
{
    ThreadState& thread = Thread();
    if (thread.active == handle) return;
    const HWND previous = thread.active;
    if (Peek(previous)) SendMessageW(previous, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(handle));
    thread.active = handle;
    if (Peek(handle)) SendMessageW(handle, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(previous));
}

void TellMoved(HWND handle, const RECT& before, UINT flags)
{
    const Window* const window = Peek(handle);
    if (!window) return;
    WINDOWPOS position{handle,           nullptr, window->place.left, window->place.top, window->Width(),
                       window->Height(), flags};
    if (before.left == window->place.left && before.top == window->place.top) position.flags |= SWP_NOMOVE;
    if (before.right - before.left == position.cx && before.bottom - before.top == position.cy)
        position.flags |= SWP_NOSIZE;
    SendMessageW(handle, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
}

} // namespace

RECT FrameOf(DWORD style, DWORD exStyle)
{
    int edge = 0;
    if ((exStyle & (WS_EX_STATICEDGE | WS_EX_DLGMODALFRAME)) == WS_EX_STATICEDGE)
        edge = 1;
    else if ((exStyle & WS_EX_DLGMODALFRAME) || (style & (WS_THICKFRAME | WS_DLGFRAME)))
        edge = 2;
    if (style & WS_THICKFRAME) ++edge;
    if ((style & (WS_BORDER | WS_DLGFRAME)) || (exStyle & WS_EX_DLGMODALFRAME)) ++edge;
    RECT frame{edge, edge, edge, edge};
    if (HasCaption(style)) frame.top += kCaptionHeight;
    if (exStyle & WS_EX_CLIENTEDGE) {
        for (LONG* side : {&frame.left, &frame.top, &frame.right, &frame.bottom})
            *side += 2;
    }
    return frame;
}

RECT ClientOf(const Window& window)
{
    RECT frame = FrameOf(window.style, window.exStyle);
    if (window.style & WS_VSCROLL) frame.right += kScrollBarWidth;
    if (window.style & WS_HSCROLL) frame.bottom += kScrollBarWidth;
    return {0, 0, std::max<LONG>(window.Width() - frame.left - frame.right, 0),
            std::max<LONG>(window.Height() - frame.top - frame.bottom, 0)};
}

POINT ClientOriginOnScreen(const Window& window)
{
    POINT origin{0, 0};
    for (const Window* level = &window; level; level = level->parent) {
        const RECT frame = level->parent ? FrameOf(level->style, level->exStyle) : RECT{};
        origin.x += level->place.left + frame.left;
        origin.y += level->place.top + frame.top;
    }
    return origin;
}

RECT OnScreen(const Window& window)
{
    const POINT origin = window.parent ? ClientOriginOnScreen(*window.parent) : POINT{0, 0};
    return {window.place.left + origin.x, window.place.top + origin.y, window.place.right + origin.x,
            window.place.bottom + origin.y};
}

bool IsShown(const Window& window)
{
    for (const Window* level = &window; level; level = level->parent) {
        if (!(level->style & WS_VISIBLE)) return false;
    }
    return true;
}

void MoveFocusAway(Window& window)
{
    const Window* const focused = Peek(Thread().focus);
    if (!focused || !IsSelfOrDescendant(focused, window)) return;
    SetFocus(window.parent == &Desktop() ? nullptr : window.parent->handle);
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

BOOL WINAPI ShowWindow(HWND handle, int command)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    const bool show = command != SW_HIDE;
    if (wasVisible == show) return wasVisible;
    SendMessageW(handle, WM_SHOWWINDOW, show, 0);
    if (!Peek(handle)) return wasVisible;
    const bool activate = show && !window->IsChild() && command != SW_SHOWNA && command != SW_SHOWNOACTIVATE;
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | (activate ? 0 : SWP_NOACTIVATE) |
                     (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    if (Window* const still = Peek(handle); still && !show) MoveFocusAway(*still);
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
    if (enable) {
        window->style &= ~WS_DISABLED;
    } else {
        SendMessageW(handle, WM_CANCELMODE, 0, 0);
        if (!Peek(handle)) return wasDisabled;
        window->style |= WS_DISABLED;
        if (Thread().focus == handle) SetFocus(nullptr);
    }
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
        if (!window || !CanHaveFocus(*window)) return nullptr;
        if (previous == handle) return previous;
        Activate(RootOf(*window)->handle);
        if (!Peek(handle)) return nullptr;
        if (thread.focus == handle) return previous;
    }
    const HWND current = thread.focus;
    thread.focus = handle;
    if (Peek(current)) SendMessageW(current, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    if (handle && thread.focus == handle && Peek(handle))
        SendMessageW(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(current), 0);
    return previous;
}

HWND WINAPI GetFocus()
{
    return Thread().focus;
}

HWND WINAPI GetActiveWindow()
{
    return Thread().active;
}

HWND WINAPI SetActiveWindow(HWND handle)
{
    const HWND previous = Thread().active;
    if (handle && !Find(handle)) return nullptr;
    Activate(handle);
    return previous;
}

HWND WINAPI GetForegroundWindow()
{
    return Thread().active;
}

BOOL WINAPI SetForegroundWindow(HWND handle)
{
    if (!Find(handle)) return FALSE;
    Activate(handle);
    return TRUE;
}

BOOL WINAPI SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags)
{
    Window* const window = Find(handle);
    if (!window || window == &Desktop()) return FALSE;
    const RECT before = window->place;
    if (!(flags & SWP_NOZORDER)) Reorder(*window, after);
    RECT& place = window->place;
    if (flags & SWP_NOMOVE) {
        x = before.left;
        y = before.top;
    }
    if (flags & SWP_NOSIZE) {
        width = window->Width();
        height = window->Height();
    }
    place = {x, y, x + std::max(width, 0), y + std::max(height, 0)};
    if (flags & SWP_SHOWWINDOW) window->style |= WS_VISIBLE;
    if (flags & SWP_HIDEWINDOW) window->style &= ~WS_VISIBLE;
    if (!(flags & SWP_NOREDRAW) && IsShown(*window) &&
        (!EqualRect(&before, &place) || (flags & SWP_SHOWWINDOW)))
        Invalidate(*window, true);
    TellMoved(handle, before, flags);
    if (!(flags & SWP_NOACTIVATE) && Peek(handle) && !window->IsChild() && (window->style & WS_VISIBLE))
        Activate(handle);
    return TRUE;
}

BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint)
{
    return SetWindowPos(window, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0 : SWP_NOREDRAW));
}

BOOL WINAPI BringWindowToTop(HWND window)
{
    return SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
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
    *rectangle = window == &Desktop() ? window->place : ClientOf(*window);
    return TRUE;
}

int WINAPI MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count)
{
    POINT shift{0, 0};
    if (from) {
        const Window* const window = Find(from);
        if (!window) return 0;
        shift = ClientOriginOnScreen(*window);
    }
    if (to) {
        const Window* const window = Find(to);
        if (!window) return 0;
        const POINT origin = ClientOriginOnScreen(*window);
        shift = {shift.x - origin.x, shift.y - origin.y};
    }
    for (UINT i = 0; i < count; ++i) {
        points[i].x += shift.x;
        points[i].y += shift.y;
    }
    return MAKELONG(shift.x, shift.y);
}

BOOL WINAPI ClientToScreen(HWND window, LPPOINT point)
{
    if (!Find(window)) return FALSE;
    MapWindowPoints(window, nullptr, point, 1);
    return TRUE;
}

BOOL WINAPI ScreenToClient(HWND window, LPPOINT point)
{
    if (!Find(window)) return FALSE;
    MapWindowPoints(nullptr, window, point, 1);
    return TRUE;
}

BOOL WINAPI AdjustWindowRectEx(LPRECT rectangle, DWORD style, BOOL, DWORD exStyle)
{
    const RECT frame = FrameOf(style, exStyle);
    rectangle->left -= frame.left;
    rectangle->top -= frame.top;
    rectangle->right += frame.right;
    rectangle->bottom += frame.bottom;
    return TRUE;
}

BOOL WINAPI SetRect(LPRECT rectangle, int left, int top, int right, int bottom)
{
    if (!rectangle) return FALSE;
    *rectangle = {left, top, right, bottom};
    return TRUE;
}

BOOL WINAPI IsRectEmpty(const RECT* rectangle)
{
    return !rectangle || rectangle->left >= rectangle->right || rectangle->top >= rectangle->bottom;
}

BOOL WINAPI PtInRect(const RECT* rectangle, POINT point)
{
    return rectangle && point.x >= rectangle->left && point.x < rectangle->right &&
           point.y >= rectangle->top && point.y < rectangle->bottom;
}

BOOL WINAPI OffsetRect(LPRECT rectangle, int x, int y)
{
    if (!rectangle) return FALSE;
    *rectangle = {rectangle->left + x, rectangle->top + y, rectangle->right + x, rectangle->bottom + y};
    return TRUE;
}

BOOL WINAPI InflateRect(LPRECT rectangle, int x, int y)
{
    if (!rectangle) return FALSE;
    *rectangle = {rectangle->left - x, rectangle->top - y, rectangle->right + x, rectangle->bottom + y};
    return TRUE;
}

BOOL WINAPI EqualRect(const RECT* a, const RECT* b)
{
    return a && b && a->left == b->left && a->top == b->top && a->right == b->right && a->bottom == b->bottom;
}

int WINAPI GetSystemMetrics(int index)
{
    switch (index) {
    case SM_CXSCREEN:
        return kScreenWidth;
    case SM_CYSCREEN:
        return kScreenHeight;
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
        return kScrollBarWidth;
    case SM_CYCAPTION:
        return kCaptionHeight;
    case SM_CXBORDER:
    case SM_CYBORDER:
        return 1;
    case SM_CXEDGE:
    case SM_CYEDGE:
        return 2;
    case SM_CXFIXEDFRAME:
    case SM_CYFIXEDFRAME:
        return 3;
    case SM_CXFRAME:
    case SM_CYFRAME:
        return 4;
    case SM_CXICON:
    case SM_CYICON:
        return 32;
    case SM_CXSMICON:
    case SM_CYSMICON:
        return 16;
    default:
        return 0;
    }
}
