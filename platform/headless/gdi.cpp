// Device contexts, drawing objects and the few shapes that are painted. All threads share the objects, as on
// the real platform; a device context is used by one thread at a time.
#include "platform/headless/gdi_objects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <mutex>

#include "platform/headless/hookable.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct Object
{
    UINT kind = 0;
    COLORREF color = 0; // of brushes and pens
    bool hollow = false;
    bool stock = false;
    bool deleted = false; // goes when it is selected nowhere any more
    int selections = 0;
    LOGFONTW font{};
    std::unique_ptr<Surface> surface;
};

struct DeviceContext
{
    HBITMAP bitmap = nullptr;
    HBRUSH brush = nullptr;
    HPEN pen = nullptr;
    HFONT font = nullptr;
    HWND window = nullptr; // whose surface it paints on
    COLORREF textColor = 0;
    COLORREF backColor = RGB(255, 255, 255);
    int backMode = OPAQUE;
};

template <typename Record> class Table
{
public:
    explicit Table(UINT_PTR tag) : tag_(tag) {}

    UINT_PTR Enter(std::unique_ptr<Record> record)
    {
        std::size_t slot = 0;
        while (slot < slots_.size() && slots_[slot].record)
            ++slot;
        if (slot == slots_.size()) slots_.emplace_back();
        slots_[slot].record = std::move(record);
        slots_[slot].generation = ++generation_ % 0x7f + 1;
        return Key(slot);
    }
    Record* Find(const void* handle) const
    {
        const auto key = reinterpret_cast<UINT_PTR>(handle);
        const std::size_t slot = key & 0x3fff;
        return slot < slots_.size() && slots_[slot].record && Key(slot) == key ? slots_[slot].record.get()
                                                                               : nullptr;
    }
    void Leave(const void* handle) { slots_[reinterpret_cast<UINT_PTR>(handle) & 0x3fff].record.reset(); }
    std::size_t Count() const
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(slots_, [](const auto& slot) { return slot.record != nullptr; }));
    }
    template <typename Visit> void ForEach(Visit visit)
    {
        for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
            if (slots_[slot].record) visit(*slots_[slot].record);
        }
    }

private:
    struct Slot
    {
        std::unique_ptr<Record> record;
        UINT_PTR generation = 0;
    };
    UINT_PTR Key(std::size_t slot) const { return slots_[slot].generation << 24 | tag_ << 16 | slot; }

    UINT_PTR tag_;
    UINT_PTR generation_ = 0;
    std::vector<Slot> slots_;
};

constexpr std::array<int, 11> kStock{WHITE_BRUSH, LTGRAY_BRUSH, GRAY_BRUSH,      DKGRAY_BRUSH,
                                     BLACK_BRUSH, NULL_BRUSH,   WHITE_PEN,       BLACK_PEN,
                                     NULL_PEN,    SYSTEM_FONT,  DEFAULT_GUI_FONT};

struct Drawing
{
    std::recursive_mutex mutex;
    Table<Object> objects{0x0a};
    Table<DeviceContext> contexts{0x01};
    std::array<HGDIOBJ, kStock.size()> stock{};
    HBITMAP onePixel = nullptr; // what a fresh memory device context paints on
    std::array<HBRUSH, 31> systemBrushes{};
    std::size_t ownObjects = 0; // stock objects, system brushes and the one pixel; no program's own

    Drawing()
    {
        for (std::size_t i = 0; i < kStock.size(); ++i)
            stock[i] = Enter(MakeStock(kStock[i]));
        auto pixel = std::make_unique<Object>();
        pixel->kind = OBJ_BITMAP;
        pixel->stock = true;
        pixel->surface = std::make_unique<Surface>(1, 1);
        onePixel = static_cast<HBITMAP>(Enter(std::move(pixel)));
        for (std::size_t i = 0; i < systemBrushes.size(); ++i) {
            auto brush = std::make_unique<Object>();
            brush->kind = OBJ_BRUSH;
            brush->stock = true;
            brush->color = GetSysColor(static_cast<int>(i));
            systemBrushes[i] = static_cast<HBRUSH>(Enter(std::move(brush)));
        }
        ownObjects = objects.Count();
    }

    HGDIOBJ Enter(std::unique_ptr<Object> object)
    {
        return reinterpret_cast<HGDIOBJ>(objects.Enter(std::move(object)));
    }

    static std::unique_ptr<Object> MakeStock(int index)
    {
        auto object = std::make_unique<Object>();
        object->stock = true;
        object->kind = index <= NULL_BRUSH ? OBJ_BRUSH : index <= NULL_PEN ? OBJ_PEN : OBJ_FONT;
        object->hollow = index == NULL_BRUSH || index == NULL_PEN;
        constexpr COLORREF kGreys[] = {RGB(255, 255, 255), RGB(192, 192, 192), RGB(128, 128, 128),
                                       RGB(64, 64, 64)};
        if (index <= DKGRAY_BRUSH) object->color = kGreys[index];
        if (index == WHITE_PEN) object->color = RGB(255, 255, 255);
        return object;
    }
};

Drawing& Gdi()
{
    // Never destroyed: programs give their objects back as late as in destructors of their own static objects.
    static Drawing* const drawing = new Drawing;
    return *drawing;
}

HGDIOBJ Stock(int index)
{
    const auto own = std::ranges::find(kStock, index);
    return own == kStock.end() ? nullptr : Gdi().stock[static_cast<std::size_t>(own - kStock.begin())];
}

using Lock = std::lock_guard<std::recursive_mutex>;

void Deselect(HGDIOBJ handle)
{
    Object* const object = Gdi().objects.Find(handle);
    if (!object) return;
    --object->selections;
    if (object->deleted && object->selections == 0) Gdi().objects.Leave(handle);
}

// What is painted with in a device context; the surface is null for a context that paints nowhere.
struct Tools
{
    Surface* surface = nullptr;
    const Object* brush = nullptr;
    const Object* pen = nullptr;
};

Tools ToolsOf(HDC dc)
{
    const DeviceContext* const context = Gdi().contexts.Find(dc);
    if (!context) return {};
    Object* const bitmap = Gdi().objects.Find(context->bitmap);
    return {bitmap ? bitmap->surface.get() : nullptr, Gdi().objects.Find(context->brush),
            Gdi().objects.Find(context->pen)};
}

bool Inside(const Surface& surface, int x, int y)
{
    return x >= 0 && y >= 0 && x < surface.width && y < surface.height;
}

void FillRow(Surface& surface, int y, int left, int right, COLORREF color)
{
    if (y < 0 || y >= surface.height) return;
    for (int x = std::max(left, 0); x < std::min(right, surface.width); ++x)
        surface.At(x, y) = PixelOf(color);
}

// How many pixels of a rounded shape's row are cut off at either side; row 0 is the outermost one.
int InsetOf(int row, int ellipseWidth, int ellipseHeight)
{
    const double radius = ellipseHeight / 2.0;
    const double distance = radius - row - 0.5;
    if (distance <= 0) return 0;
    const double half = ellipseWidth / 2.0;
    return static_cast<int>(half - half * std::sqrt(1 - distance * distance / (radius * radius)) + 0.9);
}

void PaintRounded(const Tools& tools, RECT shape, int ellipseWidth, int ellipseHeight)
{
    const int height = shape.bottom - shape.top;
    ellipseWidth = std::min<int>(std::abs(ellipseWidth), shape.right - shape.left);
    ellipseHeight = std::min(std::abs(ellipseHeight), height);
    const bool outlined = tools.pen && !tools.pen->hollow;
    const bool filled = tools.brush && !tools.brush->hollow;
    for (int row = 0; row < height; ++row) {
        const int fromEdge = std::min(row, height - 1 - row);
        const int inset = InsetOf(fromEdge, ellipseWidth, ellipseHeight);
        const int left = shape.left + inset;
        const int right = shape.right - inset;
        if (left >= right) continue;
        const int y = shape.top + row;
        if (filled) FillRow(*tools.surface, y, left, right, tools.brush->color);
        if (!outlined) continue;
        const int outer = fromEdge == 0
                              ? right - left
                              : std::max(InsetOf(fromEdge - 1, ellipseWidth, ellipseHeight) - inset, 1);
        FillRow(*tools.surface, y, left, left + outer, tools.pen->color);
        FillRow(*tools.surface, y, right - outer, right, tools.pen->color);
    }
}

RECT InOrder(int left, int top, int right, int bottom)
{
    return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
}

bool PaintShape(HDC dc, RECT shape, int ellipseWidth, int ellipseHeight)
{
    const Lock lock(Gdi().mutex);
    if (!Gdi().contexts.Find(dc)) return false;
    const Tools tools = ToolsOf(dc);
    if (tools.surface) PaintRounded(tools, shape, ellipseWidth, ellipseHeight);
    return true;
}

HGDIOBJ EnterColored(UINT kind, COLORREF color, bool hollow)
{
    const Lock lock(Gdi().mutex);
    auto object = std::make_unique<Object>();
    object->kind = kind;
    object->color = color;
    object->hollow = hollow;
    return Gdi().Enter(std::move(object));
}

HBRUSH MakeSolidBrush(COLORREF color)
{
    return static_cast<HBRUSH>(EnterColored(OBJ_BRUSH, color, false));
}

BOOL Delete(HGDIOBJ handle)
{
    const Lock lock(Gdi().mutex);
    Object* const object = Gdi().objects.Find(handle);
    if (!object || object->deleted) return FALSE;
    if (object->stock) return TRUE;
    if (object->selections > 0)
        object->deleted = true;
    else
        Gdi().objects.Leave(handle);
    return TRUE;
}

Hookable<MakeSolidBrush> createSolidBrush{"CreateSolidBrush"};
Hookable<Delete> deleteObject{"DeleteObject"};

HDC EnterContext(HBITMAP bitmap, HWND window)
{
    auto context = std::make_unique<DeviceContext>();
    context->bitmap = bitmap;
    context->brush = static_cast<HBRUSH>(Stock(WHITE_BRUSH));
    context->pen = static_cast<HPEN>(Stock(BLACK_PEN));
    context->font = static_cast<HFONT>(Stock(SYSTEM_FONT));
    context->window = window;
    for (const HGDIOBJ object : {static_cast<HGDIOBJ>(context->bitmap), static_cast<HGDIOBJ>(context->brush),
                                 static_cast<HGDIOBJ>(context->pen), static_cast<HGDIOBJ>(context->font)}) {
        if (Object* const selected = Gdi().objects.Find(object)) ++selected->selections;
    }
    return reinterpret_cast<HDC>(Gdi().contexts.Enter(std::move(context)));
}

bool LeaveContext(HDC dc)
{
    const DeviceContext* const context = Gdi().contexts.Find(dc);
    if (!context) return false;
    const HGDIOBJ selected[] = {context->bitmap, context->brush, context->pen, context->font};
    Gdi().contexts.Leave(dc);
    for (const HGDIOBJ object : selected)
        Deselect(object);
    return true;
}

// The surface of a window, made or made anew when the client area has another size.
HBITMAP SurfaceOf(Window& window)
{
    const RECT client = ClientOf(window);
    const Object* const own = Gdi().objects.Find(window.surface);
    if (own && own->surface->width == client.right && own->surface->height == client.bottom)
        return window.surface;
    ReleaseSurface(window);
    auto surface = std::make_unique<Surface>(client.right, client.bottom);
    std::ranges::fill(surface->pixels, PixelOf(GetSysColor(COLOR_BTNFACE)));
    window.surface = EnterBitmap(std::move(surface));
    return window.surface;
}

template <typename Record> int CopyRecord(const Record& record, int size, LPVOID buffer)
{
    if (!buffer) return sizeof record;
    const int copied = std::min<int>(size, sizeof record);
    if (copied <= 0) return 0;
    std::memcpy(buffer, &record, static_cast<std::size_t>(copied));
    return copied;
}

BITMAP DescriptionOf(Surface& surface)
{
    const int bytes = (surface.width * surface.bitsPerPixel + 15) / 16 * 2;
    return {0,
            surface.width,
            surface.height,
            surface.isDibSection ? (bytes + 3) / 4 * 4 : bytes,
            1,
            surface.bitsPerPixel,
            surface.isDibSection ? surface.pixels.data() : nullptr};
}

int DescribeBitmap(Surface& surface, int size, LPVOID buffer)
{
    const BITMAP description = DescriptionOf(surface);
    if (!surface.isDibSection || size < static_cast<int>(sizeof(DIBSECTION)) || !buffer)
        return CopyRecord(description, size, buffer);
    DIBSECTION section{};
    section.dsBm = description;
    section.dsBmih.biSize = sizeof(BITMAPINFOHEADER);
    section.dsBmih.biWidth = surface.width;
    section.dsBmih.biHeight = surface.bottomUp ? surface.height : -surface.height;
    section.dsBmih.biPlanes = 1;
    section.dsBmih.biBitCount = surface.bitsPerPixel;
    section.dsBmih.biSizeImage = static_cast<DWORD>(description.bmWidthBytes * surface.height);
    return CopyRecord(section, size, buffer);
}

} // namespace

HBITMAP EnterBitmap(std::unique_ptr<Surface> surface)
{
    const Lock lock(Gdi().mutex);
    auto object = std::make_unique<Object>();
    object->kind = OBJ_BITMAP;
    object->surface = std::move(surface);
    return static_cast<HBITMAP>(Gdi().Enter(std::move(object)));
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HDC WINAPI CreateCompatibleDC(HDC dc)
{
    const Lock lock(Gdi().mutex);
    if (dc && !Gdi().contexts.Find(dc)) return nullptr;
    return EnterContext(Gdi().onePixel, nullptr);
}

BOOL WINAPI DeleteDC(HDC dc)
{
    const Lock lock(Gdi().mutex);
    return LeaveContext(dc);
}

HDC WINAPI GetDC(HWND handle)
{
    const Lock lock(Gdi().mutex);
    if (!handle) return EnterContext(nullptr, nullptr);
    Window* const window = Find(handle);
    return window ? EnterContext(SurfaceOf(*window), handle) : nullptr;
}

int WINAPI ReleaseDC(HWND, HDC dc)
{
    return DeleteDC(dc);
}

int WINAPI GetDeviceCaps(HDC, int index)
{
    switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY:
        return 96;
    case BITSPIXEL:
        return 32;
    case HORZRES:
        return kScreenWidth;
    case VERTRES:
        return kScreenHeight;
    default:
        return 0;
    }
}

HBITMAP WINAPI CreateCompatibleBitmap(HDC, int width, int height)
{
    if (width < 0 || height < 0) return nullptr;
    return EnterBitmap(std::make_unique<Surface>(std::max(width, 1), std::max(height, 1)));
}

HBITMAP WINAPI CreateDIBSection(HDC, const BITMAPINFO* info, UINT, void** bits, HANDLE, DWORD)
{
    if (bits) *bits = nullptr;
    if (!info || info->bmiHeader.biBitCount != 32 || info->bmiHeader.biWidth <= 0 ||
        info->bmiHeader.biHeight == 0)
        return nullptr;
    auto surface = std::make_unique<Surface>(info->bmiHeader.biWidth, std::abs(info->bmiHeader.biHeight));
    surface->bottomUp = info->bmiHeader.biHeight > 0;
    surface->isDibSection = true;
    if (bits) *bits = surface->pixels.data();
    return EnterBitmap(std::move(surface));
}

int WINAPI GetDIBits(HDC, HBITMAP bitmap, UINT start, UINT lines, LPVOID bits, BITMAPINFO* info, UINT)
{
    const Lock lock(Gdi().mutex);
    const Object* const object = Gdi().objects.Find(bitmap);
    if (!object || !object->surface || !info) return 0;
    Surface& surface = *object->surface;
    if (!bits) {
        info->bmiHeader.biWidth = surface.width;
        info->bmiHeader.biHeight = surface.height;
        info->bmiHeader.biPlanes = 1;
        info->bmiHeader.biBitCount = 32;
        info->bmiHeader.biSizeImage = static_cast<DWORD>(surface.pixels.size() * 4);
        return surface.height;
    }
    if (info->bmiHeader.biBitCount != 32 || info->bmiHeader.biWidth != surface.width) return 0;
    const bool topDown = info->bmiHeader.biHeight < 0;
    auto* out = static_cast<std::uint32_t*>(bits);
    const int last =
        static_cast<int>(std::min<std::uint64_t>(std::uint64_t{start} + lines, surface.pixels.size()));
    int copied = 0;
    for (int line = static_cast<int>(start); line < std::min(last, surface.height); ++line, ++copied) {
        for (int x = 0; x < surface.width; ++x)
            *out++ = surface.At(x, topDown ? line : surface.height - 1 - line);
    }
    return copied;
}

HBRUSH WINAPI CreateSolidBrush(COLORREF color)
{
    return createSolidBrush(color);
}

HPEN WINAPI CreatePen(int style, int, COLORREF color)
{
    return static_cast<HPEN>(EnterColored(OBJ_PEN, color, style == PS_NULL));
}

HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font)
{
    const Lock lock(Gdi().mutex);
    if (!font) return nullptr;
    auto object = std::make_unique<Object>();
    object->kind = OBJ_FONT;
    object->font = *font;
    return static_cast<HFONT>(Gdi().Enter(std::move(object)));
}

HGDIOBJ WINAPI GetStockObject(int index)
{
    const Lock lock(Gdi().mutex);
    return Stock(index);
}

HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ handle)
{
    const Lock lock(Gdi().mutex);
    DeviceContext* const context = Gdi().contexts.Find(dc);
    Object* const object = Gdi().objects.Find(handle);
    if (!context || !object) return nullptr;
    HGDIOBJ previous = nullptr;
    switch (object->kind) {
    case OBJ_BITMAP:
        // Only memory device contexts take bitmaps, and a bitmap is in one of them at a time.
        if (!context->bitmap || context->window) return nullptr;
        if (object->selections > 0 && !object->stock && context->bitmap != handle) return nullptr;
        previous = std::exchange(context->bitmap, static_cast<HBITMAP>(handle));
        break;
    case OBJ_BRUSH:
        previous = std::exchange(context->brush, static_cast<HBRUSH>(handle));
        break;
    case OBJ_PEN:
        previous = std::exchange(context->pen, static_cast<HPEN>(handle));
        break;
    default:
        previous = std::exchange(context->font, static_cast<HFONT>(handle));
        break;
    }
    ++object->selections;
    Deselect(previous);
    return previous;
}

HGDIOBJ WINAPI GetCurrentObject(HDC dc, UINT kind)
{
    const Lock lock(Gdi().mutex);
    const DeviceContext* const context = Gdi().contexts.Find(dc);
    if (!context) return nullptr;
    switch (kind) {
    case OBJ_BITMAP:
        return context->bitmap;
    case OBJ_BRUSH:
        return context->brush;
    case OBJ_PEN:
        return context->pen;
    case OBJ_FONT:
        return context->font;
    default:
        return nullptr;
    }
}

DWORD WINAPI GetObjectType(HGDIOBJ handle)
{
    const Lock lock(Gdi().mutex);
    if (const Object* const object = Gdi().objects.Find(handle)) return object->kind;
    const DeviceContext* const context = Gdi().contexts.Find(handle);
    if (!context) return 0;
    return context->bitmap && !context->window ? OBJ_MEMDC : OBJ_DC;
}

int WINAPI GetObjectW(HGDIOBJ handle, int size, LPVOID buffer)
{
    const Lock lock(Gdi().mutex);
    const Object* const object = Gdi().objects.Find(handle);
    if (!object) return 0;
    switch (object->kind) {
    case OBJ_BITMAP:
        return DescribeBitmap(*object->surface, size, buffer);
    case OBJ_BRUSH:
        return CopyRecord(LOGBRUSH{object->hollow ? 1u : 0u, object->color, 0}, size, buffer);
    case OBJ_FONT:
        return CopyRecord(object->font, size, buffer);
    default:
        return 0;
    }
}

BOOL WINAPI DeleteObject(HGDIOBJ object)
{
    return deleteObject(object);
}

BOOL WINAPI RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height)
{
    return PaintShape(dc, InOrder(left, top, right, bottom), width, height);
}

BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom)
{
    return PaintShape(dc, InOrder(left, top, right, bottom), 0, 0);
}

int WINAPI FillRect(HDC dc, const RECT* rectangle, HBRUSH brush)
{
    const Lock lock(Gdi().mutex);
    if (!rectangle || !Gdi().contexts.Find(dc)) return 0;
    const Tools tools = ToolsOf(dc);
    // A small number stands for a system colour plus one.
    const auto number = reinterpret_cast<ULONG_PTR>(brush);
    if (number > 0 && number <= Gdi().systemBrushes.size()) brush = Gdi().systemBrushes[number - 1];
    const Object* const fill = Gdi().objects.Find(brush);
    if (!fill || fill->kind != OBJ_BRUSH) return 0;
    for (int y = rectangle->top; tools.surface && !fill->hollow && y < rectangle->bottom; ++y)
        FillRow(*tools.surface, y, rectangle->left, rectangle->right, fill->color);
    return 1;
}

COLORREF WINAPI GetPixel(HDC dc, int x, int y)
{
    const Lock lock(Gdi().mutex);
    const Tools tools = ToolsOf(dc);
    return tools.surface && Inside(*tools.surface, x, y) ? ColorOf(tools.surface->At(x, y)) : CLR_INVALID;
}

COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color)
{
    const Lock lock(Gdi().mutex);
    const Tools tools = ToolsOf(dc);
    if (!tools.surface || !Inside(*tools.surface, x, y)) return CLR_INVALID;
    tools.surface->At(x, y) = PixelOf(color);
    return color & 0xffffff;
}

BOOL WINAPI BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                   DWORD operation)
{
    const Lock lock(Gdi().mutex);
    if (!Gdi().contexts.Find(dc)) return FALSE;
    const Tools target = ToolsOf(dc);
    const Tools from = ToolsOf(source);
    if (operation == SRCCOPY && !Gdi().contexts.Find(source)) return FALSE;
    for (int row = 0; target.surface && row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            if (!Inside(*target.surface, x + column, y + row)) continue;
            std::uint32_t& pixel = target.surface->At(x + column, y + row);
            if (operation == BLACKNESS)
                pixel = 0;
            else if (operation == WHITENESS)
                pixel = 0xffffff;
            else if (from.surface && Inside(*from.surface, sourceX + column, sourceY + row))
                pixel = from.surface->At(sourceX + column, sourceY + row);
        }
    }
    return TRUE;
}

COLORREF WINAPI SetBkColor(HDC dc, COLORREF color)
{
    const Lock lock(Gdi().mutex);
    DeviceContext* const context = Gdi().contexts.Find(dc);
    return context ? std::exchange(context->backColor, color) : CLR_INVALID;
}

COLORREF WINAPI SetTextColor(HDC dc, COLORREF color)
{
    const Lock lock(Gdi().mutex);
    DeviceContext* const context = Gdi().contexts.Find(dc);
    return context ? std::exchange(context->textColor, color) : CLR_INVALID;
}

int WINAPI SetBkMode(HDC dc, int mode)
{
    const Lock lock(Gdi().mutex);
    DeviceContext* const context = Gdi().contexts.Find(dc);
    return context ? std::exchange(context->backMode, mode) : 0;
}

BOOL WINAPI GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size)
{
    const Lock lock(Gdi().mutex);
    if (!Gdi().contexts.Find(dc) || !text || !size) return FALSE;
    *size = {7 * length, 13};
    return TRUE;
}

DWORD WINAPI GetSysColor(int index)
{
    switch (index) {
    case COLOR_WINDOW:
    case COLOR_BTNHIGHLIGHT:
    case COLOR_HIGHLIGHTTEXT:
        return RGB(0xff, 0xff, 0xff);
    case COLOR_BTNFACE:
    case COLOR_SCROLLBAR:
        return RGB(0xf5, 0xf5, 0xf5);
    case COLOR_BTNSHADOW:
    case COLOR_GRAYTEXT:
        return RGB(0xa6, 0xa6, 0xa6);
    case COLOR_3DLIGHT:
        return RGB(0xe3, 0xe3, 0xe3);
    case COLOR_3DDKSHADOW:
        return RGB(0x6a, 0x6a, 0x6a);
    default:
        return 0;
    }
}

HBRUSH WINAPI GetSysColorBrush(int index)
{
    const Lock lock(Gdi().mutex);
    return index >= 0 && index < static_cast<int>(Gdi().systemBrushes.size())
               ? Gdi().systemBrushes[static_cast<std::size_t>(index)]
               : nullptr;
}

HCURSOR WINAPI LoadCursorW(HINSTANCE, LPCWSTR name)
{
    return reinterpret_cast<HCURSOR>(const_cast<WCHAR*>(name));
}

HICON WINAPI LoadIconW(HINSTANCE, LPCWSTR name)
{
    return reinterpret_cast<HICON>(const_cast<WCHAR*>(name));
}

HCURSOR WINAPI SetCursor(HCURSOR)
{
    return nullptr;
}

DWORD WINAPI GetGuiResources(HANDLE, DWORD kind)
{
    if (kind == GR_USEROBJECTS) return WindowCount();
    const Lock lock(Gdi().mutex);
    return static_cast<DWORD>(Gdi().objects.Count() - Gdi().ownObjects + Gdi().contexts.Count());
}
