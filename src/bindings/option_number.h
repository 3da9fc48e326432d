// The number that an option keyword of a PPD stands for. Pure.
#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

namespace tintwerk {

// "-off" anywhere is 0, "-on" anywhere is 1, else a decimal integer from the keyword's start. Nothing when
// there is none. Values beyond 32 bits end at the ends of 32 bits.
constexpr std::optional<int> OptionNumber(std::string_view option)
{
    if (option.find("-off") != option.npos) return 0;
    if (option.find("-on") != option.npos) return 1;

    const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    while (!option.empty() && isBlank(option.front()))
        option.remove_prefix(1);
    const bool negative = option.starts_with('-');
    if (negative || option.starts_with('+')) option.remove_prefix(1);
    if (option.empty() || !isDigit(option.front())) return std::nullopt;

    constexpr long long kFarEnough = 1LL << 32;
    long long number = 0;
    for (; !option.empty() && isDigit(option.front()); option.remove_prefix(1))
        number = std::min(number * 10 + (option.front() - '0'), kFarEnough);
    return static_cast<int>(std::clamp<long long>(
        negative ? -number : number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace tintwerk
