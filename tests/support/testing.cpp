#include "tests/support/testing.h"

#include <map>
#include <type_traits>

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
    CallCount count;
};

HeapState heaps;

LPVOID WINAPI WatchedAlloc(HANDLE heap, DWORD flags, SIZE_T bytes)
{
    const std::lock_guard lock(heaps.mutex);
    if (heaps.count.NextFails()) return nullptr;
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

CallCount fileCalls;

// A function that fails when its turn comes; every one here is of another type.
template <typename Function, DWORD kError> struct Watched;
template <typename Result, typename... Arguments, DWORD kError>
struct Watched<Result(WINAPI*)(Arguments...), kError>
{
    static inline Result(WINAPI* own)(Arguments...) = nullptr;

    static Result WINAPI Call(Arguments... arguments)
    {
        if (!fileCalls.NextFails()) return own(arguments...);
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

} // namespace

HeapWatch::HeapWatch() : CallWatch(heaps.count)
{
    const std::lock_guard lock(heaps.mutex);
    heaps.blocks.clear();
    heaps.allocate = ReplaceFunction("HeapAlloc", &WatchedAlloc);
    heaps.free = ReplaceFunction("HeapFree", &WatchedFree);
    heaps.destroy = ReplaceFunction("HeapDestroy", &WatchedDestroy);
}

HeapWatch::~HeapWatch()
{
    for (const char* name : {"HeapAlloc", "HeapFree", "HeapDestroy"})
        RestoreFunction(name);
}

int HeapWatch::LiveBlocks() const
{
    const std::lock_guard lock(heaps.mutex);
    return static_cast<int>(heaps.blocks.size());
}

FileWatch::FileWatch() : CallWatch(fileCalls)
{
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

} // namespace tintwerk
