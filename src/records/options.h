// The option lists of one open sheet: what the core driver offers for each popup, read once when the sheet
// opens.
#pragma once

#include <array>
#include <cstddef>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr int kPopupRows = 14;  // rows of the popup binding table; each has an option list
inline constexpr int kPopups = 13;     // the rows that have a combo box (all but the last)
inline constexpr int kMaxOptions = 80; // options of one list that the pages can show
inline constexpr int kCartridgeColorUnits = 128;

// Characters that requests and answers of the core driver have room for.
inline constexpr std::size_t kLongestFeature = 254; // keyword that can be asked for
inline constexpr std::size_t kLongestPair = 508;    // keywords of feature and option that can be selected
inline constexpr std::size_t kLongestOption = 255;  // keyword that is recognised as the selected one
inline constexpr std::size_t kLongestName = 511;    // that is shown for an option

inline constexpr SIZE_T kOptionBufferBytes = 33064;

// One option of a PPD feature. Both texts belong to blocks of the sheet's plug-in heap and live as long as
// the sheet.
struct OptionEntry
{
    const char* keyword;      // null ends a list
    const WCHAR* displayName; // null when the core driver gave none
};

// Ends at the first entry without keyword or after kMaxOptions entries.
using OptionList = std::array<OptionEntry, kMaxOptions>;

struct OptionTable
{
    std::array<OptionList, kPopupRows> lists;    // in the order of the popup binding table
    WCHAR cartridgeColors[kCartridgeColorUnits]; // comma-separated colour codes, one per cartridge slot
};
static_assert(sizeof(OptionTable) <= kOptionBufferBytes);

// Number of options of a list.
constexpr int CountOptions(const OptionEntry* list)
{
    int count = 0;
    while (count < kMaxOptions && list[count].keyword)
        ++count;
    return count;
}

// The entry with a selection number (1-based position in its list); null for 0 and for numbers past the list.
constexpr const OptionEntry* FindSelected(const OptionEntry* list, int selection)
{
    return selection >= 1 && selection <= CountOptions(list) ? &list[selection - 1] : nullptr;
}

} // namespace tintwerk
