// Which page sizes are borderless, and which two belong together: a size is shown once, with a check box for
// its borderless twin. Pure.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace tintwerk {

// Page size statuses: above 0, the selection number of the borderless twin.
inline constexpr int kBorderlessTwin = 0;      // hidden: reached through its normal size
inline constexpr int kNormalSize = -1;         // without borderless twin
inline constexpr int kBorderlessOnlySize = -2; // borderless without a normal size
inline constexpr int kCustomSize = -3;

inline constexpr std::string_view kCustomPrefix = "Custom";
inline constexpr std::string_view kTwinSuffix = "Borderless"; // of a size that ends like this
inline constexpr std::string_view kTwinPrefix = "borderless"; // of a size that begins like this
inline constexpr std::size_t kLongestPairedKeyword = 117;

constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

// Whether a size is the borderless twin of the normal one, whatever the case of either name.
constexpr bool IsTwin(std::string_view size, std::string_view normal)
{
    if (size.size() != normal.size() + kTwinSuffix.size()) return false;
    const auto matches = [size](std::string_view front, std::string_view back) {
        return EqualIgnoringCase(size.substr(0, front.size()), front) &&
               EqualIgnoringCase(size.substr(front.size()), back);
    };
    return matches(normal, kTwinSuffix) || matches(kTwinPrefix, normal);
}

constexpr int PageSizeStatus(std::span<const std::string_view> sizes, std::string_view size)
{
    if (size.starts_with(kCustomPrefix)) return kCustomSize;
    if (size.find(kTwinSuffix) != size.npos || size.find(kTwinPrefix) != size.npos)
        return kBorderlessOnlySize;
    if (size.size() > kLongestPairedKeyword) return kNormalSize;
    const auto twin =
        std::ranges::find_if(sizes, [size](std::string_view other) { return IsTwin(other, size); });
    return twin != sizes.end() ? static_cast<int>(twin - sizes.begin()) + 1 : kNormalSize;
}

// Sets the status of each page size: one status per size, both in list order. Twins are found ignoring case.
constexpr void PairBorderlessSizes(std::span<const std::string_view> sizes, std::span<int> statuses)
{
    for (std::size_t i = 0; i < sizes.size(); ++i)
        statuses[i] = PageSizeStatus(sizes, sizes[i]);
    for (std::size_t i = 0; i < sizes.size(); ++i)
        if (statuses[i] > 0) statuses[static_cast<std::size_t>(statuses[i] - 1)] = kBorderlessTwin;
}

} // namespace tintwerk
