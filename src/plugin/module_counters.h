// The two counts that keep the module loaded: plug-in objects alive, and locks held by the core driver.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

struct ModuleCounters
{
    LONG volatile liveObjects = 0; // changed atomically only
    LONG volatile locks = 0;       // changed atomically only
};

inline ModuleCounters moduleCounters;

} // namespace tintwerk
