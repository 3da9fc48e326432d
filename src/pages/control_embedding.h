// Ties a freshly created page to its sheet: finds the controls, stores their windows in the SheetContext and
// sets every control from what was read when the sheet opened. Nothing here reads or writes the PPD.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// window is the page itself, or the pane of the consumption page (null when it has none). Returns 0.
int MyEmbedControls(DWORD pageBits, SheetContext& context, HWND window);

// The mirror image, when the page is about to go: its windows leave the SheetContext, so that a page opened
// later binds anew. A page that was opened a second time meanwhile keeps its windows.
void ForgetControls(DWORD pageBits, SheetContext& context, HWND window);

} // namespace tintwerk
