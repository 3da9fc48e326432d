// Receives what this process writes with OutputDebugStringW: the host's --trace and the tests listen here.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Called on the thread that traces, with one whole line.
using DebugSink = void (*)(const WCHAR* line, void* context);

// Sets the one sink of the process; a null sink switches it off. Not to be called while another thread
// traces.
void SetDebugSink(DebugSink sink, void* context);

} // namespace tintwerk
