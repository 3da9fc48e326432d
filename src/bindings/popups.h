// The popups (drop-down combo boxes) of the pages: which PPD feature each one offers.
#pragma once

#include <array>

#include "src/records/options.h"
#include "src/records/page_kinds.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

struct PopupBinding
{
    DWORD tabBit;        // page that carries the popup
    const char* keyword; // PPD feature, with or without the leading "*"; empty for a popup without a feature
                         // of its own
    const char* name;    // what scripts call a popup that has no feature
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
    {kMainPage,           "*halvCartridgeType", "Cartridge",        IDC_MAIN_CARTRIDGE},
    {kMainPage,           "*MediaType",         "Media Type",       IDC_MAIN_MEDIA_TYPE},
    {kMainPage,           "*Resolution",        "Print Resolution", IDC_MAIN_RESOLUTION},
    {kMainPage,           "PageSize",           "Page Size",        IDC_MAIN_PAGE_SIZE},
    {kMainPage,           "InputSlot",          "Input Slot",       IDC_MAIN_INPUT_SLOT},
    {kMainPage,           "OutputBin",          "Output Slot",      IDC_MAIN_OUTPUT_BIN},
    {kColorPage,          "*halvIntent",        "Rendering Intent", IDC_COLOR_INTENT},
    {kColorPage,          "*halvColorModel",    "Color Mode",       IDC_COLOR_MODEL},
    {kColorPage,          "*halvDithering",     "Dithering",        IDC_COLOR_DITHERING},
    {kColorPage,          "*halvColorspace",    "Color Space",      IDC_COLOR_SPACE},
    {kColorPage,          "*halvCMYKspace",     "CMYK-Colorspace",  IDC_COLOR_CMYK_SPACE},
    {kScreenPrintingPage, "",                   "Screen Halftone",  IDC_SCREEN_HALFTONE},
    {kScreenPrintingPage, "*halvScreenShape",   "Raster Shape",     IDC_SCREEN_SHAPE},
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
