// The font of the dialogs, for tests that judge whether a text fits its control.
#pragma once

#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

// Pixels at 96 dpi of one line of text in "MS Shell Dlg", 8 point.
int DialogTextWidth(std::basic_string_view<WCHAR> line);

// Height of a line in pixels.
inline constexpr int kDialogLineHeight = 13;

// Pixels of four horizontal dialog units; eight vertical ones are a line.
int DialogBaseWidth();

} // namespace tintwerk
