// Source lists: what a generated page shows, as rows of features, their options and group headers. The layout
// page's list is a constant table, the advanced page's is built from the PPD; the item builder and the apply
// callback both walk them through SourceList.
#pragma once

#include <iterator>

#include "platform/win32.h"

namespace tintwerk {

inline constexpr LONG kLastOption = -1; // mark of the last option of a feature

// A list ends with a row without name.
struct SourceRow
{
    const char* name; // keyword of a feature or an option; a group header's begins with "+"
    UINT_PTR text;    // address of a 16-bit text, or number of a text of the common property sheet UI
    DWORD kind;       // feature: the option type's kind (TVOT_...); option: number of its icon, 0 for none
    LONG mark;        // feature: DEVMODE item number (DMPUB_...), 0 for none; option: 0 while more follow.
                      // kLastOption on the last option, on a header and on a feature without options
};

constexpr bool IsHeader(const SourceRow& row)
{
    return row.name[0] == '+';
}

// A header, or a feature with the options that follow its row.
struct SourceEntry
{
    const SourceRow* row;
    const SourceRow* options;
    int optionCount;
};

// Walks a list entry by entry:
//     for (const SourceEntry& entry : SourceList(rows)) ...
class SourceList
{
public:
    explicit constexpr SourceList(const SourceRow* rows) : rows_(rows) {}

    class Iterator
    {
    public:
        explicit constexpr Iterator(const SourceRow* at) : entry_(Read(at)) {}
        constexpr const SourceEntry& operator*() const { return entry_; }
        constexpr Iterator& operator++()
        {
            entry_ = Read(entry_.options + entry_.optionCount);
            return *this;
        }
        constexpr bool operator==(std::default_sentinel_t) const { return entry_.row->name == nullptr; }

    private:
        static constexpr SourceEntry Read(const SourceRow* at)
        {
            SourceEntry entry{at, at + 1, 0};
            if (!at->name || at->mark == kLastOption) return {at, at + 1, 0};
            while (entry.options[entry.optionCount].name)
                if (entry.options[entry.optionCount++].mark == kLastOption) break;
            return entry;
        }

        SourceEntry entry_;
    };

    constexpr Iterator begin() const { return Iterator(rows_); }
    constexpr std::default_sentinel_t end() const { return {}; }

private:
    const SourceRow* rows_;
};

} // namespace tintwerk
