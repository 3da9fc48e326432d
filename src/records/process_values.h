// What the whole process shares. The last document sheet initialised decides the GUI mode and the logo.
// Sheets of several threads read and write these values at any time.
#pragma once

#include "platform/win32.h"
#include "src/records/shared_value.h"

namespace tintwerk {

inline constexpr int kGuiModeShowsConsumption = 2;   // flag: a reduced GUI keeps the consumption page
inline constexpr int kGuiModeFull = 4;               // flag: the full main page, without an OEM logo
inline constexpr LONG_PTR kNoActivationContext = -1; // the number of INVALID_HANDLE_VALUE

struct GuiChoice
{
    int mode;                  // 0 when the PPD has no GUI mode
    char oemLogoFileName[256]; // below "oem" of the configuration directory; empty for none
};

struct ConfigDirectoryText
{
    char path[256];
};

struct ProcessValues
{
    SharedValue<HINSTANCE>
        module; // this module, stored when the process attaches; dialogs and bitmaps come from it
    SharedRecord<GuiChoice> gui;
    SharedRecord<ConfigDirectoryText> configDirectory; // read from the registry once; empty until then
    SharedValue<LONG_PTR> activationContext =
        kNoActivationContext; // made at the first page creation and kept
};

inline ProcessValues& Process()
{
    static constinit ProcessValues values{};
    return values;
}

} // namespace tintwerk
