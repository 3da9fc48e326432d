// Single-line edit controls: a text, a selection, a limit. Every change tells the parent EN_UPDATE, then
// EN_CHANGE.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct EditState final : ControlState
{
    std::size_t anchor = 0; // the selection runs from the anchor to the caret
    std::size_t caret = 0;
    std::size_t limit = 30000;
    bool modified = false;

    std::size_t First() const { return std::min(anchor, caret); }
    std::size_t Last() const { return std::max(anchor, caret); }
};

void TellChange(HWND handle)
{
    if (const Window* const window = Peek(handle)) NotifyCommand(*window, EN_UPDATE);
    if (const Window* const window = Peek(handle)) NotifyCommand(*window, EN_CHANGE);
}

// Puts a text in the place of the selection, as much of it as the limit leaves room for.
void Replace(HWND handle, std::u16string_view text, bool bounded)
{
    auto* state = StateOf<EditState>(handle);
    if (!state) return;
    const std::size_t kept = Peek(handle)->text.size() - (state->Last() - state->First());
    if (bounded && kept + text.size() > state->limit) {
        text = text.substr(0, state->limit > kept ? state->limit - kept : 0);
        NotifyCommand(*Peek(handle), EN_MAXTEXT);
        if (!(state = StateOf<EditState>(handle))) return;
    }
    Window& window = *Peek(handle);
    const std::size_t first = std::min(state->First(), window.text.size());
    const std::size_t last = std::min(state->Last(), window.text.size());
    window.text.replace(first, last - first, text);
    state->anchor = state->caret = first + text.size();
    state->modified = true;
    TellChange(handle);
}

void SetText(HWND handle, LPCWSTR text)
{
    auto* const state = StateOf<EditState>(handle);
    if (!state) return;
    Peek(handle)->text = text ? text : TEXT("");
    state->anchor = state->caret = 0;
    state->modified = false;
    TellChange(handle);
}

void Select(EditState& state, std::size_t length, LONG_PTR first, LONG_PTR last)
{
    if (first < 0) {
        state.anchor = state.caret;
        return;
    }
    const auto within = [length](LONG_PTR place) {
        return place < 0 ? length : std::min(static_cast<std::size_t>(place), length);
    };
    state.anchor = within(first);
    state.caret = within(last);
}

void Erase(HWND handle, bool forward)
{
    auto* const state = StateOf<EditState>(handle);
    const Window* const window = Peek(handle);
    if (!state || (window->style & ES_READONLY)) return;
    if (state->anchor == state->caret) {
        if (forward && state->caret < window->text.size())
            state->caret += 1;
        else if (!forward && state->caret > 0)
            state->caret -= 1;
        else
            return;
    }
    Replace(handle, {}, false);
}

void Type(HWND handle, WCHAR unit)
{
    const Window& window = *Peek(handle);
    if (window.style & ES_READONLY) return;
    if (unit == VK_BACK) {
        Erase(handle, false);
        return;
    }
    if (unit < u' ') return;
    if ((window.style & ES_NUMBER) && (unit < u'0' || unit > u'9')) return;
    Replace(handle, {&unit, 1}, true);
}

void OnKey(HWND handle, WPARAM key)
{
    auto* const state = StateOf<EditState>(handle);
    if (!state) return;
    const std::size_t length = Peek(handle)->text.size();
    switch (key) {
    case VK_LEFT:
        state->anchor = state->caret = state->caret > 0 ? state->caret - 1 : 0;
        break;
    case VK_RIGHT:
        state->anchor = state->caret = std::min(state->caret + 1, length);
        break;
    case VK_HOME:
        state->anchor = state->caret = 0;
        break;
    case VK_END:
        state->anchor = state->caret = length;
        break;
    case VK_DELETE:
        Erase(handle, true);
        break;
    default:
        break;
    }
}

LRESULT Selection(const EditState& state, WPARAM first, LPARAM last)
{
    if (first) *reinterpret_cast<DWORD*>(first) = static_cast<DWORD>(state.First());
    if (last) *reinterpret_cast<DWORD*>(last) = static_cast<DWORD>(state.Last());
    return MAKELONG(static_cast<WORD>(state.First()), static_cast<WORD>(state.Last()));
}

} // namespace

LRESULT CALLBACK EditProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) {
        window->control = std::make_unique<EditState>();
        return DefWindowProcW(handle, message, wParam, lParam);
    }
    auto* const state = static_cast<EditState*>(window->control.get());
    if (!state) return DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
    case WM_SETTEXT:
        SetText(handle, reinterpret_cast<LPCWSTR>(lParam));
        return TRUE;
    case WM_CHAR:
        Type(handle, static_cast<WCHAR>(wParam));
        return 1;
    case WM_KEYDOWN:
        OnKey(handle, wParam);
        return 0;
    case WM_CLEAR:
        if (state->anchor != state->caret) Replace(handle, {}, false);
        return 0;
    case EM_REPLACESEL: {
        const auto* const text = reinterpret_cast<LPCWSTR>(lParam);
        Replace(handle, text ? std::u16string_view(text) : std::u16string_view(), true);
        return 1;
    }
    case EM_SETSEL:
        Select(*state, window->text.size(), static_cast<LONG>(wParam), static_cast<LONG>(lParam));
        return 1;
    case EM_GETSEL:
        return Selection(*state, wParam, lParam);
    case EM_LIMITTEXT:
        state->limit = wParam ? wParam : 0x7ffffffe;
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(state->limit);
    case EM_GETMODIFY:
        return state->modified;
    case EM_SETMODIFY:
        state->modified = wParam != 0;
        return 0;
    case EM_SETREADONLY:
        window->style =
            wParam ? window->style | ES_READONLY : window->style & ~static_cast<DWORD>(ES_READONLY);
        return 1;
    case WM_LBUTTONDOWN:
        SetFocus(handle);
        return 0;
    case WM_SETFOCUS:
        NotifyCommand(*window, EN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        NotifyCommand(*window, EN_KILLFOCUS);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
