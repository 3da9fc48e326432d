// Tab controls: texts in a row, one of them selected. TCM_SETCURFOCUS selects as a user does: it asks the
// parent with TCN_SELCHANGING and tells it with TCN_SELCHANGE; TCM_SETCURSEL tells nothing.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kRowHeight = 20; // of the tabs, without the border below
constexpr int kBorder = 4;     // between the control's edge and its display area

struct TabState final : ControlState
{
    struct Item
    {
        std::u16string text;
        int image = -1;
    };
    std::vector<Item> items;
    int current = -1;

    int Count() const { return static_cast<int>(items.size()); }
    bool Has(LONG_PTR index) const { return index >= 0 && index < Count(); }
};

LRESULT Insert(TabState& state, WPARAM where, const TCITEMW* source)
{
    if (!source) return -1;
    const int place = static_cast<int>(std::min<WPARAM>(where, state.items.size()));
    TabState::Item item;
    if ((source->mask & TCIF_TEXT) && source->pszText) item.text = source->pszText;
    if (source->mask & TCIF_IMAGE) item.image = source->iImage;
    state.items.insert(state.items.begin() + place, std::move(item));
    if (state.Count() == 1)
        state.current = 0;
    else if (place <= state.current)
        ++state.current;
    return place;
}

BOOL GetItem(const TabState& state, LONG_PTR index, TCITEMW* target)
{
    if (!target || !state.Has(index)) return FALSE;
    const TabState::Item& item = state.items[static_cast<std::size_t>(index)];
    if ((target->mask & TCIF_TEXT) && target->pszText && target->cchTextMax > 0)
        lstrcpynW(target->pszText, item.text.c_str(), target->cchTextMax);
    if (target->mask & TCIF_IMAGE) target->iImage = item.image;
    return TRUE;
}

void Adjust(RECT* rectangle, bool larger)
{
    if (!rectangle) return;
    const int sign = larger ? -1 : 1;
    rectangle->left += sign * kBorder;
    rectangle->top += sign * (kRowHeight + 2);
    rectangle->right -= sign * kBorder;
    rectangle->bottom -= sign * kBorder;
}

void SelectByUser(HWND handle, int index)
{
    auto* state = StateOf<TabState>(handle);
    if (!state || !state->Has(index) || index == state->current) return;
    NMHDR header{};
    if (NotifyParent(*Peek(handle), header, TCN_SELCHANGING)) return;
    if (!(state = StateOf<TabState>(handle)) || !state->Has(index)) return;
    state->current = index;
    NotifyParent(*Peek(handle), header, TCN_SELCHANGE);
}

} // namespace

LRESULT CALLBACK TabProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    auto& state = StateFor<TabState>(window, message);
    if (message == WM_NCCREATE) window.style |= WS_CLIPSIBLINGS;
    switch (message) {
    case TCM_INSERTITEMW:
        return Insert(state, wParam, reinterpret_cast<const TCITEMW*>(lParam));
    case TCM_GETITEMW:
        return GetItem(state, static_cast<LONG_PTR>(wParam), reinterpret_cast<TCITEMW*>(lParam));
    case TCM_GETITEMCOUNT:
        return state.Count();
    case TCM_GETCURSEL:
        return state.current;
    case TCM_SETCURSEL:
        if (!state.Has(static_cast<int>(wParam))) return -1;
        return std::exchange(state.current, static_cast<int>(wParam));
    case TCM_SETCURFOCUS:
        SelectByUser(handle, static_cast<int>(wParam));
        return 0;
    case TCM_ADJUSTRECT:
        Adjust(reinterpret_cast<RECT*>(lParam), wParam != 0);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
