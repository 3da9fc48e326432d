// Tab controls: texts in a row, one of them selected. A selection by the user asks the parent with
// TCN_SELCHANGING and tells it with TCN_SELCHANGE; a selection by TCM_SETCURSEL tells nothing.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kRowHeight = 20; // of the tabs, without the border below
constexpr int kBorder = 4;     // between the control's edge and its display area
constexpr int kTextMargin = 14;
constexpr int kCharacterWidth = 7;
constexpr UINT kKeyDownNotice = 0U - 550U; // TCN_KEYDOWN

struct TabState final : ControlState
{
    struct Item
    {
        std::u16string text;
        int image = -1;
        LPARAM data = 0;
    };
    std::vector<Item> items;
    int current = -1;

    int Count() const { return static_cast<int>(items.size()); }
    bool Has(LONG_PTR index) const { return index >= 0 && index < Count(); }
};

LRESULT Insert(TabState& state, WPARAM where, const TCITEMW& source)
{
    const int place = static_cast<int>(std::min<WPARAM>(where, state.items.size()));
    TabState::Item item;
    if ((source.mask & TCIF_TEXT) && source.pszText) item.text = source.pszText;
    if (source.mask & TCIF_IMAGE) item.image = source.iImage;
    if (source.mask & TCIF_PARAM) item.data = source.lParam;
    state.items.insert(state.items.begin() + place, std::move(item));
    if (state.Count() == 1)
        state.current = 0;
    else if (place <= state.current)
        ++state.current;
    return place;
}

void SetItem(TabState::Item& item, const TCITEMW& source)
{
    if ((source.mask & TCIF_TEXT) && source.pszText) item.text = source.pszText;
    if (source.mask & TCIF_IMAGE) item.image = source.iImage;
    if (source.mask & TCIF_PARAM) item.data = source.lParam;
}

void GetItem(const TabState::Item& item, TCITEMW& target)
{
    if ((target.mask & TCIF_TEXT) && target.pszText && target.cchTextMax > 0)
        lstrcpynW(target.pszText, item.text.c_str(), target.cchTextMax);
    if (target.mask & TCIF_IMAGE) target.iImage = item.image;
    if (target.mask & TCIF_PARAM) target.lParam = item.data;
}

LRESULT Delete(TabState& state, LONG_PTR index)
{
    if (!state.Has(index)) return FALSE;
    state.items.erase(state.items.begin() + index);
    if (state.current == index)
        state.current = -1;
    else if (state.current > index)
        --state.current;
    return TRUE;
}

RECT RectOf(const TabState& state, int index)
{
    RECT rectangle{2, 2, 2, kRowHeight};
    for (int i = 0; i <= index; ++i) {
        rectangle.left = rectangle.right;
        rectangle.right +=
            kTextMargin +
            kCharacterWidth * static_cast<int>(state.items[static_cast<std::size_t>(i)].text.size());
    }
    return rectangle;
}

int HitTest(const TabState& state, LPARAM place)
{
    for (int i = 0; i < state.Count(); ++i) {
        const RECT rectangle = RectOf(state, i);
        if (PtInRect(&rectangle, {GET_X_LPARAM(place), GET_Y_LPARAM(place)})) return i;
    }
    return -1;
}

void Adjust(RECT& rectangle, bool larger)
{
    const int sign = larger ? -1 : 1;
    rectangle.left += sign * kBorder;
    rectangle.top += sign * (kRowHeight + 2);
    rectangle.right -= sign * kBorder;
    rectangle.bottom -= sign * kBorder;
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

void OnKey(HWND handle, WPARAM key)
{
    struct // NMTCKEYDOWN
    {
        NMHDR header;
        WORD key;
        UINT flags;
    } notice{{}, static_cast<WORD>(key), 0};
    NotifyParent(*Peek(handle), notice.header, kKeyDownNotice);
    const auto* const state = StateOf<TabState>(handle);
    if (!state) return;
    if (key == VK_LEFT)
        SelectByUser(handle, state->current - 1);
    else if (key == VK_RIGHT)
        SelectByUser(handle, state->current + 1);
}

void OnClick(HWND handle, LPARAM place)
{
    const int index = HitTest(*StateOf<TabState>(handle), place);
    if (GetFocus() != handle && index == StateOf<TabState>(handle)->current) SetFocus(handle);
    if (StateOf<TabState>(handle)) SelectByUser(handle, index);
}

} // namespace

LRESULT CALLBACK TabProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) {
        window->control = std::make_unique<TabState>();
        window->style |= WS_CLIPSIBLINGS;
    }
    auto* const state = static_cast<TabState*>(window->control.get());
    if (!state) return DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
    case TCM_INSERTITEMW:
        return lParam ? Insert(*state, wParam, *reinterpret_cast<const TCITEMW*>(lParam)) : -1;
    case TCM_SETITEMW:
        if (!lParam || !state->Has(static_cast<LONG_PTR>(wParam))) return FALSE;
        SetItem(state->items[wParam], *reinterpret_cast<const TCITEMW*>(lParam));
        return TRUE;
    case TCM_GETITEMW:
        if (!lParam || !state->Has(static_cast<LONG_PTR>(wParam))) return FALSE;
        GetItem(state->items[wParam], *reinterpret_cast<TCITEMW*>(lParam));
        return TRUE;
    case TCM_DELETEITEM:
        return Delete(*state, static_cast<LONG_PTR>(wParam));
    case TCM_DELETEALLITEMS:
        state->items.clear();
        state->current = -1;
        return TRUE;
    case TCM_GETITEMCOUNT:
        return state->Count();
    case TCM_GETITEMRECT:
        if (!lParam || !state->Has(static_cast<LONG_PTR>(wParam))) return FALSE;
        *reinterpret_cast<RECT*>(lParam) = RectOf(*state, static_cast<int>(wParam));
        return TRUE;
    case TCM_GETCURSEL:
    case TCM_GETCURFOCUS:
        return state->current;
    case TCM_SETCURSEL:
        if (!state->Has(static_cast<int>(wParam))) return -1;
        return std::exchange(state->current, static_cast<int>(wParam));
    case TCM_SETCURFOCUS:
        SelectByUser(handle, static_cast<int>(wParam));
        return 0;
    case TCM_GETROWCOUNT:
        return state->items.empty() ? 0 : 1;
    case TCM_ADJUSTRECT:
        if (lParam) Adjust(*reinterpret_cast<RECT*>(lParam), wParam != 0);
        return 0;
    case WM_LBUTTONDOWN:
        OnClick(handle, lParam);
        return 0;
    case WM_LBUTTONUP: {
        NMHDR header{};
        NotifyParent(*window, header, NM_CLICK);
        return 0;
    }
    case WM_KEYDOWN:
        OnKey(handle, wParam);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
