#include "src/features/borderless_list.h"

#include <algorithm>
#include <string_view>

#include "src/bindings/borderless_sizes.h"
#include "src/bindings/popups.h"
#include "src/trace/trace.h"

namespace tintwerk {

void CreateBorderlessList(SheetContext& context)
{
    const OptionEntry* const list = context.options->lists[kPopupPageSize].data();
    const size_t count = static_cast<size_t>(CountOptions(list));
    std::string_view sizes[kMaxOptions];
    for (size_t i = 0; i < count; ++i)
        sizes[i] = list[i].keyword;
    const std::span statuses(context.pageSizes.statuses, count);
    PairBorderlessSizes({sizes, count}, statuses);
    for (size_t i = 0; i < count; ++i)
        Trace(TEXT("Borderless Format #%d='%S' BL-Status=%d\n"), static_cast<int>(i), list[i].keyword,
              statuses[i]);

    int& selection = context.popups.selections[kPopupPageSize];
    const OptionEntry* const selected = FindSelected(list, selection);
    Trace(TEXT("Current selection is: '%S'\n"), selected ? selected->keyword : "");
    context.pageSizes.borderless = false;
    if (!selected) return;

    const int status = statuses[static_cast<size_t>(selection - 1)];
    if (status != kBorderlessOnlySize && status != kBorderlessTwin) return;
    context.pageSizes.borderless = true;
    if (status == kBorderlessOnlySize) return;
    // The popup shows the normal size; the check box says that it is the twin. In the order
    // "a4BORDERLESSBorderless", "a4BORDERLESS", "A4" a twin is left without a normal size, and stays
    // selected.
    if (const auto normal = std::ranges::find(statuses, selection); normal != statuses.end())
        selection = static_cast<int>(normal - statuses.begin()) + 1;
}

} // namespace tintwerk
