// How fast PPDs are read, beside the reader of the printing system where its library is installed, and how
// fast the core driver answers.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/core/core_driver.h"
#include "host/ppd/ppd_reader.h"

#ifdef TINTWERK_HAVE_CUPS
#include <cups/ppd.h>
#endif

namespace {

using namespace tintwerk;

std::string Sample(const char* name)
{
    return std::string(TINTWERK_SOURCE_DIR "/samples/") + name;
}

// A PPD of the given number of lines: features of 48 options each with code, and constraints among them.
std::string Generated(int lines)
{
    const std::string path =
        (std::filesystem::temp_directory_path() / ("tintwerk-" + std::to_string(lines) + ".ppd")).string();
    std::ofstream file(path, std::ios::binary);
    file << "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*LanguageVersion: English\n*LanguageEncoding: "
            "ISOLatin1\n"
            "*NickName: \"Generated\"\n";
    const int features = (lines - 5) * 9 / 10 / 52;
    for (int feature = 0; feature < features; ++feature) {
        file << "*OpenUI *halvFeature" << feature << "/Feature <fc> " << feature
             << ": PickOne\n*OrderDependency: " << feature << " AnySetup *halvFeature" << feature
             << "\n*DefaulthalvFeature" << feature << ": Option7\n";
        for (int option = 0; option < 48; ++option)
            file << "*halvFeature" << feature << " Option" << option << "/Option " << option
                 << ": \"<</halvFeature" << feature << " " << option << ">>setpagedevice\"\n";
        file << "*CloseUI: *halvFeature" << feature << "\n";
    }
    for (int at = 5 + features * 52; at < lines; ++at)
        file << "*UIConstraints: *halvFeature" << at % features << " Option" << at % 48 << " *halvFeature"
             << (at + 1) % features << " Option" << at % 47 << "\n";
    return path;
}

void ReadOurs(benchmark::State& state, const std::string& path)
{
    if (const PpdResult result = ReadPpd(path); !result)
        return state.SkipWithError(result.error.Full().c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadPpd(path));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * std::filesystem::file_size(path)));
}

#ifdef TINTWERK_HAVE_CUPS
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
void ReadCups(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        ppd_file_t* ppd = ppdOpenFile(path.c_str());
        if (!ppd) return state.SkipWithError("not read");
        ppdClose(ppd);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * std::filesystem::file_size(path)));
}
#endif

// TINTWERK_PPDS may name more files, separated by ":".
int Register()
{
    std::vector<std::pair<std::string, std::string>> files{{"x12", Sample("tintwerk-x12.ppd")},
                                                           {"5000_lines", Generated(5000)},
                                                           {"50000_lines", Generated(50000)}};
    std::string more = std::getenv("TINTWERK_PPDS") ? std::getenv("TINTWERK_PPDS") : "";
    while (!more.empty()) {
        const std::size_t end = std::min(more.find(':'), more.size());
        const std::string path = more.substr(0, end);
        files.emplace_back(std::filesystem::path(path).stem().string(), path);
        more.erase(0, end + 1);
    }
    for (const auto& [name, path] : files) {
        benchmark::RegisterBenchmark(("ReadPpd/" + name).c_str(), ReadOurs, path);
#ifdef TINTWERK_HAVE_CUPS
        benchmark::RegisterBenchmark(("ppdOpenFile/" + name).c_str(), ReadCups, path);
#endif
    }
    return 0;
}
const int kRegistered = Register();

// What one opening of the printing preferences asks: every feature's options, selection and names.
void AnswerOneSheet(benchmark::State& state)
{
    const PpdResult result = ReadPpd(Sample("tintwerk-x12.ppd"));
    Selections selections;
    CoreDriver core(*result.ppd, selections);
    IPrintCoreUI2* ui = nullptr;
    core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(&ui));
    std::vector<char> buffer(16384);
    DWORD needed = 0;
    DWORD type = 0;
    std::size_t calls = 0;
    for (auto _ : state) {
        core.Calls() = {};
        core.Calls().Record(state.range(0) != 0);
        for (const std::string_view feature : core.Features()) {
            ui->EnumOptions(core.CoreObject(), 0, feature.data(), buffer.data(), 16384, &needed);
            const std::string request = std::string(feature) + std::string(2, '\0');
            ui->GetOptions(core.CoreObject(), 0, request.data(), static_cast<DWORD>(request.size()),
                           buffer.data(), 16384, &needed);
            for (const std::string_view option : core.Options(feature))
                ui->GetOptionAttribute(core.CoreObject(), 0, feature.data(), option.data(), "DisplayName",
                                       &type, reinterpret_cast<PBYTE>(buffer.data()), 16384, &needed);
        }
        for (const CoreMethod method :
             {CoreMethod::EnumOptions, CoreMethod::GetOptions, CoreMethod::GetOptionAttribute})
            calls += core.Calls().Count(method);
    }
    ui->Release();
    state.SetItemsProcessed(static_cast<std::int64_t>(calls));
}
BENCHMARK(AnswerOneSheet)->Arg(0)->Arg(1)->ArgName("recorded");

void MakeCoreDriver(benchmark::State& state)
{
    const PpdResult result = ReadPpd(Sample("tintwerk-x12.ppd"));
    Selections selections;
    for (auto _ : state)
        CoreDriver core(*result.ppd, selections);
}
BENCHMARK(MakeCoreDriver);

} // namespace
