#include "platform/testing.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/debug_sink.h"
#include "platform/function_hook.h"

namespace tintwerk {

namespace {

// --- Heaps
// -------------------------------------------------------------------------------------------------------------

struct HeapState
{
    std::mutex mutex;
    decltype(&HeapAlloc) allocate = nullptr;
    decltype(&HeapReAlloc) reallocate = nullptr;
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

LPVOID WINAPI WatchedReAlloc(HANDLE heap, DWORD flags, LPVOID block, SIZE_T bytes)
{
    const std::lock_guard lock(heaps.mutex);
    if (heaps.NextFails()) return nullptr;
    const bool known = heaps.blocks.erase(block) > 0;
    void* const moved = heaps.reallocate(heap, flags, block, bytes);
    if (known) heaps.blocks[moved ? moved : block] = heap;
    return moved;
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

// --- Processes
// ---------------------------------------------------------------------------------------------------------

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
    heaps.reallocate = ReplaceFunction("HeapReAlloc", &WatchedReAlloc);
    heaps.free = ReplaceFunction("HeapFree", &WatchedFree);
    heaps.destroy = ReplaceFunction("HeapDestroy", &WatchedDestroy);
}

HeapWatch::~HeapWatch()
{
    for (const char* name : {"HeapAlloc", "HeapReAlloc", "HeapFree", "HeapDestroy"})
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
