// Last error, heaps and counters of the headless platform. Every heap block is an allocation of its own, so
// that the address sanitizer sees its exact end; blocks of the process heap are known to nobody else, so that
// the leak sanitizer sees them.
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <set>

#include "platform/handles.h"
#include "platform/headless/hookable.h"

using tintwerk::Refuse;
using tintwerk::headless::Hookable;

namespace {

thread_local DWORD lastError = 0;

struct alignas(std::max_align_t) BlockHeader
{
    HANDLE heap;
};

struct Heap
{
    std::mutex mutex;
    std::set<BlockHeader*> blocks; // those of the process heap are not known
};

constexpr SIZE_T kLargestBlock = SIZE_T{1} << 36;

Heap& ProcessHeap()
{
    // Never destroyed: blocks may be given back after the end of main.
    static Heap& heap = *new Heap;
    return heap;
}

LPVOID AllocateBlock(HANDLE handle, DWORD flags, SIZE_T bytes)
{
    auto* const heap = static_cast<Heap*>(handle);
    if (!heap) return Refuse<LPVOID>(ERROR_INVALID_HANDLE);
    BlockHeader* block = nullptr;
    if (bytes <= kLargestBlock)
        block =
            static_cast<BlockHeader*>(flags & HEAP_ZERO_MEMORY ? std::calloc(1, sizeof(BlockHeader) + bytes)
                                                               : std::malloc(sizeof(BlockHeader) + bytes));
    if (!block) return Refuse<LPVOID>(ERROR_NOT_ENOUGH_MEMORY);
    block->heap = heap;
    if (heap != &ProcessHeap()) {
        const std::lock_guard lock(heap->mutex);
        heap->blocks.insert(block);
    }
    return block + 1;
}

BOOL FreeBlock(HANDLE handle, DWORD, LPVOID block)
{
    if (!block) return TRUE;
    auto* const heap = static_cast<Heap*>(handle);
    BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
    if (header->heap != heap) return Refuse(ERROR_INVALID_PARAMETER);
    if (heap != &ProcessHeap()) {
        const std::lock_guard lock(heap->mutex);
        heap->blocks.erase(header);
    }
    std::free(header);
    return TRUE;
}

BOOL DestroyHeap(HANDLE handle)
{
    auto* heap = static_cast<Heap*>(handle);
    if (!heap || heap == &ProcessHeap()) return Refuse(ERROR_INVALID_HANDLE);
    for (BlockHeader* block : heap->blocks)
        std::free(block);
    delete heap;
    return TRUE;
}

Hookable<AllocateBlock> heapAlloc{"HeapAlloc"};
Hookable<FreeBlock> heapFree{"HeapFree"};
Hookable<DestroyHeap> heapDestroy{"HeapDestroy"};

std::atomic_ref<PVOID> Holder(SRWLOCK* lock)
{
    return std::atomic_ref(lock->Ptr);
}

} // namespace

DWORD GetLastError()
{
    return lastError;
}
void SetLastError(DWORD error)
{
    lastError = error;
}

HANDLE GetProcessHeap()
{
    return &ProcessHeap();
}
HANDLE HeapCreate(DWORD, SIZE_T, SIZE_T)
{
    return new Heap;
}
BOOL HeapDestroy(HANDLE heap)
{
    return heapDestroy(heap);
}
LPVOID HeapAlloc(HANDLE heap, DWORD flags, SIZE_T bytes)
{
    return heapAlloc(heap, flags, bytes);
}
BOOL HeapFree(HANDLE heap, DWORD flags, LPVOID block)
{
    return heapFree(heap, flags, block);
}
HLOCAL LocalAlloc(UINT, SIZE_T bytes)
{
    return std::calloc(1, bytes); // zeros do no harm
}
HLOCAL LocalFree(HLOCAL block)
{
    std::free(block);
    return nullptr;
}

void AcquireSRWLockExclusive(SRWLOCK* lock)
{
    while (Holder(lock).exchange(lock)) // its own address: taken
        Holder(lock).wait(lock);
}
void ReleaseSRWLockExclusive(SRWLOCK* lock)
{
    Holder(lock).store(nullptr);
    Holder(lock).notify_one();
}
