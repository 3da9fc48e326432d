#include "host/cli/printer_run.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <sstream>

#include "host/ppd/ppd_text.h"
#include "host/sheet/script.h"
#include "platform/debug_sink.h"
#include "platform/environment.h"
#include "platform/whole_file.h"
#include "src/records/private_devmode.h"

namespace tintwerk {

namespace {

constexpr std::array<std::string_view, 2> kLanguages{"en", "de"};

void TraceLine(const WCHAR* line, void* context)
{
    std::string text = Utf8FromWide(line);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    std::erase(text, '\r');
    *static_cast<std::ostream*>(context) << "trace: " << text << "\n";
}

// "6.1", "10.0.19045"
void PretendWindowsVersion(const std::string& text)
{
    std::vector<unsigned> parts;
    std::istringstream words(text + '.');
    for (std::string part; std::getline(words, part, '.');)
        parts.push_back(DecimalNumber<unsigned>(part).value_or(UINT_MAX));
    if (parts.size() < 2 || parts.size() > 3 || parts[0] == 0 || std::ranges::count(parts, UINT_MAX))
        Misused("--windows-version " + text + ": \"major.minor\" expected, such as 6.1 or 10.0");
    SetWindowsVersion(parts[0], parts[1], parts.size() > 2 ? parts[2] : 0);
}

// "610x2000mm", "24x80in", "1728x5184pt"
std::optional<PaperSize> PaperSizeFrom(std::string_view text)
{
    const std::size_t x = text.find('x');
    if (x == std::string_view::npos || text.size() < x + 3) return std::nullopt;
    const std::string_view unit = text.substr(text.size() - 2);
    const double scale = unit == "mm" ? 1000 : unit == "in" ? 25400 : unit == "pt" ? 25400.0 / 72 : 0;
    text.remove_suffix(2);
    const double width = DecimalNumber<double>(text.substr(0, x)).value_or(0) * scale;
    const double height = DecimalNumber<double>(text.substr(x + 1)).value_or(0) * scale;
    const auto usable = [](double length) { return length >= 1 && length < 1e9; };
    if (!usable(width) || !usable(height)) return std::nullopt;
    return PaperSize{static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height))};
}

// "50.8 to 609.6", of thousandths of a millimetre.
std::string Range(int least, int most)
{
    return Tenths((least + 99) / 100, 10) + " to " + Tenths(most / 100, 10);
}

} // namespace

std::vector<OptionRow> PrinterOptions(std::span<const OptionRow> own)
{
    std::vector<OptionRow> options{
        {"ppd", "FILE", "the printer's PPD file"},
        {"printer", "NAME", "the printer's name (default: the PPD's)"},
        {"driver", "NAME",
         "the driver's name, whose last four characters may be the printer's\nnumber (default: the PPD's)"},
        {"store", "DIR", "folder in which selections are kept (default: tintwerk-store)"},
        {"language", "en|de", "language of the pages, whatever the PPD says"},
        {"gui-mode", "N", "GUI mode from 0 to 99, whatever the PPD says"},
        {"windows-version", "X.Y", "the version of Windows that the driver is told, such as 6.0"},
        {"config-dir", "DIR",
         "the driver's configuration directory: ink files, logos (default: the\nregistry's, or config in the "
         "store)"},
        {"custom-size", "WxH",
         "the measures of the page size CustomPageSize in mm, in or pt:\n--choose PageSize=CustomPageSize "
         "--custom-size 610x2000mm"},
        {"trace", "", "shows the driver's diagnostic lines on standard error"},
    };
    options.insert(options.end(), own.begin(), own.end());
    return options;
}

PrinterRun::PrinterRun(const Arguments& arguments, Output& output, bool keeps)
    : output_(output), traces_(arguments.Has("trace"))
{
    if (!arguments.Operands().empty())
        Misused(arguments.Operands()[0] + ": options begin with two dashes (the PPD goes to --ppd)");
    Read(arguments);
    if (arguments.Has("windows-version")) PretendWindowsVersion(arguments.Value("windows-version"));
    name_ = WideFromUtf8(arguments.Value("printer", ppd_->PrinterName()));
    if (name_.empty()) Misused("--printer: the name is empty");

    storeFile_ = PathFromUtf8(arguments.Value("store", "tintwerk-store")) /
                 PathFromUtf8(SelectionsFileName(Utf8FromWide(name_)));
    UseConfigDirectory(configDirectory_, arguments, storeFile_.parent_path() / "config");
    if (keeps) LockStore();
    LoadSelections();
    const PaperSize custom = CustomSize(arguments);
    for (const auto& [feature, option] : readOptions_.pretended) {
        if (const std::string* kept = selections_.Find(feature)) setAside_.emplace_back(feature, *kept);
        selections_.Remove(feature);
    }
    core_ = std::make_unique<CoreDriver>(*ppd_, selections_);
    for (const std::string& refused : core_->Refused())
        output_.err << "tintwerk: " << Utf8FromPath(storeFile_) << ": " << refused << "\n";
    const auto languages = core_->Options("halvLanguage");
    german_ = !languages.empty() && languages[0].starts_with("de");
    firstSelections_ = keptSelections_ = core_->AllSelected();
    printer_ = std::make_unique<SpooledPrinter>(
        *ppd_, PrinterEntry{name_, WideFromUtf8(arguments.Value("driver", ppd_->PrinterName())), ppdFile_,
                            arguments.Has("offline"), custom});
    if (traces_) SetDebugSink(TraceLine, &output_.err);
}

PrinterRun::~PrinterRun()
{
    session_.reset();
    printer_.reset();
    if (traces_) SetDebugSink(nullptr, nullptr);
    SetWindowsVersion(0, 0);
}

void PrinterRun::Read(const Arguments& arguments)
{
    ppdFile_ = arguments.Required("ppd");
    PpdReadOptions& options = readOptions_;
    options.language = arguments.OneOf("language", "", kLanguages);
    if (!options.language.empty()) options.pretended.push_back({"halvLanguage", options.language});
    if (arguments.Has("gui-mode")) {
        const int mode = arguments.Number("gui-mode", 0, 0, 99);
        options.pretended.push_back({"halvGuiMode", mode == 0 ? "standard" : "oem" + std::to_string(mode)});
    }
    PpdResult result = ReadPpd(PathFromUtf8(ppdFile_), options);
    if (!result) Fail(result.error.Full());
    ppd_ = std::move(result.ppd);
}

// Two runs that load, change and save the same selections would lose what one of them chose.
void PrinterRun::LockStore()
{
    constexpr unsigned kWait = 5000; // milliseconds
    std::filesystem::path file = storeFile_;
    file += ".lock";
    std::error_code ignored; // a store that cannot be written is told of when there is something to keep
    std::filesystem::create_directories(file.parent_path(), ignored);
    const std::string self = "process " + std::to_string(GetCurrentProcessId());
    if (lock_.Take(file, self, kWait) != FileLock::Outcome::Held) return;
    std::string holder;
    ReadWhole(file, holder);
    Fail(Utf8FromPath(storeFile_) + ": " + (holder.empty() ? "another process" : holder) +
         " has these selections open; close it, or take another --store");
}

// What makes no sense to this program is not written over.
void PrinterRun::LoadSelections()
{
    selections_ = Selections::Load(storeFile_);
    std::string problems;
    for (const PpdMessage& warning : selections_.Warnings())
        problems += (problems.empty() ? "" : "\ntintwerk: ") + warning.Full();
    if (!problems.empty()) Fail(problems);
}

// The size of --custom-size goes among the selections; without it the kept one counts.
PaperSize PrinterRun::CustomSize(const Arguments& arguments)
{
    if (arguments.Has("custom-size")) {
        const std::string text = arguments.Value("custom-size");
        const auto& limits = ppd_->CustomSize();
        if (!limits) Fail("--custom-size: the PPD has no *CustomPageSize");
        const std::optional<PaperSize> size = PaperSizeFrom(text);
        const auto within = [](int length, int least, int most) { return length >= least && length <= most; };
        if (!size || !within(size->width, limits->minWidth, limits->maxWidth) ||
            !within(size->height, limits->minHeight, limits->maxHeight))
            Misused("--custom-size " + text + ": WIDTHxHEIGHT in mm, in or pt is expected, " +
                    Range(limits->minWidth, limits->maxWidth) + " by " +
                    Range(limits->minHeight, limits->maxHeight) + " mm");
        selections_.Set(kCustomPageSize, text);
    }
    const std::string* const kept = selections_.Find(kCustomPageSize);
    return kept ? PaperSizeFrom(*kept).value_or(PaperSize{}) : PaperSize{};
}

PluginSession& PrinterRun::StartPlugin()
{
    session_ = std::make_unique<PluginSession>(*core_, selections_);
    if (const std::string problem = session_->Start(); !problem.empty()) Fail(problem);
    firstApplyCount_ = keptApplyCount_ = ApplyCount();
    return *session_;
}

DWORD PrinterRun::ApplyCount() const
{
    DWORD count = 0;
    const std::vector<BYTE>& bytes = session_->PrivateDevmode();
    if (bytes.size() >= sizeof(OemPrivateDevmode))
        std::memcpy(&count, bytes.data() + offsetof(OemPrivateDevmode, applyCount), sizeof count);
    return count;
}

void PrinterRun::Keep()
{
    session_->KeepPrivateDevmode();
    Selections kept = selections_;
    for (const auto& [feature, option] : setAside_)
        kept.Set(feature, option);
    if (!kept.Save(storeFile_, keepProblem_)) return;
    keepProblem_.clear();
    kept_ = true;
    keptApplyCount_ = ApplyCount();
    keptSelections_ = core_->AllSelected();
}

} // namespace tintwerk
