// Buttons: push buttons, check boxes, radio buttons, group boxes. BM_CLICK tells the parent BN_CLICKED, after
// an automatic button has changed its state.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct ButtonState final : ControlState
{
    UINT check = BST_UNCHECKED;
};

DWORD ButtonKind(const Window& window)
{
    return window.style & BS_TYPEMASK;
}

bool IsRadio(const Window& window)
{
    return ButtonKind(window) == BS_RADIOBUTTON || ButtonKind(window) == BS_AUTORADIOBUTTON;
}

bool HasCheck(const Window& window)
{
    return IsRadio(window) || ButtonKind(window) == BS_CHECKBOX || ButtonKind(window) == BS_AUTOCHECKBOX;
}

void SetCheck(HWND handle, UINT check)
{
    auto* const state = StateOf<ButtonState>(handle);
    if (!state) return;
    Window& window = *Peek(handle);
    state->check = HasCheck(window) ? std::min<UINT>(check, BST_CHECKED) : BST_UNCHECKED;
    // The tab key stops at the radio button that is on.
    if (IsRadio(window)) window.style = state->check ? window.style | WS_TABSTOP : window.style & ~WS_TABSTOP;
    InvalidateRect(handle, nullptr, FALSE);
}

// Of the radio buttons between two WS_GROUP controls only one is on.
void SelectRadio(HWND handle)
{
    const Window& window = *Peek(handle);
    const std::vector<Window*>& siblings = SiblingsOf(window);
    std::size_t own = 0;
    while (siblings[own] != &window)
        ++own;
    std::size_t first = own;
    while (first > 0 && !(siblings[first]->style & WS_GROUP))
        --first;
    for (std::size_t i = first; i < siblings.size(); ++i) {
        if (i > own && (siblings[i]->style & WS_GROUP)) break;
        const bool button = siblings[i]->windowClass->procedure == ButtonProcedure;
        if (button && ButtonKind(*siblings[i]) == BS_AUTORADIOBUTTON)
            SendMessageW(siblings[i]->handle, BM_SETCHECK, i == own ? BST_CHECKED : BST_UNCHECKED, 0);
    }
}

void Click(HWND handle)
{
    SetFocus(handle);
    const auto* const state = StateOf<ButtonState>(handle);
    if (!state) return;
    const DWORD kind = ButtonKind(*Peek(handle));
    if (kind == BS_AUTOCHECKBOX)
        SendMessageW(handle, BM_SETCHECK, state->check == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED, 0);
    else if (kind == BS_AUTORADIOBUTTON)
        SelectRadio(handle);
    if (const Window* const window = Peek(handle)) NotifyCommand(*window, BN_CLICKED);
}

} // namespace

LRESULT CALLBACK ButtonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    const auto& state = StateFor<ButtonState>(window, message);
    switch (message) {
    case WM_NCCREATE:
        if (IsRadio(window)) window.style &= ~WS_TABSTOP;
        return DefWindowProcW(handle, message, wParam, lParam);
    case BM_GETCHECK:
        return static_cast<LRESULT>(state.check);
    case BM_SETCHECK:
        SetCheck(handle, static_cast<UINT>(wParam));
        return 0;
    case BM_CLICK:
        Click(handle);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
