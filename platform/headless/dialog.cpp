// Dialogs: made from templates, with the default behaviour that a dialog procedure leaves to the system, the
// keyboard of IsDialogMessage, and the modal loop.
#include <algorithm>

#include "platform/headless/dialog_template.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr DWORD kSystemUnits = 16u << 16 | 9;
constexpr std::size_t kUnknownSize = 0x100000; // of a template that is given by its address alone

DLGPROC ProcedureOf(HWND dialog)
{
    return reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC));
}

// Where a new dialog stands: children in their parent, others on the screen, from the owner's client area,
// never off it.
RECT PlaceOf(const DialogTemplate& dialog, HWND parent)
{
    const SIZE size = dialog.PixelSize();
    POINT at{MulDiv(dialog.x, dialog.UnitWidth(), 4), MulDiv(dialog.y, dialog.UnitHeight(), 8)};
    const bool child = (dialog.style & WS_CHILD) != 0;
    if (!child && parent && !(dialog.style & DS_ABSALIGN)) ClientToScreen(parent, &at);
    RECT place{at.x, at.y, at.x + size.cx, at.y + size.cy};
    AdjustWindowRectEx(&place, dialog.style, FALSE, dialog.exStyle);
    if (child) return place;
    if (dialog.style & DS_CENTER) {
        OffsetRect(&place, (kScreenWidth - place.left - place.right) / 2,
                   (kScreenHeight - place.top - place.bottom) / 2);
    }
    OffsetRect(&place, std::min<int>(kScreenWidth - place.right, 0),
               std::min<int>(kScreenHeight - place.bottom, 0));
    OffsetRect(&place, std::max<int>(-place.left, 0), std::max<int>(-place.top, 0));
    return place;
}

void SettleStyles(DialogTemplate& dialog)
{
    dialog.style |= DS_3DLOOK;
    if (dialog.style & DS_MODALFRAME) dialog.exStyle |= WS_EX_DLGMODALFRAME;
    if ((dialog.style & DS_CONTROL) || !(dialog.style & WS_CHILD)) dialog.exStyle |= WS_EX_CONTROLPARENT;
    if (dialog.style & DS_CONTROL) dialog.style &= ~(WS_CAPTION | WS_SYSMENU);
}

bool CreateItem(HWND handle, const DialogTemplate& dialog, const DialogItem& item, HINSTANCE module)
{
    DWORD style = (item.style & ~WS_POPUP) | WS_CHILD;
    DWORD exStyle = item.exStyle | WS_EX_NOPARENTNOTIFY;
    if (style & WS_BORDER) { // borders look sunken in dialogs
        style &= ~WS_BORDER;
        exStyle |= WS_EX_CLIENTEDGE;
    }
    const auto x = [&dialog](int units) { return MulDiv(units, dialog.UnitWidth(), 4); };
    const auto y = [&dialog](int units) { return MulDiv(units, dialog.UnitHeight(), 8); };
    const HWND control = CreateWindowExW(
        exStyle, item.className.Name(), item.text.Name(), style, x(item.x), y(item.y), x(item.width),
        y(item.height), handle, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(static_cast<int>(item.id))),
        module, const_cast<void*>(item.creationData));
    if (!control) return (dialog.style & DS_NOFAILCREATE) != 0;
    const Window* const owner = Peek(handle);
    if (owner && owner->font) SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(owner->font), FALSE);
    if (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) {
        if (Window* const still = Peek(handle); still && still->dialog) still->dialog->defaultId = item.id;
    }
    return true;
}

// Fonts have no look here, but a dialog hands its one to every control, as programs expect.
void GiveFont(HWND handle, const DialogTemplate& dialog)
{
    if (!(dialog.style & DS_SETFONT)) return;
    LOGFONTW font{};
    font.lfHeight = -MulDiv(dialog.pointSize, 96, 72);
    font.lfWeight = FW_NORMAL;
    const HFONT made = CreateFontIndirectW(&font);
    if (Window* const window = Peek(handle); window && window->dialog) {
        window->dialog->font = made;
        window->font = made;
    }
    SendMessageW(handle, WM_SETFONT, reinterpret_cast<WPARAM>(made), FALSE);
}

bool IsTabItem(const Window& window)
{
    constexpr DWORD kWanted = WS_VISIBLE | WS_TABSTOP;
    return (window.style & (kWanted | WS_DISABLED)) == kWanted;
}

bool IsContainer(const Window& window)
{
    return (window.exStyle & WS_EX_CONTROLPARENT) != 0;
}

// The controls that the tab key visits, in order, those of nested dialogs among them.
void CollectTabItems(const Window& dialog, std::vector<HWND>& items)
{
    for (const Window* child : dialog.children) {
        if (IsContainer(*child)) {
            if ((child->style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE) CollectTabItems(*child, items);
        } else if (IsTabItem(*child)) {
            items.push_back(child->handle);
        }
    }
}

void SaveFocus(Window& dialog)
{
    const Window* const focused = Peek(Thread().focus);
    if (dialog.dialog && focused && focused != &dialog && IsSelfOrDescendant(focused, dialog))
        dialog.dialog->savedFocus = focused->handle;
}

void RestoreFocus(HWND handle)
{
    const Window* const window = Peek(handle);
    if (!window || !window->dialog) return;
    const HWND saved = window->dialog->savedFocus;
    const Window* const last = Peek(saved);
    if (last && IsSelfOrDescendant(last, *window) && IsShown(*last) && !(last->style & WS_DISABLED)) {
        SetFocus(saved);
        return;
    }
    if (const HWND first = GetNextDlgTabItem(handle, nullptr, FALSE)) SetFocus(first);
}

LRESULT Defaults(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    switch (message) {
    case WM_SHOWWINDOW:
        if (!wParam) SaveFocus(window);
        return DefWindowProcW(handle, message, wParam, lParam);
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            RestoreFocus(handle);
        else
            SaveFocus(window);
        return 0;
    case WM_SETFOCUS:
        RestoreFocus(handle);
        return 0;
    case DM_SETDEFID:
        if (window.dialog) window.dialog->defaultId = static_cast<UINT>(wParam);
        return TRUE;
    case DM_GETDEFID:
        return window.dialog ? MAKELONG(static_cast<WORD>(window.dialog->defaultId), DC_HASDEFID) : 0;
    case WM_NEXTDLGCTL: {
        const HWND next = LOWORD(lParam) ? reinterpret_cast<HWND>(wParam)
                                         : GetNextDlgTabItem(handle, GetFocus(), wParam != 0);
        if (next) SetFocus(next);
        return 0;
    }
    case WM_CLOSE:
        PostMessageW(handle, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(handle, IDCANCEL)));
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

// Messages whose answer is what the dialog procedure returns, not its message result.
bool AnswersDirectly(UINT message)
{
    switch (message) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
    case WM_QUERYDRAGICON:
    case WM_INITDIALOG:
        return true;
    default:
        return false;
    }
}

void ReleaseDialog(HWND handle)
{
    Window* const window = Peek(handle);
    if (!window || !window->dialog) return;
    if (window->dialog->font) DeleteObject(std::exchange(window->dialog->font, nullptr));
}

bool OnReturnKey(HWND dialog)
{
    const HWND focused = GetFocus();
    int id = IDOK;
    const LRESULT answer = SendMessageW(dialog, DM_GETDEFID, 0, 0);
    if (focused && (SendMessageW(focused, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON))
        id = GetDlgCtrlID(focused);
    else if (HIWORD(answer) == DC_HASDEFID)
        id = LOWORD(answer);
    const HWND button = GetDlgItem(dialog, id);
    if (button && !IsWindowEnabled(button)) return true;
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
    return true;
}

bool OnDialogKey(HWND dialog, const MSG& message)
{
    const auto wants = static_cast<LONG>(
        SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message)));
    if (wants & DLGC_WANTALLKEYS) return false;
    switch (message.wParam) {
    case VK_TAB:
        if (wants & DLGC_WANTTAB) return false;
        SendMessageW(dialog, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, FALSE);
        return true;
    case VK_ESCAPE:
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDCANCEL)));
        return true;
    case VK_RETURN:
        return OnReturnKey(dialog);
    default:
        return false;
    }
}

INT_PTR RunModal(HWND handle, HWND owner)
{
    const bool reenable = owner && !EnableWindow(owner, FALSE);
    ShowWindow(handle, SW_SHOWNORMAL);
    const auto ended = [handle] {
        const Window* const window = Peek(handle);
        return !window || !window->dialog || window->dialog->ended;
    };
    if (!PumpUntil(handle, ended)) {
        SendMessageW(handle, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        if (!ended()) EndDialog(handle, IDCANCEL);
    }
    const Window* const window = Peek(handle);
    const INT_PTR result = window && window->dialog ? window->dialog->result : 0;
    if (reenable) EnableWindow(owner, TRUE);
    if (window) DestroyWindow(handle);
    return result;
}

INT_PTR RunModalFrom(const DialogTemplate& dialog, HINSTANCE module, HWND parent, DLGPROC procedure,
                     LPARAM lParam)
{
    Window* const window = parent ? Find(parent) : nullptr;
    if (parent && !window) return 0;
    const HWND owner = window ? RootOf(*window)->handle : nullptr;
    const HWND handle = CreateDialogFrom(dialog, module, owner, procedure, lParam);
    return handle ? RunModal(handle, owner) : -1;
}

} // namespace

HWND CreateDialogFrom(const DialogTemplate& source, HINSTANCE module, HWND parent, DLGPROC procedure,
                      LPARAM lParam)
{
    DialogTemplate dialog = source;
    SettleStyles(dialog);
    const RECT place = PlaceOf(dialog, parent);
    const bool named = dialog.className.number || !dialog.className.text.empty();
    const HWND handle =
        CreateWindowExW(dialog.exStyle, named ? dialog.className.Name() : TEXT("#32770"),
                        dialog.title.c_str(), dialog.style & ~WS_VISIBLE, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, parent, nullptr, module, nullptr);
    Window* window = Peek(handle);
    if (!window) return nullptr;
    window->dialog = std::make_unique<DialogState>();
    window->dialog->unitWidth = dialog.UnitWidth();
    window->dialog->unitHeight = dialog.UnitHeight();
    SetWindowLongPtrW(handle, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
    GiveFont(handle, dialog);
    for (const DialogItem& item : dialog.items) {
        if (!Peek(handle)) return nullptr;
        if (!CreateItem(handle, dialog, item, module)) {
            DestroyWindow(handle);
            return nullptr;
        }
    }
    const HWND first = GetNextDlgTabItem(handle, nullptr, FALSE);
    const bool focus = SendMessageW(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), lParam) != 0;
    if (!Peek(handle)) return nullptr;
    if (focus && (!(dialog.style & DS_CONTROL) || (dialog.style & WS_VISIBLE))) {
        if (const HWND item = GetNextDlgTabItem(handle, nullptr, FALSE)) SetFocus(item);
    }
    if (Peek(handle) && (dialog.style & WS_VISIBLE)) ShowWindow(handle, SW_SHOWNORMAL);
    return Peek(handle) ? handle : nullptr;
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HWND WINAPI CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM lParam)
{
    DialogTemplate dialog;
    return LoadDialogTemplate(module, name, dialog)
               ? CreateDialogFrom(dialog, module, parent, procedure, lParam)
               : nullptr;
}

HWND WINAPI CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW data, HWND parent, DLGPROC procedure,
                                       LPARAM lParam)
{
    DialogTemplate dialog;
    if (!ParseDialogTemplate(data, kUnknownSize, dialog)) return nullptr;
    return CreateDialogFrom(dialog, module, parent, procedure, lParam);
}

INT_PTR WINAPI DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM lParam)
{
    DialogTemplate dialog;
    return LoadDialogTemplate(module, name, dialog) ? RunModalFrom(dialog, module, parent, procedure, lParam)
                                                    : -1;
}

INT_PTR WINAPI DialogBoxIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW data, HWND parent, DLGPROC procedure,
                                       LPARAM lParam)
{
    DialogTemplate dialog;
    if (!ParseDialogTemplate(data, kUnknownSize, dialog)) return -1;
    return RunModalFrom(dialog, module, parent, procedure, lParam);
}

BOOL WINAPI EndDialog(HWND handle, INT_PTR result)
{
    Window* const window = Find(handle);
    if (!window || !window->dialog) return FALSE;
    window->dialog->ended = true;
    window->dialog->result = result;
    if (const Window* const owner = Peek(window->owner)) EnableWindow(owner->handle, TRUE);
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    return TRUE;
}

LRESULT WINAPI DefDlgProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!Find(handle)) return 0;
    SetWindowLongPtrW(handle, DWLP_MSGRESULT, 0);
    const DLGPROC procedure = ProcedureOf(handle);
    const INT_PTR handled = procedure ? procedure(handle, message, wParam, lParam) : FALSE;
    if (message == WM_NCDESTROY) ReleaseDialog(handle);
    if (!Peek(handle)) return 0;
    if (!handled) return Defaults(handle, message, wParam, lParam);
    return AnswersDirectly(message) ? handled : GetWindowLongPtrW(handle, DWLP_MSGRESULT);
}

BOOL WINAPI IsDialogMessageW(HWND dialog, LPMSG message)
{
    const Window* const window = Peek(dialog);
    if (!window || !message->hwnd || !IsSelfOrDescendant(Peek(message->hwnd), *window)) return FALSE;
    if (message->message == WM_KEYDOWN && OnDialogKey(dialog, *message)) return TRUE;
    TranslateMessage(message);
    DispatchMessageW(message);
    return TRUE;
}

LONG WINAPI GetDialogBaseUnits()
{
    return static_cast<LONG>(kSystemUnits);
}

BOOL WINAPI MapDialogRect(HWND handle, LPRECT rectangle)
{
    const Window* const window = Find(handle);
    if (!window || !window->dialog || !rectangle) return FALSE;
    const DialogState& state = *window->dialog;
    *rectangle = {MulDiv(rectangle->left, state.unitWidth, 4), MulDiv(rectangle->top, state.unitHeight, 8),
                  MulDiv(rectangle->right, state.unitWidth, 4),
                  MulDiv(rectangle->bottom, state.unitHeight, 8)};
    return TRUE;
}

HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous)
{
    const Window* const window = Find(dialog);
    if (!window) return nullptr;
    std::vector<HWND> items;
    CollectTabItems(*window, items);
    if (items.empty()) return nullptr;
    const auto own = std::ranges::find(items, control);
    if (own == items.end()) return previous ? items.back() : items.front();
    const auto place = static_cast<std::size_t>(own - items.begin());
    return items[(place + (previous ? items.size() - 1 : 1)) % items.size()];
}

BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check)
{
    const HWND button = GetDlgItem(dialog, id);
    if (button) SendMessageW(button, BM_SETCHECK, check, 0);
    return button != nullptr;
}

UINT WINAPI IsDlgButtonChecked(HWND dialog, int id)
{
    return static_cast<UINT>(SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0));
}
