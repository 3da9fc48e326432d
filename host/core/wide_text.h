// UTF-8 to the platform's 16-bit texts and back, for the host program. Broken input becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

using WideString = std::basic_string<WCHAR>;
using WideView = std::basic_string_view<WCHAR>;

void AppendWide(WideString& text, std::string_view utf8);
WideString WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(WideView wide);

} // namespace tintwerk
