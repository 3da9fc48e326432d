// How long Windows takes to map, relocate and attach the plug-in and to let it go again, beside a DLL without
// any code of its own, in a process that has the system's DLLs already, as the core driver's has. Prints its
// columns.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "platform/win32.h"

namespace {

void MeasureLoading(const char* name, const WCHAR* module)
{
    using Clock = std::chrono::steady_clock;
    constexpr int kRounds = 201;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const Clock::time_point start = Clock::now();
        const HMODULE loaded = LoadLibraryW(module);
        if (!loaded || !FreeLibrary(loaded)) return;
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    std::ranges::sort(times);
    std::printf("%-32s %10.1f us %12d\n", name, times[times.size() / 2], kRounds);
}

} // namespace

int main()
{
    for (const WCHAR* const system :
         {TEXT("user32.dll"), TEXT("comctl32.dll"), TEXT("winspool.drv"), TEXT("version.dll")})
        LoadLibraryW(system);
    std::printf("%-32s %13s %12s\n", "Benchmark", "Time", "Iterations");
    MeasureLoading("LoadAndUnload/PSTWUI", TEXT("PSTWUI.DLL"));
    MeasureLoading("LoadAndUnload/empty", TEXT("empty_module.dll"));
}
