// Names that somebody may have meant. Used by the rules of tintwerk check and by the command line.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/bindings/borderless_sizes.h"

namespace tintwerk {

// How many letters have to be put in, taken out or replaced to make one name of the other.
inline std::size_t Distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j)
            diagonal = std::exchange(
                row[j], std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])}));
    }
    return row.back();
}

// Alike but for upper and lower case, or for a letter or two of a long name.
inline bool IsNearName(std::string_view a, std::string_view b)
{
    if (a == b) return false;
    if (EqualIgnoringCase(a, b)) return true;
    const std::size_t longer = std::max(a.size(), b.size()), shorter = std::min(a.size(), b.size());
    return shorter >= 6 && longer - shorter <= 2 && Distance(a, b) <= (shorter >= 9 ? 2u : 1u);
}

// The name of a list that somebody may have meant by another, with `before` and a question mark around it;
// empty when none is near.
template <typename Names, typename NameOf = std::identity>
std::string DidYouMean(std::string_view given, const Names& names, std::string_view before,
                       NameOf nameOf = {})
{
    std::string_view nearest;
    std::size_t least = std::min<std::size_t>(given.size() / 2, 2) + 1;
    for (const auto& each : names) {
        const std::string_view name = std::invoke(nameOf, each);
        if (const std::size_t distance = Distance(given, name); distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest.empty() ? "" : "; did you mean " + std::string(before) + std::string(nearest) + "?";
}

} // namespace tintwerk
