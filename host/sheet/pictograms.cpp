#include "host/sheet/pictograms.h"

#include <algorithm>
#include <array>
#include <span>

#include "platform/owners.h"

namespace tintwerk {

namespace {

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kEdge = RGB(90, 90, 90);
constexpr COLORREF kShadow = RGB(190, 190, 190);
constexpr COLORREF kText = RGB(150, 165, 190);
constexpr COLORREF kMark = RGB(0, 90, 180);

// A filled rectangle of a picture that is 32 units wide and high.
struct Bar
{
    int left, top, right, bottom;
    COLORREF color;
};

// clang-format off
constexpr std::array<Bar, 7> kPortrait{{
    {8, 4, 26, 30, kShadow}, {6, 2, 24, 28, kEdge}, {7, 3, 23, 27, kPaper},
    {9, 6, 21, 8, kText}, {9, 11, 21, 13, kText}, {9, 16, 21, 18, kText}, {9, 21, 16, 23, kText}}};
constexpr std::array<Bar, 6> kLandscape{{
    {4, 8, 32, 26, kShadow}, {2, 6, 30, 24, kEdge}, {3, 7, 29, 23, kPaper},
    {6, 10, 26, 12, kText}, {6, 14, 26, 16, kText}, {6, 18, 18, 20, kText}}};
constexpr std::array<Bar, 6> kRotatedLandscape{{
    {4, 8, 32, 26, kShadow}, {2, 6, 30, 24, kEdge}, {3, 7, 29, 23, kPaper},
    {14, 10, 26, 12, kText}, {6, 14, 26, 16, kText}, {6, 18, 26, 20, kText}}};
constexpr std::array<Bar, 6> kOneSided{{
    {8, 4, 26, 30, kShadow}, {6, 2, 24, 28, kEdge}, {7, 3, 23, 27, kPaper},
    {9, 6, 21, 8, kText}, {9, 11, 21, 13, kText}, {9, 16, 16, 18, kText}}};
// The second sheet hangs at the edge around which the paper is turned.
constexpr std::array<Bar, 9> kLongEdge{{
    {3, 4, 15, 26, kEdge}, {4, 5, 15, 25, kPaper}, {6, 8, 13, 10, kText}, {6, 13, 13, 15, kText},
    {17, 4, 29, 26, kEdge}, {17, 5, 28, 25, kPaper}, {19, 8, 26, 10, kText}, {19, 13, 26, 15, kText},
    {15, 3, 17, 27, kMark}}};
constexpr std::array<Bar, 9> kShortEdge{{
    {6, 2, 26, 15, kEdge}, {7, 3, 25, 15, kPaper}, {9, 6, 23, 8, kText}, {9, 10, 18, 12, kText},
    {6, 17, 26, 30, kEdge}, {7, 17, 25, 29, kPaper}, {9, 20, 23, 22, kText}, {9, 24, 18, 26, kText},
    {5, 15, 27, 17, kMark}}};
// clang-format on

std::span<const Bar> Picture(ULONG_PTR icon)
{
    switch (icon) {
    case IDI_CPSUI_PORTRAIT:
        return kPortrait;
    case IDI_CPSUI_LANDSCAPE:
        return kLandscape;
    case IDI_CPSUI_ROT_LAND:
        return kRotatedLandscape;
    case IDI_CPSUI_DUPLEX_NONE:
        return kOneSided;
    case IDI_CPSUI_DUPLEX_VERT:
        return kLongEdge;
    case IDI_CPSUI_DUPLEX_HORZ:
        return kShortEdge;
    default:
        return {};
    }
}

} // namespace

bool HasPictogram(ULONG_PTR icon)
{
    return !Picture(icon).empty();
}

void DrawPictogram(HDC dc, const RECT& rectangle, ULONG_PTR icon)
{
    const int width = static_cast<int>(rectangle.right - rectangle.left);
    const int height = static_cast<int>(rectangle.bottom - rectangle.top);
    const int size = std::min(width, height);
    const int x = static_cast<int>(rectangle.left) + (width - size) / 2;
    const int y = static_cast<int>(rectangle.top) + (height - size) / 2;
    for (const Bar& bar : Picture(icon)) {
        const RECT place{x + bar.left * size / 32, y + bar.top * size / 32, x + bar.right * size / 32,
                         y + bar.bottom * size / 32};
        const BrushHandle brush(CreateSolidBrush(bar.color));
        FillRect(dc, &place, brush.Get());
    }
}

} // namespace tintwerk
