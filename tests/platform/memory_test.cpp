// Heaps, counters, and what the tests' own instruments see of them.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "platform/environment.h"
#include "platform/owners.h"
#include "platform/testing.h"
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

TEST(Heap, TakesItsBlocksWithIt)
{
    HeapWatch watch;
    const HANDLE heap = HeapCreate(0, 0, 0);
    for (int i = 0; i < 10; ++i)
        HeapAlloc(heap, 0, 100);
    HeapBlock<int> other(GetProcessHeap(), sizeof(int));
    EXPECT_EQ(11, watch.LiveBlocks());
    HeapDestroy(heap);
    EXPECT_EQ(1, watch.LiveBlocks());
}

TEST(HeapWatchTest, FailsTheChosenAllocations)
{
    HeapWatch watch;
    HeapBlock<int> before(GetProcessHeap(), 4);
    watch.FailAllocation(2, 2);
    std::vector<bool> given;
    for (int i = 0; i < 5; ++i)
        given.push_back(static_cast<bool>(HeapBlock<int>(GetProcessHeap(), 4)));
    EXPECT_EQ((std::vector<bool>{true, false, false, true, true}), given);
    EXPECT_EQ(6, watch.Allocations());
    EXPECT_EQ(1, watch.LiveBlocks());
}

TEST(Counters, LoseNoStepBetweenThreads)
{
    LONG volatile count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&count] {
            for (int step = 0; step < 10000; ++step) {
                InterlockedIncrement(&count);
                InterlockedIncrement(&count);
                InterlockedDecrement(&count);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(40000, count);
    EXPECT_EQ(40001, InterlockedIncrement(&count));
    EXPECT_EQ(40000, InterlockedDecrement(&count));
}

TEST(LastError, BelongsToTheThread)
{
    SetLastError(87);
    DWORD seen = 87;
    std::thread([&seen] { seen = GetLastError(); }).join();
    EXPECT_NE(87u, seen);
    SetLastError(5);
    EXPECT_EQ(5u, GetLastError());
}

DWORD MajorVersion()
{
    OSVERSIONINFOW information{};
    information.dwOSVersionInfoSize = sizeof information;
    EXPECT_TRUE(GetVersionExW(&information));
    EXPECT_EQ(DWORD{VER_PLATFORM_WIN32_NT}, information.dwPlatformId);
    return information.dwMajorVersion;
}

TEST(WindowsVersion, CanBePretended)
{
    // Volatile, or the compiler keeps the import's address from one call to the next.
    DWORD (*volatile majorVersion)() = &MajorVersion;
    const DWORD truth = majorVersion();
    EXPECT_GE(truth, 6u);
    SetWindowsVersion(5, 1, 2600);
    EXPECT_EQ(5u, majorVersion());
    SetWindowsVersion(0, 0);
    EXPECT_EQ(truth, majorVersion());
}

TEST(ProcessRecorderTest, StartsNothingAndKeepsTheHandlesInView)
{
    ProcessRecorder recorder;
    char commandLine[] = "C:\\nowhere\\no.exe -q";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    ASSERT_TRUE(CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                               "C:\\nowhere", &startup, &information));
    ASSERT_EQ(1u, recorder.Started().size());
    EXPECT_EQ("C:\\nowhere\\no.exe -q", recorder.Started()[0].commandLine);
    EXPECT_EQ("C:\\nowhere", recorder.Started()[0].directory);
    EXPECT_EQ(DWORD{DETACHED_PROCESS}, recorder.Started()[0].flags);
    EXPECT_EQ(2, recorder.OpenHandles());
    EXPECT_TRUE(CloseHandle(information.hProcess));
    EXPECT_TRUE(CloseHandle(information.hThread));
    EXPECT_EQ(0, recorder.OpenHandles());

    recorder.FailWith(ERROR_ACCESS_DENIED);
    EXPECT_FALSE(CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                &information));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
}

} // namespace
} // namespace tintwerk
