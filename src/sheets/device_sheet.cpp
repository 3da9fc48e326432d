#include "src/sheets/device_sheet.h"

#include "src/pages/page_procedure.h"
#include "src/records/process_values.h"
#include "src/resources/control_ids.h"
#include "src/sheets/activation_context.h"
#include "src/sheets/add_page.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// The record is not given back: the page reads it as long as it lives, and the plug-in heap goes with the
// sheet.
SheetRecord* CreateRecord(const OEMUIPSPARAM& parameters, IPrintCoreUI2* helper)
{
    auto* const record =
        static_cast<SheetRecord*>(HeapAlloc(parameters.hOEMHeap, HEAP_ZERO_MEMORY, sizeof(SheetRecord)));
    if (!record) return nullptr;
    record->coreObject = parameters.poemuiobj;
    record->printer = parameters.hPrinter;
    record->coreHelper = helper;
    return record;
}

HRESULT OpenSheet(PROPSHEETUI_INFO& info, IPrintCoreUI2* helper)
{
    const auto* const parameters = reinterpret_cast<const OEMUIPSPARAM*>(info.lParamInit);
    SheetRecord* const record = parameters ? CreateRecord(*parameters, helper) : nullptr;
    if (!record) return E_FAIL;

    PropertySheetPage page{};
    page.dwSize = sizeof(page);
    page.hInstance = Process().module;
    page.pszTemplate = MAKEINTRESOURCEW(IDD_INFORMATION);
    page.pfnDlgProc = DevicePageProc;
    page.lParam = reinterpret_cast<LPARAM>(record);
    UseActivationContext(page);
    AddToSheet(*record, info, CPSFUNC_ADD_PROPSHEETPAGEW, &page, 0);
    info.Result = 1;
    return S_OK;
}

void GiveTitle(PROPSHEETUI_INFO& info, LPARAM lParam)
{
    static WCHAR title[] = TEXT("INFO Page");
    if (auto* const header = reinterpret_cast<PROPSHEETUI_INFO_HEADER*>(lParam)) header->pTitle = title;
    info.Result = 1;
}

void TakeResult(PROPSHEETUI_INFO& info, LPARAM lParam)
{
    if (const auto* const result = reinterpret_cast<const SETRESULT_INFO*>(lParam))
        info.Result = static_cast<ULONG_PTR>(result->Result);
}

} // namespace

HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper)
{
    Trace(TEXT("UI:  hrOEMDevicePropertySheets(%#x, %#x) entry\r\n"),
          static_cast<unsigned>(reinterpret_cast<UINT_PTR>(info)), static_cast<unsigned>(lParam));
    if (!info || info->Version != PROPSHEETUI_INFO_VERSION) {
        Trace(TEXT("ERROR UI:  hrOEMDevicePropertySheets() ERROR_INVALID_PARAMETER.\r\n"));
        SetLastError(ERROR_INVALID_PARAMETER);
        return E_FAIL;
    }
    switch (info->Reason) {
    case PROPSHEETUI_REASON_INIT:
        return OpenSheet(*info, helper);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
        GiveTitle(*info, lParam);
        break;
    case PROPSHEETUI_REASON_SET_RESULT:
        TakeResult(*info, lParam);
        break;
    case PROPSHEETUI_REASON_GET_ICON:
        info->Result = 0;
        break;
    default:
        info->Result = 1; // DESTROY, and reasons that a later Windows may bring
    }
    return S_OK;
}

} // namespace tintwerk
