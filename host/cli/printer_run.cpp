#include "host/cli/printer_run.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <ostream>

#include "platform/debug_sink.h"
#include "platform/environment.h"
#include "src/records/private_devmode.h"

namespace tintwerk {

namespace {

constexpr std::array<std::string_view, 2> kLanguages{"en", "de"};
constexpr std::string_view kDefaultStore = "tintwerk-store";

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
    unsigned major = 0, minor = 0, build = 0;
    int length = 0;
    const int read = std::sscanf(text.c_str(), "%u.%u%n.%u%n", &major, &minor, &length, &build, &length);
    if (read < 2 || static_cast<std::size_t>(length) != text.size() || major == 0)
        throw CommandError(kExitUsage,
                           "--windows-version " + text + ": \"major.minor\" expected, such as 6.1 or 10.0");
    SetWindowsVersion(major, minor, build);
}

} // namespace

std::vector<OptionRow> PrinterOptions()
{
    return {
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
        {"trace", "", "shows the driver's diagnostic lines on standard error"},
    };
}

PrinterRun::PrinterRun(const Arguments& arguments, Output& output)
    : output_(output), traces_(arguments.Has("trace"))
{
    if (!arguments.Operands().empty())
        throw CommandError(kExitUsage, arguments.Operands()[0] +
                                           ": options begin with two dashes (the PPD goes to --ppd)");
    Read(arguments);
    SetSurroundings(arguments);
    name_ = WideFromUtf8(arguments.Value("printer", ppd_->PrinterName()));
    if (name_.empty()) throw CommandError(kExitUsage, "--printer: the name is empty");

    storeFile_ = PathFromUtf8(arguments.Value("store", kDefaultStore)) /
                 PathFromUtf8(SelectionsFileName(Utf8FromWide(name_)));
    configDirectory_.emplace(storeFile_.parent_path() / "config");
    selections_ = Selections::Load(storeFile_);
    for (const PpdMessage& warning : selections_.Warnings())
        output_.err << "tintwerk: " << warning.Full() << "\n";
    for (const auto& [feature, option] : readOptions_.pretended) {
        if (const std::string* kept = selections_.Find(feature)) setAside_.emplace_back(feature, *kept);
        selections_.Remove(feature);
    }
    core_ = std::make_unique<CoreDriver>(*ppd_, selections_);
    for (const std::string& refused : core_->Refused())
        output_.err << "tintwerk: " << Utf8FromPath(storeFile_) << ": " << refused << "\n";
    const auto languages = core_->Options("halvLanguage");
    german_ = !languages.empty() && languages[0].starts_with("de");
    firstSelections_ = keptSelections_ = AllSelections();
    printer_ = std::make_unique<SpooledPrinter>(
        *ppd_, PrinterEntry{name_, WideFromUtf8(arguments.Value("driver", ppd_->PrinterName())), ppdFile_,
                            arguments.Has("offline")});
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
    const std::string language = arguments.OneOf("language", "", kLanguages);
    options.language = language;
    if (!language.empty()) options.pretended.push_back({"halvLanguage", language});
    if (arguments.Has("gui-mode")) {
        const int mode = arguments.Number("gui-mode", 0, 0, 99);
        options.pretended.push_back({"halvGuiMode", mode == 0 ? "standard" : "oem" + std::to_string(mode)});
    }
    PpdResult result = ReadPpd(PathFromUtf8(ppdFile_), options);
    if (!result) throw CommandError(kExitFailed, result.error.Full());
    ppd_ = std::move(result.ppd);
}

void PrinterRun::SetSurroundings(const Arguments& arguments)
{
    if (arguments.Has("windows-version")) PretendWindowsVersion(arguments.Value("windows-version"));
    if (arguments.Has("config-dir")) UseConfigDirectory(arguments.Value("config-dir"));
}

PluginSession& PrinterRun::StartPlugin()
{
    session_ = std::make_unique<PluginSession>(*core_, selections_);
    if (const std::string problem = session_->Start(); !problem.empty())
        throw CommandError(kExitFailed, problem);
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

std::vector<std::pair<std::string, std::string>> PrinterRun::AllSelections() const
{
    std::vector<std::pair<std::string, std::string>> all;
    for (const std::string_view feature : core_->Features())
        all.emplace_back(feature, core_->Selected(feature));
    return all;
}

void PrinterRun::Keep()
{
    session_->KeepPrivateDevmode();
    std::error_code ignored;
    std::filesystem::create_directories(storeFile_.parent_path(), ignored);
    Selections kept = selections_;
    for (const auto& [feature, option] : setAside_)
        kept.Set(feature, option);
    if (!kept.Save(storeFile_, keepProblem_)) return;
    keepProblem_.clear();
    kept_ = true;
    keptApplyCount_ = ApplyCount();
    keptSelections_ = AllSelections();
}

std::vector<SelectionChange> PrinterRun::Changes() const
{
    std::vector<SelectionChange> changes;
    for (std::size_t i = 0; i < firstSelections_.size() && i < keptSelections_.size(); ++i) {
        if (firstSelections_[i].second != keptSelections_[i].second)
            changes.push_back(
                {firstSelections_[i].first, firstSelections_[i].second, keptSelections_[i].second});
    }
    return changes;
}

} // namespace tintwerk
