// Numbers of code pages that the platform's headers do not name.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

inline constexpr UINT kLatin1CodePage = 28591; // ISO 8859-1

} // namespace tintwerk
