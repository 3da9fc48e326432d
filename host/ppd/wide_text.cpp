#include "host/ppd/wide_text.h"

namespace tintwerk {

void AppendWide(WideString& text, std::string_view utf8)
{
    const std::size_t start = text.size();
    text.resize(start + utf8.size()); // no byte makes more than one unit
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                          text.data() + start, static_cast<int>(utf8.size()));
    text.resize(start + static_cast<std::size_t>(units));
}

WideString WideFromUtf8(std::string_view utf8)
{
    WideString text;
    AppendWide(text, utf8);
    return text;
}

std::string Utf8FromWide(WideView wide)
{
    std::string text(3 * wide.size(), '\0'); // no unit makes more
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text.data(),
                                          static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(bytes));
    return text;
}

std::filesystem::path PathFromUtf8(std::string_view text)
{
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path)
{
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

} // namespace tintwerk
