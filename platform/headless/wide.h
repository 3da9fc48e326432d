// Conversions between the 16-bit text of the platform and the 8-bit text of this system (UTF-8), for the
// headless layer.
#pragma once

#include <string>
#include <string_view>

#include "platform/win32.h"

namespace tintwerk::headless {

inline std::basic_string<WCHAR> Wide(std::string_view text)
{
    std::basic_string<WCHAR> wide(text.size(), 0); // no byte makes more than one unit
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

inline std::string Narrow(std::basic_string_view<WCHAR> wide)
{
    std::string text(wide.size() * 3, 0); // no unit makes more
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                           text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// A path as the plug-in writes it, for this system.
inline std::string NativePath(std::string_view path)
{
    std::string native(path);
    for (char& c : native)
        c = c == '\\' ? '/' : c;
    return native;
}

} // namespace tintwerk::headless
