// The inside of drawing. There are no pixels: what is painted is for those who watch the calls, and a bitmap
// is its size.
#pragma once

#include "platform/win32.h"

namespace tintwerk::headless {

HBITMAP EnterBitmap(SIZE size);

} // namespace tintwerk::headless
