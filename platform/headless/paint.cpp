// Which windows want painting, and the painting itself.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

bool TakesChildrenAlong(const Window& window)
{
    return !(window.style & WS_CLIPCHILDREN);
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

} // namespace

void Invalidate(Window& window, bool withChildren)
{
    if (!(window.style & WS_VISIBLE)) return;
    window.dirty = true;
    if (!withChildren) return;
    for (Window* child : window.children)
        Invalidate(*child, true);
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

BOOL WINAPI InvalidateRect(HWND handle, const RECT*, BOOL)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    if (IsShown(*window)) Invalidate(*window, TakesChildrenAlong(*window));
    return TRUE;
}

BOOL WINAPI UpdateWindow(HWND handle)
{
    const Window* const window = Find(handle);
    if (!window) return FALSE;
    PaintNow(handle, TakesChildrenAlong(*window));
    return TRUE;
}

HDC WINAPI BeginPaint(HWND handle, PAINTSTRUCT* paint)
{
    Window* const window = Find(handle);
    if (!window || !paint) return nullptr;
    *paint = {};
    window->dirty = false;
    paint->hdc = CreateCompatibleDC(nullptr);
    paint->rcPaint = ClientOf(*window);
    return paint->hdc;
}

BOOL WINAPI EndPaint(HWND, const PAINTSTRUCT* paint)
{
    return paint && DeleteDC(paint->hdc);
}
