// Drop-down list combo boxes: texts with a number each, one of them chosen. A choice by message tells the
// parent nothing; getting and losing the focus does.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kHeight = 21; // of the closed box

struct ComboState final : ControlState
{
    struct Item
    {
        std::u16string text;
        LONG_PTR data = 0;
    };
    std::vector<Item> items;
    int current = -1;

    int Count() const { return static_cast<int>(items.size()); }
    Item* At(WPARAM index) { return index < items.size() ? &items[index] : nullptr; }
};

LRESULT Add(ComboState& state, LPARAM text)
{
    state.items.push_back({text ? reinterpret_cast<LPCWSTR>(text) : TEXT(""), 0});
    return state.Count() - 1;
}

LRESULT Delete(ComboState& state, WPARAM index)
{
    if (!state.At(index)) return CB_ERR;
    const int place = static_cast<int>(index);
    state.items.erase(state.items.begin() + place);
    if (state.current == place)
        state.current = -1;
    else if (state.current > place)
        --state.current;
    return state.Count();
}

LRESULT SetCurrent(ComboState& state, int index)
{
    if (index == -1) state.current = -1;
    if (index < 0 || index >= state.Count()) return CB_ERR; // what is chosen stays
    return state.current = index;
}

LRESULT CopyText(const ComboState::Item* item, LPARAM buffer)
{
    auto* const out = reinterpret_cast<WCHAR*>(buffer);
    if (!item || !out) return CB_ERR;
    item->text.copy(out, item->text.size());
    out[item->text.size()] = 0;
    return static_cast<LRESULT>(item->text.size());
}

// The closed box keeps its height, whatever it is told.
void KeepHeight(Window& window)
{
    window.place.bottom = window.place.top + kHeight;
}

void Create(Window& window)
{
    window.style &= ~WS_VSCROLL;
    window.exStyle &= ~WS_EX_CLIENTEDGE;
    KeepHeight(window);
}

void LoseFocus(HWND handle)
{
    for (const int code : {CBN_SELENDCANCEL, CBN_KILLFOCUS}) {
        if (const Window* const window = Peek(handle)) NotifyCommand(*window, code);
    }
}

} // namespace

LRESULT CALLBACK ComboBoxProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    auto& state = StateFor<ComboState>(window, message);
    if (message == WM_NCCREATE) Create(window);
    ComboState::Item* const item = state.At(wParam);
    switch (message) {
    case CB_ADDSTRING:
        return Add(state, lParam);
    case CB_DELETESTRING:
        return Delete(state, wParam);
    case CB_GETCOUNT:
        return state.Count();
    case CB_SETCURSEL:
        return SetCurrent(state, static_cast<int>(wParam));
    case CB_GETCURSEL:
        return state.current;
    case CB_SETITEMDATA:
        if (!item) return CB_ERR;
        item->data = lParam;
        return CB_OKAY;
    case CB_GETITEMDATA:
        return item ? item->data : CB_ERR;
    case CB_GETLBTEXTLEN:
        return item ? static_cast<LRESULT>(item->text.size()) : CB_ERR;
    case CB_GETLBTEXT:
        return CopyText(item, lParam);
    case WM_SETFOCUS:
        NotifyCommand(window, CBN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        LoseFocus(handle);
        return 0;
    case WM_SIZE:
        KeepHeight(window);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
