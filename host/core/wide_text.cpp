#include "host/core/wide_text.h"

#include <cstdint>

namespace tintwerk {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

// Takes one character off the front of a text.
std::uint32_t NextCode(std::string_view& utf8)
{
    const auto lead = static_cast<unsigned char>(utf8.front());
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    std::uint32_t code = length > 1 ? lead & (0xFFu >> (length + 1)) : lead;
    std::size_t taken = 1;
    for (; taken < length && taken < utf8.size() && (static_cast<unsigned char>(utf8[taken]) & 0xC0) == 0x80;
         ++taken)
        code = code << 6 | (static_cast<unsigned char>(utf8[taken]) & 0x3Fu);
    utf8.remove_prefix(taken);
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool broken = length == 0 || taken < length || code < kSmallest[length] || code > 0x10FFFF ||
                        (code >= 0xD800 && code < 0xE000);
    return broken ? kReplacement : code;
}

void AppendUtf8(std::string& text, std::uint32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr unsigned char kLead[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(kLead[more] | code >> (6 * more));
    for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
        text += static_cast<char>(0x80 | (code >> shift & 0x3F));
}

} // namespace

void AppendWide(WideString& text, std::string_view utf8)
{
    while (!utf8.empty()) {
        const std::uint32_t code = NextCode(utf8);
        if (code < 0x10000) {
            text += static_cast<WCHAR>(code);
        } else {
            text += static_cast<WCHAR>(0xD7C0 + (code >> 10));
            text += static_cast<WCHAR>(0xDC00 | (code & 0x3FF));
        }
    }
}

WideString WideFromUtf8(std::string_view utf8)
{
    WideString text;
    text.reserve(utf8.size());
    AppendWide(text, utf8);
    return text;
}

std::string Utf8FromWide(WideView wide)
{
    std::string text;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        std::uint32_t code = static_cast<std::uint16_t>(wide[i]);
        if (code >= 0xD800 && code < 0xE000) {
            const std::uint32_t low = i + 1 < wide.size() ? static_cast<std::uint16_t>(wide[i + 1]) : 0u;
            if (code < 0xDC00 && (low & 0xFC00) == 0xDC00) {
                code = 0x10000 + ((code & 0x3FF) << 10) + (low & 0x3FF);
                ++i;
            } else {
                code = kReplacement;
            }
        }
        AppendUtf8(text, code);
    }
    return text;
}

} // namespace tintwerk
