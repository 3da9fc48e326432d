// A sheet that opens, is checked and applied over a core driver that answers anything: lists end, texts are
// whole, selections name something.
#include <cstdlib>
#include <memory>

#include "fuzz/random_core.h"
#include "src/bindings/popups.h"
#include "src/features/constraints.h"
#include "src/features/initial_read.h"
#include "src/features/page_settings.h"

namespace {

using namespace tintwerk;

void Check(const SheetContext& context)
{
    std::size_t texts = 0;
    for (int row = 0; row < kPopupRows; ++row) {
        const OptionEntry* const list = context.options->lists[static_cast<std::size_t>(row)].data();
        for (int i = 0; i < CountOptions(list); ++i) {
            texts += std::strlen(list[i].keyword);
            if (list[i].displayName) texts += static_cast<std::size_t>(lstrlenW(list[i].displayName));
        }
        const int selection = context.popups.selections[row];
        if (selection < 0 || selection > kMaxOptions) std::abort();
    }
    if (texts > sizeof(OptionTable) * 1000) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count)
{
    FuzzedDataProvider data(bytes, count);
    RandomCore core(data);
    const auto table = std::make_unique<OptionTable>();
    const auto context = std::make_unique<SheetContext>();
    const HANDLE heap = HeapCreate(0, 0, 0);
    context->options = table.get();
    context->core = {nullptr, &core, nullptr, heap};

    InitPPDSettings(*context);
    Check(*context);
    for (const int row : {kPopupMediaType, kPopupResolution})
        CheckConstraints(*context, row);
    for (const int row : {kPopupIntent, kPopupColorModel})
        checkAvailabilityforMenus(*context, row);
    UpdateColorModeControls(*context);
    for (const PageKind& kind : kPageKindTable)
        SavePPDOptions(*context, kind.tabBit);
    Check(*context);
    HeapDestroy(heap);
    return 0;
}
