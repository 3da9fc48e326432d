// What tests do to the platform and see of it, the same on both targets: allocations, file calls and windows
// that fail, blocks that leak, diagnostic lines, texts of windows. Each recorder works while it lives; one of
// a kind at a time.
#pragma once

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/debug_sink.h"
#include "platform/win32.h"

namespace tintwerk {

// Puts values of the process back to those of a freshly loaded module.
template <typename Values> void MakeFresh(Values& values)
{
    std::destroy_at(&values);
    std::construct_at(&values);
}

// The calls of one kind since a watch began, and which of them fail.
struct CallCount
{
    std::atomic<int> calls, failFirst, failEnd;

    bool NextFails()
    {
        const int call = ++calls;
        return call >= failFirst && call < failEnd;
    }
};

// Counts calls, failed ones included, and lets chosen ones fail.
class CallWatch
{
public:
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

    int Calls() const { return count_.calls; }
    // The nth call from now on fails, 1 being the next, and some more after it.
    void Fail(int nth, int count = 1)
    {
        count_.failFirst = count_.calls + nth;
        count_.failEnd = count_.failFirst + count;
    }

protected:
    explicit CallWatch(CallCount& count) : count_(count)
    {
        count.calls = count.failFirst = count.failEnd = 0;
    }

private:
    CallCount& count_;
};

// Blocks that are taken from heaps (HeapAlloc and its kind, not the runtime allocator).
struct HeapWatch : CallWatch
{
    HeapWatch();
    ~HeapWatch();
    // Blocks taken since the watch began and not given back, neither one by one nor with their heap.
    int LiveBlocks() const;
};

// The file calls of the program and of a loaded plug-in (open, read, write, flush, rename, through the
// platform's functions and not the runtime library's). A write that fails has written half.
struct FileWatch : CallWatch
{
    FileWatch();
    ~FileWatch();
};

// The windows that this thread makes, controls included.
struct WindowWatch : CallWatch
{
    WindowWatch();
    ~WindowWatch();
};

// What this process holds of the system at one moment.
struct ProcessUse
{
    int windows;
    int gdiObjects; // these two grow by one an object; where they begin differs
    int userObjects;
    int handles; // of kernel objects
    long long bytes;
};

ProcessUse UseOfProcess();

// Bitmaps that dialog templates name: they go with their controls, but Wine's controls forget them, and who
// counts objects there must know.
inline constexpr int kTemplatePictures = 9; // of the pages correction and ink control

// How many a control of that kind leaves behind: none, or itself.
inline int ForgottenByAStatic(HINSTANCE module)
{
    const int before = UseOfProcess().gdiObjects;
    DestroyWindow(CreateWindowExW(0, WC_STATICW, TEXT("#176"), WS_POPUP | SS_BITMAP, 0, 0, 14, 10, nullptr,
                                  nullptr, module, nullptr));
    return UseOfProcess().gdiObjects - before;
}

// False when a block of one of the process's heaps was written past its end or after it was freed, as far as
// the system checks that: all of it under Wine with WINEDEBUG=warn+heap. Elsewhere AddressSanitizer looks.
bool HeapsAreSound();

// The lines that were written with OutputDebugStringW.
class DebugLines
{
public:
    using Text = std::basic_string<WCHAR>;

    DebugLines()
    {
        SetDebugSink(
            [](const WCHAR* line, void* context) {
                auto* self = static_cast<DebugLines*>(context);
                const std::lock_guard lock(self->mutex_);
                self->lines_.emplace_back(line);
            },
            this);
    }
    ~DebugLines() { SetDebugSink(nullptr, nullptr); }
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    // All lines so far; Take also forgets them.
    std::vector<Text> Lines() const
    {
        const std::lock_guard lock(mutex_);
        return lines_;
    }
    std::vector<Text> Take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(lines_, {});
    }
    bool Contains(const WCHAR* line) const
    {
        const std::lock_guard lock(mutex_);
        return std::ranges::count(lines_, Text(line)) > 0;
    }

private:
    mutable std::mutex mutex_;
    std::vector<Text> lines_;
};

// The first of the expected lines, or beginnings of lines, that does not come behind the one before it; empty
// when all came in their order.
inline std::string MissingLine(const std::vector<std::basic_string<WCHAR>>& lines,
                               const std::vector<std::string>& expected)
{
    auto line = lines.begin();
    for (const std::string& beginning : expected) {
        const std::basic_string<WCHAR> wide(beginning.begin(), beginning.end());
        line = std::find_if(line, lines.end(), [&](auto& told) { return told.starts_with(wide); });
        if (line == lines.end()) return beginning;
        ++line;
    }
    return {};
}

inline std::basic_string<WCHAR> TextOf(HWND window)
{
    std::basic_string<WCHAR> text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, 0);
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// Handles every message that waits.
inline void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

} // namespace tintwerk
