// Lookups in the string table, which every label and message goes through: the first row, the last one, and a
// text that is not there. Each traces one line.
#include <benchmark/benchmark.h>

#include "src/i18n/string_table.h"
#include "src/i18n/texts.h"

namespace {

using namespace tintwerk;

void FindByKey(benchmark::State& state, const char* key)
{
    InitStringTable("de");
    for (auto _ : state)
        benchmark::DoNotOptimize(FindDefaultString(key, 0).Get());
}
BENCHMARK_CAPTURE(FindByKey, first, "to_ink_black");
BENCHMARK_CAPTURE(FindByKey, last, "label_sp_angle");
BENCHMARK_CAPTURE(FindByKey, missing, "label_sp_nowhere");

void LocalizeEnglishText(benchmark::State& state)
{
    InitStringTable("de");
    for (auto _ : state)
        benchmark::DoNotOptimize(CFCopyLocalizedString(TEXT("Total:"), nullptr));
}
BENCHMARK(LocalizeEnglishText);

} // namespace
