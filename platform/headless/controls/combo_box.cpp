// Drop-down list combo boxes. A choice by the user tells the parent CBN_SELENDOK, then CBN_SELCHANGE while
// the list is closed; with the list open every move tells CBN_SELCHANGE and closing it tells how it ended.
// Choices by message tell nothing.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kItemHeight = 13;
constexpr int kFieldHeight = 17;
constexpr int kPage = 10; // items that the open list shows

struct ComboState final : ControlState
{
    struct Item
    {
        std::u16string text;
        LONG_PTR data = 0;
    };
    std::vector<Item> items;
    int current = -1;
    int droppedHeight = 0;
    bool dropped = false;

    int Count() const { return static_cast<int>(items.size()); }
    Item* At(WPARAM index) { return index < items.size() ? &items[index] : nullptr; }
};

bool HasStrings(const Window& window)
{
    return !(window.style & CBS_OWNERDRAWFIXED) || (window.style & CBS_HASSTRINGS);
}

void Tell(HWND handle, WORD code)
{
    if (const Window* const window = Peek(handle)) NotifyCommand(*window, code);
}

LRESULT Insert(Window& window, ComboState& state, int place, LPARAM content)
{
    if (place < 0 || place > state.Count()) return CB_ERR;
    ComboState::Item item;
    if (!HasStrings(window))
        item.data = content;
    else if (content)
        item.text = reinterpret_cast<LPCWSTR>(content);
    if (place <= state.current) ++state.current;
    state.items.insert(state.items.begin() + place, std::move(item));
    return place;
}

int PlaceFor(const Window& window, const ComboState& state, LPARAM content)
{
    if (!(window.style & CBS_SORT) || !content) return state.Count();
    const std::u16string_view text = reinterpret_cast<LPCWSTR>(content);
    int place = 0;
    while (place < state.Count() &&
           lstrcmpiW(state.items[static_cast<std::size_t>(place)].text.c_str(), text.data()) <= 0)
        ++place;
    return place;
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

LRESULT FindExact(const ComboState& state, int after, LPARAM content)
{
    if (!content) return CB_ERR;
    const std::u16string_view wanted = reinterpret_cast<LPCWSTR>(content);
    for (int i = 1; i <= state.Count(); ++i) {
        const int index = (std::max(after, -1) + i) % state.Count();
        if (EqualIgnoringCase(state.items[static_cast<std::size_t>(index)].text, wanted)) return index;
    }
    return CB_ERR;
}

LRESULT CopyText(const std::u16string& text, LPARAM buffer)
{
    auto* const out = reinterpret_cast<WCHAR*>(buffer);
    if (!out) return CB_ERR;
    text.copy(out, text.size());
    out[text.size()] = 0;
    return static_cast<LRESULT>(text.size());
}

void DropDown(HWND handle)
{
    auto* const state = StateOf<ComboState>(handle);
    if (!state || state->dropped) return;
    state->dropped = true;
    Tell(handle, CBN_DROPDOWN);
}

void RollUp(HWND handle, bool accept)
{
    auto* const state = StateOf<ComboState>(handle);
    if (!state || !state->dropped) return;
    state->dropped = false;
    Tell(handle, static_cast<WORD>(accept ? CBN_SELENDOK : CBN_SELENDCANCEL));
    Tell(handle, CBN_CLOSEUP);
}

void Choose(HWND handle, int index)
{
    auto* const state = StateOf<ComboState>(handle);
    if (!state || state->items.empty()) return;
    state->current = std::clamp(index, 0, state->Count() - 1);
    if (!state->dropped) Tell(handle, CBN_SELENDOK);
    Tell(handle, CBN_SELCHANGE);
}

void OnKey(HWND handle, WPARAM key)
{
    const auto& state = *StateOf<ComboState>(handle);
    switch (key) {
    case VK_DOWN:
    case VK_RIGHT:
        return Choose(handle, state.current + 1);
    case VK_UP:
    case VK_LEFT:
        return Choose(handle, state.current - 1);
    case VK_NEXT:
        return Choose(handle, state.current + kPage - 1);
    case VK_PRIOR:
        return Choose(handle, state.current - kPage + 1);
    case VK_HOME:
        return Choose(handle, 0);
    case VK_END:
        return Choose(handle, state.Count() - 1);
    case VK_F4:
        return state.dropped ? RollUp(handle, false) : DropDown(handle);
    case VK_RETURN:
        return RollUp(handle, true);
    case VK_ESCAPE:
        return RollUp(handle, false);
    default:
        return;
    }
}

// Typing a character chooses the next item that begins with it.
void OnCharacter(HWND handle, WCHAR unit)
{
    const auto& state = *StateOf<ComboState>(handle);
    for (int i = 1; i <= state.Count(); ++i) {
        const int index = (std::max(state.current, -1) + i) % state.Count();
        const std::u16string& text = state.items[static_cast<std::size_t>(index)].text;
        if (!text.empty() && EqualIgnoringCase({&text[0], 1}, {&unit, 1})) return Choose(handle, index);
    }
}

void OnClick(HWND handle)
{
    SetFocus(handle);
    const auto* const state = StateOf<ComboState>(handle);
    if (!state) return;
    if (state->dropped)
        RollUp(handle, true);
    else
        DropDown(handle);
}

void Create(Window& window)
{
    auto state = std::make_unique<ComboState>();
    state->droppedHeight = std::max(window.Height() - kFieldHeight - 4, 0);
    window.control = std::move(state);
    window.style &= ~(WS_VSCROLL | WS_HSCROLL);
    window.exStyle &= ~WS_EX_CLIENTEDGE;
    window.place.bottom = window.place.top + kFieldHeight + 4;
}

} // namespace

LRESULT CALLBACK ComboBoxProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) Create(*window);
    auto* const state = static_cast<ComboState*>(window->control.get());
    if (!state) return DefWindowProcW(handle, message, wParam, lParam);
    const std::u16string shown =
        state->current >= 0 ? state->items[static_cast<std::size_t>(state->current)].text : u"";
    switch (message) {
    case CB_ADDSTRING:
        return Insert(*window, *state, PlaceFor(*window, *state, lParam), lParam);
    case CB_INSERTSTRING:
        return Insert(*window, *state,
                      static_cast<int>(wParam) == -1 ? state->Count() : static_cast<int>(wParam), lParam);
    case CB_DELETESTRING:
        return Delete(*state, wParam);
    case CB_RESETCONTENT:
        state->items.clear();
        state->current = -1;
        return CB_OKAY;
    case CB_GETCOUNT:
        return state->Count();
    case CB_SETCURSEL:
        return SetCurrent(*state, static_cast<int>(wParam));
    case CB_GETCURSEL:
        return state->current;
    case CB_SETITEMDATA:
        if (!state->At(wParam)) return CB_ERR;
        state->At(wParam)->data = lParam;
        return CB_OKAY;
    case CB_GETITEMDATA:
        return state->At(wParam) ? state->At(wParam)->data : CB_ERR;
    case CB_GETLBTEXTLEN:
        return state->At(wParam) ? static_cast<LRESULT>(state->At(wParam)->text.size()) : CB_ERR;
    case CB_GETLBTEXT:
        return state->At(wParam) ? CopyText(state->At(wParam)->text, lParam) : CB_ERR;
    case CB_FINDSTRINGEXACT:
        return FindExact(*state, static_cast<int>(wParam), lParam);
    case CB_SHOWDROPDOWN:
        if (wParam)
            DropDown(handle);
        else
            RollUp(handle, false);
        return TRUE;
    case CB_GETDROPPEDSTATE:
        return state->dropped;
    case CB_GETITEMHEIGHT:
        return static_cast<int>(wParam) == -1 ? kFieldHeight : kItemHeight;
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(shown.size());
    case WM_GETTEXT:
        window->text = shown;
        return DefWindowProcW(handle, message, wParam, lParam);
    case WM_SETTEXT:
        return CB_ERR; // a list has no text of its own
    case WM_KEYDOWN:
        OnKey(handle, wParam);
        return 0;
    case WM_CHAR:
        OnCharacter(handle, static_cast<WCHAR>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
        OnClick(handle);
        return 0;
    case WM_SETFOCUS:
        NotifyCommand(*window, CBN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        if (state->dropped)
            RollUp(handle, false);
        else
            Tell(handle, CBN_SELENDCANCEL);
        Tell(handle, CBN_KILLFOCUS);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_WINDOWPOSCHANGED:
        // The closed box keeps its height, whatever it is told.
        if (window->Height() != kFieldHeight + 4) window->place.bottom = window->place.top + kFieldHeight + 4;
        return DefWindowProcW(handle, message, wParam, lParam);
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
