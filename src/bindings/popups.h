// The popups (drop-down combo boxes) of the pages: which PPD feature each one offers.
#pragma once

#include <array>

#include "src/records/options.h"
#include "src/records/page_kinds.h"

namespace tintwerk {

struct PopupBinding
{
    DWORD tabBit;        // page that carries the popup
    const char* keyword; // PPD feature, with or without the leading "*"; empty for a popup without a feature
                         // of its own
    const char* name;    // for reference, not shown
    int controlId;       // of the combo box; 0 for none
};

// Rows by name. The row number is also the index of the row's option list and selection.
enum PopupRow : int
{
    kPopupCartridge,
    kPopupMediaType,
    kPopupResolution,
    kPopupPageSize,
    kPopupInputSlot,
    kPopupOutputBin,
    kPopupIntent,
    kPopupColorModel,
    kPopupDithering,
    kPopupColorspace,
    kPopupCmykSpace,
    kPopupHalftone,
    kPopupScreenShape,
    kPopupScreenMode, // no combo box: its option list carries the screen printing selections
};

// clang-format off
inline constexpr std::array<PopupBinding, kPopupRows> kPopupTable{{
    // page               keyword               name                control
    {kMainPage,           "*halvCartridgeType", "Cartridge",        1075},
    {kMainPage,           "*MediaType",         "Media Type",       1073},
    {kMainPage,           "*Resolution",        "Print Resolution", 1072},
    {kMainPage,           "PageSize",           "Page Size",        1022},
    {kMainPage,           "InputSlot",          "Input Slot",       1023},
    {kMainPage,           "OutputBin",          "Output Slot",      1024},
    {kColorPage,          "*halvIntent",        "Rendering Intent", 1111},
    {kColorPage,          "*halvColorModel",    "Color Mode",       1273},
    {kColorPage,          "*halvDithering",     "Dithering",        1021},
    {kColorPage,          "*halvColorspace",    "Color Space",      1113},
    {kColorPage,          "*halvCMYKspace",     "CMYK-Colorspace",  1112},
    {kScreenPrintingPage, "",                   "Screen Halftone",  1257},
    {kScreenPrintingPage, "*halvScreenShape",   "Raster Shape",     1274},
    {kScreenPrintingPage, "*halvScreenmode",    "Screen Mode",      0},
}};

// What the screen halftone popup offers; a list like those that the core driver gives.
inline constexpr std::array<OptionEntry, 4> kHalftoneList{{
    {"0", TEXT("Tintwerk")},
    {"1", TEXT("App specified (Postscript)")},
    {"2", TEXT("Off")},
    {nullptr, nullptr},
}};
// clang-format on

// The core driver is always given keywords without the PPD's leading asterisk.
constexpr const char* WithoutAsterisk(const char* keyword)
{
    return *keyword == '*' ? keyword + 1 : keyword;
}

} // namespace tintwerk
