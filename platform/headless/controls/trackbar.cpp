// Trackbars: a position in a range. Keys and clicks move it and tell the parent with WM_HSCROLL or
// WM_VSCROLL; messages move it silently. Thumb and channel are laid out so that a click lands where it would
// on the real control.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kThumbLength = 11; // along the channel
constexpr int kChannelMargin = 8;

struct TrackState final : ControlState
{
    int minimum = 0;
    int maximum = 100;
    int position = 0;
    int page = 0; // 0: a fifth of the range
    int line = 1;
    bool dragging = false;

    int PageSize() const { return page ? page : std::max((maximum - minimum) / 5, 1); }
    void Move(LONG_PTR wanted)
    {
        position = static_cast<int>(std::clamp<LONG_PTR>(wanted, minimum, std::max(minimum, maximum)));
    }
};

bool IsVertical(const Window& window)
{
    return (window.style & TBS_VERT) != 0;
}

void TellScroll(HWND handle, WORD code, int position = 0)
{
    const Window* const window = Peek(handle);
    if (!window || !window->parent) return;
    SendMessageW(window->parent->handle, IsVertical(*window) ? WM_VSCROLL : WM_HSCROLL,
                 MAKEWPARAM(code, static_cast<WORD>(position)), reinterpret_cast<LPARAM>(handle));
}

// Moves and tells, unless the position is at its end already.
void Step(HWND handle, WORD code, LONG_PTR wanted)
{
    auto& state = *StateOf<TrackState>(handle);
    const int before = state.position;
    state.Move(wanted);
    if (state.position != before) TellScroll(handle, code);
}

bool IsTrackKey(WPARAM key)
{
    switch (key) {
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
        return true;
    default:
        return false;
    }
}

void OnKey(HWND handle, WPARAM key)
{
    const auto& state = *StateOf<TrackState>(handle);
    switch (key) {
    case VK_LEFT:
    case VK_UP:
        return Step(handle, TB_LINEUP, LONG_PTR{state.position} - state.line);
    case VK_RIGHT:
    case VK_DOWN:
        return Step(handle, TB_LINEDOWN, LONG_PTR{state.position} + state.line);
    case VK_PRIOR:
        return Step(handle, TB_PAGEUP, LONG_PTR{state.position} - state.PageSize());
    case VK_NEXT:
        return Step(handle, TB_PAGEDOWN, LONG_PTR{state.position} + state.PageSize());
    case VK_HOME:
        return Step(handle, TB_TOP, state.minimum);
    case VK_END:
        return Step(handle, TB_BOTTOM, state.maximum);
    default:
        return;
    }
}

int ChannelLength(const Window& window)
{
    const RECT client = ClientOf(window);
    return std::max<LONG>((IsVertical(window) ? client.bottom : client.right) - 2 * kChannelMargin,
                          kThumbLength + 1);
}

int ThumbStart(const Window& window, const TrackState& state)
{
    const LONG_PTR range = std::max(state.maximum - state.minimum, 1);
    return kChannelMargin + static_cast<int>((LONG_PTR{state.position} - state.minimum) *
                                             (ChannelLength(window) - kThumbLength) / range);
}

int AlongChannel(const Window& window, LPARAM place)
{
    return IsVertical(window) ? GET_Y_LPARAM(place) : GET_X_LPARAM(place);
}

void OnPress(HWND handle, LPARAM place)
{
    SetFocus(handle);
    auto* const state = StateOf<TrackState>(handle);
    if (!state) return;
    const Window& window = *Peek(handle);
    const int at = AlongChannel(window, place);
    const int thumb = ThumbStart(window, *state);
    SetCapture(handle);
    state->dragging = at >= thumb && at < thumb + kThumbLength;
    if (at < thumb)
        Step(handle, TB_PAGEUP, LONG_PTR{state->position} - state->PageSize());
    else if (!state->dragging)
        Step(handle, TB_PAGEDOWN, LONG_PTR{state->position} + state->PageSize());
}

void OnDrag(HWND handle, LPARAM place)
{
    auto& state = *StateOf<TrackState>(handle);
    const Window& window = *Peek(handle);
    const LONG_PTR range = state.maximum - state.minimum;
    const int room = ChannelLength(window) - kThumbLength;
    const int before = state.position;
    state.Move(state.minimum +
               ((AlongChannel(window, place) - kChannelMargin - kThumbLength / 2) * range + room / 2) / room);
    if (state.position != before) TellScroll(handle, TB_THUMBTRACK, state.position);
}

void OnRelease(HWND handle)
{
    if (GetCapture() != handle) return;
    auto* state = StateOf<TrackState>(handle);
    if (std::exchange(state->dragging, false)) {
        TellScroll(handle, TB_THUMBPOSITION, state->position);
    } else {
        TellScroll(handle, TB_ENDTRACK);
    }
    TellScroll(handle, TB_ENDTRACK);
    ReleaseCapture();
    NMHDR header{};
    if (const Window* const window = Peek(handle)) NotifyParent(*window, header, NM_RELEASEDCAPTURE);
}

LRESULT SetRange(TrackState& state, int minimum, int maximum)
{
    state.minimum = minimum;
    state.maximum = maximum;
    state.Move(state.position);
    return 0;
}

} // namespace

LRESULT CALLBACK TrackbarProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) window->control = std::make_unique<TrackState>();
    auto* const state = static_cast<TrackState*>(window->control.get());
    if (!state) return DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
    case TBM_GETPOS:
        return state->position;
    case TBM_SETPOS:
        state->Move(static_cast<LONG>(lParam));
        return 0;
    case TBM_GETRANGEMIN:
        return state->minimum;
    case TBM_GETRANGEMAX:
        return state->maximum;
    case TBM_SETRANGE:
        return SetRange(*state, static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam)));
    case TBM_SETRANGEMIN:
        return SetRange(*state, static_cast<int>(lParam), state->maximum);
    case TBM_SETRANGEMAX:
        return SetRange(*state, state->minimum, static_cast<int>(lParam));
    case TBM_GETPAGESIZE:
        return state->PageSize();
    case TBM_SETPAGESIZE: {
        const int previous = state->PageSize();
        state->page = lParam == -1 ? 0 : static_cast<int>(lParam);
        return previous;
    }
    case TBM_GETLINESIZE:
        return state->line;
    case TBM_SETLINESIZE:
        return std::exchange(state->line, static_cast<int>(lParam));
    case TBM_SETTICFREQ:
        return 0;
    case WM_KEYDOWN:
        OnKey(handle, wParam);
        return 0;
    case WM_KEYUP:
        if (IsTrackKey(wParam)) TellScroll(handle, TB_ENDTRACK);
        return 0;
    case WM_LBUTTONDOWN:
        OnPress(handle, lParam);
        return 0;
    case WM_MOUSEMOVE:
        if (state->dragging) OnDrag(handle, lParam);
        return 0;
    case WM_LBUTTONUP:
        OnRelease(handle);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
