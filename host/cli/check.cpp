// tintwerk check: tells PPD authors, file by file, what is wrong with their PPDs and what the driver's pages
// will make of them.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "host/cli/check_report.h"
#include "host/cli/check_rules.h"
#include "host/cli/ppd_files.h"
#include "host/cli/printer_run.h"
#include "host/cli/product_registry.h"
#include "host/cli/program.h"
#include "platform/console.h"

namespace tintwerk {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kAhead = 64; // files that may be checked before their turn to be told

void AddPagesFindings(const Ppd& ppd, const PagesTrial& trial, const RuleChoice& choice,
                      std::vector<Finding>& findings)
{
    const auto add = [&](std::string_view code, PpdMessage message) {
        AddFinding(findings, choice, code, message);
    };
    if (!trial.problem.empty()) add("pages-problem", {ppd.FileName(), 0, "the pages: " + trial.problem});
    for (const SelectionChange& change : trial.changes) {
        const auto feature = ppd.FindFeature(change.feature);
        const auto option = feature ? ppd.FindOption(*feature, change.before) : std::nullopt;
        PpdMessage message =
            ppd.At(option ? ppd.Feature(*feature).options[*option].keyword.data() : nullptr,
                   "applying the pages without a change turns " + change.before + " into " + change.after);
        message.feature = change.feature;
        message.option = change.before;
        add("pages-change", message);
    }
    for (const std::string& text : trial.messages)
        add("pages-message", {ppd.FileName(), 0, "the pages: " + text});
}

CheckedFile CheckFile(const std::string& file, const RuleChoice& choice, bool triesPages)
{
    CheckedFile checked{file, {}, {}};
    PpdReadOptions options;
    options.toCheck = true;
    const PpdResult read = ReadPpdOperand(file, options);
    if (!read) {
        AddFinding(checked.findings, choice, "unreadable", read.error);
        return checked;
    }
    checked.findings = PpdCheck(*read.ppd, choice).Run();
    if (triesPages) {
        checked.pages = TryPages(*read.ppd);
        AddPagesFindings(*read.ppd, *checked.pages, choice, checked.findings);
    }
    std::ranges::stable_sort(checked.findings, {}, [&](const Finding& finding) {
        return std::tuple(finding.file != read.ppd->FileName(), std::string_view(finding.file), finding.line);
    });
    return checked;
}

// Checks files on all processors and hands them over in their order.
class FileChecker
{
public:
    FileChecker(const std::vector<std::string>& files, const RuleChoice& choice)
        : files_(files), choice_(choice)
    {
        const std::size_t threads =
            std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, files.size());
        for (std::size_t i = 0; i < threads; ++i)
            threads_.emplace_back([this] { Work(); });
    }
    ~FileChecker()
    {
        taken_ = files_.size() + kAhead; // nobody begins another one
        next_ = files_.size();
        changed_.notify_all();
        for (std::thread& thread : threads_)
            thread.join();
    }

    CheckedFile Next()
    {
        std::unique_lock lock(mutex_);
        std::optional<CheckedFile>& place = places_[taken_ % kAhead];
        changed_.wait(lock, [&] { return place.has_value(); });
        CheckedFile checked = *std::exchange(place, std::nullopt);
        ++taken_;
        changed_.notify_all();
        return checked;
    }

private:
    void Work()
    {
        for (std::size_t file = next_++; file < files_.size(); file = next_++) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] { return file < taken_ + kAhead; });
            lock.unlock();
            CheckedFile checked = CheckFile(files_[file], choice_, false);
            lock.lock();
            places_[file % kAhead] = std::move(checked);
            changed_.notify_all();
        }
    }

    const std::vector<std::string>& files_;
    const RuleChoice& choice_;
    std::atomic<std::size_t> next_ = 0, taken_ = 0;
    std::optional<CheckedFile> places_[kAhead];
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::thread> threads_;
};

// Tells a person at a terminal how far a check is that takes longer than two seconds.
class Progress
{
public:
    Progress(std::ostream& err, std::size_t total)
        : err_(err), total_(total), onTerminal_(&err == &std::cerr && ErrorIsTerminal())
    {
    }
    ~Progress() { Clear(); }

    // Makes room for something else on the terminal.
    void Clear()
    {
        if (std::exchange(onScreen_, false)) err_ << "\r\033[K" << std::flush;
    }

    void Step()
    {
        ++done_;
        const auto pause = std::chrono::milliseconds(shown_ ? 200 : 2000);
        if (!onTerminal_ || Clock::now() - last_ < pause) return;
        last_ = Clock::now();
        shown_ = onScreen_ = true;
        err_ << "\rchecked " << done_ << " of " << total_ << " files" << std::flush;
    }

private:
    std::ostream& err_;
    std::size_t total_, done_ = 0;
    bool onTerminal_;
    bool shown_ = false;
    bool onScreen_ = false;
    Clock::time_point last_ = Clock::now();
};

// The rules that --only and --ignore leave; several codes of one option stand between commas.
RuleChoice ChosenRules(const Arguments& arguments)
{
    RuleChoice choice;
    if (!arguments.Has("only")) choice.set();
    for (const GivenOption& given : arguments.Options()) {
        if (given.name != "only" && given.name != "ignore") continue;
        std::string_view rest = given.value;
        while (!rest.empty()) {
            const std::string_view code = rest.substr(0, rest.find(','));
            const Rule* const rule = FindRule(code);
            if (!rule)
                throw CommandError(kExitUsage, "--" + given.name + " " + std::string(code) +
                                                   ": no such rule; tintwerk check --rules lists them");
            choice[static_cast<std::size_t>(rule - Rules().data())] = given.name == "only";
            rest.remove_prefix(std::min(code.size() + 1, rest.size()));
        }
    }
    return choice;
}

void PrintRules(std::ostream& out)
{
    for (const Rule& rule : Rules()) {
        std::string line(rule.code);
        line.resize(std::max<std::size_t>(line.size() + 1, 21), ' ');
        line += TextOf(rule.severity);
        line.resize(29, ' ');
        out << line << rule.sentence << "\n";
    }
}

ReportStyle StyleOf(const Arguments& arguments, const Output& output)
{
    constexpr std::string_view kFormats[] = {"text", "json", "sarif"};
    const std::string format = arguments.OneOf("format", arguments.Has("json") ? "json" : "text", kFormats);
    const char* const noColor = std::getenv("NO_COLOR");
    return {static_cast<ReportStyle::Format>(std::ranges::find(kFormats, format) - std::begin(kFormats)),
            arguments.Has("notes"), arguments.Has("quiet"),
            &output.out == &std::cout && OutputIsTerminal() && !(noColor && *noColor)};
}

int Run(const Arguments& arguments, Output& output)
{
    if (arguments.Has("rules")) {
        PrintRules(output.out);
        return kExitSuccess;
    }
    const RuleChoice choice = ChosenRules(arguments);
    const std::vector<std::string> files = PpdOperands(arguments, "check");
    if (arguments.Has("config-dir")) UseConfigDirectory(arguments.Value("config-dir"));
    const DefaultConfigDirectory config(std::filesystem::temp_directory_path());
    CheckReport report(StyleOf(arguments, output));
    output.out << report.Begin();
    {
        // The pages are windows of this thread.
        const bool triesPages = arguments.Has("pages");
        std::optional<FileChecker> checker;
        if (!triesPages) checker.emplace(files, choice);
        Progress progress(output.err, files.size());
        for (const std::string& file : files) {
            const std::string text = report.OfFile(checker ? checker->Next() : CheckFile(file, choice, true));
            if (!text.empty()) {
                progress.Clear();
                output.out << text;
            }
            if (!output.out) break; // told by the program
            progress.Step();
        }
    }
    output.out << report.End();
    return report.Count(Severity::Error) > 0 ||
                   (report.Count(Severity::Warning) > 0 && arguments.Has("strict"))
               ? kExitFailed
               : kExitSuccess;
}

} // namespace

Command CheckCommand()
{
    return {
        "check",
        "tells what is wrong with PPD files, and what the driver's pages will make of them",
        "tintwerk check [OPTION ...] FILE|FOLDER|-...",
        "A folder stands for every .ppd and .ppd.gz file below it, \"-\" for standard input.\nExit status 1 "
        "when there is an error, with --strict also when there is a warning.\n",
        {{"notes", "", "shows notes too: missing features, groups of the advanced page"},
         {"quiet", "", "tells errors only, and no summary"},
         {"rules", "", "lists the rules with their codes"},
         {"only", "CODE", "applies this rule alone; may be given again, or with commas"},
         {"ignore", "CODE", "leaves this rule out; may be given again, or with commas"},
         {"pages", "",
          "opens the pages of each PPD, applies them without a change, and tells\nwhat does not stay as "
          "it was"},
         {"config-dir", "DIR", "the driver's configuration directory, for --pages (ink files, logos)"},
         {"strict", "", "warnings fail the check"},
         {"json", "", "tells everything as JSON"},
         {"format", "FORMAT", "text, json or sarif"}},
        Run};
}

} // namespace tintwerk
