// The inside of the headless window manager. Its files build on each other in this order, none calls one
// below it: window_table (handles, records, places), message, window_data, paint, placement,
// default_procedure, the controls, dialog_procedure, window_classes, window (creation and relations), dialog,
// propsheet, compstui.
// Nothing outside platform/headless includes it.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 1024;

struct WindowClass
{
    LPCWSTR name; // as GetClassNameW reports it
    WNDPROC procedure;
    int windowBytes;
    WORD atom; // names the class in dialog templates
};

// What a control keeps behind its window; every control kind derives its own.
struct ControlState
{
    virtual ~ControlState() = default;
};

struct Window
{
    HWND handle = nullptr;
    const WindowClass* windowClass = nullptr;
    WNDPROC procedure = nullptr;
    Window* parent = nullptr;      // none: a top-level window
    HWND owner = nullptr;          // of a top-level window
    std::vector<Window*> children; // front to back
    RECT place{};                  // in the parent's client coordinates, or on the screen
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR id = 0;
    LONG_PTR userData = 0;
    std::u16string text;
    std::vector<BYTE> bytes;
    std::vector<std::pair<std::u16string, HANDLE>> properties;
    std::unique_ptr<ControlState> control;
    SIZE dialogUnits{}; // of a dialog: pixels of 4 horizontal and 8 vertical units
    bool dirty = false;
    bool dying = false;

    int Width() const { return place.right - place.left; }
    int Height() const { return place.bottom - place.top; }
};

// Of the thread: nobody sets one for a window.
struct Timer
{
    UINT_PTR id;
    UINT period;
    TIMERPROC procedure;
    ULONGLONG due;
};

// All windows of one thread and its message queue. Handles of other threads' windows are foreign here and are
// refused.
struct ThreadState
{
    std::unordered_map<HWND, std::unique_ptr<Window>> windows;
    std::vector<Window*> topLevel; // front to back
    std::deque<MSG> queue;
    std::vector<Timer> timers;
    UINT_PTR lastTimerId = 0;
    HWND focus = nullptr;
    HWND active = nullptr;

    ~ThreadState();
};
ThreadState& Thread();

// --- window_table.cpp

// Gives a record a handle that no other window of the process has or had.
Window& Enter(std::unique_ptr<Window> window);
void Leave(Window& window);
// The record behind a handle; null, with the last error set, for a stale or foreign one.
Window* Find(HWND handle);
// The same without touching the last error, for handles that are expected to be gone now and then.
Window* Peek(HWND handle);
// How many windows all threads hold.
DWORD WindowCount();
std::vector<Window*>& SiblingsOf(const Window& window);
Window& RootOf(Window& window);
bool IsSelfOrDescendant(const Window* window, const Window& ancestor);

// The state of the control that a message goes to; it comes with the window's first message.
template <typename State> State& StateFor(Window& window, UINT message)
{
    if (message == WM_NCCREATE) window.control = std::make_unique<State>();
    return static_cast<State&>(*window.control);
}

// The state of a control of a known kind, null when the window is gone or of another kind.
template <typename State> State* StateOf(HWND handle)
{
    Window* const window = Peek(handle);
    return window ? static_cast<State*>(window->control.get()) : nullptr;
}

RECT FrameOf(const Window& window);                      // the widths around the client area
RECT ClientOf(const Window& window);                     // left and top are 0
RECT WithFrame(SIZE client, DWORD style, DWORD exStyle); // the place of a window around it
POINT ClientOriginOnScreen(const Window& window);
RECT OnScreen(const Window& window);
bool IsShown(const Window& window);

// --- message.cpp

// Forgets posted messages of a window that goes.
void DropFromQueue(HWND window);
// Runs messages until done() holds; false when nothing can happen any more: no message, no timer, nobody who
// could press a button.
template <typename Done> bool PumpUntil(Done done)
{
    MSG message;
    while (!done()) {
        if (!GetMessageW(&message, nullptr, 0, 0)) return false;
        DispatchMessageW(&message);
    }
    return true;
}
// Sends a control's command or notification to its parent.
LRESULT NotifyCommand(const Window& control, int code);
LRESULT NotifyParent(const Window& control, NMHDR& header, UINT code);

// --- paint.cpp

// With its children: nobody keeps them apart.
void Invalidate(Window& window);

// --- The control kinds, one file each: called for windows that are there

LRESULT CALLBACK StaticProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK ComboBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK TrackbarProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK UpDownProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK TabProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- window_classes.cpp

// By name or atom; null when there is none.
const WindowClass* FindClass(LPCWSTR name);

} // namespace tintwerk::headless
