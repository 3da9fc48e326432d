#include "tests/support/canvas.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/headless/drawing.h"

namespace tintwerk {

namespace {

// How far a rounded shape's edge stands inside its place, as many rows from the top or the bottom.
LONG Inset(LONG row, SIZE corners)
{
    const double distance = 1 - (2.0 * static_cast<double>(row) + 1) / static_cast<double>(corners.cy);
    if (distance <= 0) return 0;
    return std::lround(static_cast<double>(corners.cx) / 2 * (1 - std::sqrt(1 - distance * distance)));
}

std::optional<COLORREF> ColorOf(const headless::Shape& shape, POINT at)
{
    const LONG column = std::min(at.x - shape.place.left, shape.place.right - 1 - at.x);
    const LONG row = std::min(at.y - shape.place.top, shape.place.bottom - 1 - at.y);
    if (row < 0 || column < Inset(row, shape.corners)) return {};
    const LONG edge =
        row == 0 ? column : std::max(Inset(row - 1, shape.corners) - 1, Inset(row, shape.corners));
    return shape.outlined && column <= edge ? RGB(0, 0, 0) : shape.color;
}

} // namespace

Canvas::Canvas(int, int)
{
}

Canvas::~Canvas()
{
    DeleteDC(dc_);
}

COLORREF Canvas::At(int x, int y) const
{
    COLORREF color = kUntouched;
    for (const headless::Shape& shape : headless::ShapesOf(dc_))
        color = ColorOf(shape, {x, y}).value_or(color);
    return color;
}

} // namespace tintwerk
