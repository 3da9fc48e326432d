// The colour codes of the cartridge slots, taken one by one from a comma-separated list. Pure.
#pragma once

#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

class CartridgeCodes
{
public:
    explicit constexpr CartridgeCodes(std::basic_string_view<WCHAR> list) : rest_(list) {}

    // The next slot's code. Slots beyond the list have the code of its last one.
    constexpr std::basic_string_view<WCHAR> Next()
    {
        const size_t comma = rest_.find(static_cast<WCHAR>(','));
        const std::basic_string_view<WCHAR> code = rest_.substr(0, comma);
        goesOn_ = comma != rest_.npos && comma + 1 < rest_.size();
        rest_ = goesOn_ ? rest_.substr(comma + 1) : code;
        return code;
    }
    // Whether the list has a code for one more slot.
    constexpr bool GoesOn() const { return goesOn_; }

private:
    std::basic_string_view<WCHAR> rest_;
    bool goesOn_ = true;
};

} // namespace tintwerk
