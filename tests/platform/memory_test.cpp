// Blocks of a heap.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "platform/win32.h"

namespace tintwerk {
namespace {

TEST(Heap, GivesZeroedBlocksOfTheSizeAskedFor)
{
    const HANDLE heap = HeapCreate(0, 0, 0);
    for (const SIZE_T size : {0u, 1u, 10u, 4096u, 1000000u}) {
        auto* block = static_cast<BYTE*>(HeapAlloc(heap, HEAP_ZERO_MEMORY, size));
        ASSERT_NE(nullptr, block);
        EXPECT_EQ(size, HeapSize(heap, 0, block));
        EXPECT_TRUE(std::all_of(block, block + size, [](BYTE b) { return b == 0; })) << size;
        std::memset(block, 7, size);
        block = static_cast<BYTE*>(HeapReAlloc(heap, 0, block, size + 5));
        EXPECT_TRUE(std::all_of(block, block + size, [](BYTE b) { return b == 7; })) << size;
        EXPECT_TRUE(HeapFree(heap, 0, block));
    }
    EXPECT_EQ(nullptr, HeapAlloc(heap, 0, SIZE_T{1} << 50));
    EXPECT_TRUE(HeapFree(heap, 0, nullptr));
    EXPECT_TRUE(HeapDestroy(heap));
}

} // namespace
} // namespace tintwerk
