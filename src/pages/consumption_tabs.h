// The tab control of the consumption page and the pane inside it: a child dialog with the names, bars and
// numbers of the inks.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// A dialog template of the module, ready for CreateDialogIndirectParamW; null when there is none.
LPCDLGTEMPLATEW DoLockRed(int number);

// Sets up the tabs of a page that has a tab control and creates the pane.
void OnTabbedDialogInit(HWND page);

// Creates the pane for the selected tab, unless a pane exists.
void OnSelectionChanged(HWND page, HWND tabControl);

// The pane of a page; null when it has none.
HWND PaneOf(HWND page);

// Gives back what OnTabbedDialogInit took; the pane goes with its page.
void ReleaseTabs(HWND page);

} // namespace tintwerk
