#include "src/sheets/sheet_lifetime.h"

#include "platform/owners.h"
#include "src/sheets/source_list.h"

namespace tintwerk {

namespace {

void Free(HANDLE heap, void* block)
{
    if (block) HeapFree(heap, 0, block);
}

void ReleaseContext(SheetContext* context)
{
    if (!context) return;
    const OptionItemsArea& pages = context->optionItems;
    Free(context->core.heap, pages.layoutItems);
    Free(context->core.heap, pages.advancedItems);
    Free(context->core.heap, pages.advancedRows);
    Free(GetProcessHeap(), context->options);
    Free(GetProcessHeap(), context);
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
