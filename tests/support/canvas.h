// A surface to paint on, and the colour at a place of it: looked up in the pixels on Windows, in the shapes
// that were painted elsewhere.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

class Canvas
{
public:
    static constexpr COLORREF kUntouched = RGB(1, 2, 3);

    Canvas(int width, int height);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return dc_; }
    COLORREF At(int x, int y) const;

private:
    const HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ previous_ = nullptr;
};

} // namespace tintwerk
