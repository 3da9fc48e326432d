// The common property sheet UI: collects the pages that a callback (a printer driver's) adds, runs the sheet,
// and tells the callback when it is over. Option items are not drawn here, nor are further callbacks taken;
// asked to add them the sheet function declines.
#include <vector>

#include "platform/win32.h"

namespace {

constexpr WORD kReasonBeforeInit = 5; // asked once before INIT, with version 0

// The callback, what it was told, and the pages that it added.
struct Sheet
{
    PFNPROPSHEETUI callback;
    PROPSHEETUI_INFO info;
    std::vector<HPROPSHEETPAGE> pages;

    LONG Ask(WORD reason, LPARAM lParam)
    {
        info.Reason = reason;
        return callback(&info, lParam);
    }
};

LONG_PTR CALLBACK SheetFunction(HANDLE handle, UINT function, LPARAM lParam1, LPARAM)
{
    auto* const sheet = static_cast<Sheet*>(handle);
    if (!sheet || function != CPSFUNC_ADD_PROPSHEETPAGEW) return 0;
    const HPROPSHEETPAGE page = CreatePropertySheetPageW(reinterpret_cast<LPCPROPSHEETPAGEW>(lParam1));
    if (page) sheet->pages.push_back(page);
    return reinterpret_cast<LONG_PTR>(page);
}

bool Begin(Sheet& sheet, LPARAM lParam)
{
    sheet.info.cbSize = sizeof sheet.info;
    sheet.info.lParamInit = lParam;
    sheet.Ask(kReasonBeforeInit, lParam);
    sheet.info.Version = PROPSHEETUI_INFO_VERSION;
    sheet.info.Flags = PSUIINFO_UNICODE;
    sheet.info.hComPropSheet = &sheet;
    sheet.info.pfnComPropSheet = SheetFunction;
    return sheet.Ask(PROPSHEETUI_REASON_INIT, lParam) > 0;
}

PROPSHEETHEADERW HeaderFor(const PROPSHEETUI_INFO_HEADER& wanted, std::vector<HPROPSHEETPAGE>& pages)
{
    PROPSHEETHEADERW header{};
    header.dwSize = sizeof header;
    header.hwndParent = wanted.hWndParent;
    header.hInstance = wanted.hInst;
    header.pszCaption = wanted.pTitle;
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    return header;
}

} // namespace

LONG WINAPI CommonPropertySheetUIW(HWND owner, PFNPROPSHEETUI callback, LPARAM lParam, LPDWORD result)
{
    if (!callback) return ERR_CPSUI_GETLASTERROR;
    Sheet sheet{callback, {}, {}};
    PROPSHEETUI_INFO_HEADER wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.hWndParent = owner;
    const bool ready = Begin(sheet, lParam) &&
                       sheet.Ask(PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&wanted)) > 0;
    LONG answer = ready && sheet.pages.empty() ? ERR_CPSUI_NO_PROPSHEETPAGE : ERR_CPSUI_GETLASTERROR;
    if (ready && !sheet.pages.empty()) {
        const PROPSHEETHEADERW header = HeaderFor(wanted, sheet.pages);
        if (PropertySheetW(&header) >= 0) answer = CPSUI_OK;
    } else {
        for (const HPROPSHEETPAGE page : sheet.pages)
            DestroyPropertySheetPage(page);
    }
    sheet.Ask(PROPSHEETUI_REASON_DESTROY, answer > 0);
    if (result) *result = static_cast<DWORD>(sheet.info.Result);
    return answer;
}
