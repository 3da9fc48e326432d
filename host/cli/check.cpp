// tintwerk check: tells PPD authors, file by file, what is wrong with their PPDs and what the driver's pages
// will make of them.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <deque>
#include <future>
#include <iomanip>
#include <iostream>
#include <iterator>
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

void AddPagesFindings(const Ppd& ppd, const PagesTrial& trial, const RuleChoice& choice,
                      std::vector<Finding>& findings)
{
    if (!trial.problem.empty())
        AddFinding(findings, choice, "pages-problem", {ppd.FileName(), 0, "the pages: " + trial.problem});
    for (const SelectionChange& change : trial.changes) {
        const PpdOption* const option = ppd.Find(change.feature, change.before);
        AddFinding(
            findings, choice, "pages-change",
            ppd.At(option ? option->keyword.data() : nullptr,
                   "applying the pages without a change turns " + change.before + " into " + change.after, {},
                   change.feature, change.before));
    }
    for (const std::string& text : trial.messages)
        AddFinding(findings, choice, "pages-message", {ppd.FileName(), 0, "the pages: " + text});
}

CheckedFile CheckFile(std::string file, const RuleChoice& choice, bool triesPages)
{
    PpdReadOptions options;
    options.toCheck = true;
    const PpdResult read = ReadPpdOperand(file, options);
    CheckedFile checked{std::move(file), {}, {}};
    if (!read) {
        AddFinding(checked.findings, RuleChoice().set(), "unreadable", read.error); // whatever was chosen
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

// Tells a person at a terminal how far a check is that takes longer than two seconds.
class Progress
{
public:
    explicit Progress(std::ostream& err) : err_(err), onTerminal_(&err == &std::cerr && ErrorIsTerminal()) {}
    ~Progress() { Clear(); }

    // Makes room for something else on the terminal.
    void Clear()
    {
        if (std::exchange(onScreen_, false)) err_ << "\r\033[K" << std::flush;
    }

    void Step(std::size_t done, std::size_t total)
    {
        if (!onTerminal_ || Clock::now() < next_) return;
        next_ = Clock::now() + std::chrono::milliseconds(200);
        onScreen_ = true;
        err_ << "\rchecked " << done << " of " << total << " files" << std::flush;
    }

private:
    std::ostream& err_;
    bool onTerminal_;
    bool onScreen_ = false;
    Clock::time_point next_ = Clock::now() + std::chrono::seconds(2);
};

// The rules that --only and --ignore leave; several codes of one option stand between commas.
RuleChoice ChosenRules(const Arguments& arguments)
{
    RuleChoice choice;
    if (!arguments.Has("only")) choice.set();
    for (const GivenOption& given : arguments.Options()) {
        if (given.name != "only" && given.name != "ignore") continue;
        std::string_view rest = given.value;
        do {
            const std::string_view code = rest.substr(0, rest.find(','));
            const Rule* const rule = FindRule(code);
            if (!rule)
                Misused("--" + given.name + " " + std::string(code) +
                        ": no such rule; tintwerk check --rules lists them");
            choice[NumberOf(*rule)] = given.name == "only";
            rest.remove_prefix(std::min(code.size() + 1, rest.size()));
        } while (!rest.empty());
    }
    return choice;
}

void PrintRules(std::ostream& out)
{
    for (const Rule& rule : Rules()) {
        out << std::left << std::setw(20) << rule.code << " " << std::setw(8) << TextOf(rule.severity)
            << rule.sentence << "\n";
    }
}

ReportStyle StyleOf(const Arguments& arguments, const Output& output)
{
    constexpr std::string_view kFormats[] = {"text", "json", "sarif"};
    const std::string format = arguments.OneOf("format", arguments.Has("json") ? "json" : "text", kFormats);
    const char* const noColor = std::getenv("NO_COLOR");
    return {static_cast<ReportStyle::Format>(std::ranges::find(kFormats, format) - std::begin(kFormats)),
            arguments.Has("notes"), arguments.Has("quiet"), arguments.Has("strict"),
            &output.out == &std::cout && OutputIsTerminal() && !(noColor && *noColor)};
}

// Files are checked on all processors, some ahead of their turn to be told.
void CheckFiles(const std::vector<std::string>& files, const RuleChoice& choice, bool triesPages,
                CheckReport& report, Output& output)
{
    // The pages are windows of this thread.
    const auto policy = triesPages ? std::launch::deferred : std::launch::async;
    const std::size_t most = 2 * std::max(std::thread::hardware_concurrency(), 1u);
    std::deque<std::future<CheckedFile>> ahead;
    Progress progress(output.err);
    for (std::size_t told = 0; told < files.size() && output.out;
         ++told) { // lost output is the program's to tell
        while (ahead.size() < most && told + ahead.size() < files.size())
            ahead.push_back(
                std::async(policy, CheckFile, files[told + ahead.size()], std::cref(choice), triesPages));
        const std::string text = report.OfFile(ahead.front().get());
        ahead.pop_front();
        if (!text.empty()) progress.Clear();
        output.out << text;
        progress.Step(told + 1, files.size());
    }
}

int RunCheck(const Arguments& arguments, Output& output)
{
    if (arguments.Has("rules")) {
        if (!arguments.Operands().empty()) Misused(arguments.Operands()[0] + ": --rules takes no file");
        PrintRules(output.out);
        return kExitSuccess;
    }
    const RuleChoice choice = ChosenRules(arguments);
    const std::vector<std::string> files = PpdOperands(arguments, "check");
    std::optional<ProductValue> config; // the rules need none
    if (arguments.Has("pages"))
        UseConfigDirectory(config, arguments, std::filesystem::temp_directory_path());
    else if (arguments.Has("config-dir"))
        Misused("--config-dir: goes with --pages");
    CheckReport report(StyleOf(arguments, output));
    output.out << report.Begin();
    CheckFiles(files, choice, arguments.Has("pages"), report, output);
    output.out << report.End();
    const bool fails =
        report.Count(Severity::Error) || (report.Count(Severity::Warning) && arguments.Has("strict"));
    return fails ? kExitFailed : kExitSuccess;
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
         {"quiet", "", "tells only what fails the check, and no summary"},
         {"rules", "", "lists the rules with their codes"},
         {"only", "CODE", "applies this rule alone; may be given again, or with commas"},
         {"ignore", "CODE",
          "leaves this rule out; may be given again, or with commas\n(a file that cannot be read is always "
          "told)"},
         {"pages", "",
          "opens the pages of each PPD, applies them without a change, and tells\nwhat does not stay as "
          "it was"},
         {"config-dir", "DIR", "the driver's configuration directory, for --pages (ink files, logos)"},
         {"strict", "", "warnings fail the check"},
         {"json", "", "tells everything as JSON"},
         {"format", "FORMAT", "text, json or sarif"}},
        RunCheck};
}

} // namespace tintwerk
