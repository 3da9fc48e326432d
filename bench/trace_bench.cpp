// A diagnostic line against the formatted write that it cannot do without.
#include <benchmark/benchmark.h>

#include <cstdarg>

#include "src/trace/trace.h"

namespace tintwerk {
namespace {

constexpr char kFeature[] = "halvBrightness";

int Write(WCHAR* buffer, size_t size, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = _vsnwprintf(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

void TraceOneLine(benchmark::State& state)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(Trace(TEXT("UI:  getComboPPDFeature for %S \r\n"), kFeature));
}
BENCHMARK(TraceOneLine);

void FormatOneLine(benchmark::State& state)
{
    for ([[maybe_unused]] auto round : state) {
        WCHAR line[261];
        benchmark::DoNotOptimize(Write(line, 260, TEXT("UI:  getComboPPDFeature for %S \r\n"), kFeature));
        benchmark::DoNotOptimize(line);
    }
}
BENCHMARK(FormatOneLine);

} // namespace
} // namespace tintwerk
