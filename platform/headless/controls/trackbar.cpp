// Trackbars: a position in a range. Messages move it silently.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct TrackState final : ControlState
{
    int minimum = 0;
    int maximum = 100;
    int position = 0;

    LRESULT Move(int wanted)
    {
        position = std::clamp(wanted, minimum, std::max(minimum, maximum));
        return 0;
    }
    LRESULT SetRange(int low, int high)
    {
        minimum = low;
        maximum = high;
        return Move(position);
    }
};

} // namespace

LRESULT CALLBACK TrackbarProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto& state = StateFor<TrackState>(*Peek(handle), message);
    switch (message) {
    case TBM_GETPOS:
        return state.position;
    case TBM_SETPOS:
        return state.Move(static_cast<int>(lParam));
    case TBM_GETRANGEMIN:
        return state.minimum;
    case TBM_GETRANGEMAX:
        return state.maximum;
    case TBM_SETRANGEMIN:
        return state.SetRange(static_cast<int>(lParam), state.maximum);
    case TBM_SETRANGEMAX:
        return state.SetRange(state.minimum, static_cast<int>(lParam));
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
