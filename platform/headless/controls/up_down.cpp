// Up-down controls: a position in a range, which may run downwards. Nobody presses the arrows here, so a
// buddy and the steps of the arrows mean nothing.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct UpDownState final : ControlState
{
    int minimum = 100;
    int maximum = 0;
    int position = 0;

    LRESULT Move(int wanted)
    {
        const auto [low, high] = std::minmax(minimum, maximum);
        return std::exchange(position, std::clamp(wanted, low, high));
    }
};

} // namespace

LRESULT CALLBACK UpDownProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto& state = StateFor<UpDownState>(*Peek(handle), message);
    switch (message) {
    case UDM_SETRANGE32:
        state.minimum = static_cast<int>(wParam);
        state.maximum = static_cast<int>(lParam);
        return 0;
    case UDM_SETPOS32:
        return state.Move(static_cast<int>(lParam));
    case UDM_GETPOS32:
        return state.position;
    case UDM_SETACCEL:
        return wParam != 0 && lParam != 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
