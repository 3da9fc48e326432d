// Property sheets: a frame with a tab control, and pages that are made from their templates when they are
// shown for the first time. Its buttons are pressed by message, so none stands in it. A sheet is modal; its
// owner waits.
#include <algorithm>
#include <cstring>

#include "platform/headless/dialog_template.h"
#include "platform/headless/window.h"

// What CreatePropertySheetPageW hands out: a copy of the page's record with whatever follows it, and of its
// title.
struct _PSP
{
    std::vector<BYTE> record;
    std::u16string title;

    PROPSHEETPAGEW& Page() { return *reinterpret_cast<PROPSHEETPAGEW*>(record.data()); }
};

namespace tintwerk::headless {

namespace {

constexpr int kMargin = 7; // around and between things
constexpr int kButtonHeight = 23;
constexpr POINT kPageInTab{4, 22};
constexpr SIZE kTabAroundPage{8, 26};
constexpr DWORD kOldestPageSize = offsetof(PROPSHEETPAGEW, pcRefParent) + sizeof(UINT*);

struct SheetState final : ControlState
{
    struct Entry
    {
        HPROPSHEETPAGE page;
        HWND window = nullptr;
    };
    std::vector<Entry> pages;
    LONG_PTR active = -1;
    bool ended = false;
    INT_PTR result = 0;
    HWND tab = nullptr;

    HWND WindowOf(LONG_PTR index) const
    {
        return Has(index) ? pages[static_cast<std::size_t>(index)].window : nullptr;
    }
    bool Has(LONG_PTR index) const { return index >= 0 && index < static_cast<LONG_PTR>(pages.size()); }
};

SheetState* SheetOf(HWND sheet)
{
    return StateOf<SheetState>(sheet);
}

bool LoadTemplate(_PSP& page, DialogTemplate& dialog)
{
    PROPSHEETPAGEW& record = page.Page();
    return record.dwFlags & PSP_DLGINDIRECT
               ? ParseDialogTemplate(record.pResource, kUnknownTemplateSize, dialog)
               : LoadDialogTemplate(record.hInstance, record.pszTemplate, dialog);
}

std::u16string TitleOf(_PSP& page)
{
    if (page.Page().dwFlags & PSP_USETITLE) return page.title;
    DialogTemplate dialog;
    return LoadTemplate(page, dialog) ? dialog.title : std::u16string();
}

LRESULT NotifyPage(HWND sheet, HWND page, UINT code, LPARAM lParam = 0)
{
    if (!Peek(page)) return 0;
    PSHNOTIFY notice{{sheet, 0, code}, lParam};
    return SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
}

HWND ActiveWindow(HWND sheet)
{
    const SheetState* const state = SheetOf(sheet);
    return state ? state->WindowOf(state->active) : nullptr;
}

// Tells every page that was made, until one answers that the sheet has to stay.
LRESULT NotifyAll(HWND sheet, UINT code, LPARAM lParam, std::size_t& index)
{
    SheetState* state = SheetOf(sheet);
    for (index = 0; state && index < state->pages.size(); ++index, state = SheetOf(sheet)) {
        const LRESULT answer = NotifyPage(sheet, state->pages[index].window, code, lParam);
        if (answer == PSNRET_INVALID || answer == PSNRET_INVALID_NOCHANGEPAGE) return answer;
    }
    return PSNRET_NOERROR;
}

bool CreatePage(HWND sheet, LONG_PTR index)
{
    SheetState* state = SheetOf(sheet);
    const HPROPSHEETPAGE page = state->pages[static_cast<std::size_t>(index)].page;
    PROPSHEETPAGEW& record = page->Page();
    DialogTemplate dialog;
    if (!LoadTemplate(*page, dialog)) return false;
    dialog.style &=
        ~(DS_MODALFRAME | WS_CAPTION | WS_SYSMENU | WS_POPUP | WS_DISABLED | WS_VISIBLE | WS_THICKFRAME);
    dialog.style |= WS_CHILD | WS_TABSTOP | DS_CONTROL;
    const HWND window = CreateDialogFrom(dialog, record.hInstance, sheet, record.pfnDlgProc,
                                         reinterpret_cast<LPARAM>(&record));
    state = SheetOf(sheet);
    const Window* const tab = state ? Peek(state->tab) : nullptr;
    if (!window || !tab || !state->Has(index)) return false;
    state->pages[static_cast<std::size_t>(index)].window = window;
    SetWindowPos(window, HWND_TOP, tab->place.left + kPageInTab.x, tab->place.top + kPageInTab.y,
                 tab->Width() - kTabAroundPage.cx, tab->Height() - kTabAroundPage.cy, SWP_NOACTIVATE);
    return true;
}

// Shows a page in the place of the one that was active. A page that cannot be made leaves the sheet without
// one.
bool ShowPage(HWND sheet, LONG_PTR index)
{
    if (const HWND previous = ActiveWindow(sheet)) ShowWindow(previous, SW_HIDE);
    for (SheetState* state = SheetOf(sheet); state && state->Has(index); state = SheetOf(sheet), ++index) {
        if (!state->WindowOf(index) && !CreatePage(sheet, index)) return false;
        if (!(state = SheetOf(sheet)) || !state->Has(index)) return false;
        state->active = index;
        const HWND window = state->WindowOf(index);
        if (NotifyPage(sheet, window, PSN_SETACTIVE) == -1) continue; // the page passes the turn on
        if (!(state = SheetOf(sheet))) return false;
        SendMessageW(state->tab, TCM_SETCURSEL, static_cast<WPARAM>(index), 0);
        ShowWindow(window, SW_SHOW);
        return true;
    }
    return false;
}

bool LeaveActive(HWND sheet)
{
    return NotifyPage(sheet, ActiveWindow(sheet), PSN_KILLACTIVE) == 0;
}

bool SelectPage(HWND sheet, LONG_PTR index)
{
    if (!LeaveActive(sheet)) return false;
    const SheetState* const state = SheetOf(sheet);
    return state && state->Has(index) && ShowPage(sheet, index);
}

// Asks the active page whether it may be left, then every page that was made to apply. False when one of them
// refuses.
bool Apply(HWND sheet, bool closing)
{
    if (!LeaveActive(sheet)) return false;
    std::size_t index = 0;
    const LRESULT answer = NotifyAll(sheet, PSN_APPLY, closing, index);
    if (answer == PSNRET_INVALID) ShowPage(sheet, static_cast<LONG_PTR>(index));
    if (answer != PSNRET_NOERROR) return false;
    if (!closing) NotifyPage(sheet, ActiveWindow(sheet), PSN_SETACTIVE);
    return true;
}

void End(HWND sheet, INT_PTR result)
{
    SheetState* const state = SheetOf(sheet);
    if (!state) return;
    state->result = result;
    state->ended = true;
}

void Cancel(HWND sheet)
{
    if (NotifyPage(sheet, ActiveWindow(sheet), PSN_QUERYCANCEL)) return;
    std::size_t index = 0;
    NotifyAll(sheet, PSN_RESET, FALSE, index);
    End(sheet, 0);
}

void Press(HWND sheet, WPARAM button)
{
    if (button == PSBTN_CANCEL)
        Cancel(sheet);
    else if (button == PSBTN_APPLYNOW)
        Apply(sheet, false);
    else if (button == PSBTN_OK && Apply(sheet, true))
        End(sheet, 1);
}

void AddPage(HWND sheet, HPROPSHEETPAGE page)
{
    SheetState& state = *SheetOf(sheet);
    std::u16string title = TitleOf(*page);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = title.data();
    SendMessageW(state.tab, TCM_INSERTITEMW, state.pages.size(), reinterpret_cast<LPARAM>(&item));
    state.pages.push_back({page});
}

// Page by page, as the real sheet does: a page's record goes after its window.
void DestroyPages(HWND sheet)
{
    for (const SheetState::Entry& entry : std::exchange(SheetOf(sheet)->pages, {})) {
        if (entry.window) DestroyWindow(entry.window);
        delete entry.page;
    }
}

INT_PTR Answer(HWND sheet, LRESULT answer)
{
    SetWindowLongPtrW(sheet, DWLP_MSGRESULT, answer);
    return TRUE;
}

INT_PTR CALLBACK SheetProcedure(HWND sheet, UINT message, WPARAM wParam, LPARAM)
{
    const SheetState* const state = SheetOf(sheet);
    if (!state) return FALSE;
    switch (message) {
    case WM_DESTROY:
        DestroyPages(sheet);
        return TRUE;
    case PSM_SETCURSEL:
        return Answer(sheet, SelectPage(sheet, static_cast<LONG_PTR>(wParam)));
    case PSM_INDEXTOHWND:
        return Answer(sheet, reinterpret_cast<LRESULT>(state->WindowOf(static_cast<LONG_PTR>(wParam))));
    case PSM_GETTABCONTROL:
        return Answer(sheet, reinterpret_cast<LRESULT>(state->tab));
    case PSM_GETCURRENTPAGEHWND:
        return Answer(sheet, reinterpret_cast<LRESULT>(ActiveWindow(sheet)));
    case PSM_PRESSBUTTON:
        Press(sheet, wParam);
        return TRUE;
    default:
        return FALSE;
    }
}

SIZE LargestPage(const std::vector<HPROPSHEETPAGE>& pages)
{
    SIZE largest{0, 0};
    for (const HPROPSHEETPAGE page : pages) {
        DialogTemplate dialog;
        if (!LoadTemplate(*page, dialog)) continue;
        const SIZE size = dialog.PixelSize();
        largest = {std::max(largest.cx, size.cx), std::max(largest.cy, size.cy)};
    }
    return largest;
}

HWND CreateFrame(const PROPSHEETHEADERW& header, const std::vector<HPROPSHEETPAGE>& pages)
{
    const SIZE page = LargestPage(pages);
    const int tabWidth = page.cx + kTabAroundPage.cx;
    const int tabHeight = page.cy + kTabAroundPage.cy;
    constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPSIBLINGS | DS_CONTEXTHELP |
                             DS_MODALFRAME | DS_SETFONT | DS_3DLOOK;
    constexpr DWORD kExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
    const RECT frame =
        WithFrame({tabWidth + 2 * kMargin, tabHeight + 3 * kMargin + kButtonHeight}, kStyle, kExStyle);
    const HWND sheet =
        CreateWindowExW(kExStyle, TEXT("#32770"), header.pszCaption, kStyle, 0, 0, frame.right - frame.left,
                        frame.bottom - frame.top, header.hwndParent, nullptr, header.hInstance, nullptr);
    Window* const window = Peek(sheet);
    if (!window) return nullptr;
    window->control = std::make_unique<SheetState>();
    SetWindowLongPtrW(sheet, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(SheetProcedure));
    const HWND tab = SheetOf(sheet)->tab =
        CreateWindowExW(0, WC_TABCONTROLW, TEXT(""),
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_GROUP | WS_CLIPSIBLINGS | TCS_MULTILINE,
                        kMargin, kMargin, tabWidth, tabHeight, sheet, nullptr, header.hInstance, nullptr);
    if (tab) return sheet;
    DestroyWindow(sheet);
    return nullptr;
}

INT_PTR RunModal(HWND sheet, HWND owner)
{
    const bool reenable = owner && !EnableWindow(owner, FALSE);
    const auto ended = [sheet] {
        const SheetState* const state = SheetOf(sheet);
        return !state || state->ended;
    };
    if (!PumpUntil(ended)) Cancel(sheet);
    const SheetState* const state = SheetOf(sheet);
    const INT_PTR result = state ? state->result : 0;
    if (reenable) EnableWindow(owner, TRUE);
    if (state) DestroyWindow(sheet);
    return result;
}

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HPROPSHEETPAGE WINAPI CreatePropertySheetPageW(LPCPROPSHEETPAGEW source)
{
    if (!source || source->dwSize < kOldestPageSize) return nullptr;
    auto* const page = new _PSP;
    page->record.resize(std::max<std::size_t>(source->dwSize, sizeof(PROPSHEETPAGEW)));
    std::memcpy(page->record.data(), source, source->dwSize);
    PROPSHEETPAGEW& record = page->Page();
    if ((record.dwFlags & PSP_USETITLE) && record.pszTitle && !IS_INTRESOURCE(record.pszTitle)) {
        page->title = record.pszTitle;
        record.pszTitle = page->title.c_str();
    }
    return page;
}

BOOL WINAPI DestroyPropertySheetPage(HPROPSHEETPAGE page)
{
    delete page;
    return page != nullptr;
}

INT_PTR WINAPI PropertySheetW(LPCPROPSHEETHEADERW header)
{
    if (!header || header->nPages == 0 || header->nPages > MAXPROPPAGES) return -1;
    std::vector<HPROPSHEETPAGE> pages(header->phpage, header->phpage + header->nPages);
    std::erase(pages, nullptr);
    const HWND sheet = CreateFrame(*header, pages);
    if (!sheet) {
        for (const HPROPSHEETPAGE page : pages)
            delete page;
        return -1;
    }
    for (const HPROPSHEETPAGE page : pages)
        AddPage(sheet, page);
    ShowPage(sheet, 0);
    if (!Peek(sheet)) return -1;
    ShowWindow(sheet, SW_SHOW);
    Window* const owner = Peek(header->hwndParent);
    return RunModal(sheet, owner ? RootOf(*owner).handle : nullptr);
}
