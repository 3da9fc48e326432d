// The six kinds of document pages. A page's kind is its position in the page list; its tab bit names it in
// every table.
#pragma once

#include <array>

#include "platform/win32.h"

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
    WORD legacyTemplate;  // dialog of the oldest page list, which names the kind
    DWORD tabBit;         // 1 shifted left by the position
    const char* titleKey; // key of the tab's text in the string table
    int centringControl;  // the control whose frame the page's content is centred by
};

// clang-format off
inline constexpr std::array<PageKind, kPageKinds> kPageKindTable{{
    {149, kMainPage,           "label_nb_main",           1159},
    {162, kColorPage,          "label_nb_color",          1158},
    {163, kCorrectionPage,     "label_nb_correction",     1172},
    {107, kConsumptionPage,    "wlabel_nb_consumption",   1225},
    {164, kInkControlPage,     "label_nb_inkctrl",        1193},
    {229, kScreenPrintingPage, "label_nb_screenprinting", 1294},
}};
// clang-format on

} // namespace tintwerk
