// Last error, heaps and counters of the headless platform. Every heap block is an allocation of its own, so
// that the address sanitizer sees its exact end; blocks of the process heap are known to nobody else, so that
// the leak sanitizer sees them.
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <mutex>

#include "platform/handles.h"
#include "platform/headless/hookable.h"

using tintwerk::Fail;
using tintwerk::headless::Hookable;

namespace {

thread_local DWORD lastError = 0;

struct alignas(std::max_align_t) BlockHeader
{
    BlockHeader* previous;
    BlockHeader* next;
    struct Heap* heap;
};

struct Heap
{
    std::mutex mutex;
    BlockHeader blocks{&blocks, &blocks, this}; // a ring; that of the process heap stays empty
};

constexpr SIZE_T kLargestBlock = SIZE_T{1} << 36;

Heap& ProcessHeap()
{
    // Never destroyed: blocks may be given back after the end of main.
    static Heap& heap = *new Heap;
    return heap;
}

void Enlist(Heap& heap, BlockHeader* block)
{
    block->heap = &heap;
    block->previous = block->next = nullptr;
    if (&heap == &ProcessHeap()) return;
    const std::lock_guard lock(heap.mutex);
    block->next = heap.blocks.next;
    block->previous = &heap.blocks;
    block->next->previous = block;
    heap.blocks.next = block;
}

void Delist(Heap& heap, BlockHeader* block)
{
    if (!block->next) return;
    const std::lock_guard lock(heap.mutex);
    block->previous->next = block->next;
    block->next->previous = block->previous;
}

BlockHeader* HeaderOf(LPCVOID block)
{
    // NOLINTNEXTLINE(clang-analyzer-unix.Malloc): destroying a heap asks for the first of those that are left
    return static_cast<BlockHeader*>(const_cast<void*>(block)) - 1;
}

LPVOID AllocateBlock(HANDLE heap, DWORD flags, SIZE_T bytes)
{
    if (!heap) return Fail<LPVOID>(ERROR_INVALID_HANDLE);
    BlockHeader* block = nullptr;
    if (bytes <= kLargestBlock)
        block =
            static_cast<BlockHeader*>(flags & HEAP_ZERO_MEMORY ? std::calloc(1, sizeof(BlockHeader) + bytes)
                                                               : std::malloc(sizeof(BlockHeader) + bytes));
    if (!block) return Fail<LPVOID>(ERROR_NOT_ENOUGH_MEMORY);
    Enlist(*static_cast<Heap*>(heap), block);
    return block + 1;
}

BOOL FreeBlock(HANDLE heap, DWORD, LPVOID block)
{
    if (!block) return TRUE;
    BlockHeader* const header = HeaderOf(block);
    if (header->heap != heap) return Fail(ERROR_INVALID_PARAMETER);
    Delist(*header->heap, header);
    std::free(header);
    return TRUE;
}

BOOL DestroyHeap(HANDLE handle)
{
    auto* heap = static_cast<Heap*>(handle);
    if (!heap || heap == &ProcessHeap()) return Fail(ERROR_INVALID_HANDLE);
    while (heap->blocks.next != &heap->blocks)
        FreeBlock(heap, 0, heap->blocks.next + 1);
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
HLOCAL LocalAlloc(UINT flags, SIZE_T bytes)
{
    return flags & LMEM_ZEROINIT ? std::calloc(1, bytes ? bytes : 1) : std::malloc(bytes ? bytes : 1);
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
