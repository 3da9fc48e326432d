#include "tests/support/testing.h"

#include <algorithm>
#include <atomic>
#include <map>
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

struct FileState
{
    decltype(&CreateFileA) openNarrow = nullptr;
    decltype(&CreateFileW) openWide = nullptr;
    decltype(&ReadFile) read = nullptr;
    decltype(&WriteFile) write = nullptr;
    decltype(&FlushFileBuffers) flush = nullptr;
    decltype(&MoveFileExA) moveNarrow = nullptr;
    decltype(&MoveFileExW) moveWide = nullptr;
    std::atomic<int> calls = 0;
    std::atomic<int> failing = 0; // the number of a call, counted as above

    bool NextFails(DWORD error)
    {
        if (++calls != failing) return false;
        SetLastError(error);
        return true;
    }
};

FileState files;

HANDLE WINAPI WatchedOpenNarrow(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                DWORD disposition, DWORD flags, HANDLE pattern)
{
    if (files.NextFails(ERROR_ACCESS_DENIED)) return INVALID_HANDLE_VALUE;
    return files.openNarrow(path, access, share, security, disposition, flags, pattern);
}

HANDLE WINAPI WatchedOpenWide(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE pattern)
{
    if (files.NextFails(ERROR_ACCESS_DENIED)) return INVALID_HANDLE_VALUE;
    return files.openWide(path, access, share, security, disposition, flags, pattern);
}

BOOL WINAPI WatchedRead(HANDLE file, LPVOID buffer, DWORD bytes, LPDWORD read, LPOVERLAPPED overlapped)
{
    return !files.NextFails(ERROR_ACCESS_DENIED) && files.read(file, buffer, bytes, read, overlapped);
}

// A full disk takes half of it.
BOOL WINAPI WatchedWrite(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped)
{
    if (!files.NextFails(ERROR_DISK_FULL)) return files.write(file, buffer, bytes, written, overlapped);
    files.write(file, buffer, bytes / 2, written, overlapped);
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI WatchedFlush(HANDLE file)
{
    return !files.NextFails(ERROR_DISK_FULL) && files.flush(file);
}

BOOL WINAPI WatchedMoveNarrow(LPCSTR path, LPCSTR newPath, DWORD flags)
{
    return !files.NextFails(ERROR_ACCESS_DENIED) && files.moveNarrow(path, newPath, flags);
}

BOOL WINAPI WatchedMoveWide(LPCWSTR path, LPCWSTR newPath, DWORD flags)
{
    return !files.NextFails(ERROR_ACCESS_DENIED) && files.moveWide(path, newPath, flags);
}

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
    files.calls = files.failing = 0;
    files.openNarrow = ReplaceFunction("CreateFileA", &WatchedOpenNarrow);
    files.openWide = ReplaceFunction("CreateFileW", &WatchedOpenWide);
    files.read = ReplaceFunction("ReadFile", &WatchedRead);
    files.write = ReplaceFunction("WriteFile", &WatchedWrite);
    files.flush = ReplaceFunction("FlushFileBuffers", &WatchedFlush);
    files.moveNarrow = ReplaceFunction("MoveFileExA", &WatchedMoveNarrow);
    files.moveWide = ReplaceFunction("MoveFileExW", &WatchedMoveWide);
}

FileWatch::~FileWatch()
{
    for (const char* name : {"CreateFileA", "CreateFileW", "ReadFile", "WriteFile", "FlushFileBuffers",
                             "MoveFileExA", "MoveFileExW"})
        RestoreFunction(name);
}

void FileWatch::FailCall(int nth)
{
    files.failing = files.calls + nth;
}

int FileWatch::Calls() const
{
    return files.calls;
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
