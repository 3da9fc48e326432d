// Messages: sent at once, posted to the thread's queue, made by timers and by windows that want painting.
#include <algorithm>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

Window* FirstDirty(const std::vector<Window*>& windows)
{
    for (Window* window : windows) {
        if (!(window->style & WS_VISIBLE)) continue;
        if (window->dirty) return window;
        if (Window* const dirty = FirstDirty(window->children)) return dirty;
    }
    return nullptr;
}

Timer* NextTimer()
{
    std::vector<Timer>& timers = Thread().timers;
    const auto next = std::ranges::min_element(timers, {}, &Timer::due);
    return next == timers.end() ? nullptr : &*next;
}

MSG MessageOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return {window, message, wParam, lParam, static_cast<DWORD>(GetTickCount64()), {0, 0}};
}

// Takes the next message that is there without waiting, in the order of the system: posted, paint, timer.
bool Take(MSG& message)
{
    std::deque<MSG>& queue = Thread().queue;
    if (!queue.empty()) {
        message = queue.front();
        queue.pop_front();
        return true;
    }
    if (const Window* const dirty = FirstDirty(Thread().topLevel)) {
        message = MessageOf(dirty->handle, WM_PAINT, 0, 0);
        return true;
    }
    Timer* const timer = NextTimer();
    if (!timer || timer->due > GetTickCount64()) return false;
    message = MessageOf(nullptr, WM_TIMER, timer->id, reinterpret_cast<LPARAM>(timer->procedure));
    timer->due = GetTickCount64() + timer->period;
    return true;
}

} // namespace

void DropFromQueue(HWND window)
{
    std::erase_if(Thread().queue, [window](const MSG& message) { return message.hwnd == window; });
}

LRESULT NotifyCommand(const Window& control, int code)
{
    if (!control.parent) return 0;
    return SendMessageW(control.parent->handle, WM_COMMAND, MAKEWPARAM(control.id, code),
                        reinterpret_cast<LPARAM>(control.handle));
}

LRESULT NotifyParent(const Window& control, NMHDR& header, UINT code)
{
    if (!control.parent) return 0;
    header.hwndFrom = control.handle;
    header.idFrom = static_cast<UINT_PTR>(control.id);
    header.code = code;
    return SendMessageW(control.parent->handle, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

LRESULT WINAPI SendMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window* const window = Find(handle);
    return window ? window->procedure(handle, message, wParam, lParam) : 0;
}

BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (window && !Find(window)) return FALSE;
    Thread().queue.push_back(MessageOf(window, message, wParam, lParam));
    return TRUE;
}

// Every message is wanted, and taken: nobody asks for some of them only.
BOOL WINAPI PeekMessageW(LPMSG message, HWND, UINT, UINT, UINT)
{
    return Take(*message);
}

// FALSE when nothing can happen any more.
BOOL WINAPI GetMessageW(LPMSG message, HWND, UINT, UINT)
{
    while (!Take(*message)) {
        const Timer* const timer = NextTimer();
        if (!timer) return FALSE;
        const ULONGLONG now = GetTickCount64();
        if (timer->due > now) Sleep(static_cast<DWORD>(timer->due - now));
    }
    return TRUE;
}

LRESULT WINAPI DispatchMessageW(const MSG* message)
{
    if (message->message == WM_TIMER && message->lParam) {
        reinterpret_cast<TIMERPROC>(message->lParam)(message->hwnd, WM_TIMER, message->wParam, message->time);
        return 0;
    }
    if (!message->hwnd) return 0;
    const LRESULT result = SendMessageW(message->hwnd, message->message, message->wParam, message->lParam);
    // A procedure that does not validate would be asked to paint for ever.
    Window* const window = message->message == WM_PAINT ? Peek(message->hwnd) : nullptr;
    if (window) window->dirty = false;
    return result;
}

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR, UINT milliseconds, TIMERPROC procedure)
{
    if (window) return 0;
    ThreadState& thread = Thread();
    const UINT period = std::max(milliseconds, 10u);
    thread.timers.push_back({++thread.lastTimerId, period, procedure, GetTickCount64() + period});
    return thread.lastTimerId;
}

BOOL WINAPI KillTimer(HWND, UINT_PTR id)
{
    return std::erase_if(Thread().timers, [id](const Timer& timer) { return timer.id == id; }) > 0;
}
