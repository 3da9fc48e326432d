// The sliders of a page and the labels that show their values.
#pragma once

#include "platform/win32.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

// Ties the controls of a row of the slider table to the sheet and puts the slider on its initial position.
// The slider's PROP_CONTROL is its label, the label's is the row.
void BindSlider(HWND page, SheetContext& context, int row);

bool IsBoundSlider(const SheetContext& context, HWND window);

// Brings a slider's value label up to date.
void SetScrollValue(HWND slider);

} // namespace tintwerk
