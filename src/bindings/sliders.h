// The sliders of the pages: which PPD feature each one stands for, and how a position turns into a PPD value
// and a text.
#pragma once

#include <array>

#include "src/records/page_kinds.h"
#include "src/records/sheet_context.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

struct ControlBinding
{
    DWORD tabBit;        // page that carries the slider
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
    // The step doubles above the middle: the screen printing saturation spans 200..400 % in 0..10.
    bool doublesAboveMiddle = false;
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
    // page               slider                 label                        keyword                    halve   min max init base step offset scale  format
    {kMainPage,           IDC_MAIN_BRIGHTNESS,   IDC_MAIN_BRIGHTNESS_VALUE,   "halvBrightness",          true,  -10, 10,  0,    0,   5,  100, 10.0f, "%d%%"},
    {kMainPage,           IDC_MAIN_CONTRAST,     IDC_MAIN_CONTRAST_VALUE,     "halvContrast",            true,  -10, 10,  0,    0,   5,  100, 10.0f, "%d%%"},
    {kColorPage,          IDC_COLOR_REF_LIGHT,   IDC_COLOR_REF_LIGHT_VALUE,   "halvRefLight",            false,   0,  6,  3,   50,   5,   50,  5.0f, "D%d"},
    {kColorPage,          IDC_COLOR_GAMUT,       IDC_COLOR_GAMUT_VALUE,       "halvGamut",               true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kColorPage,          IDC_COLOR_SHADOWS,     IDC_COLOR_SHADOWS_VALUE,     "halvShadows",             true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kColorPage,          IDC_COLOR_GREY_TONE_A, IDC_COLOR_GREY_TONE_A_VALUE, "halvGreyToneA",           false, -10, 10,  0,    0,   5,    0,  5.0f, "%+d"},
    {kColorPage,          IDC_COLOR_GREY_TONE_B, IDC_COLOR_GREY_TONE_B_VALUE, "halvGreyToneB",           false, -10, 10,  0,    0,   5,    0,  5.0f, "%+d"},
    {kInkControlPage,     IDC_INK_UCR,           IDC_INK_UCR_VALUE,           "halvUCR",                 false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_BRIGHT_C,      IDC_INK_BRIGHT_C_VALUE,      "halvBrightC",             false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_BRIGHT_M,      IDC_INK_BRIGHT_M_VALUE,      "halvBrightM",             false,  -5,  5,  0,    0,  10,   50, 10.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_TAC,           IDC_INK_TAC_VALUE,           "halvTAC",                 false,  -5,  5,  0,    0,  10,  300, 20.0f, "%d%%"},
    {kMainPage,           IDC_MAIN_INTENSITY,    IDC_MAIN_INTENSITY_VALUE,    "halvIntensity",           true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_LIMIT_K,       IDC_INK_LIMIT_K_VALUE,       "halvInklimitK",           true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_LIMIT_C,       IDC_INK_LIMIT_C_VALUE,       "halvInklimitC",           true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_LIMIT_M,       IDC_INK_LIMIT_M_VALUE,       "halvInklimitM",           true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kInkControlPage,     IDC_INK_LIMIT_Y,       IDC_INK_LIMIT_Y_VALUE,       "halvInklimitY",           true,   -5,  5,  0,    0,  10,  100, 20.0f, "%d%%"},
    {kCorrectionPage,     IDC_CORRECTION_K,      IDC_CORRECTION_K_VALUE,      "halvAdjustK",             false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     IDC_CORRECTION_C,      IDC_CORRECTION_C_VALUE,      "halvAdjustC",             false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     IDC_CORRECTION_M,      IDC_CORRECTION_M_VALUE,      "halvAdjustM",             false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kCorrectionPage,     IDC_CORRECTION_Y,      IDC_CORRECTION_Y_VALUE,      "halvAdjustY",             false, -10, 10,  0,    0,   5,    0,  5.0f, "%d%%"},
    {kMainPage,           IDC_MAIN_OVERPRINT,    0,                           "halvBorderlessExpand",    false,   0,  4,  2,    0,   1,    0,  1.0f, "%d%%"},
    {kScreenPrintingPage, IDC_SCREEN_SATURATION, IDC_SCREEN_SATURATION_VALUE, "halvScreenInksaturation", true,  -10, 10,  0,  200,  10,  200, 20.0f, "%d%%", true},
}};
// clang-format on

// PPD value of a logical position.
constexpr int PpdValue(const ControlBinding& slider, int position)
{
    const int step = slider.doublesAboveMiddle && position >= 1 ? 2 * slider.step : slider.step;
    return slider.base + step * position;
}

// Logical position of a PPD value; the division truncates toward zero. Values far outside the PPD's range
// stay within 32 bits.
constexpr int PositionOf(const ControlBinding& slider, int value)
{
    const long long distance = static_cast<long long>(value) - slider.base;
    const int step = slider.doublesAboveMiddle && distance > 0 ? 2 * slider.step : slider.step;
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
