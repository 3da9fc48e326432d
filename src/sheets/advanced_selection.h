// Chooses what the advanced page lists: the driver's own features among those that the core driver knows, in
// groups.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

inline constexpr SIZE_T kFeatureListBytes = 2048;

// Group headers (their names begin with "+") and feature keywords, closed by an empty string. What no longer
// fits is left out.
struct AdvancedKeywords
{
    char list[kFeatureListBytes] = {};
    SIZE_T used = 0; // bytes without the closing zero
};

// False when the core driver does not name its features.
bool SelectAdvancedKeywords(const CoreArea& core, AdvancedKeywords& keywords);

} // namespace tintwerk
