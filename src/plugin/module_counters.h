// The two counts that keep the module loaded: plug-in objects alive, and locks held by the core driver.
#pragma once

#include <atomic>

#include "platform/win32.h"

namespace tintwerk {

struct ModuleCounters
{
    std::atomic<LONG> liveObjects{0};
    std::atomic<LONG> locks{0};
};

inline ModuleCounters moduleCounters;

} // namespace tintwerk
