#include "tests/support/canvas.h"

namespace tintwerk {

Canvas::Canvas(int width, int height)
{
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    previous_ = SelectObject(dc_, bitmap_);
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y)
            SetPixel(dc_, x, y, kUntouched);
    }
}

Canvas::~Canvas()
{
    SelectObject(dc_, previous_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

COLORREF Canvas::At(int x, int y) const
{
    return GetPixel(dc_, x, y);
}

} // namespace tintwerk
