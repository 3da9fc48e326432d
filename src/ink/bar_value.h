// What an ink level bar shows, packed into the 32-bit word that its control carries in its user data: the
// consumption page writes it, the painting reads it.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

struct BarValue
{
    int percent;
    BYTE red, green, blue;
    bool operator==(const BarValue&) const = default;
};

// Only the low 8 bits of the percentage are kept.
constexpr DWORD PackBarValue(const BarValue& bar)
{
    return static_cast<DWORD>(bar.percent & 0xFF) << 24 | static_cast<DWORD>(bar.red) << 16 |
           static_cast<DWORD>(bar.green) << 8 | bar.blue;
}

constexpr BarValue UnpackBarValue(DWORD word)
{
    return {static_cast<int>(word >> 24), static_cast<BYTE>(word >> 16), static_cast<BYTE>(word >> 8),
            static_cast<BYTE>(word)};
}

} // namespace tintwerk
