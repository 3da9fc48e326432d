// The dialog font where there is none: its widths, recorded with GetTextExtentPoint32W under Wine on Debian,
// where "MS Shell Dlg" is DejaVu Sans of 11 pixels.
#include "tests/support/dialog_font.h"

namespace tintwerk {
namespace {

// clang-format off
constexpr unsigned char kWidths[] = {
    // from the blank to the tilde
     4,  4,  5,  9,  7, 10,  9,  3,  4,  4,  6,  9,  4,  4,  4,  4,
     7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  4,  4,  9,  9,  9,  6,
    11,  8,  8,  8,  8,  7,  6,  9,  8,  3,  3,  7,  6,  9,  8,  9,
     7,  9,  8,  7,  7,  8,  8, 11,  8,  7,  8,  4,  4,  4,  9,  6,
     6,  7,  7,  6,  7,  7,  4,  7,  7,  3,  3,  6,  3, 11,  7,  7,
     7,  7,  5,  6,  4,  7,  7,  9,  7,  7,  6,  7,  4,  7,  9,
};
// clang-format on

int Width(WCHAR character)
{
    if (character >= TEXT(' ') && character <= TEXT('~')) return kWidths[character - TEXT(' ')];
    switch (character) {
    case 0xC4: // the umlauts
    case 0xDC:
        return 8;
    case 0xD6:
        return 9;
    default:
        return 7; // the small umlauts and the sharp s
    }
}

} // namespace

int DialogTextWidth(std::basic_string_view<WCHAR> line)
{
    int width = 0;
    for (const WCHAR character : line)
        width += Width(character);
    return width;
}

int DialogBaseWidth()
{
    return 7;
}

} // namespace tintwerk
