// Up-down controls: a number in a range, two arrows, and often a buddy window that shows the number. A step
// by the user asks the parent with UDN_DELTAPOS, moves the position unless it was refused, and tells it with
// a scroll message in any case.
#include <algorithm>
#include <string>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kWidth = 16;
constexpr int kOverlap = 2; // over the buddy's edge

struct UpDownState final : ControlState
{
    int minimum = 100;
    int maximum = 0;
    int position = 0;
    HWND buddy = nullptr;
    WNDPROC buddyProcedure = nullptr;
    std::vector<UDACCEL> steps{{0, 1}, {2, 5}, {5, 20}};
    bool pressed = false;

    bool Holds(LONG_PTR value) const
    {
        return value >= std::min(minimum, maximum) && value <= std::max(minimum, maximum);
    }
    int Nearest(LONG_PTR value) const
    {
        return static_cast<int>(
            std::clamp<LONG_PTR>(value, std::min(minimum, maximum), std::max(minimum, maximum)));
    }
};

bool ShowsNumber(const Window& window, const UpDownState& state)
{
    return (window.style & UDS_SETBUDDYINT) && Peek(state.buddy);
}

// The number that stands in the buddy; false when it is none or out of range.
bool ReadBuddy(HWND handle, int& number)
{
    const auto& state = *StateOf<UpDownState>(handle);
    WCHAR text[20];
    const int length = GetWindowTextW(state.buddy, text, 20);
    LONG_PTR value = 0;
    int digits = 0;
    bool negative = false;
    for (int i = 0; i < length; ++i) {
        if (text[i] == u'-' && digits == 0)
            negative = true;
        else if (text[i] == u',' || (text[i] == u' ' && digits == 0))
            continue;
        else if (text[i] < u'0' || text[i] > u'9' || ++digits > 10)
            return false;
        else
            value = 10 * value + (text[i] - u'0');
    }
    if (negative) value = -value;
    if (digits == 0 || !state.Holds(value)) return false;
    number = static_cast<int>(value);
    return true;
}

std::u16string NumberText(const Window& window, int number)
{
    std::string digits = std::to_string(std::abs(LONG_PTR{number}));
    if (!(window.style & UDS_NOTHOUSANDS)) {
        for (std::size_t place = digits.size(); place > 3; place -= 3)
            digits.insert(place - 3, ",");
    }
    if (number < 0) digits.insert(0, "-");
    return {digits.begin(), digits.end()};
}

void WriteBuddy(HWND handle)
{
    const auto* const state = StateOf<UpDownState>(handle);
    if (!state || !ShowsNumber(*Peek(handle), *state)) return;
    const std::u16string text = NumberText(*Peek(handle), state->position);
    WCHAR old[20];
    const int length = GetWindowTextW(state->buddy, old, 20);
    if (text == std::u16string_view(old, static_cast<std::size_t>(length))) return;
    SetWindowTextW(state->buddy, text.c_str());
}

void RefreshFromBuddy(HWND handle)
{
    auto* const state = StateOf<UpDownState>(handle);
    if (state && ShowsNumber(*Peek(handle), *state)) ReadBuddy(handle, state->position);
}

void TellScroll(HWND handle, WORD code)
{
    const auto* const state = StateOf<UpDownState>(handle);
    const Window* const window = Peek(handle);
    if (!state || !window->parent) return;
    SendMessageW(window->parent->handle, window->style & UDS_HORZ ? WM_HSCROLL : WM_VSCROLL,
                 MAKEWPARAM(code, static_cast<WORD>(state->position)), reinterpret_cast<LPARAM>(handle));
}

bool Offset(const Window& window, UpDownState& state, int delta)
{
    LONG_PTR next = LONG_PTR{state.position} + delta;
    if (!state.Holds(next)) {
        if (window.style & UDS_WRAP)
            next =
                delta > 0 ? std::min(state.minimum, state.maximum) : std::max(state.minimum, state.maximum);
        else
            next = state.Nearest(next);
    }
    if (next == state.position) return false;
    state.position = static_cast<int>(next);
    return true;
}

// One step by the user, up being towards the maximum.
void Step(HWND handle, bool up)
{
    RefreshFromBuddy(handle);
    auto* state = StateOf<UpDownState>(handle);
    if (!state) return;
    int delta = static_cast<int>(state->steps.front().nInc);
    if (up == (state->maximum < state->minimum)) delta = -delta;
    NMUPDOWN notice{};
    notice.iPos = state->position;
    notice.iDelta = delta;
    const bool refused = NotifyParent(*Peek(handle), notice.hdr, UDN_DELTAPOS) != 0;
    if (!(state = StateOf<UpDownState>(handle))) return;
    if (!refused && Offset(*Peek(handle), *state, notice.iDelta)) WriteBuddy(handle);
    TellScroll(handle, SB_THUMBPOSITION);
}

void OnPress(HWND handle, LPARAM place)
{
    auto* const state = StateOf<UpDownState>(handle);
    const Window& window = *Peek(handle);
    const RECT client = ClientOf(window);
    const POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    if (!PtInRect(&client, at)) return;
    const Window* const buddy = Peek(state->buddy);
    if (buddy && buddy->windowClass->procedure == EditProcedure) SetFocus(state->buddy);
    if (!StateOf<UpDownState>(handle)) return;
    SetCapture(handle);
    state->pressed = true;
    const bool up = window.style & UDS_HORZ ? at.x >= client.right / 2 : at.y < client.bottom / 2;
    Step(handle, up);
}

void OnRelease(HWND handle)
{
    auto* const state = StateOf<UpDownState>(handle);
    if (!state || !std::exchange(state->pressed, false)) return;
    if (GetCapture() == handle) ReleaseCapture();
    TellScroll(handle, SB_ENDSCROLL);
}

bool OnKey(HWND handle, WPARAM key)
{
    const Window* const window = Peek(handle);
    if (!window || !(window->style & UDS_ARROWKEYS) || (key != VK_UP && key != VK_DOWN)) return false;
    Step(handle, key == VK_UP);
    return true;
}

constexpr LPCWSTR kBuddyOwner = TEXT("up-down of this buddy");

// The buddy's arrow keys step its up-down control.
LRESULT CALLBACK BuddyProcedure(HWND buddy, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND handle = static_cast<HWND>(GetPropW(buddy, kBuddyOwner));
    const auto* const state = StateOf<UpDownState>(handle);
    const WNDPROC procedure = state && state->buddyProcedure ? state->buddyProcedure : DefWindowProcW;
    if (message == WM_KEYDOWN && state && OnKey(handle, wParam)) return 0;
    return CallWindowProcW(procedure, buddy, message, wParam, lParam);
}

void LetBuddyGo(UpDownState& state)
{
    if (Peek(state.buddy) && state.buddyProcedure) {
        RemovePropW(state.buddy, kBuddyOwner);
        SetWindowLongPtrW(state.buddy, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(state.buddyProcedure));
    }
    state.buddyProcedure = nullptr;
    state.buddy = nullptr;
}

void AlignTo(Window& window, const Window& buddy)
{
    if (!(window.style & (UDS_ALIGNLEFT | UDS_ALIGNRIGHT)) || (window.style & UDS_HORZ)) return;
    RECT field = buddy.place;
    const int overlap = buddy.exStyle & WS_EX_CLIENTEDGE ? kOverlap : 0;
    int left = field.left - overlap + kOverlap * (overlap ? 1 : 0);
    if (window.style & UDS_ALIGNRIGHT) {
        field.right -= kWidth;
        left = field.right - overlap;
    } else {
        field.left += kWidth;
    }
    const HWND handle = window.handle;
    SetWindowPos(buddy.handle, nullptr, field.left, field.top, field.right - field.left,
                 field.bottom - field.top, SWP_NOACTIVATE | SWP_NOZORDER);
    SetWindowPos(handle, nullptr, left, field.top, kWidth, field.bottom - field.top,
                 SWP_NOACTIVATE | SWP_NOZORDER);
}

HWND SetBuddy(HWND handle, HWND next)
{
    auto& state = *StateOf<UpDownState>(handle);
    const HWND previous = state.buddy;
    LetBuddyGo(state);
    Window* const buddy = Peek(next);
    if (!buddy) return previous;
    state.buddy = next;
    if (Peek(handle)->style & UDS_ARROWKEYS) {
        SetPropW(next, kBuddyOwner, handle);
        state.buddyProcedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(next, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(BuddyProcedure)));
    }
    AlignTo(*Peek(handle), *buddy);
    return previous;
}

LRESULT SetPosition(HWND handle, LONG_PTR wanted)
{
    auto& state = *StateOf<UpDownState>(handle);
    const int previous = state.position;
    state.position = state.Nearest(wanted);
    WriteBuddy(handle);
    return previous;
}

LRESULT GetPosition(HWND handle, BOOL* failed)
{
    const Window& window = *Peek(handle);
    auto& state = *StateOf<UpDownState>(handle);
    const bool read = ShowsNumber(window, state) && ReadBuddy(handle, state.position);
    if (failed) *failed = !read;
    return state.position;
}

LRESULT SetSteps(UpDownState& state, WPARAM count, const UDACCEL* steps)
{
    if (count == 0 || !steps) return FALSE;
    state.steps.assign(steps, steps + count);
    return TRUE;
}

LRESULT GetSteps(const UpDownState& state, WPARAM count, UDACCEL* steps)
{
    if (steps) std::copy_n(state.steps.begin(), std::min<std::size_t>(count, state.steps.size()), steps);
    return static_cast<LRESULT>(state.steps.size());
}

} // namespace

LRESULT CALLBACK UpDownProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Peek(handle);
    if (!window) return 0;
    if (message == WM_NCCREATE) window->control = std::make_unique<UpDownState>();
    auto* const state = static_cast<UpDownState*>(window->control.get());
    if (!state) return DefWindowProcW(handle, message, wParam, lParam);
    switch (message) {
    case WM_CREATE:
        if (window->style & UDS_AUTOBUDDY) SetBuddy(handle, GetWindow(handle, GW_HWNDPREV));
        return 0;
    case WM_DESTROY:
        LetBuddyGo(*state);
        return 0;
    case UDM_SETBUDDY:
        return reinterpret_cast<LRESULT>(SetBuddy(handle, reinterpret_cast<HWND>(wParam)));
    case UDM_GETBUDDY:
        return reinterpret_cast<LRESULT>(state->buddy);
    case UDM_SETRANGE32:
        state->minimum = static_cast<int>(wParam);
        state->maximum = static_cast<int>(lParam);
        return 0;
    case UDM_SETRANGE:
        state->minimum = static_cast<SHORT>(HIWORD(lParam));
        state->maximum = static_cast<SHORT>(LOWORD(lParam));
        return 0;
    case UDM_GETRANGE32:
        if (wParam) *reinterpret_cast<int*>(wParam) = state->minimum;
        if (lParam) *reinterpret_cast<int*>(lParam) = state->maximum;
        return 0;
    case UDM_GETRANGE:
        return MAKELONG(static_cast<WORD>(state->maximum), static_cast<WORD>(state->minimum));
    case UDM_SETPOS32:
        return SetPosition(handle, static_cast<int>(lParam));
    case UDM_SETPOS:
        return SetPosition(handle, static_cast<SHORT>(LOWORD(lParam)));
    case UDM_GETPOS32:
        return GetPosition(handle, reinterpret_cast<BOOL*>(lParam));
    case UDM_GETPOS: {
        BOOL failed = FALSE;
        const LRESULT position = GetPosition(handle, &failed);
        return MAKELONG(static_cast<WORD>(position), static_cast<WORD>(failed));
    }
    case UDM_SETACCEL:
        return SetSteps(*state, wParam, reinterpret_cast<const UDACCEL*>(lParam));
    case UDM_GETACCEL:
        return GetSteps(*state, wParam, reinterpret_cast<UDACCEL*>(lParam));
    case WM_LBUTTONDOWN:
        OnPress(handle, lParam);
        return 0;
    case WM_LBUTTONUP:
        OnRelease(handle);
        return 0;
    case WM_KEYDOWN:
        OnKey(handle, wParam);
        return 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
