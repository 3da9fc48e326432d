// Property sheets: a frame with a tab control and the OK, Cancel and Apply buttons, and pages that are made
// from their templates when they are shown for the first time.
#include <algorithm>
#include <cstring>

#include "platform/headless/dialog_template.h"
#include "platform/headless/window.h"

// What CreatePropertySheetPageW hands out: a copy of the page's record with whatever follows it, and of its
// texts.
struct _PSP
{
    std::vector<BYTE> record;
    std::u16string templateName;
    std::u16string title;

    PROPSHEETPAGEW& Page() { return *reinterpret_cast<PROPSHEETPAGEW*>(record.data()); }
};

namespace tintwerk::headless {

namespace {

constexpr int kTabId = 0x3020;
constexpr int kApplyId = 0x3021;
constexpr int kMargin = 7; // around and between things
constexpr int kButtonWidth = 88;
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
        bool changed = false;
    };
    std::vector<Entry> pages;
    int active = -1;
    bool modal = false;
    bool ended = false;
    bool hasApply = true;
    INT_PTR result = 0;
    HWND tab = nullptr;

    Entry* At(LONG_PTR index)
    {
        return index >= 0 && index < static_cast<LONG_PTR>(pages.size())
                   ? &pages[static_cast<std::size_t>(index)]
                   : nullptr;
    }
    Entry* Active() { return At(active); }
    int IndexOf(HWND window) const
    {
        const auto own = std::ranges::find(pages, window, &Entry::window);
        return !window || own == pages.end() ? -1 : static_cast<int>(own - pages.begin());
    }
};

SheetState* SheetOf(HWND sheet)
{
    return StateOf<SheetState>(sheet);
}

UINT Call(PROPSHEETPAGEW& page, UINT message)
{
    return (page.dwFlags & PSP_USECALLBACK) && page.pfnCallback ? page.pfnCallback(nullptr, message, &page)
                                                                : 1;
}

void Release(HPROPSHEETPAGE page)
{
    Call(page->Page(), PSPCB_RELEASE);
    delete page;
}

bool LoadTemplate(_PSP& page, DialogTemplate& dialog)
{
    PROPSHEETPAGEW& record = page.Page();
    if (record.dwFlags & PSP_DLGINDIRECT) return ParseDialogTemplate(record.pResource, 0x100000, dialog);
    return LoadDialogTemplate(record.hInstance, record.pszTemplate, dialog);
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
    SheetState* const state = SheetOf(sheet);
    const SheetState::Entry* const entry = state ? state->Active() : nullptr;
    return entry ? entry->window : nullptr;
}

void EnableApply(HWND sheet)
{
    const SheetState* const state = SheetOf(sheet);
    if (!state) return;
    const bool changed = std::ranges::any_of(state->pages, &SheetState::Entry::changed);
    if (const HWND button = GetDlgItem(sheet, kApplyId)) EnableWindow(button, changed && state->hasApply);
}

// The area of the pages, in the sheet's client coordinates.
RECT PageArea(HWND sheet)
{
    const Window* const tab = Peek(SheetOf(sheet)->tab);
    if (!tab) return {};
    const int left = tab->place.left + kPageInTab.x;
    const int top = tab->place.top + kPageInTab.y;
    return {left, top, left + tab->Width() - kTabAroundPage.cx, top + tab->Height() - kTabAroundPage.cy};
}

bool CreatePage(HWND sheet, int index)
{
    SheetState* state = SheetOf(sheet);
    const HPROPSHEETPAGE page = state->At(index)->page;
    PROPSHEETPAGEW& record = page->Page();
    DialogTemplate dialog;
    if (!Call(record, PSPCB_CREATE) || !LoadTemplate(*page, dialog)) return false;
    dialog.style &=
        ~(DS_MODALFRAME | WS_CAPTION | WS_SYSMENU | WS_POPUP | WS_DISABLED | WS_VISIBLE | WS_THICKFRAME);
    dialog.style |= WS_CHILD | WS_TABSTOP | DS_CONTROL;
    const HWND window = CreateDialogFrom(dialog, record.hInstance, sheet, record.pfnDlgProc,
                                         reinterpret_cast<LPARAM>(&record));
    state = SheetOf(sheet);
    if (!window || !state || !state->At(index)) return false;
    state->At(index)->window = window;
    const RECT area = PageArea(sheet);
    SetWindowPos(window, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOACTIVATE);
    return true;
}

// Shows a page in the place of the one that was active. A page that cannot be made leaves the sheet without
// one.
bool ShowPage(HWND sheet, int index)
{
    const HWND previous = ActiveWindow(sheet);
    if (previous) ShowWindow(previous, SW_HIDE);
    for (SheetState* state = SheetOf(sheet); state && state->At(index); state = SheetOf(sheet), ++index) {
        if (!state->At(index)->window && !CreatePage(sheet, index)) return false;
        if (!(state = SheetOf(sheet)) || !state->At(index)) return false;
        state->active = index;
        const HWND window = state->At(index)->window;
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
    SheetState* const state = SheetOf(sheet);
    return state && state->At(index) && ShowPage(sheet, static_cast<int>(index));
}

// Asks the active page whether it may be left, then every page that was made to apply. False when one of them
// refuses.
bool Apply(HWND sheet, bool closing)
{
    if (!LeaveActive(sheet)) return false;
    SheetState* state = SheetOf(sheet);
    for (std::size_t i = 0; state && i < state->pages.size(); ++i, state = SheetOf(sheet)) {
        if (!state->pages[i].window) continue;
        const LRESULT answer = NotifyPage(sheet, state->pages[i].window, PSN_APPLY, closing);
        if (answer == PSNRET_INVALID) ShowPage(sheet, static_cast<int>(i));
        if (answer == PSNRET_INVALID || answer == PSNRET_INVALID_NOCHANGEPAGE) return false;
    }
    if (!(state = SheetOf(sheet))) return false;
    if (closing)
        state->active = -1;
    else
        NotifyPage(sheet, ActiveWindow(sheet), PSN_SETACTIVE);
    return true;
}

void End(HWND sheet, INT_PTR result)
{
    SheetState* const state = SheetOf(sheet);
    if (!state) return;
    state->result = result;
    state->ended = true;
    if (!state->modal)
        state->active = -1; // a modeless sheet is destroyed by its owner, who sees that no page is current
}

void PressOk(HWND sheet)
{
    if (Apply(sheet, true)) End(sheet, 1);
}

void PressApply(HWND sheet)
{
    if (!Apply(sheet, false)) return;
    if (SheetState* const state = SheetOf(sheet)) {
        for (SheetState::Entry& entry : state->pages)
            entry.changed = false;
    }
    EnableApply(sheet);
}

void PressCancel(HWND sheet, bool byCloseBox)
{
    if (NotifyPage(sheet, ActiveWindow(sheet), PSN_QUERYCANCEL)) return;
    SheetState* state = SheetOf(sheet);
    for (std::size_t i = 0; state && i < state->pages.size(); ++i, state = SheetOf(sheet)) {
        if (state->pages[i].window) NotifyPage(sheet, state->pages[i].window, PSN_RESET, byCloseBox);
    }
    End(sheet, 0);
}

void Press(HWND sheet, WPARAM button)
{
    switch (button) {
    case PSBTN_OK:
        return PressOk(sheet);
    case PSBTN_APPLYNOW:
        return PressApply(sheet);
    case PSBTN_CANCEL:
        return PressCancel(sheet, false);
    default:
        return;
    }
}

void InsertTab(SheetState& state, std::size_t index)
{
    std::u16string title = TitleOf(*state.pages[index].page);
    TCITEMW item{};
    item.mask = TCIF_TEXT | TCIF_IMAGE;
    item.pszText = title.data();
    item.iImage = -1;
    SendMessageW(state.tab, TCM_INSERTITEMW, index, reinterpret_cast<LPARAM>(&item));
}

void CleanUp(HWND sheet)
{
    SheetState* const state = SheetOf(sheet);
    if (!state) return;
    // Page by page, as the real sheet does: a page's record is released after its window has gone.
    for (SheetState::Entry& entry : std::exchange(state->pages, {})) {
        if (entry.window) DestroyWindow(entry.window);
        Release(entry.page);
    }
}

void SetChanged(HWND sheet, HWND page, bool changed)
{
    SheetState* const state = SheetOf(sheet);
    if (SheetState::Entry* const entry = state->At(state->IndexOf(page))) entry->changed = changed;
    EnableApply(sheet);
}

INT_PTR OnCommand(HWND sheet, int id)
{
    switch (id) {
    case IDOK:
        PressOk(sheet);
        return TRUE;
    case kApplyId:
        PressApply(sheet);
        return TRUE;
    case IDCANCEL:
        PressCancel(sheet, false);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR Answer(HWND sheet, LRESULT answer)
{
    SetWindowLongPtrW(sheet, DWLP_MSGRESULT, answer);
    return TRUE;
}

INT_PTR OnTabNotice(HWND sheet, UINT code)
{
    if (code == TCN_SELCHANGING) return Answer(sheet, !LeaveActive(sheet));
    if (code == TCN_SELCHANGE)
        ShowPage(sheet, static_cast<int>(SendMessageW(SheetOf(sheet)->tab, TCM_GETCURSEL, 0, 0)));
    return FALSE;
}

LRESULT AddPage(HWND sheet, HPROPSHEETPAGE page)
{
    SheetState& state = *SheetOf(sheet);
    if (!page || state.pages.size() >= MAXPROPPAGES) return FALSE;
    state.pages.push_back({page});
    InsertTab(state, state.pages.size() - 1);
    return TRUE;
}

int PageIndex(const SheetState& state, LPARAM page, WPARAM fallback)
{
    const auto own =
        std::ranges::find(state.pages, reinterpret_cast<HPROPSHEETPAGE>(page), &SheetState::Entry::page);
    return page && own != state.pages.end() ? static_cast<int>(own - state.pages.begin())
                                            : static_cast<int>(fallback);
}

INT_PTR CALLBACK SheetProcedure(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam)
{
    SheetState* const state = SheetOf(sheet);
    if (!state) return FALSE;
    switch (message) {
    case WM_COMMAND:
        return OnCommand(sheet, LOWORD(wParam));
    case WM_CLOSE:
        PressCancel(sheet, true);
        return TRUE;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        return header.hwndFrom == state->tab ? OnTabNotice(sheet, header.code) : FALSE;
    }
    case WM_DESTROY:
        CleanUp(sheet);
        return TRUE;
    case PSM_CHANGED:
    case PSM_UNCHANGED:
        SetChanged(sheet, reinterpret_cast<HWND>(wParam), message == PSM_CHANGED);
        return TRUE;
    case PSM_APPLY:
        return Answer(sheet, Apply(sheet, false));
    case PSM_SETCURSEL:
        return Answer(sheet, SelectPage(sheet, PageIndex(*state, lParam, wParam)));
    case PSM_ADDPAGE:
        return Answer(sheet, AddPage(sheet, reinterpret_cast<HPROPSHEETPAGE>(lParam)));
    case PSM_INDEXTOHWND: {
        const SheetState::Entry* const entry = state->At(static_cast<LONG_PTR>(wParam));
        return Answer(sheet, reinterpret_cast<LRESULT>(entry ? entry->window : nullptr));
    }
    case PSM_HWNDTOINDEX:
        return Answer(sheet, state->IndexOf(reinterpret_cast<HWND>(wParam)));
    case PSM_PAGETOINDEX:
        return Answer(sheet, PageIndex(*state, lParam, static_cast<WPARAM>(-1)));
    case PSM_INDEXTOPAGE: {
        const SheetState::Entry* const entry = state->At(static_cast<LONG_PTR>(wParam));
        return Answer(sheet, reinterpret_cast<LRESULT>(entry ? entry->page : nullptr));
    }
    case PSM_GETTABCONTROL:
        return Answer(sheet, reinterpret_cast<LRESULT>(state->tab));
    case PSM_GETCURRENTPAGEHWND:
        return Answer(sheet, reinterpret_cast<LRESULT>(ActiveWindow(sheet)));
    case PSM_GETRESULT:
        return Answer(sheet, state->result);
    case PSM_PRESSBUTTON:
        Press(sheet, wParam);
        return TRUE;
    case PSM_CANCELTOCLOSE:
        EnableWindow(GetDlgItem(sheet, IDCANCEL), FALSE);
        return TRUE;
    case PSM_SETTITLEW:
        SetWindowTextW(sheet, reinterpret_cast<LPCWSTR>(lParam));
        return TRUE;
    case PSM_ISDIALOGMESSAGE:
        return Answer(sheet, IsDialogMessageW(sheet, reinterpret_cast<LPMSG>(lParam)));
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

void CreateButtons(HWND sheet, int right, int top, HINSTANCE module, bool hasApply)
{
    const struct
    {
        LPCWSTR text;
        int id;
        DWORD style;
    } buttons[] = {
        {TEXT("OK"), IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP | WS_VISIBLE},
        {TEXT("Cancel"), IDCANCEL, WS_TABSTOP | WS_VISIBLE},
        {TEXT("&Apply"), kApplyId, WS_TABSTOP | WS_DISABLED | (hasApply ? WS_VISIBLE : 0)},
        {TEXT("Help"), IDHELP, WS_TABSTOP | WS_GROUP | WS_DISABLED},
    };
    const int shown = hasApply ? 3 : 2;
    int left = right - shown * kButtonWidth - (shown - 1) * kMargin;
    for (const auto& button : buttons) {
        CreateWindowExW(0, TEXT("Button"), button.text, WS_CHILD | button.style, left, top, kButtonWidth,
                        kButtonHeight, sheet, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(button.id)),
                        module, nullptr);
        left += kButtonWidth + kMargin;
    }
}

HWND CreateFrame(const PROPSHEETHEADERW& header, const std::vector<HPROPSHEETPAGE>& pages)
{
    const SIZE page = LargestPage(pages);
    const int tabWidth = page.cx + kTabAroundPage.cx;
    const int tabHeight = page.cy + kTabAroundPage.cy;
    RECT frame{0, 0, tabWidth + 2 * kMargin, tabHeight + 3 * kMargin + kButtonHeight};
    constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPSIBLINGS | DS_CONTEXTHELP |
                             DS_MODALFRAME | DS_SETFONT | DS_3DLOOK;
    constexpr DWORD kExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
    AdjustWindowRectEx(&frame, kStyle, FALSE, kExStyle);
    std::u16string title =
        header.pszCaption && !IS_INTRESOURCE(header.pszCaption) ? header.pszCaption : TEXT("");
    if (header.dwFlags & PSH_PROPTITLE) title.insert(0, TEXT("Properties for "));
    const HWND sheet =
        CreateWindowExW(kExStyle, TEXT("#32770"), title.c_str(), kStyle, 0, 0, frame.right - frame.left,
                        frame.bottom - frame.top, header.hwndParent, nullptr, header.hInstance, nullptr);
    Window* const window = Peek(sheet);
    if (!window) return nullptr;
    window->dialog = std::make_unique<DialogState>();
    window->dialog->unitWidth = 7;
    window->dialog->unitHeight = 13;
    auto state = std::make_unique<SheetState>();
    state->modal = !(header.dwFlags & PSH_MODELESS);
    state->hasApply = !(header.dwFlags & PSH_NOAPPLYNOW);
    window->control = std::move(state);
    SetWindowLongPtrW(sheet, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(SheetProcedure));
    CreateButtons(sheet, kMargin + tabWidth, 2 * kMargin + tabHeight, header.hInstance,
                  !(header.dwFlags & PSH_NOAPPLYNOW));
    const HWND tab = SheetOf(sheet)->tab =
        CreateWindowExW(0, WC_TABCONTROLW, TEXT(""),
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_GROUP | WS_CLIPSIBLINGS | TCS_MULTILINE,
                        kMargin, kMargin, tabWidth, tabHeight, sheet,
                        reinterpret_cast<HMENU>(static_cast<LONG_PTR>(kTabId)), header.hInstance, nullptr);
    if (tab) return sheet;
    DestroyWindow(sheet);
    return nullptr;
}

// The records of the header's pages; those given as records are made into pages first.
std::vector<HPROPSHEETPAGE> PagesOf(const PROPSHEETHEADERW& header)
{
    std::vector<HPROPSHEETPAGE> pages;
    const auto* record = reinterpret_cast<const BYTE*>(header.ppsp);
    for (UINT i = 0; i < header.nPages; ++i) {
        if (!(header.dwFlags & PSH_PROPSHEETPAGE)) {
            pages.push_back(header.phpage[i]);
            continue;
        }
        const auto* const page = reinterpret_cast<const PROPSHEETPAGEW*>(record);
        if (const HPROPSHEETPAGE made = CreatePropertySheetPageW(page)) pages.push_back(made);
        record += page->dwSize;
    }
    std::erase(pages, nullptr);
    return pages;
}

int StartPage(const PROPSHEETHEADERW& header, const std::vector<HPROPSHEETPAGE>& pages)
{
    std::size_t start = 0;
    if (!(header.dwFlags & PSH_USEPSTARTPAGE))
        start = header.nStartPage;
    else
        while (start < pages.size() && TitleOf(*pages[start]) != header.pStartPage)
            ++start;
    return start < pages.size() ? static_cast<int>(start) : 0;
}

INT_PTR RunModal(HWND sheet, HWND owner)
{
    const bool reenable = owner && !EnableWindow(owner, FALSE);
    const auto ended = [sheet] {
        const SheetState* const state = SheetOf(sheet);
        return !state || state->ended;
    };
    if (!PumpUntil(sheet, ended)) {
        PressCancel(sheet, false);
        if (!ended()) End(sheet, 0);
    }
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
    if (!(record.dwFlags & PSP_DLGINDIRECT) && record.pszTemplate && !IS_INTRESOURCE(record.pszTemplate)) {
        page->templateName = record.pszTemplate;
        record.pszTemplate = page->templateName.c_str();
    }
    if ((record.dwFlags & PSP_USETITLE) && record.pszTitle && !IS_INTRESOURCE(record.pszTitle)) {
        page->title = record.pszTitle;
        record.pszTitle = page->title.c_str();
    }
    Call(record, PSPCB_ADDREF);
    return page;
}

BOOL WINAPI DestroyPropertySheetPage(HPROPSHEETPAGE page)
{
    if (!page) return FALSE;
    Release(page);
    return TRUE;
}

INT_PTR WINAPI PropertySheetW(LPCPROPSHEETHEADERW header)
{
    if (!header || header->nPages > MAXPROPPAGES) return -1;
    const std::vector<HPROPSHEETPAGE> pages = PagesOf(*header);
    if (pages.empty()) return -1;
    const bool tells = (header->dwFlags & PSH_USECALLBACK) && header->pfnCallback;
    if (tells) header->pfnCallback(nullptr, PSCB_PRECREATE, 0);
    const HWND sheet = CreateFrame(*header, pages);
    if (!sheet) {
        for (const HPROPSHEETPAGE page : pages)
            Release(page);
        return -1;
    }
    for (const HPROPSHEETPAGE page : pages)
        AddPage(sheet, page);
    if (tells) header->pfnCallback(sheet, PSCB_INITIALIZED, 0);
    ShowPage(sheet, StartPage(*header, pages));
    if (!Peek(sheet)) return -1;
    ShowWindow(sheet, SW_SHOW);
    if (header->dwFlags & PSH_MODELESS) return reinterpret_cast<INT_PTR>(sheet);
    Window* const owner = Peek(header->hwndParent);
    return RunModal(sheet, owner ? RootOf(*owner)->handle : nullptr);
}
