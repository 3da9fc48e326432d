// What a test expects of a trace without naming every line of it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

// The first of the expected lines, or beginnings of lines, that does not come behind the one before it; empty
// when all came in their order.
inline std::string MissingLine(const std::vector<std::basic_string<WCHAR>>& lines,
                               const std::vector<std::string>& expected)
{
    auto line = lines.begin();
    for (const std::string& beginning : expected) {
        const std::basic_string<WCHAR> wide(beginning.begin(), beginning.end());
        line = std::find_if(line, lines.end(), [&](auto& told) { return told.starts_with(wide); });
        if (line == lines.end()) return beginning;
        ++line;
    }
    return {};
}

} // namespace tintwerk
