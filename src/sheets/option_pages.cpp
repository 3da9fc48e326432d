#include "src/sheets/option_pages.h"

#include "src/records/process_values.h"
#include "src/sheets/advanced_selection.h"
#include "src/sheets/advanced_texts.h"
#include "src/sheets/layout_items.h"
#include "src/sheets/option_items.h"
#include "src/sheets/sheet_calls.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr WORD kCallerVersion = 0x100;
constexpr WORD kPrinterIcon = 64062; // of the common property sheet UI

// The sheet's context when the user applies, null at every other time.
const SheetContext* AppliedContext(const CPSUICBPARAM* parameters)
{
    if (!parameters || parameters->Reason != CPSUICB_REASON_APPLYNOW) return nullptr;
    const auto* const record = reinterpret_cast<const SheetRecord*>(parameters->UserData);
    return record ? record->context : nullptr;
}

LONG APIENTRY ApplyLayoutPage(PCPSUICBPARAM parameters)
{
    if (const SheetContext* const context = AppliedContext(parameters)) {
        const OptionItemsArea& page = context->optionItems;
        ApplyOptionItems(*context, kLayoutRows, page.layoutItems, page.layoutItemCount);
    }
    return CPSUICB_ACTION_NONE;
}

LONG APIENTRY ApplyAdvancedPage(PCPSUICBPARAM parameters)
{
    const SheetContext* const context = AppliedContext(parameters);
    if (context && context->optionItems.advancedRows) {
        const OptionItemsArea& page = context->optionItems;
        ApplyOptionItems(*context, page.advancedRows, page.advancedItems, page.advancedItemCount);
    }
    return CPSUICB_ACTION_NONE;
}

// The common property sheet UI declares its texts writable and never writes to them.
LPTSTR UiText(const WCHAR* text)
{
    return const_cast<LPTSTR>(text);
}

COMPROPSHEETUI DescribePage(SheetRecord& record, OPTITEM* items, int count)
{
    COMPROPSHEETUI page{};
    page.cbSize = sizeof(page);
    page.Flags = CPSUIF_UPDATE_PERMISSION;
    page.hInstCaller = Process().module;
    page.UserData = reinterpret_cast<ULONG_PTR>(&record);
    page.pHelpFile = UiText(TEXT("CPSUISam.hlp"));
    page.pOptItem = items;
    page.cOptItem = static_cast<WORD>(count);
    page.IconID = kPrinterIcon;
    page.CallerVersion = kCallerVersion;
    page.OptItemVersion = kCallerVersion;
    return page;
}

// Returns the number of pages that the common property sheet UI made of it.
DWORD AddItemPage(SheetRecord& record, const PROPSHEETUI_INFO& info, COMPROPSHEETUI& page)
{
    DWORD pages = 0;
    AddToSheet(record, info, CPSFUNC_ADD_PCOMPROPSHEETUIW, &page, reinterpret_cast<LPARAM>(&pages));
    return pages;
}

} // namespace

void AddLayoutPage(SheetRecord& record, const PROPSHEETUI_INFO& info)
{
    OptionItemsArea& area = record.context->optionItems;
    area.layoutItems = BuildOptionItems(*record.context, kLayoutRows, &area.layoutItemCount);
    if (!area.layoutItems) return;

    COMPROPSHEETUI page = DescribePage(record, area.layoutItems, area.layoutItemCount);
    page.pCallerName = UiText(TEXT("Loomspire Driver"));
    page.pfnCallBack = ApplyLayoutPage;
    page.pDlgPage = CPSUI_PDLGPAGE_DOCPROP;
    page.pOptItemName = UiText(TEXT("Optname"));
    const DWORD pages = AddItemPage(record, info, page);
    Trace(TEXT("*** *** CPSFUNC_ADD_PCOMPROPSHEET: pages: %d\n"), static_cast<int>(pages));
}

void AddAdvancedPages(SheetRecord& record, const PROPSHEETUI_INFO& info)
{
    OptionItemsArea& area = record.context->optionItems;
    AdvancedKeywords keywords;
    if (!SelectAdvancedKeywords(record.context->core, keywords)) return;
    area.advancedRows = RowsFromKeywords(record.context->core, keywords);
    if (!area.advancedRows) return;
    area.advancedItems = BuildOptionItems(*record.context, area.advancedRows, &area.advancedItemCount);
    if (!area.advancedItems) return;

    COMPROPSHEETUI page = DescribePage(record, area.advancedItems, area.advancedItemCount);
    page.pCallerName = UiText(TEXT("Tintwerk Driver"));
    page.pfnCallBack = ApplyAdvancedPage;
    page.pDlgPage = CPSUI_PDLGPAGE_TREEVIEWONLY;
    page.pOptItemName = record.context->printerName;
    const DWORD pages = AddItemPage(record, info, page);
    Trace(TEXT("*** optionspage CPSFUNC_ADD_PCOMPROPSHEET: pages: %d\n"), static_cast<int>(pages));
}

} // namespace tintwerk
