#include "src/sheets/sheet_calls.h"

#include "src/records/process_values.h"
#include "src/sheets/activation_context.h"
#include "src/trace/trace.h"

namespace tintwerk {

bool AcceptSheetCall(const WCHAR* entry, const PROPSHEETUI_INFO* info, LPARAM lParam)
{
    Trace(TEXT("UI:  %s(%#x, %#x) entry\r\n"), entry, TraceNumber(info), static_cast<int>(lParam));
    if (info && info->Version == PROPSHEETUI_INFO_VERSION) return true;
    Trace(TEXT("ERROR UI:  %s() ERROR_INVALID_PARAMETER.\r\n"), entry);
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

void GiveSheetTitle(PROPSHEETUI_INFO& info, LPARAM lParam, const WCHAR* title)
{
    if (auto* const header = reinterpret_cast<PROPSHEETUI_INFO_HEADER*>(lParam))
        header->pTitle = const_cast<LPTSTR>(title);
    info.Result = 1;
}

void TakeSheetResult(PROPSHEETUI_INFO& info, LPARAM lParam)
{
    if (const auto* const result = reinterpret_cast<const SETRESULT_INFO*>(lParam))
        info.Result = static_cast<ULONG_PTR>(result->Result);
}

LONG_PTR AddToSheet(SheetRecord& record, const PROPSHEETUI_INFO& info, UINT function, void* page,
                    LPARAM parameter)
{
    record.sheet = info.hComPropSheet;
    record.sheetFunction = info.pfnComPropSheet;
    record.lastPageHandle =
        info.pfnComPropSheet
            ? info.pfnComPropSheet(info.hComPropSheet, function, reinterpret_cast<LPARAM>(page), parameter)
            : 0;
    return record.lastPageHandle;
}

LONG_PTR AddDialogPage(SheetRecord& record, const PROPSHEETUI_INFO& info, WORD dialog, const WCHAR* title,
                       DLGPROC procedure, const void* parameter)
{
    PropertySheetPage page{};
    page.dwSize = sizeof(page);
    page.dwFlags = title ? PSP_USETITLE : PSP_DEFAULT;
    page.hInstance = Process().module;
    page.pszTemplate = MAKEINTRESOURCEW(dialog);
    page.pszTitle = title;
    page.pfnDlgProc = procedure;
    page.lParam = reinterpret_cast<LPARAM>(parameter);
    UseActivationContext(page);
    return AddToSheet(record, info, CPSFUNC_ADD_PROPSHEETPAGEW, &page, 0);
}

} // namespace tintwerk
