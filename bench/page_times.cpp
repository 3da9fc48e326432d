// How long a page takes from its WM_INITDIALOG to the end of embedding, on both targets; under Wine Google
// Benchmark is not to be had. Prints its columns.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "tests/pages/open_sheet.h"

namespace tintwerk {
namespace {

constexpr int kRounds = 201;

using Clock = std::chrono::steady_clock;

double MicrosecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

void Print(const char* name, std::vector<double> times)
{
    std::ranges::sort(times);
    std::printf("%-32s %10.1f us %12d\n", name, times[times.size() / 2], static_cast<int>(times.size()));
}

std::vector<double> initialisations;

INT_PTR CALLBACK TimedPage(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Clock::time_point start = Clock::now();
    const INT_PTR handled = DocumentPageProc(page, message, wParam, lParam);
    if (message == WM_INITDIALOG) initialisations.push_back(MicrosecondsSince(start));
    return handled;
}

void MeasurePages()
{
    constexpr const char* kNames[kPageKinds] = {"InitDialog/main",       "InitDialog/colors",
                                                "InitDialog/correction", "InitDialog/consumption",
                                                "InitDialog/ink",        "InitDialog/screen"};
    OpenSheet sheet;
    sheet.Read();
    for (int position = 0; position < kPageKinds; ++position) {
        PROPSHEETPAGEW page{};
        page.lParam = reinterpret_cast<LPARAM>(&sheet.record.pages[position]);
        initialisations.clear();
        for (int round = 0; round < kRounds; ++round) {
            const HWND window = CreateDialogParamW(Process().module, MAKEINTRESOURCEW(kTemplates[position]),
                                                   sheet.sheet, &TimedPage, reinterpret_cast<LPARAM>(&page));
            DestroyWindow(window);
        }
        Print(kNames[position], initialisations);
    }
}

} // namespace
} // namespace tintwerk

int main()
{
    std::printf("%-32s %13s %12s\n", "Benchmark", "Time", "Iterations");
    tintwerk::MeasurePages();
}
