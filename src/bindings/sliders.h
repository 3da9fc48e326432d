// The sliders of the pages: which PPD feature each one stands for, and how a position turns into a PPD value
// and a text.
#pragma once

#include <array>

#include "src/records/page_kinds.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

struct ControlBinding
{
    DWORD tabBit;        // page that carries the slider
    int index;           // the row's position in the table
    int sliderId;        // control id of the trackbar
    int labelId;         // control id of the static text that shows the value; 0 for none
    const char* keyword; // PPD feature, without asterisk
    bool halveNegatives; // a negative display value is halved before the offset is added
    int minimum;         // logical positions
    int maximum;
    int initialValue; // stands for the feature's value while it could not be read
    int base;         // PPD value at position 0
    int step;         // PPD value per position
    int displayOffset;
    float displayScale; // display units per position
    const char* format; // printf format of the value label, one integer
};

enum SliderRow : int
{
    kSliderBrightness,
    kSliderContrast,
    kSliderRefLight,
    kSliderGamut,
    kSliderShadows,
    kSliderGreyToneA,
    kSliderGreyToneB,
    kSliderUcr,
    kSliderBrightC,
    kSliderBrightM,
    kSliderTac,
    kSliderIntensity,
    kSliderInklimitK,
    kSliderInklimitC,
    kSliderInklimitM,
    kSliderInklimitY,
    kSliderAdjustK,
    kSliderAdjustC,
    kSliderAdjustM,
    kSliderAdjustY,
    kSliderBorderlessExpand,
    kSliderScreenInksaturation,
};

// clang-format off
inline constexpr std::array<ControlBinding, kSliderRows> kSliderTable{{
    // page               index slider label keyword                  halve   min max init base step offset scale  format
    {kMainPage,            0, 1232, 1093, "halvBrightness",           true,  -10, 10,  0,    0,   5,  100, 10.0f, "%d%%"},
    {kMainPage,            1, 1078, 1094, "halvContrast",             true,  -10, 10,  0,    0,   5,  100, 10.0f, "%d%%"},
    {kColorPage,           2, 1186, 1191, "halvRefLight",             false,   0,  6,  3,   50,   5,   50,  5.0f, "D%d"},
    {kColorPage,           3, 1177, 1192, "halvGamut",                true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kColorPage,           4, 1178, 1194, "halvShadows",              true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kColorPage,           5, 1180, 1193, "halvGreyToneA",            false, -10, 10,  0,    0,   5,    0,  5.0f, "%+d"},
    {kColorPage,           6, 1179, 1196, "halvGreyToneB",            false, -10, 10,  0,    0,   5,    0,  5.0f, "%+d"},
    {kInkControlPage,      7, 1498, 1405, "halvUCR",                  false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,      8, 1499, 1404, "halvBrightC",              false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,      9, 1400, 1403, "halvBrightM",              false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,     10, 1401, 1402, "halvTAC",                  false,  -5,  5,  0,    0,  10,  300, 20.0f, "%d%%"},
    {kMainPage,           11, 1090, 1095, "halvIntensity",            true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     12, 1506, 1510, "halvInklimitK",            true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     13, 1507, 1511, "halvInklimitC",            true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     14, 1508, 1512, "halvInklimitM",            true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     15, 1509, 1513, "halvInklimitY",            true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kCorrectionPage,     16, 1296, 1297, "halvAdjustK",              false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     17, 1287, 1292, "halvAdjustC",              false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     18, 1288, 1293, "halvAdjustM",              false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     19, 1289, 1294, "halvAdjustY",              false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kMainPage,           20, 1217,    0, "halvBorderlessExpand",     false,   0,  4,  2,    0,   1,    0,  1.0f, "%d%%"},
    {kScreenPrintingPage, 21, 1255, 1256, "halvScreenInksaturation",  true,  -10, 10,  0,  200,  10,  200, 20.0f, "%d%%"},
}};
// clang-format on

// The screen printing saturation doubles its step above the middle, so that 0..10 spans 200..400 %.
constexpr bool DoublesAboveMiddle(const ControlBinding& slider)
{
    return slider.index == kSliderScreenInksaturation;
}

// PPD value of a logical position.
constexpr int PpdValue(const ControlBinding& slider, int position)
{
    const int step = DoublesAboveMiddle(slider) && position >= 1 ? 2 * slider.step : slider.step;
    return slider.base + step * position;
}

// Logical position of a PPD value; the division truncates toward zero. Values far outside the PPD's range
// stay within 32 bits.
constexpr int PositionOf(const ControlBinding& slider, int value)
{
    const long long distance = static_cast<long long>(value) - slider.base;
    const int step = DoublesAboveMiddle(slider) && distance > 0 ? 2 * slider.step : slider.step;
    return static_cast<int>(distance / step);
}

// The number that the value label shows for a logical position.
constexpr int DisplayValue(const ControlBinding& slider, int position)
{
    int value = static_cast<int>(static_cast<float>(position) * slider.displayScale);
    if (slider.halveNegatives && value < 0) value >>= 1; // rounds toward minus infinity
    return value + slider.displayOffset;
}

} // namespace tintwerk
