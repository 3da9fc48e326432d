// How a function of the platform refuses.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// FALSE or null, with the last error set.
template <typename Result = BOOL> Result Refuse(DWORD error)
{
    SetLastError(error);
    return {};
}

} // namespace tintwerk
