// Opening a page: its controls created, bound, filled and translated; and closing it again.
#include <benchmark/benchmark.h>

#include "tests/pages/open_sheet.h"

namespace {

using namespace tintwerk;

void OpenPage(benchmark::State& state)
{
    OpenSheet sheet;
    const int position = static_cast<int>(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(sheet.Open(position));
        DestroyWindow(sheet.Page(position));
    }
}
BENCHMARK(OpenPage)->DenseRange(0, kPageKinds - 1)->Unit(benchmark::kMicrosecond);

// The window and its controls alone.
void OpenBareDialog(benchmark::State& state)
{
    OpenSheet sheet;
    const WCHAR* const name = MAKEINTRESOURCEW(kTemplates[state.range(0)]);
    for (auto _ : state)
        DestroyWindow(CreateDialogParamW(
            Process().module, name, sheet.sheet, [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; }, 0));
}
BENCHMARK(OpenBareDialog)->DenseRange(0, kPageKinds - 1)->Unit(benchmark::kMicrosecond);

// The part of it that is the dialog procedure's, over controls that are there already.
void InitialisePage(benchmark::State& state)
{
    OpenSheet sheet;
    const int position = static_cast<int>(state.range(0));
    const HWND page = sheet.Open(position);
    PROPSHEETPAGEW record{};
    record.lParam = reinterpret_cast<LPARAM>(&sheet.record.pages[position]);
    for (auto _ : state)
        DocumentPageProc(page, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(&record));
}
BENCHMARK(InitialisePage)
    ->Arg(kMain)
    ->Arg(kColors)
    ->Arg(kCorrection)
    ->Arg(kInkControl)
    ->Arg(kScreenPrinting)
    ->Unit(benchmark::kMicrosecond);

} // namespace
