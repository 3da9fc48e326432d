// Handles and records of windows, how they hang together, and where they are.
#include <algorithm>
#include <atomic>

#include "platform/handles.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

constexpr int kCaptionHeight = 19;
constexpr int kScrollBarWidth = 17;

std::atomic<DWORD> liveWindows{0};

RECT FrameOf(DWORD style, DWORD exStyle)
{
    int edge = 0;
    if ((exStyle & (WS_EX_STATICEDGE | WS_EX_DLGMODALFRAME)) == WS_EX_STATICEDGE)
        edge = 1;
    else if ((exStyle & WS_EX_DLGMODALFRAME) || (style & (WS_THICKFRAME | WS_DLGFRAME)))
        edge = 2;
    if (style & WS_THICKFRAME) ++edge;
    if ((style & (WS_BORDER | WS_DLGFRAME)) || (exStyle & WS_EX_DLGMODALFRAME)) ++edge;
    if (exStyle & WS_EX_CLIENTEDGE) edge += 2;
    const bool caption = (style & WS_CAPTION) == WS_CAPTION;
    return {edge, edge + (caption ? kCaptionHeight : 0), edge, edge};
}

} // namespace

ThreadState::~ThreadState()
{
    liveWindows -= static_cast<DWORD>(windows.size());
}

ThreadState& Thread()
{
    thread_local ThreadState state;
    return state;
}

Window& Enter(std::unique_ptr<Window> window)
{
    window->handle = reinterpret_cast<HWND>(lastHandle += 4);
    ++liveWindows;
    Window& entered = *window;
    Thread().windows.emplace(entered.handle, std::move(window));
    return entered;
}

void Leave(Window& window)
{
    std::erase(SiblingsOf(window), &window);
    Thread().windows.erase(window.handle);
    --liveWindows;
}

Window* Peek(HWND handle)
{
    const auto& windows = Thread().windows;
    const auto own = windows.find(handle);
    return own == windows.end() ? nullptr : own->second.get();
}

Window* Find(HWND handle)
{
    Window* const window = Peek(handle);
    if (!window) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

DWORD WindowCount()
{
    return liveWindows;
}

std::vector<Window*>& SiblingsOf(const Window& window)
{
    return window.parent ? window.parent->children : Thread().topLevel;
}

Window& RootOf(Window& window)
{
    Window* root = &window;
    while (root->parent)
        root = root->parent;
    return *root;
}

bool IsSelfOrDescendant(const Window* window, const Window& ancestor)
{
    for (; window; window = window->parent) {
        if (window == &ancestor) return true;
    }
    return false;
}

RECT FrameOf(const Window& window)
{
    return FrameOf(window.style, window.exStyle);
}

RECT ClientOf(const Window& window)
{
    RECT frame = FrameOf(window);
    if (window.style & WS_VSCROLL) frame.right += kScrollBarWidth;
    return {0, 0, std::max<LONG>(window.Width() - frame.left - frame.right, 0),
            std::max<LONG>(window.Height() - frame.top - frame.bottom, 0)};
}

RECT WithFrame(SIZE client, DWORD style, DWORD exStyle)
{
    const RECT frame = FrameOf(style, exStyle);
    return {-frame.left, -frame.top, client.cx + frame.right, client.cy + frame.bottom};
}

POINT ClientOriginOnScreen(const Window& window)
{
    POINT origin{0, 0};
    for (const Window* level = &window; level; level = level->parent) {
        const RECT frame = FrameOf(*level);
        origin.x += level->place.left + frame.left;
        origin.y += level->place.top + frame.top;
    }
    return origin;
}

RECT OnScreen(const Window& window)
{
    const POINT origin = window.parent ? ClientOriginOnScreen(*window.parent) : POINT{0, 0};
    return {window.place.left + origin.x, window.place.top + origin.y, window.place.right + origin.x,
            window.place.bottom + origin.y};
}

bool IsShown(const Window& window)
{
    for (const Window* level = &window; level; level = level->parent) {
        if (!(level->style & WS_VISIBLE)) return false;
    }
    return true;
}

} // namespace tintwerk::headless
