// The plug-in's part of the DEVMODE. The core driver stores and copies its bytes, so the layout is a stored
// format.
#pragma once

#include <cstddef>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr DWORD kPluginSignature = 0x48414C56; // "HALV", the H most significant
inline constexpr DWORD kPluginVersion = 5;

struct OemPrivateDevmode
{
    DWORD size;          // bytes of the record
    DWORD signature;     // kPluginSignature
    DWORD version;       // kPluginVersion
    DWORD firstSetting;  // percentage, carried for other components of the driver
    DWORD secondSetting; // percentage, carried for other components of the driver
    DWORD applyCount;    // raised with wrap-around by every apply of a document page
};
static_assert(sizeof(OemPrivateDevmode) == 24 && offsetof(OemPrivateDevmode, applyCount) == 20);

} // namespace tintwerk
