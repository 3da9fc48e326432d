// Buttons: push buttons, check boxes, radio buttons, group boxes. A click tells the parent BN_CLICKED, after
// an automatic button has changed its state.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct ButtonState final : ControlState
{
    UINT check = BST_UNCHECKED;
    bool pushed = false;
};

DWORD KindOf(const Window& window)
{
    return window.style & BS_TYPEMASK;
}

bool IsRadio(const Window& window)
{
    return KindOf(window) == BS_RADIOBUTTON || KindOf(window) == BS_AUTORADIOBUTTON;
}

// The highest check state that the kind knows.
UINT HighestCheck(const Window& window)
{
    switch (KindOf(window)) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return BST_CHECKED;
    case BS_3STATE:
    case BS_AUTO3STATE:
        return BST_INDETERMINATE;
    default:
        return BST_UNCHECKED;
    }
}

void SetCheck(HWND handle, UINT check)
{
    auto* const state = StateOf<ButtonState>(handle);
    if (!state) return;
    Window& window = *Peek(handle);
    state->check = check < HighestCheck(window) ? check : HighestCheck(window);
    // The tab key stops at the radio button that is on.
    if (IsRadio(window)) window.style = state->check ? window.style | WS_TABSTOP : window.style & ~WS_TABSTOP;
    InvalidateRect(handle, nullptr, FALSE);
}

// Of the radio buttons between two WS_GROUP controls only one is on.
void SelectRadio(HWND handle)
{
    const Window& window = *Peek(handle);
    const std::vector<Window*>& siblings = window.parent->children;
    std::size_t own = 0;
    while (siblings[own] != &window)
        ++own;
    std::size_t first = own;
    while (first > 0 && !(siblings[first]->style & WS_GROUP))
        --first;
    for (std::size_t i = first; i < siblings.size(); ++i) {
        if (i > own && (siblings[i]->style & WS_GROUP)) break;
        const bool button = siblings[i]->windowClass->procedure == ButtonProcedure;
        if (button && KindOf(*siblings[i]) == BS_AUTORADIOBUTTON)
            SendMessageW(siblings[i]->handle, BM_SETCHECK, i == own ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

void Clicked(HWND handle)
{
    const auto* const state = StateOf<ButtonState>(handle);
    if (!state) return;
    switch (KindOf(*Peek(handle))) {
    case BS_AUTOCHECKBOX:
        SendMessageW(handle, BM_SETCHECK, state->check == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED, 0);
        break;
    case BS_AUTO3STATE:
        SendMessageW(handle, BM_SETCHECK, (state->check + 1) % 3, 0);
        break;
    case BS_AUTORADIOBUTTON:
        SelectRadio(handle);
        break;
    default:
        break;
    }
    if (const Window* const window = Peek(handle)) NotifyCommand(*window, BN_CLICKED);
}

void Press(HWND handle)
{
    SetCapture(handle);
    SetFocus(handle);
    if (auto* const state = StateOf<ButtonState>(handle)) state->pushed = true;
}

void LetGo(HWND handle, bool inside)
{
    auto* const state = StateOf<ButtonState>(handle);
    if (!state || !state->pushed) return;
    state->pushed = false;
    if (GetCapture() == handle) ReleaseCapture();
    if (inside) Clicked(handle);
}

bool IsInside(const Window& window, LPARAM place)
{
    const RECT client = ClientOf(window);
    return PtInRect(&client, {GET_X_LPARAM(place), GET_Y_LPARAM(place)});
}

LRESULT DialogCode(const Window& window)
{
    switch (KindOf(window)) {
    case BS_PUSHBUTTON:
        return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON:
        return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_GROUPBOX:
        return DLGC_STATIC;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return DLGC_BUTTON | DLGC_RADIOBUTTON;
    default:
        return DLGC_BUTTON;
    }
}

void TellFocus(HWND handle, bool has)
{
    auto* const state = StateOf<ButtonState>(handle);
    if (!state) return;
    if (!has) state->pushed = false;
    const Window& window = *Peek(handle);
    if (window.style & BS_NOTIFY) NotifyCommand(window, static_cast<WORD>(has ? BN_SETFOCUS : BN_KILLFOCUS));
}

} // namespace

LRESULT CALLBACK ButtonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    auto* const state = static_cast<ButtonState*>(window->control.get());
    switch (message) {
    case WM_NCCREATE:
        window->control = std::make_unique<ButtonState>();
        if (IsRadio(*window)) window->style &= ~WS_TABSTOP;
        return DefWindowProcW(handle, message, wParam, lParam);
    case BM_GETCHECK:
        return state ? static_cast<LRESULT>(state->check) : 0;
    case BM_SETCHECK:
        SetCheck(handle, static_cast<UINT>(wParam));
        return 0;
    case BM_GETSTATE:
        if (!state) return 0;
        return static_cast<LRESULT>(state->check | (state->pushed ? BST_PUSHED : 0u) |
                                    (GetFocus() == handle ? BST_FOCUS : 0u));
    case BM_SETSTATE:
        if (state) state->pushed = wParam != 0;
        return 0;
    case BM_SETSTYLE:
        window->style = (window->style & ~static_cast<DWORD>(BS_TYPEMASK)) | (wParam & BS_TYPEMASK);
        return 0;
    case BM_CLICK:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONDOWN:
        Press(handle);
        if (message == BM_CLICK) LetGo(handle, true);
        return 0;
    case WM_LBUTTONUP:
        LetGo(handle, IsInside(*window, lParam));
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE && state) state->pushed = true;
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE) LetGo(handle, true);
        return 0;
    case WM_CAPTURECHANGED:
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        TellFocus(handle, message == WM_SETFOCUS);
        return 0;
    case WM_GETDLGCODE:
        return DialogCode(*window);
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
