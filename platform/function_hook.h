// Puts another function in the place of one of the platform's, for everything that runs in this process: the
// tests' fault injection and recorders, the host's answers for printers that are not installed. Never used by
// the plug-in.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Every call of the named platform function by this program and by a loaded plug-in goes to the replacement
// from now on; null puts the platform's own back. Returns the platform's own function, for replacements that
// pass calls on; null when nothing in this process calls the function, or it has no place there for another
// (on Linux those have one that somebody replaces).
void* ReplaceFunction(const char* name, void* replacement);

template <typename Function> Function* ReplaceFunction(const char* name, Function* replacement)
{
    return reinterpret_cast<Function*>(ReplaceFunction(name, reinterpret_cast<void*>(replacement)));
}
inline void RestoreFunction(const char* name)
{
    ReplaceFunction(name, static_cast<void*>(nullptr));
}

} // namespace tintwerk
