// Replaces an imported function of a loaded module, the way that tools which watch a driver from outside do it. Used by the
// debug sink and by the tests (fault injection, recorded message boxes and processes); never by the plug-in.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Points every import of that name in the module at the replacement. Returns the address that stood there before, null
// when the module does not import the function. Hooking again with the returned address takes the hook out.
void* HookImport(HMODULE module, const char* function, void* replacement);

// Takes a module that was loaded later into the replacements of platform/function_hook.h that stand.
void ApplyReplacements(HMODULE module);

} // namespace tintwerk
