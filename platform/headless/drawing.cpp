// Device contexts, brushes, bitmaps. All threads share them, as on the real platform; a device context is
// used by one thread at a time.
#include "platform/headless/drawing.h"

#include "platform/handles.h"
#include "platform/headless/hookable.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct GdiObject
{
    UINT kind;
    COLORREF color{}; // of a brush
    SIZE size{};      // of a bitmap
};

struct DeviceContext
{
    HGDIOBJ brush;
};

struct Drawing
{
    HandleTable<GdiObject> objects;
    HandleTable<DeviceContext> contexts;
    // Those of the system, which are no program's own.
    const HGDIOBJ white = EnterBrush(RGB(255, 255, 255));
    const HGDIOBJ face = EnterBrush(RGB(245, 245, 245));
    const std::size_t ownObjects = objects.Count();

    HGDIOBJ EnterBrush(COLORREF color)
    {
        return objects.Open(std::make_shared<GdiObject>(GdiObject{OBJ_BRUSH, color}));
    }
};

Drawing& Gdi()
{
    // Never destroyed: programs give their objects back as late as in destructors of their own static
    // objects.
    static Drawing& drawing = *new Drawing;
    return drawing;
}

std::shared_ptr<GdiObject> FindObject(HGDIOBJ handle, UINT kind)
{
    const std::shared_ptr<GdiObject> object = Gdi().objects.Get(handle);
    return object && object->kind == kind ? object : nullptr;
}

BOOL PaintRound(HDC dc, int, int, int, int, int, int)
{
    return Gdi().contexts.Get(dc) != nullptr;
}

int PaintFilled(HDC dc, const RECT*, HBRUSH brush)
{
    return Gdi().contexts.Get(dc) && FindObject(brush, OBJ_BRUSH);
}

Hookable<PaintRound> roundRect{"RoundRect"};
Hookable<PaintFilled> fillRect{"FillRect"};

} // namespace

HBITMAP EnterBitmap(SIZE size)
{
    return static_cast<HBITMAP>(
        Gdi().objects.Open(std::make_shared<GdiObject>(GdiObject{OBJ_BITMAP, 0, size})));
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HDC WINAPI CreateCompatibleDC(HDC)
{
    const HGDIOBJ white = Gdi().white;
    return static_cast<HDC>(Gdi().contexts.Open(std::make_shared<DeviceContext>(DeviceContext{white})));
}

BOOL WINAPI DeleteDC(HDC dc)
{
    return Gdi().contexts.Close(dc);
}

HBRUSH WINAPI CreateSolidBrush(COLORREF color)
{
    return static_cast<HBRUSH>(Gdi().EnterBrush(color));
}

HBRUSH WINAPI GetSysColorBrush(int index)
{
    return index == COLOR_BTNFACE ? static_cast<HBRUSH>(Gdi().face) : nullptr;
}

// Device contexts take brushes only.
HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ handle)
{
    const auto context = Gdi().contexts.Get(dc);
    if (!context || !FindObject(handle, OBJ_BRUSH)) return nullptr;
    return std::exchange(context->brush, handle);
}

int WINAPI GetObjectW(HGDIOBJ handle, int size, LPVOID buffer)
{
    const auto object = Gdi().objects.Get(handle);
    const bool isBrush = object && object->kind == OBJ_BRUSH;
    const int needed = isBrush ? sizeof(LOGBRUSH) : sizeof(BITMAP);
    if (!object || size < needed || !buffer) return 0;
    if (isBrush)
        *static_cast<LOGBRUSH*>(buffer) = {BS_SOLID, object->color, 0};
    else
        *static_cast<BITMAP*>(buffer) = {0, object->size.cx, object->size.cy, 0, 1, 32, nullptr};
    return needed;
}

BOOL WINAPI DeleteObject(HGDIOBJ handle)
{
    return handle == Gdi().white || handle == Gdi().face || Gdi().objects.Close(handle);
}

BOOL WINAPI RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height)
{
    return roundRect(dc, left, top, right, bottom, width, height);
}

int WINAPI FillRect(HDC dc, const RECT* rectangle, HBRUSH brush)
{
    return fillRect(dc, rectangle, brush);
}

DWORD WINAPI GetGuiResources(HANDLE, DWORD kind)
{
    if (kind == GR_USEROBJECTS) return WindowCount();
    return static_cast<DWORD>(Gdi().objects.Count() - Gdi().ownObjects + Gdi().contexts.Count());
}
