#include "host/sheet/standard_texts.h"

#include <algorithm>
#include <array>

namespace tintwerk {

namespace {

// clang-format off
constexpr std::array<StandardText, 20> kStandardTexts{{
    {IDS_CPSUI_ORIENTATION,    "%Orientation",     TEXT("Orientation"),          TEXT("Ausrichtung")},
    {IDS_CPSUI_PORTRAIT,       "Portrait",         TEXT("Portrait"),             TEXT("Hochformat")},
    {IDS_CPSUI_LANDSCAPE,      "Landscape",        TEXT("Landscape"),            TEXT("Querformat")},
    {IDS_CPSUI_ROT_LAND,       "RotatedLandscape", TEXT("Rotated Landscape"),    TEXT("Querformat gedreht")},
    {IDS_CPSUI_PAGEORDER,      "%PageOrder",       TEXT("Page Order"),           TEXT("Seitenreihenfolge")},
    {IDS_CPSUI_FRONTTOBACK,    "FrontToBack",      TEXT("Front to Back"),        TEXT("Von vorn nach hinten")},
    {IDS_CPSUI_BACKTOFRONT,    "BackToFront",      TEXT("Back to Front"),        TEXT("Von hinten nach vorn")},
    {IDS_CPSUI_DUPLEX,         "Duplex",           TEXT("Print on Both Sides"),  TEXT("Beidseitiger Druck")},
    {64734,                    "None",             TEXT("None"),                 TEXT("Keiner")},
    {64771,                    "DuplexNoTumble",   TEXT("Flip on Long Edge"),    TEXT("Lange Kante")},
    {64770,                    "DuplexTumble",     TEXT("Flip on Short Edge"),   TEXT("Kurze Kante")},
    {IDS_CPSUI_NUP,            "%PagePerSheet",    TEXT("Pages Per Sheet"),      TEXT("Seiten pro Blatt")},
    {IDS_CPSUI_NUP_NORMAL,     "1",                TEXT("1"),                    TEXT("1")},
    {IDS_CPSUI_NUP_TWOUP,      "2",                TEXT("2"),                    TEXT("2")},
    {IDS_CPSUI_NUP_FOURUP,     "4",                TEXT("4"),                    TEXT("4")},
    {IDS_CPSUI_NUP_SIXUP,      "6",                TEXT("6"),                    TEXT("6")},
    {IDS_CPSUI_NUP_NINEUP,     "9",                TEXT("9"),                    TEXT("9")},
    {IDS_CPSUI_NUP_SIXTEENUP,  "16",               TEXT("16"),                   TEXT("16")},
    {IDS_CPSUI_BOOKLET,        "Booklet",          TEXT("Booklet"),              TEXT("Brosch\u00fcre")},
    {IDS_CPSUI_ADVANCED,       "",                 TEXT("Advanced"),             TEXT("Erweitert")},
}};
// clang-format on

} // namespace

const StandardText* FindStandardText(const WCHAR* textOrNumber)
{
    const auto row = std::ranges::find(kStandardTexts, reinterpret_cast<ULONG_PTR>(textOrNumber),
                                       [](const StandardText& text) { return ULONG_PTR(text.number); });
    return row == kStandardTexts.end() ? nullptr : &*row;
}

const WCHAR* OptionText(const WCHAR* textOrNumber, bool german)
{
    if (!IS_INTRESOURCE(textOrNumber)) return textOrNumber;
    const StandardText* const text = FindStandardText(textOrNumber);
    if (!text) return TEXT("");
    return german ? text->german : text->english;
}

} // namespace tintwerk
