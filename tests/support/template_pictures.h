// Bitmaps that dialog templates name: they go with their controls, but Wine's controls forget them, and who
// counts objects there must know.
#pragma once

#include "tests/support/testing.h"

namespace tintwerk {

inline constexpr int kTemplatePictures = 9; // of the pages correction and ink control

// How many a control of that kind leaves behind: none, or itself.
inline int ForgottenByAStatic(HINSTANCE module)
{
    const int before = UseOfProcess().gdiObjects;
    DestroyWindow(CreateWindowExW(0, WC_STATICW, TEXT("#176"), WS_POPUP | SS_BITMAP, 0, 0, 14, 10, nullptr,
                                  nullptr, module, nullptr));
    return UseOfProcess().gdiObjects - before;
}

} // namespace tintwerk
