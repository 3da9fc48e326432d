// Which windows want painting, and the pixel surface that a window's device context paints on.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

bool TakesChildrenAlong(const Window& window, UINT flags)
{
    if (flags & RDW_ALLCHILDREN) return true;
    return !(flags & RDW_NOCHILDREN) && !(window.style & WS_CLIPCHILDREN);
}

void Validate(Window& window, bool withChildren)
{
    window.dirty = false;
    if (!withChildren) return;
    for (Window* child : window.children)
        Validate(*child, true);
}

} // namespace

void Invalidate(Window& window, bool withChildren)
{
    if (!(window.style & WS_VISIBLE)) return;
    window.dirty = true;
    if (!withChildren) return;
    for (Window* child : window.children)
        Invalidate(*child, true);
}

void PaintNow(HWND handle, bool withChildren)
{
    const Window* window = Peek(handle);
    if (!window || !IsShown(*window)) return;
    if (window->dirty) {
        SendMessageW(handle, WM_PAINT, 0, 0);
        if (Window* const still = Peek(handle)) still->dirty = false;
    }
    if (!withChildren || !(window = Peek(handle))) return;
    std::vector<HWND> children;
    for (const Window* child : window->children)
        children.push_back(child->handle);
    for (const HWND child : children)
        PaintNow(child, true);
}

void ReleaseSurface(Window& window)
{
    if (window.surface) DeleteObject(std::exchange(window.surface, nullptr));
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

BOOL WINAPI InvalidateRect(HWND handle, const RECT*, BOOL)
{
    Window* const window = handle ? Find(handle) : &Desktop();
    if (!window) return FALSE;
    if (IsShown(*window)) Invalidate(*window, TakesChildrenAlong(*window, 0));
    return TRUE;
}

BOOL WINAPI ValidateRect(HWND handle, const RECT*)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    window->dirty = false;
    return TRUE;
}

BOOL WINAPI UpdateWindow(HWND handle)
{
    const Window* const window = Find(handle);
    if (!window) return FALSE;
    PaintNow(handle, TakesChildrenAlong(*window, 0));
    return TRUE;
}

BOOL WINAPI RedrawWindow(HWND handle, const RECT*, HRGN, UINT flags)
{
    Window* const window = handle ? Find(handle) : &Desktop();
    if (!window) return FALSE;
    const bool children = TakesChildrenAlong(*window, flags);
    if ((flags & (RDW_INVALIDATE | RDW_INTERNALPAINT)) && IsShown(*window)) Invalidate(*window, children);
    if (flags & RDW_VALIDATE) Validate(*window, children);
    if (flags & RDW_UPDATENOW) PaintNow(window->handle, children);
    return TRUE;
}

HDC WINAPI BeginPaint(HWND handle, PAINTSTRUCT* paint)
{
    Window* const window = Find(handle);
    if (!window || !paint) return nullptr;
    *paint = {};
    window->dirty = false;
    paint->hdc = GetDC(handle);
    paint->rcPaint = ClientOf(*window);
    return paint->hdc;
}

BOOL WINAPI EndPaint(HWND handle, const PAINTSTRUCT* paint)
{
    return paint && ReleaseDC(handle, paint->hdc);
}
