// Ink level bars, judged by their colours.
#include "src/pages/bar_painting.h"

#include <gtest/gtest.h>

#include "platform/owners.h"
#include "src/ink/bar_value.h"
#include "src/pages/bar_geometry.h"
#include "tests/support/canvas.h"

namespace tintwerk {
namespace {

constexpr int kWidth = 105;
constexpr int kHeight = 12;
constexpr COLORREF kInk = RGB(255, 128, 0);
constexpr COLORREF kEmpty = RGB(225, 225, 225);

TEST(Bar, IsFilledFromTheLeftToItsShareAndEndsSquare)
{
    const std::pair<int, int> cases[] = {{0, 0},   {1, 1},        {50, 50}, // the left edge of the empty part
                                         {99, 99}, {100, kWidth}, {180, kWidth}};
    for (const auto& [percent, split] : cases) {
        const HWND control = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, kWidth, kHeight,
                                             nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(control, GWLP_USERDATA,
                          static_cast<LONG_PTR>(PackBarValue({percent, 255, 128, 0})));
        const Canvas canvas{kWidth, kHeight};
        const BrushHandle selected{CreateSolidBrush(RGB(0, 0, 0))};
        const HGDIOBJ previous = SelectObject(canvas.Dc(), selected.Get());
        DRAWITEMSTRUCT item{};
        item.hwndItem = control;
        item.hDC = canvas.Dc();
        PaintBar(item);

        for (int x = 5; x < kWidth - 6; ++x)
            for (const int y : {1, kHeight / 2, kHeight - 2}) {
                const bool filled = percent > 0 && x < split + kBarSquareWidth;
                EXPECT_EQ(filled ? kInk : kEmpty, canvas.At(x, y)) << percent << " % at " << x << ',' << y;
            }
        for (const int y : {0, kHeight - 1})
            EXPECT_EQ(RGB(0, 0, 0), canvas.At(kWidth / 2, y)) << "the outline in the current pen";
        for (const int x : {0, kWidth - 1})
            EXPECT_EQ(Canvas::kUntouched, canvas.At(x, 0)) << "rounded corners";
        EXPECT_EQ(selected.Get(), SelectObject(canvas.Dc(), previous)) << "left as it was";
        DestroyWindow(control);
    }
}

} // namespace
} // namespace tintwerk
