// What the whole process shares. The last document sheet initialised decides the GUI mode and the logo;
// nothing here is locked, as everything of a sheet runs on its user interface thread.
#pragma once

#include <optional>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr int kGuiModeShowsConsumption = 2; // flag: a reduced GUI keeps the consumption page
inline constexpr int kGuiModeFull = 4;             // flag: the full main page, without an OEM logo

struct ProcessValues
{
    HINSTANCE module =
        nullptr;     // this module, stored when the process attaches; dialogs and bitmaps come from it
    int guiMode = 0; // 0 when the PPD has no GUI mode
    char oemLogoFileName[256] = {};          // below "oem" of the configuration directory; empty for none
    char configDirectory[256] = {};          // read from the registry once; empty until then
    std::optional<HANDLE> activationContext; // made at the first page creation and kept
};

ProcessValues& Process();

} // namespace tintwerk
