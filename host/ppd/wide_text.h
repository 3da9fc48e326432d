// UTF-8, in which the host program keeps its texts, to the platform's 16-bit texts and paths, and back.
// Broken input becomes U+FFFD.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

using WideString = std::basic_string<WCHAR>;
using WideView = std::basic_string_view<WCHAR>;

void AppendWide(WideString& text, std::string_view utf8);
WideString WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(WideView wide);

std::filesystem::path PathFromUtf8(std::string_view text);
std::string Utf8FromPath(const std::filesystem::path& path); // with "/" on every platform

} // namespace tintwerk
