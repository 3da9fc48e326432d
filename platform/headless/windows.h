// The headless platform: a small Win32 of our own without a display, with the names, arguments and visible effects of the
// real one. It holds only what the plug-in and the host call. Included through platform/win32.h only.
#pragma once

#include "platform/headless/types.h"

#include "platform/headless/kernel.h"  // memory, errors, text, modules, resources, processes, activation contexts, COM
#include "platform/headless/registry.h" // registry
#include "platform/headless/spooler.h" // printers, jobs, forms, drivers, DEVMODE
#include "platform/headless/gdi.h"     // pixel surfaces, brushes, bitmaps
#include "platform/headless/user.h"    // windows, messages, dialogs, rectangles, message boxes, timers
#include "platform/headless/controls.h" // button, edit, static, combo box, trackbar, up-down, tab
#include "platform/headless/propsheet.h" // property sheets and the common property sheet UI
