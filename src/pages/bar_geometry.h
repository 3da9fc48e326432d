// Where an ink level bar is split between ink and empty. Pure arithmetic.
#pragma once

namespace tintwerk {

inline constexpr int kFullBar = 100;      // percent; what is stored above counts as full
inline constexpr int kBarCorner = 6;      // width and height of the corners' ellipse
inline constexpr int kBarSquareWidth = 3; // strip that ends the filled part square

// The left edge of the empty part. The last 5 pixels are left out, so that the empty part's round end never
// shrinks below its corners; the division truncates toward zero.
constexpr int BarSplit(int left, int right, int percent)
{
    return left + (right - left - 5) * percent / 100;
}

} // namespace tintwerk
