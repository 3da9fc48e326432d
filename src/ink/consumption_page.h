// The lines of the consumption page: one per shown ink channel with name, bar and number, and the sum.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Lays out and fills all lines and the sum for the current display mode.
void DrawConsumptionPage(SheetContext& context);

// Shows a number; a single blank when it is negative.
void SetNumberText(HWND control, int number);

// Moves a control so that its top is at y in its parent's coordinates, everything else kept.
void MoveControlToY(HWND control, int y);

} // namespace tintwerk
