// Small text operations that the readers of PPDs and of selections share.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tintwerk {

inline bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

inline bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

// Without blanks and line ends at both ends.
inline std::string_view Trim(std::string_view text)
{
    while (!text.empty() && (IsBlank(text.front()) || IsLineEnd(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && (IsBlank(text.back()) || IsLineEnd(text.back())))
        text.remove_suffix(1);
    return text;
}

// The keyword of "Keyword/Text".
inline std::string_view WithoutText(std::string_view value)
{
    return Trim(value.substr(0, value.find('/')));
}

// Takes the next blank-separated word off the front of a text; empty at its end.
inline std::string_view NextWord(std::string_view& text)
{
    const auto between = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const auto begin = std::find_if_not(text.begin(), text.end(), between);
    const auto end = std::find_if(begin, text.end(), between);
    text = {end, text.end()};
    return {begin, end};
}

inline std::string Quoted(std::string_view text)
{
    std::string quoted(1, '"');
    return quoted.append(text).append(1, '"');
}

// The decimal number that a whole text is, with or without a sign; nothing when it is anything else.
template <typename Number> std::optional<Number> DecimalNumber(std::string_view text)
{
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

// "a, b, c" of a list, each made a text by `text`.
template <typename List, typename Text = std::identity>
std::string Joined(const List& list, const Text& text = {})
{
    std::string joined;
    for (const auto& each : list)
        joined.append(joined.empty() ? "" : ", ").append(std::invoke(text, each));
    return joined;
}

// A hash that stays the same for ever: files and DEVMODEs carry it.
inline std::uint32_t StableHash(std::string_view text, std::uint32_t hash = 2166136261)
{
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
    return hash;
}

// The bytes of pairs of hexadecimal digits, blanks between them; nothing when it is anything else.
inline std::optional<std::string> BytesOfHex(std::string_view text)
{
    std::string digits(text), bytes;
    std::erase_if(digits, [](char c) { return IsBlank(c) || IsLineEnd(c); });
    if (digits.size() % 2) return std::nullopt;
    for (const char* at = digits.data(); at != digits.data() + digits.size(); at += 2) {
        unsigned char byte = 0;
        if (std::from_chars(at, at + 2, byte, 16).ptr != at + 2) return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

} // namespace tintwerk
