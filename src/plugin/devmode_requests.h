// What the core driver asks of the plug-in's part of the DEVMODE: its size, its defaults, a conversion, a
// merge.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// E_FAIL with last error 87 for an unknown mode or without parameters, else S_OK.
HRESULT HandleDevMode(DWORD mode, OEMDMPARAM* parameters);

// Writes the output record from an input record of any size; from one of another plug-in, the settings'
// defaults. The apply count of the output stays where the input has none. False, and nothing written, when a
// record is missing or the buffer has no room for one.
bool ConvertOEMDevmode(const void* input, void* output, DWORD bufferSize);

} // namespace tintwerk
