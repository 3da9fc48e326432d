// Ink level bars: owner-drawn controls that show a bar value (src/ink/bar_value.h) from their user data. Used
// by the pages and by the consumption pane.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Paints the control of a WM_DRAWITEM request. Outlines take the device context's current pen.
void PaintBar(const DRAWITEMSTRUCT& item);

} // namespace tintwerk
