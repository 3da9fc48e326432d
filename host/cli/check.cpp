// tintwerk check: tells PPD authors, file by file, what the driver's pages will make of their PPDs.
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <ostream>
#include <utility>

#include "host/cli/check_rules.h"
#include "host/cli/json.h"
#include "host/cli/pages_trial.h"
#include "host/cli/printer_run.h"
#include "host/cli/product_registry.h"
#include "host/cli/program.h"
#include "platform/console.h"

namespace tintwerk {

namespace {

using Clock = std::chrono::steady_clock;

struct CheckedFile
{
    std::string file;
    std::vector<Finding> findings;
    std::optional<PagesTrial> pages; // when they were to be tried and the PPD could be read

    std::size_t Count(Severity severity) const
    {
        return static_cast<std::size_t>(std::ranges::count(findings, severity, &Finding::severity));
    }
};

std::vector<std::string> FilesOf(std::span<const std::string> operands)
{
    std::vector<std::string> files;
    for (const std::string& operand : operands) {
        if (!std::filesystem::is_directory(PathFromUtf8(operand))) {
            files.push_back(operand);
            continue;
        }
        const std::size_t first = files.size();
        for (const auto& entry : std::filesystem::recursive_directory_iterator(PathFromUtf8(operand))) {
            const std::string extension = Utf8FromPath(entry.path().extension());
            if (entry.is_regular_file() && (extension == ".ppd" || extension == ".PPD"))
                files.push_back(Utf8FromPath(entry.path()));
        }
        std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
    }
    return files;
}

void AddPagesFindings(const PagesTrial& trial, std::vector<Finding>& findings)
{
    if (!trial.problem.empty()) findings.push_back({Severity::Error, "", "", "the pages: " + trial.problem});
    for (const SelectionChange& change : trial.changes)
        findings.push_back(
            {Severity::Error, change.feature, change.before,
             "applying the pages without a change turns " + change.before + " into " + change.after});
    for (const std::string& message : trial.messages)
        findings.push_back({Severity::Warning, "", "", "the pages: " + message});
}

CheckedFile CheckFile(const std::string& file, bool triesPages)
{
    CheckedFile checked{file, {}, {}};
    const PpdResult read = ReadPpd(PathFromUtf8(file));
    if (!read) {
        checked.findings.push_back({Severity::Error, "", "", read.error.text, read.error.line});
        return checked;
    }
    checked.findings = CheckPpd(*read.ppd);
    if (triesPages) {
        checked.pages = TryPages(*read.ppd);
        AddPagesFindings(*checked.pages, checked.findings);
    }
    for (const PpdMessage& warning : read.ppd->Warnings())
        checked.findings.push_back({Severity::Warning, "", "", warning.text, warning.line});
    std::ifstream in(PathFromUtf8(file), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    LocateFindings(text, checked.findings);
    std::ranges::stable_sort(checked.findings, {}, &Finding::line);
    return checked;
}

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

std::string Coloured(Severity severity, bool coloured)
{
    std::string text(TextOf(severity));
    if (!coloured) return text;
    const char* const colour = severity == Severity::Error     ? "\033[31m"
                               : severity == Severity::Warning ? "\033[33m"
                                                               : "\033[2m";
    return colour + text + "\033[0m";
}

bool Shows(const CheckedFile& checked, bool notes)
{
    return checked.findings.size() > (notes ? 0 : checked.Count(Severity::Note));
}

void Print(Output& output, const CheckedFile& checked, bool notes)
{
    const bool coloured = &output.out == &std::cout && OutputIsTerminal();
    for (const Finding& finding : checked.findings) {
        if (finding.severity == Severity::Note && !notes) continue;
        output.out << checked.file << ":";
        if (finding.line) output.out << finding.line << ":";
        output.out << " " << Coloured(finding.severity, coloured) << ": ";
        if (!finding.feature.empty()) output.out << finding.feature << ": ";
        output.out << finding.text << "\n";
    }
}

Json AsJson(const CheckedFile& checked)
{
    Json json{{"file", checked.file}, {"findings", Json::array()}};
    for (const Finding& finding : checked.findings) {
        json["findings"].push_back({{"severity", TextOf(finding.severity)},
                                    {"line", finding.line ? Json(finding.line) : Json()},
                                    {"feature", finding.feature},
                                    {"option", finding.option},
                                    {"text", finding.text}});
    }
    if (!checked.pages) return json;
    Json changes = Json::array();
    for (const SelectionChange& change : checked.pages->changes)
        changes.push_back({{"feature", change.feature}, {"before", change.before}, {"after", change.after}});
    json["pages"] = {{"trial", checked.pages->selections},
                     {"shown", checked.pages->pages},
                     {"problem", checked.pages->problem},
                     {"changes", changes}};
    return json;
}

int Run(const Arguments& arguments, Output& output)
{
    const std::vector<std::string> files = FilesOf(arguments.Operands());
    if (files.empty())
        throw CommandError(kExitUsage,
                           arguments.Operands().empty()
                               ? "no PPD file is given: tintwerk check FILE|FOLDER..."
                               : arguments.Operands()[0] + ": there is no .ppd file below this folder");
    if (arguments.Has("config-dir")) UseConfigDirectory(arguments.Value("config-dir"));
    const bool asJson = arguments.Has("json");
    std::size_t errors = 0, warnings = 0, notes = 0;
    Json json{{"command", "check"}, {"files", Json::array()}};
    {
        Progress progress(output.err, files.size());
        for (const std::string& file : files) {
            const CheckedFile checked = CheckFile(file, arguments.Has("pages"));
            errors += checked.Count(Severity::Error);
            warnings += checked.Count(Severity::Warning);
            notes += checked.Count(Severity::Note);
            if (asJson) {
                json["files"].push_back(AsJson(checked));
            } else if (Shows(checked, arguments.Has("notes"))) {
                progress.Clear();
                Print(output, checked, arguments.Has("notes"));
            }
            progress.Step();
        }
    }
    if (asJson) {
        json["errors"] = errors;
        json["warnings"] = warnings;
        json["notes"] = notes;
        output.out << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
    } else {
        output.out << files.size() << (files.size() == 1 ? " file: " : " files: ") << errors << " errors, "
                   << warnings << " warnings, " << notes << " notes"
                   << (arguments.Has("notes") || notes == 0 ? "" : " (--notes shows them)") << "\n";
    }
    return errors > 0 || (warnings > 0 && arguments.Has("strict")) ? kExitFailed : kExitSuccess;
}

} // namespace

Command CheckCommand()
{
    return {"check",
            "tells what the driver's pages will make of PPD files",
            "tintwerk check [OPTION ...] FILE|FOLDER...",
            "A folder stands for every .ppd file below it.\nExit status 1 when there is an error, with "
            "--strict also when there is a warning.\n",
            {{"notes", "", "shows notes too: missing features, groups of the advanced page"},
             {"pages", "",
              "opens the pages of each PPD, applies them without a change, and tells\nwhat does not stay as "
              "it was"},
             {"config-dir", "DIR", "the driver's configuration directory, for --pages (ink files, logos)"},
             {"strict", "", "warnings fail the check"},
             {"json", "", "tells everything as JSON"}},
            Run};
}

} // namespace tintwerk
