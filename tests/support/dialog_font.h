// The font of the dialogs, for tests that judge whether a text fits its control: its widths, recorded with
// GetTextExtentPoint32W under Wine on Debian, where "MS Shell Dlg" is DejaVu Sans of 11 pixels.
#pragma once

#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr int kDialogLineHeight = 13; // eight vertical dialog units
inline constexpr int kDialogBaseWidth = 7;   // four horizontal ones

// Pixels at 96 dpi of one line of text in "MS Shell Dlg", 8 point.
inline int DialogTextWidth(std::basic_string_view<WCHAR> line)
{
    // clang-format off
    static constexpr unsigned char kWidths[] = {
        // from the blank to the tilde
         4,  4,  5,  9,  7, 10,  9,  3,  4,  4,  6,  9,  4,  4,  4,  4,
         7,  7,  7,  7,  7,  7,  7,  7,  7,  7,  4,  4,  9,  9,  9,  6,
        11,  8,  8,  8,  8,  7,  6,  9,  8,  3,  3,  7,  6,  9,  8,  9,
         7,  9,  8,  7,  7,  8,  8, 11,  8,  7,  8,  4,  4,  4,  9,  6,
         6,  7,  7,  6,  7,  7,  4,  7,  7,  3,  3,  6,  3, 11,  7,  7,
         7,  7,  5,  6,  4,  7,  7,  9,  7,  7,  6,  7,  4,  7,  9,
    };
    // clang-format on
    int width = 0;
    for (const WCHAR character : line)
        if (character >= TEXT(' ') && character <= TEXT('~'))
            width += kWidths[character - TEXT(' ')];
        else
            width += character == 0xD6 ? 9 : character == 0xC4 || character == 0xDC ? 8 : 7; // the umlauts
    return width;
}

} // namespace tintwerk
