// What the page controls stand at: read by the feature layer when it writes a page and by the pages
// themselves. An empty window reads as nothing chosen.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

bool IsChecked(HWND checkBox);

// Item data (the selection number) of a popup's current item; 0 when there is none.
int SelectedItemData(HWND popup);

// The logical position of a slider: a vertical one has its maximum at the top.
int GetLogicalPosition(HWND slider);
void SetLogicalPosition(HWND slider, int position);

} // namespace tintwerk
