// Filling the popups from the option lists, and writing a choice back.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Puts an option list into a combo box and selects the item of a selection number. visibility, when given,
// has one flag per entry; 0 leaves the option out.
void FillPopUp(HWND combo, const OptionEntry* list, const int* visibility, int selection);

// The option list that a popup row shows, and its visibility flags (null for none).
const OptionEntry* PopupList(const SheetContext& context, int row);
const int* PopupVisibility(const SheetContext& context, int row);

// Writes the option of a row's current item to the row's feature. False when there is no option to write.
bool SetPopupOption(SheetContext& context, int row);

} // namespace tintwerk
