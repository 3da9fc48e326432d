#include "src/pages/consumption_tabs.h"

#include <cstring>

#include "platform/owners.h"
#include "src/features/control_access.h"
#include "src/i18n/texts.h"
#include "src/pages/bar_painting.h"
#include "src/records/process_values.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kMarginUnits = 36;      // horizontal dialog units
constexpr int kUnitsPerBase = 4;      // horizontal dialog units per base unit
constexpr int kWidestUnfitted = 480;  // pixels: up to this width the pane keeps the place of its template
constexpr int kPaneRightMargin = 20;  // pixels
constexpr int kPaneBottomMargin = 30; // pixels

// In the local heap, from the page's initialisation to its end; the user data of the tab control and of the
// pane.
struct TabState
{
    HWND pane;
    RECT displayArea;             // in the page's client coordinates
    LPCDLGTEMPLATEW templates[2]; // by tab
};

using TabStateOwner = Owned<HLOCAL, [](HLOCAL block) { LocalFree(block); }>;

TabState* StateOf(HWND tabControl)
{
    return tabControl ? reinterpret_cast<TabState*>(GetWindowLongPtrW(tabControl, GWLP_USERDATA)) : nullptr;
}

INT_PTR CALLBACK PaneProc(HWND pane, UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        if (const TabState* const state = StateOf(GetDlgItem(GetParent(pane), IDC_CONSUMPTION_TABS))) {
            const RECT& area = state->displayArea;
            SetWindowPos(pane, HWND_TOP, area.left, area.top, area.right - area.left + 1,
                         area.bottom - area.top + 1, 0);
        }
    } else if (message == WM_DRAWITEM && lParam) {
        PaintBar(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    }
    return 0;
}

void InsertTab(HWND tabControl, int tab, WCHAR* text)
{
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_IMAGE;
    item.pszText = text;
    item.iImage = -1;
    SendMessageW(tabControl, TCM_INSERTITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
}

void InsertTabs(HWND tabControl)
{
    const WideText lastJob = CFCopyLocalizedString(TEXT("Last Job"), TEXT(""));
    const WideText totals = CFCopyLocalizedString(TEXT("Total Consumption"), TEXT(""));
    InsertTab(tabControl, 0, lastJob.get());
    InsertTab(tabControl, 1, totals.get());
}

RECT DisplayArea(HWND tabControl)
{
    RECT area = PlaceInParent(tabControl);
    SendMessageW(tabControl, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    return area;
}

HWND CreatePane(HWND page, LPCDLGTEMPLATEW pane)
{
    if (!pane) return nullptr;
    WORD words[9];
    std::memcpy(words, pane, sizeof words);
    Trace(TEXT("resSize=%d x %d\n"), words[7], words[8]);
    return CreateDialogIndirectParamW(Process().module, pane, page, &PaneProc, 0);
}

// Fits the pane into a wide tab control.
void FitPane(HWND page, HWND tabControl, HWND pane)
{
    RECT tabs{};
    GetClientRect(tabControl, &tabs);
    const int margin = MulDiv(LOWORD(GetDialogBaseUnits()), kMarginUnits, kUnitsPerBase);
    POINT origin{};
    MapWindowPoints(pane, page, &origin, 1);
    if (tabs.right > kWidestUnfitted)
        SetWindowPos(pane, nullptr, origin.x + margin / 2, origin.y,
                     tabs.right - margin / 2 - kPaneRightMargin, tabs.bottom - kPaneBottomMargin,
                     SWP_NOZORDER);
    Trace(TEXT("myrect: %d,%d, %d-%d\n"), static_cast<int>(tabs.left), static_cast<int>(tabs.top),
          static_cast<int>(tabs.right), static_cast<int>(tabs.bottom));
    Trace(TEXT("WindowPos %d, %d  \n"), static_cast<int>(origin.x), static_cast<int>(origin.y));
}

} // namespace

LPCDLGTEMPLATEW DoLockRed(int number)
{
    Trace(TEXT("DoLockRed Findresource name=%d\n"), number);
    const HRSRC resource =
        FindResourceW(Process().module, MAKEINTRESOURCEW(static_cast<WORD>(number)), RT_DIALOG);
    Trace(TEXT("DoLockRed Findresource=%d\n"), TraceNumber(resource));
    const HGLOBAL data = resource ? LoadResource(Process().module, resource) : nullptr;
    Trace(TEXT("DoLockRed Loadresource=%d\n"), TraceNumber(data));
    return data ? static_cast<LPCDLGTEMPLATEW>(LockResource(data)) : nullptr;
}

void OnTabbedDialogInit(HWND page)
{
    TabStateOwner block(LocalAlloc(LPTR, sizeof(TabState)));
    Trace(TEXT("OnTabbedDialogInit prt=%d\n"), TraceNumber(block.Get()));
    const HWND tabControl = GetDlgItem(page, IDC_CONSUMPTION_TABS);
    if (!block || !tabControl) return;

    Trace(TEXT("TabCtrl =%d\n"), TraceNumber(tabControl));
    TabState& state = *static_cast<TabState*>(block.Release()); // the tab control's, until ReleaseTabs
    SetWindowLongPtrW(tabControl, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&state));
    InsertTabs(tabControl);
    state.templates[0] = DoLockRed(IDD_PANE_LAST_JOB);
    state.templates[1] = DoLockRed(IDD_PANE_TOTALS);
    state.displayArea = DisplayArea(tabControl);
    OnSelectionChanged(page, tabControl);
}

void OnSelectionChanged(HWND page, HWND tabControl)
{
    TabState* const state = StateOf(tabControl);
    Trace(TEXT("OnSelectionChanged prt=%d\n"), TraceNumber(state));
    const LRESULT tab = SendMessageW(tabControl, TCM_GETCURSEL, 0, 0);
    if (!state || state->pane || tab < 0 || tab > 1) return;

    state->pane = CreatePane(page, state->templates[tab]);
    if (!state->pane) return;
    SetWindowLongPtrW(state->pane, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(state));
    FitPane(page, tabControl, state->pane);
    Trace(TEXT("ChildDialog Ptr is set\n"));
}

HWND PaneOf(HWND page)
{
    const TabState* const state = StateOf(GetDlgItem(page, IDC_CONSUMPTION_TABS));
    return state ? state->pane : nullptr;
}

void ReleaseTabs(HWND page)
{
    const HWND tabControl = GetDlgItem(page, IDC_CONSUMPTION_TABS);
    const TabStateOwner block(StateOf(tabControl));
    if (!block) return;
    SetWindowLongPtrW(tabControl, GWLP_USERDATA, 0);
    SetWindowLongPtrW(static_cast<const TabState*>(block.Get())->pane, GWLP_USERDATA, 0);
}

} // namespace tintwerk
