// Messages: sent at once, posted to the thread's queue, made by timers and by windows that want painting; and
// what a window does with a message that its own procedure leaves alone.
#include "platform/headless/window.h"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace tintwerk::headless {

namespace {

bool InRange(UINT message, UINT first, UINT last)
{
    return (first == 0 && last == 0) || (message >= first && message <= last);
}

bool WantedBy(HWND filter, HWND target)
{
    if (!filter || filter == target) return true;
    const Window* const ancestor = Peek(filter);
    return ancestor && IsSelfOrDescendant(Peek(target), *ancestor);
}

Window* FirstDirty(Window& window)
{
    if (!(window.style & WS_VISIBLE)) return nullptr;
    if (window.dirty) return &window;
    for (Window* child : window.children) {
        if (Window* const dirty = FirstDirty(*child)) return dirty;
    }
    return nullptr;
}

Timer* NextTimer(HWND filter)
{
    Timer* next = nullptr;
    for (Timer& timer : Thread().timers) {
        if (WantedBy(filter, timer.window) && (!next || timer.due < next->due)) next = &timer;
    }
    return next;
}

MSG MessageOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return {window, message, wParam, lParam, GetTickCount(), {0, 0}};
}

// Takes the next message that is there without waiting, in the order of the system: posted, quit, paint,
// timer.
bool Take(MSG& message, HWND filter, UINT first, UINT last, bool remove)
{
    ThreadState& thread = Thread();
    const auto posted = std::ranges::find_if(thread.queue, [&](const MSG& waiting) {
        return WantedBy(filter, waiting.hwnd) && InRange(waiting.message, first, last);
    });
    if (posted != thread.queue.end()) {
        message = *posted;
        if (remove) thread.queue.erase(posted);
        return true;
    }
    if (thread.quitPosted) {
        message = MessageOf(nullptr, WM_QUIT, static_cast<WPARAM>(thread.quitCode), 0);
        if (remove) thread.quitPosted = false;
        return true;
    }
    if (InRange(WM_PAINT, first, last)) {
        const Window* const dirty = FirstDirty(Desktop());
        if (dirty && WantedBy(filter, dirty->handle)) {
            message = MessageOf(dirty->handle, WM_PAINT, 0, 0);
            return true;
        }
    }
    if (InRange(WM_TIMER, first, last)) {
        Timer* const timer = NextTimer(filter);
        if (timer && timer->due <= GetTickCount64()) {
            message =
                MessageOf(timer->window, WM_TIMER, timer->id, reinterpret_cast<LPARAM>(timer->procedure));
            if (remove) timer->due = GetTickCount64() + timer->period;
            return true;
        }
    }
    return false;
}

int CopyOut(std::u16string_view text, WPARAM size, WCHAR* buffer)
{
    if (!buffer || size == 0) return 0;
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    text.copy(buffer, length);
    buffer[length] = 0;
    return static_cast<int>(length);
}

std::u16string Widened(LPCSTR text)
{
    if (!text) return {};
    const int units = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (units <= 0) return {};
    std::u16string wide(static_cast<std::size_t>(units), 0);
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), units);
    wide.resize(wide.size() - 1);
    return wide;
}

std::string NarrowedTextOf(HWND window)
{
    std::u16string wide(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, 0);
    wide.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, wide.size(), reinterpret_cast<LPARAM>(wide.data()))));
    if (wide.empty()) return {};
    const int units = static_cast<int>(wide.size());
    std::string narrow(static_cast<std::size_t>(
                           WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr)),
                       0);
    WideCharToMultiByte(CP_ACP, 0, wide.data(), units, narrow.data(), static_cast<int>(narrow.size()),
                        nullptr, nullptr);
    return narrow;
}

void TellPlace(HWND window, const WINDOWPOS& position)
{
    if (!(position.flags & SWP_NOMOVE)) SendMessageW(window, WM_MOVE, 0, MAKELPARAM(position.x, position.y));
    const Window* const still = Peek(window);
    if (!still || (position.flags & SWP_NOSIZE)) return;
    const RECT client = ClientOf(*still);
    SendMessageW(window, WM_SIZE, 0, MAKELPARAM(client.right, client.bottom));
}

// The character of a key on a plain keyboard, 0 for keys that type nothing.
WCHAR CharacterOf(WPARAM key)
{
    if (key >= 'A' && key <= 'Z') return static_cast<WCHAR>(key + 32);
    if ((key >= '0' && key <= '9') || key == VK_BACK || key == VK_TAB || key == VK_RETURN ||
        key == VK_ESCAPE || key == VK_SPACE)
        return static_cast<WCHAR>(key);
    return 0;
}

} // namespace

void DropFromQueue(HWND window)
{
    ThreadState& thread = Thread();
    std::erase_if(thread.queue, [window](const MSG& message) { return message.hwnd == window; });
    std::erase_if(thread.timers, [window](const Timer& timer) { return timer.window == window; });
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

LRESULT WINAPI SendMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window* const window = Find(handle);
    return window && window->procedure ? window->procedure(handle, message, wParam, lParam) : 0;
}

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SETTEXT:
    case CB_ADDSTRING:
    case CB_INSERTSTRING:
    case CB_FINDSTRINGEXACT:
    case EM_REPLACESEL: {
        if (!lParam) return SendMessageW(window, message, wParam, 0);
        const std::u16string wide = Widened(reinterpret_cast<LPCSTR>(lParam));
        return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(wide.c_str()));
    }
    case WM_GETTEXT: {
        auto* const buffer = reinterpret_cast<char*>(lParam);
        if (!Find(window) || !buffer || wParam == 0) return 0;
        const std::string text = NarrowedTextOf(window);
        const std::size_t length = std::min<std::size_t>(text.size(), wParam - 1);
        text.copy(buffer, length);
        buffer[length] = 0;
        return static_cast<LRESULT>(length);
    }
    case WM_GETTEXTLENGTH:
        return Find(window) ? static_cast<LRESULT>(NarrowedTextOf(window).size()) : 0;
    default:
        return SendMessageW(window, message, wParam, lParam);
    }
}

LRESULT WINAPI SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND control = GetDlgItem(dialog, id);
    return control ? SendMessageW(control, message, wParam, lParam) : 0;
}

BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (window && !Find(window)) return FALSE;
    Thread().queue.push_back(MessageOf(window, message, wParam, lParam));
    return TRUE;
}

void WINAPI PostQuitMessage(int code)
{
    Thread().quitPosted = true;
    Thread().quitCode = code;
}

BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove)
{
    return message && Take(*message, window, first, last, (remove & PM_REMOVE) != 0);
}

BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last)
{
    while (!Take(*message, window, first, last, true)) {
        const Timer* const timer = InRange(WM_TIMER, first, last) ? NextTimer(window) : nullptr;
        if (!timer) {
            *message = MessageOf(nullptr, WM_NULL, 0, 0);
            return FALSE;
        }
        const ULONGLONG now = GetTickCount64();
        if (timer->due > now) Sleep(static_cast<DWORD>(timer->due - now));
    }
    return message->message != WM_QUIT;
}

BOOL WINAPI TranslateMessage(const MSG* message)
{
    if (message->message != WM_KEYDOWN) return FALSE;
    const WCHAR character = CharacterOf(message->wParam);
    if (!character) return FALSE;
    Thread().queue.push_front(MessageOf(message->hwnd, WM_CHAR, character, message->lParam));
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
    if (message->message == WM_PAINT) ValidateRect(message->hwnd, nullptr);
    return result;
}

UINT WINAPI RegisterWindowMessageW(LPCWSTR name)
{
    static std::mutex mutex;
    static std::vector<std::u16string> names;
    const std::lock_guard lock(mutex);
    const auto known = std::ranges::find(names, name);
    const auto index = static_cast<UINT>(known - names.begin());
    if (known == names.end()) names.emplace_back(name);
    return 0xC000 + index;
}

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure)
{
    if (window && !Find(window)) return 0;
    ThreadState& thread = Thread();
    const UINT period = std::max(milliseconds, 10u);
    const ULONGLONG due = GetTickCount64() + period;
    for (Timer& timer : thread.timers) {
        if (timer.window == window && timer.id == id) {
            timer = {window, id, period, procedure, due};
            return id ? id : 1;
        }
    }
    if (!window) id = ++thread.lastTimerId;
    thread.timers.push_back({window, id, period, procedure, due});
    return id ? id : 1;
}

BOOL WINAPI KillTimer(HWND window, UINT_PTR id)
{
    return std::erase_if(Thread().timers,
                         [=](const Timer& timer) { return timer.window == window && timer.id == id; }) > 0;
}

SHORT WINAPI GetKeyState(int)
{
    return 0;
}

HWND WINAPI SetCapture(HWND window)
{
    if (window && !Find(window)) return nullptr;
    const HWND previous = std::exchange(Thread().capture, window);
    if (previous != window && Peek(previous))
        SendMessageW(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
    return previous;
}

BOOL WINAPI ReleaseCapture()
{
    SetCapture(nullptr);
    return TRUE;
}

HWND WINAPI GetCapture()
{
    return Thread().capture;
}

LRESULT WINAPI DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    switch (message) {
    case WM_NCCREATE: {
        const LPCWSTR text = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName;
        if (text && !IS_INTRESOURCE(text)) window->text = text;
        return TRUE;
    }
    case WM_SETTEXT:
        window->text = lParam ? reinterpret_cast<LPCWSTR>(lParam) : TEXT("");
        return TRUE;
    case WM_GETTEXT:
        return CopyOut(window->text, wParam, reinterpret_cast<WCHAR*>(lParam));
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(window->text.size());
    case WM_SETFONT:
        window->font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(window->font);
    case WM_CLOSE:
        DestroyWindow(handle);
        return 0;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        BeginPaint(handle, &paint);
        EndPaint(handle, &paint);
        return 0;
    }
    case WM_WINDOWPOSCHANGED:
        TellPlace(handle, *reinterpret_cast<const WINDOWPOS*>(lParam));
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && !(window->style & WS_MINIMIZE) &&
            !IsSelfOrDescendant(Peek(Thread().focus), *window))
            SetFocus(handle);
        return 0;
    case WM_SETREDRAW:
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    default:
        return 0;
    }
}
