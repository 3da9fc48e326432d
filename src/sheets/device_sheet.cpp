#include "src/sheets/device_sheet.h"

#include "src/pages/page_procedure.h"
#include "src/resources/control_ids.h"
#include "src/sheets/sheet_calls.h"

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

HRESULT OpenDeviceSheet(PROPSHEETUI_INFO& info, IPrintCoreUI2* helper)
{
    const auto* const parameters = reinterpret_cast<const OEMUIPSPARAM*>(info.lParamInit);
    SheetRecord* const record = parameters ? CreateRecord(*parameters, helper) : nullptr;
    if (!record) return E_FAIL;

    AddDialogPage(*record, info, IDD_INFORMATION, nullptr, DevicePageProc, record);
    info.Result = 1;
    return S_OK;
}

} // namespace

HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper)
{
    if (!AcceptSheetCall(TEXT("hrOEMDevicePropertySheets"), info, lParam)) return E_FAIL;
    switch (info->Reason) {
    case PROPSHEETUI_REASON_INIT:
        return OpenDeviceSheet(*info, helper);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
        GiveSheetTitle(*info, lParam, TEXT("INFO Page"));
        break;
    case PROPSHEETUI_REASON_SET_RESULT:
        TakeSheetResult(*info, lParam);
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
