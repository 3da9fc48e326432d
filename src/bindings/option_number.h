// The number that a text from outside begins with, and the one that an option keyword of a PPD stands for.
// Pure.
#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

namespace tintwerk {

// A decimal integer at the start of a text, after white space and with an optional sign. Numbers beyond 32
// bits end at the ends of 32 bits: a counter that ran over is shown as large as can be, never as something
// else.
constexpr std::optional<int> LeadingNumber(std::string_view text)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty() || !isDigit(text.front())) return std::nullopt;

    constexpr long long kFarEnough = 1LL << 32;
    long long number = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1))
        number = std::min(number * 10 + (text.front() - '0'), kFarEnough);
    return static_cast<int>(std::clamp<long long>(
        negative ? -number : number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// "-off" anywhere is 0, "-on" anywhere is 1, else the number that the keyword begins with. Nothing when there
// is none.
constexpr std::optional<int> OptionNumber(std::string_view option)
{
    if (option.find("-off") != option.npos) return 0;
    if (option.find("-on") != option.npos) return 1;
    return LeadingNumber(option);
}

} // namespace tintwerk
