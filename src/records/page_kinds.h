// The six kinds of document pages. A page's kind is its position in the page list; its tab bit names it in
// every table.
#pragma once

#include <array>
#include <bit>

#include "platform/win32.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

inline constexpr DWORD kMainPage = 1;
inline constexpr DWORD kColorPage = 2;
inline constexpr DWORD kCorrectionPage = 4;
inline constexpr DWORD kConsumptionPage = 8;
inline constexpr DWORD kInkControlPage = 16;
inline constexpr DWORD kScreenPrintingPage = 32;

inline constexpr int kPageKinds = 6;

struct PageKind
{
    DWORD tabBit;         // 1 shifted left by the position
    const char* titleKey; // key of the tab's text in the string table
    int centringControl;  // the control whose frame the page's content is centred by
};

// clang-format off
inline constexpr std::array<PageKind, kPageKinds> kPageKindTable{{
    {kMainPage,           "label_nb_main",           IDC_MAIN_PAPER_GROUP},
    {kColorPage,          "label_nb_color",          IDC_COLOR_INTERPRETATION_GROUP},
    {kCorrectionPage,     "label_nb_correction",     IDC_CORRECTION_GROUP},
    {kConsumptionPage,    "wlabel_nb_consumption",   IDC_CONSUMPTION_HEADER},
    {kInkControlPage,     "label_nb_inkctrl",        IDC_INK_LIMIT_GROUP},
    {kScreenPrintingPage, "label_nb_screenprinting", IDC_SCREEN_FRAME},
}};
// clang-format on

// Position of a page in the page list, by its tab bit.
constexpr std::size_t PositionOfPage(DWORD tabBit)
{
    return static_cast<std::size_t>(std::countr_zero(tabBit));
}

} // namespace tintwerk
