// Moves the content of a page to the middle of its sheet. The arithmetic is pure.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

inline constexpr int kPageMargin = 20; // pixels left out of the sheet's width

// How far the controls of a page are to be moved right, so that its reference control stands in the middle;
// below 0 when it is too wide for that. Rectangles are those of the windows on the screen.
constexpr int CentringMove(const RECT& control, const RECT& page, const RECT& sheet)
{
    const int controlLeft = static_cast<int>(control.left - page.left);
    const int pageLeft = static_cast<int>(page.left - sheet.left);
    const int width = static_cast<int>(control.right - control.left) + 1;
    const int sheetWidth = static_cast<int>(sheet.right - sheet.left) + 1;
    return (sheetWidth - (2 * pageLeft + kPageMargin) - width) / 2 - controlLeft;
}

// Centres a page by its reference control; a page without one stays as it is.
void CentrePage(HWND page, int referenceControl);

} // namespace tintwerk
