// The inside of the headless window manager, shared by the files that make it up: the window record, its
// table of handles, and the state of a thread that owns windows. Nothing outside platform/headless includes
// it.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/headless/windows.h"

namespace tintwerk::headless {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 1024;
constexpr int kCaptionHeight = 19;
constexpr int kScrollBarWidth = 17;
constexpr WORD kDialogClassAtom = 0x8002;

struct WindowClass
{
    std::u16string name;
    WNDPROC procedure = nullptr;
    UINT style = 0;
    int windowBytes = 0;
    HINSTANCE module = nullptr;
    ATOM atom = 0;
};

// What a control keeps behind its window; every control kind derives its own.
struct ControlState
{
    virtual ~ControlState() = default;
};

// What a dialog keeps besides the window bytes that programs see.
struct DialogState
{
    int unitWidth = 0; // pixels of 4 horizontal and 8 vertical dialog units
    int unitHeight = 0;
    UINT defaultId = IDOK;
    HWND savedFocus = nullptr;
    HFONT font = nullptr;
    bool ended = false;
    INT_PTR result = 0;
};

// One standard scroll bar of a window.
struct ScrollBar
{
    int minimum = 0;
    int maximum = 100;
    UINT page = 0;
    int position = 0;
};

struct Window
{
    HWND handle = nullptr;
    std::shared_ptr<const WindowClass> windowClass;
    WNDPROC procedure = nullptr;
    Window* parent = nullptr;      // the desktop for top-level windows
    HWND owner = nullptr;          // of a top-level window
    std::vector<Window*> children; // front to back
    RECT place{};                  // in the parent's client coordinates
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR id = 0;
    LONG_PTR userData = 0;
    HINSTANCE module = nullptr;
    HFONT font = nullptr;
    std::u16string text;
    std::vector<BYTE> bytes;
    std::vector<std::pair<std::u16string, HANDLE>> properties;
    std::unique_ptr<ControlState> control;
    std::unique_ptr<DialogState> dialog;
    ScrollBar scrollBars[2]; // by SB_HORZ and SB_VERT
    HBITMAP surface = nullptr; // what GetDC paints on, as large as the client area was
    bool dirty = false;
    bool dying = false;

    bool IsChild() const { return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }
    int Width() const { return place.right - place.left; }
    int Height() const { return place.bottom - place.top; }
};

struct Timer
{
    HWND window;
    UINT_PTR id;
    UINT period;
    TIMERPROC procedure;
    ULONGLONG due;
};

// All windows of one thread and its message queue. Handles of other threads' windows are foreign here and are
// refused.
struct ThreadState
{
    struct Slot
    {
        std::unique_ptr<Window> window;
    };
    std::vector<Slot> slots;
    std::vector<std::size_t> freeSlots;
    Window* desktop = nullptr;
    std::deque<MSG> queue;
    std::vector<Timer> timers;
    UINT_PTR lastTimerId = 0;
    bool quitPosted = false;
    int quitCode = 0;
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;

    ~ThreadState();
};
ThreadState& Thread();

// The record behind a handle; null, with the last error set, for a stale or foreign one.
Window* Find(HWND handle);
// The same without touching the last error, for handles that are expected to be gone now and then.
Window* Peek(HWND handle);
Window& Desktop();
Window* RootOf(Window& window);
bool IsSelfOrDescendant(const Window* window, const Window& ancestor);
// How many windows all threads hold.
DWORD WindowCount();

// Frame widths around the client area.
RECT FrameOf(DWORD style, DWORD exStyle);
RECT ClientOf(const Window& window); // left and top are 0
POINT ClientOriginOnScreen(const Window& window);
RECT OnScreen(const Window& window);
bool IsShown(const Window& window);

void Invalidate(Window& window, bool withChildren);
void PaintNow(HWND window, bool withChildren);
void ReleaseSurface(Window& window);
// Forgets posted messages and timers of a window that goes.
void DropFromQueue(HWND window);
void MoveFocusAway(Window& window);

// Looks a class up by name (or atom); null when there is none.
std::shared_ptr<const WindowClass> FindClass(LPCWSTR name, HINSTANCE module);
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);

// Sends a control's command or notification to its parent.
LRESULT NotifyCommand(const Window& control, WORD code);
LRESULT NotifyParent(const Window& control, NMHDR& header, UINT code);

// The state of a control of a known kind, null when the window is gone or of another kind.
template <typename State> State* StateOf(HWND handle)
{
    Window* const window = Peek(handle);
    return window ? static_cast<State*>(window->control.get()) : nullptr;
}

// The control kinds, one file each.
LRESULT CALLBACK StaticProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ComboBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK TrackbarProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK UpDownProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK TabProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Runs messages until done() holds; false when the thread was asked to quit, or when nothing can happen any
// more: no message, no timer, nobody who could press a button.
template <typename Done> bool PumpUntil(HWND dialog, Done done)
{
    MSG message;
    while (!done()) {
        if (!GetMessageW(&message, nullptr, 0, 0)) {
            if (message.message == WM_QUIT) PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        if (!IsDialogMessageW(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

} // namespace tintwerk::headless
