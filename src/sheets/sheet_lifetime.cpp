#include "src/sheets/sheet_lifetime.h"

#include "platform/owners.h"
#include "src/sheets/source_list.h"

namespace tintwerk {

namespace {

// HeapFree accepts null.
void ReleaseContext(SheetContext* context)
{
    if (!context) return;
    const OptionItemsArea& pages = context->optionItems;
    HeapFree(context->core.heap, 0, pages.layoutItems);
    HeapFree(context->core.heap, 0, pages.advancedItems);
    HeapFree(context->core.heap, 0, pages.advancedRows);
    HeapFree(GetProcessHeap(), 0, context->options);
    HeapFree(GetProcessHeap(), 0, context);
}

} // namespace

SheetRecord* CreateSheet(OEMUIPSPARAM& parameters)
{
    HeapBlock<SheetRecord> record(parameters.hOEMHeap, sizeof(SheetRecord));
    HeapBlock<SheetContext> context(GetProcessHeap(), sizeof(SheetContext));
    HeapBlock<OptionTable> options(GetProcessHeap(), kOptionBufferBytes);
    if (!record || !context || !options) return nullptr;

    record->parameters = &parameters;
    context->options = options.Release();
    record->context = context.Release();
    return record.Release();
}

void ReleaseSheet(SheetRecord* record)
{
    if (!record) return;
    ReleaseContext(record->context);
    HeapFree(record->parameters->hOEMHeap, 0, record);
}

} // namespace tintwerk
