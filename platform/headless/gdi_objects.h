// The inside of drawing: the object table shared by gdi.cpp and load_image.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/headless/windows.h"

namespace tintwerk::headless {

// 32-bit pixels 0x00RRGGBB, the top row first in memory order of Row(); a picture of 24 bits or less is
// widened when loaded.
struct Surface
{
    int width = 0;
    int height = 0;
    bool bottomUp = false;
    bool isDibSection = false;
    WORD bitsPerPixel = 32;
    std::vector<std::uint32_t> pixels;

    Surface(int surfaceWidth, int surfaceHeight)
        : width(surfaceWidth), height(surfaceHeight),
          pixels(static_cast<std::size_t>(surfaceWidth) * static_cast<std::size_t>(surfaceHeight))
    {
    }
    std::uint32_t& At(int x, int y)
    {
        const int row = bottomUp ? height - 1 - y : y;
        return pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

// Puts a finished picture into the table.
HBITMAP EnterBitmap(std::unique_ptr<Surface> surface);

constexpr std::uint32_t PixelOf(COLORREF color)
{
    return (color & 0xff) << 16 | (color & 0xff00) | (color >> 16 & 0xff);
}
constexpr COLORREF ColorOf(std::uint32_t pixel)
{
    return (pixel & 0xff) << 16 | (pixel & 0xff00) | (pixel >> 16 & 0xff);
}

} // namespace tintwerk::headless
