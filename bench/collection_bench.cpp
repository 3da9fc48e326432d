// The whole way over PPDs that nobody here wrote: reading them, beside the reader of the printing system
// where its library is installed; tintwerk check; and opening the pages of every tenth. The files are those
// that tools/check-collection --unpack lays out; without them there is nothing to measure.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "host/cli/program.h"
#include "host/ppd/ppd_reader.h"

#ifdef TINTWERK_HAVE_CUPS
#include <cups/ppd.h>
#endif

namespace tintwerk {
namespace {

using Files = std::vector<std::string>;

Files Collection()
{
    Files files;
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(TINTWERK_SOURCE_DIR "/build/collection", missing)) {
        if (entry.path().extension() == ".ppd") files.push_back(entry.path().string());
    }
    std::ranges::sort(files);
    return files;
}

void CountFiles(benchmark::State& state, const Files& files)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * files.size()));
}

void ReadOurs(benchmark::State& state, const Files& files)
{
    for (auto _ : state) {
        for (const std::string& file : files)
            benchmark::DoNotOptimize(ReadPpd(file));
    }
    CountFiles(state, files);
}

#ifdef TINTWERK_HAVE_CUPS
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
void ReadCups(benchmark::State& state, const Files& files)
{
    std::size_t refused = 0;
    for (auto _ : state) {
        refused = 0;
        for (const std::string& file : files) {
            if (ppd_file_t* ppd = ppdOpenFile(file.c_str()))
                ppdClose(ppd);
            else
                ++refused;
        }
    }
    state.counters["refused"] = static_cast<double>(refused);
    CountFiles(state, files);
}
#endif

// The printing system's own linter, one process for all files.
void Cupstestppd(benchmark::State& state, const Files& files)
{
    std::string command = "cupstestppd -q";
    for (const std::string& file : files)
        command += " '" + file + "'";
    command += " >/dev/null 2>&1";
    for (auto _ : state)
        benchmark::DoNotOptimize(std::system(command.c_str()));
    CountFiles(state, files);
}

void Check(benchmark::State& state, Files arguments, const Files& files)
{
    arguments.insert(arguments.begin(), "check");
    arguments.insert(arguments.end(), files.begin(), files.end());
    for (auto _ : state) {
        std::ostringstream out, err;
        Output output{out, err};
        RunProgram(arguments, output);
        if (!err.str().empty()) return state.SkipWithError(err.str().c_str());
    }
    CountFiles(state, files);
}

Files EveryTenth(const Files& files)
{
    Files some;
    for (std::size_t i = 0; i < files.size(); i += 10)
        some.push_back(files[i]);
    return some;
}

int Register()
{
    const Files files = Collection();
    if (files.empty()) {
        std::fputs("No PPD collection: tools/check-collection --unpack lays it out.\n", stderr);
        return 0;
    }
    const auto once = [](benchmark::internal::Benchmark* one) {
        one->Iterations(1)->Unit(benchmark::kMillisecond);
    };
    once(benchmark::RegisterBenchmark("Collection/ReadPpd", ReadOurs, files));
#ifdef TINTWERK_HAVE_CUPS
    once(benchmark::RegisterBenchmark("Collection/ppdOpenFile", ReadCups, files));
#endif
    once(benchmark::RegisterBenchmark("Collection/check", Check, Files{}, files)->UseRealTime());
    once(benchmark::RegisterBenchmark("Collection/cupstestppd_every_tenth", Cupstestppd, EveryTenth(files))
             ->UseRealTime());
    once(benchmark::RegisterBenchmark("Collection/check_pages_every_tenth", Check,
                                      Files{"--pages", "--config-dir", TINTWERK_SOURCE_DIR "/samples/config"},
                                      EveryTenth(files)));
    return 0;
}
const int kRegistered = Register();

} // namespace
} // namespace tintwerk
