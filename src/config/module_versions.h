// Versions of the driver's modules, for the information page of the printer properties.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

struct DriverVersions
{
    char dataFileName[128]; // the PPD's file name without its directory, ISO 8859-1; unset when the driver
                            // cannot be read
    WCHAR coreUi[32];
    WCHAR coreDriver[32];
    WCHAR plugin[32];
    WCHAR renderingPlugin[32];
};

// Fills the record from the spooler's description of the printer's driver. Returns 1, or 0 when that cannot
// be read: all four versions are "unknown" then.
int GetDriverVersions(HANDLE printer, DriverVersions* versions);

// The file version of a module's version resource, shortened; empty when there is none. text holds 32 units.
void GetFileVersionText(const WCHAR* path, WCHAR* text);

} // namespace tintwerk
