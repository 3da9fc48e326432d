// The ink counters: cutting and reading a counter file's lines, the whole reader with its trace, and the
// drawing of the consumption page.
#include <benchmark/benchmark.h>

#include <string>

#include "src/ink/consumption_page.h"
#include "src/ink/ink_file.h"
#include "src/ink/ink_parsing.h"
#include "tests/pages/open_sheet.h"
#include "tests/support/temp_file.h"

namespace {

using namespace tintwerk;

// As a printing side might write it: sections, totals, last jobs.
std::string CounterFile(int64_t lines)
{
    std::string text = "[Tintwerk_Ink_Info]\n";
    const char* const codes[] = {"K", "C", "M", "Y", "C2", "M2", "KP", "O", "XX"};
    for (int64_t line = 1; line < lines; ++line) {
        text += line % 2 ? "TotalInk_" : "LastInk_";
        text += codes[static_cast<size_t>(line) % 9];
        text += '=' + std::to_string(line * 37) + '\n';
    }
    return text;
}

void ParseLines(benchmark::State& state)
{
    const std::string text = CounterFile(state.range(0));
    for (auto _ : state) {
        long long sum = 0;
        const auto take = [&sum](std::string_view line) {
            if (const auto said = ParseInkLine(line)) sum += said->value;
        };
        InkLines lines;
        for (size_t at = 0; at < text.size(); at += 16384)
            lines.Feed(std::string_view(text).substr(at, 16384), take);
        lines.Finish(take);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(ParseLines)->Arg(40)->Arg(10000)->Arg(1000000);

// What cutting lines cannot do without.
void FindLineEnds(benchmark::State& state)
{
    const std::string text = CounterFile(state.range(0));
    for (auto _ : state) {
        int lines = 0;
        for (size_t at = 0; (at = text.find('\n', at)) != text.npos; ++at)
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(FindLineEnds)->Arg(40)->Arg(10000)->Arg(1000000);

// Every line that counts is traced, which costs more than reading it.
void ReadCounterFile(benchmark::State& state)
{
    const std::string text = CounterFile(state.range(0));
    const TempFile file("bench.ink", text);
    SheetContext context{};
    int allocations = 0;
    for (auto _ : state)
        ReadInkFile(file.path.c_str(), context);
    {
        const HeapWatch heap;
        const DebugLines trace;
        ReadInkFile(file.path.c_str(), context);
        allocations = heap.Calls() - static_cast<int>(trace.Lines().size());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
    state.counters["allocations besides the trace"] = allocations;
}
BENCHMARK(ReadCounterFile)->Arg(40)->Arg(10000)->Unit(benchmark::kMicrosecond);

void ReadEndlessLine(benchmark::State& state)
{
    const TempFile file("bench.ink", std::string(static_cast<size_t>(state.range(0)), 'x'));
    SheetContext context{};
    for (auto _ : state)
        ReadInkFile(file.path.c_str(), context);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadEndlessLine)->Arg(100000000)->Unit(benchmark::kMillisecond);

// The same bytes through the same calls.
void ReadBareFile(benchmark::State& state)
{
    const TempFile file("bench.ink", std::string(static_cast<size_t>(state.range(0)), 'x'));
    for (auto _ : state) {
        static char chunk[16384];
        const HANDLE handle = CreateFileA(file.path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        for (DWORD bytes = 1; bytes;)
            ReadFile(handle, chunk, sizeof chunk, &bytes, nullptr);
        CloseHandle(handle);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReadBareFile)->Arg(100000000)->Unit(benchmark::kMillisecond);

void DrawTwelveChannels(benchmark::State& state)
{
    OpenSheet sheet;
    sheet.Open(kConsumption);
    for (int channel = 0; channel < kConsumptionSlots; ++channel) {
        sheet.context.inkCounters.shownRank[channel] = static_cast<DWORD>(channel) + 1;
        sheet.context.inkCounters.lastJob[channel] = 100 * channel;
    }
    for (auto _ : state)
        DrawConsumptionPage(sheet.context);
}
BENCHMARK(DrawTwelveChannels)->Unit(benchmark::kMicrosecond);

} // namespace
