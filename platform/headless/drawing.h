// The inside of drawing. There are no pixels: a device context records the shapes that are painted with it,
// and a bitmap is its size.
#pragma once

#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

struct Shape
{
    RECT place;     // right and bottom stand outside
    COLORREF color; // of the brush
    bool outlined;  // in black, by the pen that every device context has
    SIZE corners;   // of the ellipse that rounds them
};

// What has been painted with a device context, in order.
std::vector<Shape> ShapesOf(HDC dc);

HBITMAP EnterBitmap(SIZE size);

} // namespace tintwerk::headless
