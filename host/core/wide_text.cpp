#include "host/core/wide_text.h"

namespace tintwerk {

void AppendWide(WideString& text, std::string_view utf8)
{
    if (utf8.empty()) return;
    const std::size_t before = text.size();
    text.resize(before + utf8.size()); // never more units than bytes
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                          text.data() + before, static_cast<int>(utf8.size()));
    text.resize(before + static_cast<std::size_t>(units));
}

WideString WideFromUtf8(std::string_view utf8)
{
    WideString text;
    AppendWide(text, utf8);
    return text;
}

std::string Utf8FromWide(WideView wide)
{
    if (wide.empty()) return {};
    std::string text(wide.size() * 3, 0); // no unit needs more
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text.data(),
                                          static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(bytes));
    return text;
}

} // namespace tintwerk
