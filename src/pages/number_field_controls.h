// The number fields of a page: an edit box with a spin control each. The edit text and the stored value
// count; the spin control's range and position only mirror them.
#pragma once

#include "platform/win32.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

// Ties the controls of a row of the number field table to the sheet and shows the stored value. The
// PROP_CONTROL of both is the row plus 1.
void BindNumberField(HWND page, SheetContext& context, int row);

// The user clicked a spin control: steps its number. False when it is none of these.
bool StepNumberField(SheetContext& context, const NMUPDOWN& notification);

// The user left an edit box: takes over what was typed, or shows the stored value again.
void CommitNumberField(SheetContext& context, HWND edit);

} // namespace tintwerk
