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

// A bar that is painted on a surface of its own.
class PaintedBar
{
public:
    explicit PaintedBar(int percent)
    {
        control = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, kWidth, kHeight, nullptr,
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(control, GWLP_USERDATA,
                          static_cast<LONG_PTR>(PackBarValue({percent, 255, 128, 0})));
        DRAWITEMSTRUCT item{};
        item.hwndItem = control;
        item.hDC = canvas.Dc();
        PaintBar(item);
    }
    ~PaintedBar() { DestroyWindow(control); }

    COLORREF At(int x, int y = kHeight / 2) const { return canvas.At(x, y); }

    HWND control;
    const BrushHandle selected{CreateSolidBrush(RGB(0, 0, 0))};
    Canvas canvas{kWidth, kHeight};
    const HGDIOBJ previous = SelectObject(canvas.Dc(), selected.Get()); // before anything is painted
};

TEST(Bar, IsFilledFromTheLeftToItsShare)
{
    struct
    {
        int percent;
        int split; // left edge of the empty part
    } const cases[] = {{0, 0}, {1, 1}, {50, 50}, {99, 99}, {100, kWidth}, {180, kWidth}};
    for (const auto& row : cases) {
        const PaintedBar bar(row.percent);
        for (int x = 5; x < kWidth - 6; ++x) {
            const bool filled = row.percent > 0 && x < row.split + kBarSquareWidth;
            EXPECT_EQ(filled ? kInk : kEmpty, bar.At(x)) << row.percent << " % at " << x;
        }
        for (const int y : {0, kHeight - 1})
            EXPECT_EQ(RGB(0, 0, 0), bar.At(kWidth / 2, y)) << "the outline in the current pen";
        for (const int x : {0, kWidth - 1})
            EXPECT_EQ(Canvas::kUntouched, bar.At(x, 0)) << "rounded corners";
    }
}

TEST(Bar, EndsItsFilledPartSquare)
{
    const PaintedBar bar(50);
    for (int y = 1; y < kHeight - 1; ++y) {
        for (int x = 50; x < 53; ++x)
            EXPECT_EQ(kInk, bar.At(x, y)) << x << ',' << y;
    }
    EXPECT_EQ(kEmpty, bar.At(53));
}

TEST(Bar, LeavesTheDeviceContextAsItWas)
{
    const PaintedBar bar(50);
    EXPECT_EQ(bar.selected.Get(), SelectObject(bar.canvas.Dc(), bar.previous));
}

} // namespace
} // namespace tintwerk
