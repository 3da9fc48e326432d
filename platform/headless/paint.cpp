// Which windows want painting, and the painting itself.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

void PaintNow(HWND handle)
{
    const Window* window = Peek(handle);
    if (!window || !IsShown(*window)) return;
    if (window->dirty) {
        SendMessageW(handle, WM_PAINT, 0, 0);
        if (Window* const still = Peek(handle)) still->dirty = false;
    }
    if (!(window = Peek(handle))) return;
    std::vector<HWND> children;
    for (const Window* child : window->children)
        children.push_back(child->handle);
    for (const HWND child : children)
        PaintNow(child);
}

} // namespace

void Invalidate(Window& window)
{
    if (!(window.style & WS_VISIBLE)) return;
    window.dirty = true;
    for (Window* child : window.children)
        Invalidate(*child);
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

BOOL WINAPI InvalidateRect(HWND handle, const RECT*, BOOL)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    if (IsShown(*window)) Invalidate(*window);
    return TRUE;
}

BOOL WINAPI UpdateWindow(HWND handle)
{
    if (!Find(handle)) return FALSE;
    PaintNow(handle);
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
