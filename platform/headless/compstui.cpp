// The common property sheet UI: collects the pages that a callback (a printer driver's) adds, runs the sheet,
// and tells the callback when it is over. Option items are not drawn here; asked to add them the sheet
// function declines.
#include <memory>
#include <vector>

#include "platform/headless/windows.h"

namespace tintwerk::headless {

namespace {

constexpr WORD kReasonBeforeInit = 5; // asked once before INIT, with version 0

// One callback and what it was told; a callback can add further ones.
struct Group
{
    PFNPROPSHEETUI callback = nullptr;
    PROPSHEETUI_INFO info{};
    std::vector<std::unique_ptr<Group>> groups;
    std::vector<HPROPSHEETPAGE>* pages = nullptr; // of the whole sheet, in order

    LONG Ask(WORD reason, LPARAM lParam)
    {
        info.Reason = reason;
        return callback(&info, lParam);
    }
    void Destroy(bool accepted)
    {
        for (const std::unique_ptr<Group>& group : groups)
            group->Destroy(accepted);
        Ask(PROPSHEETUI_REASON_DESTROY, accepted);
    }
};

LONG_PTR CALLBACK SheetFunction(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2);

bool Begin(Group& group, PFNPROPSHEETUI callback, LPARAM lParam, std::vector<HPROPSHEETPAGE>& pages)
{
    group.callback = callback;
    group.pages = &pages;
    group.info.cbSize = sizeof group.info;
    group.info.lParamInit = lParam;
    group.Ask(kReasonBeforeInit, lParam);
    group.info.Version = PROPSHEETUI_INFO_VERSION;
    group.info.Flags = PSUIINFO_UNICODE;
    group.info.hComPropSheet = &group;
    group.info.pfnComPropSheet = SheetFunction;
    return group.Ask(PROPSHEETUI_REASON_INIT, lParam) > 0;
}

LONG_PTR AddPage(Group& group, HPROPSHEETPAGE page)
{
    if (page) group.pages->push_back(page);
    return reinterpret_cast<LONG_PTR>(page);
}

LONG_PTR AddGroup(Group& parent, PFNPROPSHEETUI callback, LPARAM lParam)
{
    if (!callback) return 0;
    auto group = std::make_unique<Group>();
    Group& added = *group;
    parent.groups.push_back(std::move(group));
    if (Begin(added, callback, lParam, *parent.pages)) return reinterpret_cast<LONG_PTR>(&added);
    parent.groups.pop_back();
    return 0;
}

LONG_PTR CALLBACK SheetFunction(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2)
{
    auto* const group = static_cast<Group*>(sheet);
    if (!group) return 0;
    switch (function) {
    case CPSFUNC_ADD_HPROPSHEETPAGE:
        return AddPage(*group, reinterpret_cast<HPROPSHEETPAGE>(lParam1));
    case CPSFUNC_ADD_PROPSHEETPAGEW:
        return AddPage(*group, CreatePropertySheetPageW(reinterpret_cast<LPCPROPSHEETPAGEW>(lParam1)));
    case CPSFUNC_ADD_PFNPROPSHEETUIW:
        return AddGroup(*group, reinterpret_cast<PFNPROPSHEETUI>(lParam1), lParam2);
    default:
        return 0;
    }
}

PROPSHEETHEADERW HeaderFor(const PROPSHEETUI_INFO_HEADER& wanted, std::vector<HPROPSHEETPAGE>& pages)
{
    PROPSHEETHEADERW header{};
    header.dwSize = sizeof header;
    if (wanted.Flags & PSUIHDRF_NOAPPLYNOW) header.dwFlags |= PSH_NOAPPLYNOW;
    if (wanted.Flags & PSUIHDRF_PROPTITLE) header.dwFlags |= PSH_PROPTITLE;
    header.hwndParent = wanted.hWndParent;
    header.hInstance = wanted.hInst;
    header.pszCaption = wanted.pTitle;
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    return header;
}

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

LONG WINAPI CommonPropertySheetUIW(HWND owner, PFNPROPSHEETUI callback, LPARAM lParam, LPDWORD result)
{
    if (!callback) return ERR_CPSUI_GETLASTERROR;
    std::vector<HPROPSHEETPAGE> pages;
    Group root;
    PROPSHEETUI_INFO_HEADER wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.hWndParent = owner;
    const bool ready = Begin(root, callback, lParam, pages) &&
                       root.Ask(PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&wanted)) > 0;
    LONG answer = pages.empty() && ready ? ERR_CPSUI_NO_PROPSHEETPAGE : ERR_CPSUI_GETLASTERROR;
    if (ready && !pages.empty()) {
        const PROPSHEETHEADERW header = HeaderFor(wanted, pages);
        if (PropertySheetW(&header) >= 0) answer = CPSUI_OK;
    } else {
        for (const HPROPSHEETPAGE page : pages)
            DestroyPropertySheetPage(page);
    }
    root.Destroy(answer > 0);
    if (result) *result = static_cast<DWORD>(root.info.Result);
    return answer;
}
