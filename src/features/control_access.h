// What the page controls stand at, where they stand and whether the user sees and reaches them. An empty
// window reads as nothing chosen, and nothing is done to it.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

bool IsChecked(HWND checkBox);

// Item data (the selection number) of a popup's current item; 0 when there is none.
int SelectedItemData(HWND popup);

// The logical position of a slider: a vertical one has its maximum at the top.
int GetLogicalPosition(HWND slider);
void SetLogicalPosition(HWND slider, int position);

void ShowControl(HWND control, bool show);
void EnableControl(HWND control, bool enable);

// A control's rectangle in its parent's coordinates; empty without a control.
RECT PlaceInParent(HWND control);

} // namespace tintwerk
