// What tests do to the platform and see of it, the same on both targets: allocations, file calls and windows
// that fail, blocks that leak, processes that would have been started, diagnostic lines. Each recorder works
// while it lives; one of a kind at a time.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

// Counts the blocks that are taken from heaps (HeapAlloc and its kind, not the runtime allocator) and lets
// chosen allocations fail.
class HeapWatch
{
public:
    HeapWatch();
    ~HeapWatch();
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;

    // The nth allocation from now on fails, 1 being the next, and count - 1 more after it.
    void FailAllocation(int nth, int count = 1);
    // Allocations asked for since the watch began, failed ones included.
    int Allocations() const;
    // Blocks taken since the watch began and not given back, neither one by one nor with their heap.
    int LiveBlocks() const;
};

// Counts the file calls of the program and of a loaded plug-in (open, read, write, flush, rename, through the
// platform's functions and not the runtime library's) and lets chosen ones fail.
class FileWatch
{
public:
    FileWatch();
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    // The nth call from now on fails, 1 being the next; a write has then written half.
    void FailCall(int nth);
    // Calls since the watch began, failed ones included.
    int Calls() const;
};

// Counts the windows that this thread makes, controls included, and lets chosen ones fail.
class WindowWatch
{
public:
    WindowWatch();
    ~WindowWatch();
    WindowWatch(const WindowWatch&) = delete;
    WindowWatch& operator=(const WindowWatch&) = delete;

    // The nth window from now on is not made, 1 being the next.
    void FailWindow(int nth);
    // Windows asked for since the watch began, failed ones included.
    int Windows() const;
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

// False when a block of one of the process's heaps was written past its end or after it was freed, as far as
// the system checks that: all of it under Wine with WINEDEBUG=warn+heap. Elsewhere AddressSanitizer looks.
bool HeapsAreSound();

struct StartedProcess
{
    bool hasApplicationName;
    std::string commandLine;
    std::string directory;
    bool inheritsHandles;
    bool hasEnvironment;
    DWORD flags;
    STARTUPINFOA startup;
};

// Records what CreateProcessA is asked to start; nothing is started.
class ProcessRecorder
{
public:
    ProcessRecorder();
    ~ProcessRecorder();
    ProcessRecorder(const ProcessRecorder&) = delete;
    ProcessRecorder& operator=(const ProcessRecorder&) = delete;

    // From now on the start fails with this error; 0 lets it succeed again.
    void FailWith(DWORD error);
    std::vector<StartedProcess> Started() const;
    // Process and thread handles given out and not closed.
    int OpenHandles() const;
};

// The lines that were written with OutputDebugStringW.
class DebugLines
{
public:
    using Text = std::basic_string<WCHAR>;

    DebugLines();
    ~DebugLines();
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    // All lines so far; Take also forgets them.
    std::vector<Text> Lines() const;
    std::vector<Text> Take();
    bool Contains(const WCHAR* line) const;

private:
    mutable std::mutex mutex_;
    std::vector<Text> lines_;
};

} // namespace tintwerk
