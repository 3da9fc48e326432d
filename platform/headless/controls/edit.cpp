// Single-line edit controls: a text, and a selection that a text can be put in the place of. Every change
// tells the parent EN_UPDATE, then EN_CHANGE.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct EditState final : ControlState
{
    std::size_t first = 0; // of the selection
    std::size_t last = 0;
};

void ChangeText(HWND handle, std::u16string text, std::size_t caret)
{
    auto* const state = StateOf<EditState>(handle);
    if (!state) return;
    Peek(handle)->text = std::move(text);
    state->first = state->last = caret;
    for (const int code : {EN_UPDATE, EN_CHANGE}) {
        if (const Window* const window = Peek(handle)) NotifyCommand(*window, code);
    }
}

std::u16string TextOrNone(LPARAM text)
{
    return text ? reinterpret_cast<LPCWSTR>(text) : TEXT("");
}

void Select(const Window& window, EditState& state, int first, int last)
{
    const auto within = [&window](int place) {
        return place < 0 ? window.text.size() : std::min(static_cast<std::size_t>(place), window.text.size());
    };
    const auto [low, high] = std::minmax({within(first), within(last)});
    state.first = first < 0 ? state.last : low; // from -1 nothing is selected
    state.last = first < 0 ? state.last : high;
}

void ReplaceSelection(const Window& window, const EditState& state, const std::u16string& text)
{
    std::u16string changed = window.text;
    changed.replace(state.first, state.last - state.first, text);
    ChangeText(window.handle, std::move(changed), state.first + text.size());
}

} // namespace

LRESULT CALLBACK EditProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    auto& state = StateFor<EditState>(window, message);
    switch (message) {
    case WM_SETTEXT:
        ChangeText(handle, TextOrNone(lParam), 0);
        return TRUE;
    case EM_SETSEL:
        Select(window, state, static_cast<int>(wParam), static_cast<int>(lParam));
        return 1;
    case EM_REPLACESEL:
        ReplaceSelection(window, state, TextOrNone(lParam));
        return 1;
    case WM_SETFOCUS:
        NotifyCommand(window, EN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        NotifyCommand(window, EN_KILLFOCUS);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
