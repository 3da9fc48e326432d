// The core driver of the sheet tests: what it does not name shows its keyword.
#pragma once

#include "tests/support/fake_core.h"

namespace tintwerk {

using Text = std::basic_string<WCHAR>;

// ISO 8859-1.
inline Text Wide(std::string_view text)
{
    Text wide;
    for (const char c : text)
        wide += static_cast<WCHAR>(static_cast<unsigned char>(c));
    return wide;
}

class ScriptedCore : public FakeCore
{
public:
    ScriptedCore() { namesEveryOption = false; }

    POEMUIOBJ object = Object();
};

} // namespace tintwerk
