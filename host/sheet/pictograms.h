// Small pictures for the standard document items, for the icon numbers of the system's common property sheet
// UI.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

bool HasPictogram(ULONG_PTR icon);

// Draws into the middle of the rectangle; nothing for an icon that has no picture here.
void DrawPictogram(HDC dc, const RECT& rectangle, ULONG_PTR icon);

} // namespace tintwerk
