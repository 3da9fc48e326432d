#include "src/pages/bar_painting.h"

#include <algorithm>

#include "platform/owners.h"
#include "src/ink/bar_value.h"
#include "src/pages/bar_geometry.h"

namespace tintwerk {

namespace {

constexpr COLORREF kEmptyPart = RGB(225, 225, 225);

void RoundBar(HDC dc, HBRUSH brush, int left, const RECT& bar)
{
    const SelectedObject selected(dc, brush);
    RoundRect(dc, left, bar.top, bar.right, bar.bottom, kBarCorner, kBarCorner);
}

} // namespace

void PaintBar(const DRAWITEMSTRUCT& item)
{
    const BarValue value =
        UnpackBarValue(static_cast<DWORD>(GetWindowLongPtrW(item.hwndItem, GWLP_USERDATA)));
    const int percent = std::min(value.percent, kFullBar);
    RECT bar{};
    GetClientRect(item.hwndItem, &bar);

    const BrushHandle ink(CreateSolidBrush(RGB(value.red, value.green, value.blue)));
    const BrushHandle empty(CreateSolidBrush(kEmptyPart));
    const int split = BarSplit(bar.left, bar.right, percent);
    RoundBar(item.hDC, percent > 0 ? ink.Get() : empty.Get(), bar.left, bar);
    RoundBar(item.hDC, percent < kFullBar ? empty.Get() : ink.Get(), split, bar);
    if (percent > 0 && percent < kFullBar) {
        const RECT square{split, bar.top + 1, split + kBarSquareWidth, bar.bottom - 1};
        FillRect(item.hDC, &square, ink.Get());
    }
}

} // namespace tintwerk
