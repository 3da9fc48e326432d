#include "tests/support/testing.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <type_traits>
#include <utility>

#include "platform/debug_sink.h"
#include "platform/function_hook.h"

namespace tintwerk {

namespace {

// --- Heaps

struct HeapState
{
    std::mutex mutex;
    decltype(&HeapAlloc) allocate = nullptr;
    decltype(&HeapFree) free = nullptr;
    decltype(&HeapDestroy) destroy = nullptr;
    std::map<const void*, HANDLE> blocks;
    int allocations = 0;
    int failFirst = 0; // numbers of allocations, counted as above
    int failEnd = 0;

    bool NextFails()
    {
        ++allocations;
        return allocations >= failFirst && allocations < failEnd;
    }
};

HeapState heaps;

LPVOID WINAPI WatchedAlloc(HANDLE heap, DWORD flags, SIZE_T bytes)
{
    const std::lock_guard lock(heaps.mutex);
    if (heaps.NextFails()) return nullptr;
    void* const block = heaps.allocate(heap, flags, bytes);
    if (block) heaps.blocks[block] = heap;
    return block;
}

BOOL WINAPI WatchedFree(HANDLE heap, DWORD flags, LPVOID block)
{
    const std::lock_guard lock(heaps.mutex);
    heaps.blocks.erase(block);
    return heaps.free(heap, flags, block);
}

BOOL WINAPI WatchedDestroy(HANDLE heap)
{
    const std::lock_guard lock(heaps.mutex);
    std::erase_if(heaps.blocks, [heap](const auto& block) { return block.second == heap; });
    return heaps.destroy(heap);
}

// --- Files

std::atomic<int> fileCalls = 0;
std::atomic<int> failingFileCall = 0; // its number, counted as above

// A function that fails when its turn comes; every one here is of another type.
template <typename Function, DWORD kError> struct Watched;
template <typename Result, typename... Arguments, DWORD kError>
struct Watched<Result(WINAPI*)(Arguments...), kError>
{
    static inline Result(WINAPI* own)(Arguments...) = nullptr;

    static Result WINAPI Call(Arguments... arguments)
    {
        if (++fileCalls != failingFileCall) return own(arguments...);
        if constexpr (std::is_same_v<decltype(own), decltype(&WriteFile)>) WriteHalf(arguments...);
        SetLastError(kError);
        if constexpr (std::is_same_v<Result, HANDLE>)
            return INVALID_HANDLE_VALUE;
        else
            return FALSE;
    }
    // A full disk takes half of it.
    static void WriteHalf(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped)
    {
        own(file, buffer, bytes / 2, written, overlapped);
    }
    static void Watch(const char* name) { own = ReplaceFunction(name, &Call); }
};

// --- Processes

struct ProcessState
{
    std::mutex mutex;
    std::vector<StartedProcess> started;
    std::vector<HANDLE> open;
    UINT_PTR lastHandle = 0;
    DWORD error = 0;
    decltype(&CloseHandle) close = nullptr;

    // Far from the values of real handles.
    HANDLE NewHandle()
    {
        lastHandle += 4;
        open.push_back(reinterpret_cast<HANDLE>(0x7E570000 + lastHandle));
        return open.back();
    }
};

ProcessState processes;

BOOL WINAPI RecordedCreateProcess(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES,
                                  LPSECURITY_ATTRIBUTES, BOOL inheritHandles, DWORD flags, LPVOID environment,
                                  LPCSTR directory, LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information)
{
    const std::lock_guard lock(processes.mutex);
    processes.started.push_back({application != nullptr, commandLine ? commandLine : "",
                                 directory ? directory : "", inheritHandles != FALSE, environment != nullptr,
                                 flags, *startup});
    if (processes.error) {
        SetLastError(processes.error);
        return FALSE;
    }
    information->hProcess = processes.NewHandle();
    information->hThread = processes.NewHandle();
    return TRUE;
}

BOOL WINAPI RecordedCloseHandle(HANDLE handle)
{
    {
        const std::lock_guard lock(processes.mutex);
        if (std::erase(processes.open, handle) > 0) return TRUE;
    }
    return processes.close(handle);
}

} // namespace

HeapWatch::HeapWatch()
{
    heaps.blocks.clear();
    heaps.allocations = heaps.failFirst = heaps.failEnd = 0;
    const std::lock_guard lock(heaps.mutex);
    heaps.allocate = ReplaceFunction("HeapAlloc", &WatchedAlloc);
    heaps.free = ReplaceFunction("HeapFree", &WatchedFree);
    heaps.destroy = ReplaceFunction("HeapDestroy", &WatchedDestroy);
}

HeapWatch::~HeapWatch()
{
    for (const char* name : {"HeapAlloc", "HeapFree", "HeapDestroy"})
        RestoreFunction(name);
}

void HeapWatch::FailAllocation(int nth, int count)
{
    const std::lock_guard lock(heaps.mutex);
    heaps.failFirst = heaps.allocations + nth;
    heaps.failEnd = heaps.failFirst + count;
}

int HeapWatch::Allocations() const
{
    const std::lock_guard lock(heaps.mutex);
    return heaps.allocations;
}

int HeapWatch::LiveBlocks() const
{
    const std::lock_guard lock(heaps.mutex);
    return static_cast<int>(heaps.blocks.size());
}

FileWatch::FileWatch()
{
    fileCalls = failingFileCall = 0;
    Watched<decltype(&CreateFileA), ERROR_ACCESS_DENIED>::Watch("CreateFileA");
    Watched<decltype(&CreateFileW), ERROR_ACCESS_DENIED>::Watch("CreateFileW");
    Watched<decltype(&ReadFile), ERROR_ACCESS_DENIED>::Watch("ReadFile");
    Watched<decltype(&WriteFile), ERROR_DISK_FULL>::Watch("WriteFile");
    Watched<decltype(&FlushFileBuffers), ERROR_DISK_FULL>::Watch("FlushFileBuffers");
    Watched<decltype(&MoveFileExA), ERROR_ACCESS_DENIED>::Watch("MoveFileExA");
    Watched<decltype(&MoveFileExW), ERROR_ACCESS_DENIED>::Watch("MoveFileExW");
}

FileWatch::~FileWatch()
{
    for (const char* name : {"CreateFileA", "CreateFileW", "ReadFile", "WriteFile", "FlushFileBuffers",
                             "MoveFileExA", "MoveFileExW"})
        RestoreFunction(name);
}

void FileWatch::FailCall(int nth)
{
    failingFileCall = fileCalls + nth;
}

int FileWatch::Calls() const
{
    return fileCalls;
}

ProcessRecorder::ProcessRecorder()
{
    processes.started.clear();
    processes.open.clear();
    processes.error = 0;
    processes.close = ReplaceFunction("CloseHandle", &RecordedCloseHandle);
    ReplaceFunction("CreateProcessA", &RecordedCreateProcess);
}

ProcessRecorder::~ProcessRecorder()
{
    RestoreFunction("CreateProcessA");
    RestoreFunction("CloseHandle");
}

void ProcessRecorder::FailWith(DWORD error)
{
    const std::lock_guard lock(processes.mutex);
    processes.error = error;
}

std::vector<StartedProcess> ProcessRecorder::Started() const
{
    const std::lock_guard lock(processes.mutex);
    return processes.started;
}

int ProcessRecorder::OpenHandles() const
{
    const std::lock_guard lock(processes.mutex);
    return static_cast<int>(processes.open.size());
}

DebugLines::DebugLines()
{
    SetDebugSink(
        [](const WCHAR* line, void* context) {
            auto* self = static_cast<DebugLines*>(context);
            const std::lock_guard lock(self->mutex_);
            self->lines_.emplace_back(line);
        },
        this);
}

DebugLines::~DebugLines()
{
    SetDebugSink(nullptr, nullptr);
}

std::vector<DebugLines::Text> DebugLines::Lines() const
{
    const std::lock_guard lock(mutex_);
    return lines_;
}

std::vector<DebugLines::Text> DebugLines::Take()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(lines_, {});
}

bool DebugLines::Contains(const WCHAR* line) const
{
    const std::lock_guard lock(mutex_);
    return std::ranges::find(lines_, Text(line)) != lines_.end();
}

} // namespace tintwerk
