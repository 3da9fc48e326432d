// What a dialog does by itself: it hands messages to the dialog procedure, and the focus to its controls.
#include <algorithm>

#include "platform/headless/window.h"

using namespace tintwerk::headless;

namespace {

bool IsEnabledAndVisible(const Window& window)
{
    return (window.style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

// The controls that the tab key would visit, in order, those of nested dialogs among them.
void CollectTabItems(const Window& dialog, std::vector<HWND>& items)
{
    for (const Window* child : dialog.children) {
        if (!IsEnabledAndVisible(*child)) continue;
        if (child->exStyle & WS_EX_CONTROLPARENT)
            CollectTabItems(*child, items);
        else if (child->style & WS_TABSTOP)
            items.push_back(child->handle);
    }
}

void FocusFirst(HWND dialog)
{
    if (const HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE)) SetFocus(first);
}

LRESULT Defaults(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE) FocusFirst(handle);
        return 0;
    case WM_SETFOCUS:
        FocusFirst(handle);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace

LRESULT WINAPI DefDlgProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!Find(handle)) return 0;
    SetWindowLongPtrW(handle, DWLP_MSGRESULT, 0);
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(handle, DWLP_DLGPROC));
    const INT_PTR handled = procedure ? procedure(handle, message, wParam, lParam) : FALSE;
    if (!Peek(handle)) return 0;
    if (!handled) return Defaults(handle, message, wParam, lParam);
    const bool answersDirectly = message == WM_INITDIALOG || message == WM_CTLCOLORSTATIC;
    return answersDirectly ? handled : GetWindowLongPtrW(handle, DWLP_MSGRESULT);
}

HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous)
{
    const Window* const window = Find(dialog);
    if (!window || previous) return nullptr; // nobody goes back
    std::vector<HWND> items;
    CollectTabItems(*window, items);
    if (items.empty()) return nullptr;
    const auto own = std::ranges::find(items, control);
    return own == items.end() || own + 1 == items.end() ? items.front() : *(own + 1);
}
