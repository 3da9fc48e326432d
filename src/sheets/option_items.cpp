#include "src/sheets/option_items.h"

#include <algorithm>
#include <cstring>

#include "src/features/feature_access.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kSelectedBytes = 128; // of a selected option's keyword

struct ItemCounts
{
    SIZE_T items = 0;
    SIZE_T features = 0;
    SIZE_T options = 0;
};

ItemCounts CountItems(const SourceRow* rows)
{
    ItemCounts counts;
    for (const SourceEntry& entry : SourceList(rows)) {
        ++counts.items;
        if (IsHeader(*entry.row)) continue;
        ++counts.features;
        counts.options += static_cast<SIZE_T>(entry.optionCount);
    }
    return counts;
}

// A number of the common property sheet UI travels in the pointer, as resource numbers do.
LPTSTR TextOf(const SourceRow& row)
{
    return reinterpret_cast<LPTSTR>(row.text);
}

void FillItem(OPTITEM& item, const SourceRow& row, BYTE level)
{
    item.cbSize = sizeof(OPTITEM);
    item.Level = level;
    item.pName = TextOf(row);
    item.DMPubID = static_cast<BYTE>(row.mark);
}

void FillType(OPTTYPE& type, const SourceEntry& entry, OPTPARAM* params)
{
    type.cbSize = sizeof(OPTTYPE);
    type.Type = static_cast<BYTE>(entry.row->kind);
    type.Count = static_cast<WORD>(entry.optionCount);
    type.pOptParam = entry.optionCount ? params : nullptr;
    for (int option = 0; option < entry.optionCount; ++option) {
        params[option].cbSize = sizeof(OPTPARAM);
        params[option].pData = TextOf(entry.options[option]);
        params[option].IconID = entry.options[option].kind;
    }
}

// Index of the selected keyword; a keyword that the list does not offer shows as the first option.
LONG IndexOfOption(const SourceEntry& entry, const char* selected)
{
    for (int option = 0; option < entry.optionCount; ++option)
        if (std::strcmp(entry.options[option].name, selected) == 0) return option;
    return 0;
}

void ApplyItem(const SheetContext& context, const SourceEntry& entry, const OPTITEM& item)
{
    if (entry.optionCount == 0) return;
    const LONG selected = std::clamp<LONG>(item.Sel, 0, entry.optionCount - 1);
    const char* const option = entry.options[selected].name;
    SetOption(context, entry.row->name, option);
    Trace(TEXT("*** set layoutitem '%S' to '%S' / item #%d\n"), entry.row->name, option,
          static_cast<int>(selected));
}

} // namespace

OPTITEM* BuildOptionItems(const SheetContext& context, const SourceRow* rows, int* count)
{
    *count = 0;
    const ItemCounts counts = CountItems(rows);
    const SIZE_T bytes = counts.items * sizeof(OPTITEM) + counts.features * sizeof(OPTTYPE) +
                         counts.options * sizeof(OPTPARAM);
    auto* const items = static_cast<OPTITEM*>(HeapAlloc(context.core.heap, HEAP_ZERO_MEMORY, bytes));
    if (!items) return nullptr;
    auto* type = reinterpret_cast<OPTTYPE*>(items + counts.items);
    auto* params = reinterpret_cast<OPTPARAM*>(type + counts.features);

    for (const SourceEntry& entry : SourceList(rows)) {
        if (IsHeader(*entry.row)) {
            FillItem(items[(*count)++], *entry.row, 0);
            continue;
        }
        char selected[kSelectedBytes] = {};
        const HRESULT status = getPPDOptionSV(context, entry.row->name, nullptr, selected, sizeof(selected));
        Trace(TEXT("***result getPPDOption of feature '%S' = '%S' / %d\n"), entry.row->name, selected,
              static_cast<int>(status));
        if (FAILED(status)) continue;

        OPTITEM& item = items[(*count)++];
        FillItem(item, *entry.row, 1);
        FillType(*type, entry, params);
        item.pOptType = type++;
        params += entry.optionCount;
        item.Sel = IndexOfOption(entry, selected);
        Trace(TEXT("Selection is item #%d\n"), static_cast<int>(item.Sel));
    }
    return items;
}

// Items keep the order of the rows that they were built from, and every row has a text of its own: the next
// item belongs to the next row that shows the item's text. Rows between them were left out.
void ApplyOptionItems(const SheetContext& context, const SourceRow* rows, const OPTITEM* items, int count)
{
    const OPTITEM* item = items;
    for (const SourceEntry& entry : SourceList(rows)) {
        if (item == items + count) return;
        if (item->pName != TextOf(*entry.row)) continue;
        if (!IsHeader(*entry.row)) ApplyItem(context, entry, *item);
        ++item;
    }
}

} // namespace tintwerk
