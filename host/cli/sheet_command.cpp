// tintwerk preferences and tintwerk properties: open a sheet, by hand or from a script, and tell what came of
// it.
#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <optional>
#include <ostream>

#include "host/cli/near_names.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"
#include "host/cli/sheet_report.h"
#include "host/cli/watchdog.h"
#include "host/ppd/ppd_text.h"
#include "host/sheet/recorder.h"
#include "host/sheet/script_player.h"
#include "platform/console.h"
#include "platform/snapshot.h"
#include "src/bindings/advanced_features.h"

namespace tintwerk {

namespace {

// "-" is standard input.
std::string ScriptText(const std::string& file)
{
    if (file == "-") return std::string(std::istreambuf_iterator<char>(std::cin), {});
    return ContentOfFile(file, kExitFailed, "--script ");
}

std::vector<Step> StepsOf(const Arguments& arguments)
{
    std::vector<Step> steps;
    for (const GivenOption& given : arguments.Options()) {
        if (given.name == "script") {
            if (const std::string problem = ParseScript(ScriptText(given.value), given.value, steps);
                !problem.empty())
                Misused(problem);
            continue;
        }
        std::variant<Step, std::string> parsed = ParseStep(given.name, given.value);
        if (auto* const step = std::get_if<Step>(&parsed))
            steps.push_back(std::move(*step));
        else if (const std::string& problem = std::get<std::string>(parsed); !problem.empty())
            Misused(problem);
    }
    for (const Step& step : steps) {
        if (!CanTakePictures() && (step.kind == StepKind::Screenshot || step.kind == StepKind::Tour))
            Misused(step.place + step.source +
                    ": pictures are taken of real windows, which this program has on "
                    "Windows only; ./run with the same arguments takes them under Wine");
    }
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        if (steps[i].kind == StepKind::Ok || steps[i].kind == StepKind::Cancel)
            Misused(steps[i + 1].place + steps[i + 1].source + ": stands behind " + steps[i].source +
                    ", which closes the sheet");
    }
    return steps;
}

// One run of a sheet, from the command line to the report.
class SheetCommand
{
public:
    SheetCommand(SheetKind kind, const Arguments& arguments, Output& output)
        : kind_(kind), arguments_(arguments), output_(output), json_(arguments.Has("json"))
    {
    }

    int Run()
    {
        constexpr std::string_view kAnswers[] = {"ok", "cancel"};
        ScriptSettings settings;
        settings.steps = StepsOf(arguments_);
        settings.confirmsQuestions = arguments_.OneOf("answer", "cancel", kAnswers) == "ok";
        settings.pace = static_cast<UINT>(arguments_.Number("pace", 10, 1, 60000));
        settings.tell = [this](const std::string& line) { Tell(line); };
        if (json_) settings.beforeClosing = [this](ScriptPlayer& player) { report_.Describe(player); };
        const int limit = arguments_.Number("time-limit", 60, 1, 86400);
        const bool scripted = !settings.steps.empty() || json_ || arguments_.Has("script");
        PrinterRun printer(arguments_, output_);
        if (!scripted && !WindowsAreVisible())
            Misused("nobody could see the window: there is no display, or only a virtual one; run it on a "
                    "desktop, or give steps (--page, --set ...) or --json");
        printer.Core().Calls().Record(json_);
        PluginSession& session = printer.StartPlugin();
        CheckNames(settings.steps, printer.Core());
        OpenRecord(printer);
        Install(printer, settings.steps);
        PropertySheet sheet(session, kind_, printer.Name(), printer.Printer(), printer.IsGerman(),
                            [&printer] { printer.Keep(); });
        std::optional<Recorder> recorder;
        if (record_.is_open()) recorder.emplace(sheet, [this](const std::string& line) { Record(line); });
        std::string problem;
        if (scripted) {
            const Watchdog watchdog(limit, "the script took longer than " + std::to_string(limit) +
                                               " s (--time-limit); the run was ended");
            problem = ScriptPlayer(sheet, std::move(settings)).Run();
        } else {
            problem = sheet.Run();
        }
        recorder.reset();
        if (record_.is_open() && !record_.flush() && problem.empty())
            problem = "--record " + arguments_.Value("record") + ": the file could not be written";
        if (problem.empty()) problem = printer.KeepProblem();
        if (problem.empty()) problem = RefusedBy(printer.Core());
        if (json_)
            report_.Write(output_.out, kind_, printer, problem);
        else
            TellChanges(printer);
        if (problem.empty()) return kExitSuccess;
        Fail(problem);
    }

private:
    // What neither the driver nor the PPD knows is told before anything is changed.
    static void CheckNames(std::span<const Step> steps, const CoreDriver& core)
    {
        const std::vector<std::string_view> known = core.Features();
        for (const Step& step : steps) {
            if (step.kind != StepKind::Choose && step.kind != StepKind::Show) continue;
            const PageControl* const control = ControlOfFeature(step.subject);
            const auto name = std::ranges::find_if(known, [&](std::string_view each) {
                return each == step.subject || (each.starts_with('%') && each.substr(1) == step.subject);
            });
            if (!control && !FieldOfRest(step.subject) && name == known.end())
                Misused(step.place + step.source + ": no control of this sheet stands for " + step.subject +
                        DidYouMean(step.subject, known, ""));
            if (step.kind == StepKind::Show || name == known.end() || (control && !control->popup)) continue;
            const std::vector<std::string_view> options = core.Options(*name);
            const PpdFeature* const feature = core.Description().Find(*name);
            if (!std::ranges::count(options, step.value) &&
                !(feature && std::ranges::count(feature->options, step.value, &PpdOption::text)))
                Misused(step.place + step.source + ": the options are " +
                        Joined(options, [](std::string_view each) { return std::string(each); }));
        }
    }

    void OpenRecord(PrinterRun& printer)
    {
        if (!arguments_.Has("record")) return;
        const std::string file = arguments_.Value("record");
        record_.open(PathFromUtf8(file), std::ios::binary);
        if (!record_) Fail("--record " + file + ": the file cannot be written");
        std::string title = "# " + Utf8FromWide(printer.Name()) + ", " + printer.Description().FileName();
        for (const char* const option : {"custom-size", "answer"}) // with which it is to be played
            if (arguments_.Has(option)) title += std::string(" --") + option + " " + arguments_.Value(option);
        Record(title);
    }

    void Record(const std::string& line)
    {
        if (record_.is_open()) record_ << line << std::endl;
    }

    // Installable options are the administrator's: they are set before the pages open, and stay.
    void Install(PrinterRun& printer, std::vector<Step>& steps)
    {
        std::erase_if(steps, [&](const Step& step) {
            const PpdFeature* const feature = printer.Description().Find(step.subject);
            if (step.kind != StepKind::Choose || !feature || !feature->installable ||
                ControlOfFeature(step.subject) || AdvancedGroupOf(step.subject))
                return false;
            const auto named = std::ranges::find(feature->options, step.value, &PpdOption::text);
            if (!printer.Core().Select(step.subject, step.value))
                printer.Core().Select(step.subject, named->keyword);
            Tell(step.subject + ": installable option at " + step.value);
            Record(step.source);
            printer.Keep();
            return true;
        });
    }

    // Settings that the pages show but the core driver would not take are lost.
    static std::string RefusedBy(const CoreDriver& core)
    {
        std::vector<std::string> lost;
        for (const std::string& setting : core.RefusedSettings()) {
            if (core.Description().Find(setting.substr(0, setting.find('='))) &&
                !std::ranges::count(lost, setting))
                lost.push_back(setting);
        }
        if (lost.empty()) return {};
        return "the core driver refused " + Joined(lost) +
               ": the PPD has no such option; the selection stayed as it was";
    }

    void Tell(const std::string& line)
    {
        if (json_)
            report_.AddLine(line);
        else
            output_.out << "  " << line << std::endl;
    }

    void TellChanges(const PrinterRun& printer)
    {
        if (!printer.Kept()) {
            if (kind_ == SheetKind::Preferences)
                output_.out << "nothing was applied; the selections stay as they were\n";
            return;
        }
        for (const SelectionChange& change : printer.Changes())
            output_.out << change.feature << ": " << change.before << " -> " << change.after << "\n";
        if (printer.Changes().empty()) output_.out << "every selection stayed as it was\n";
        const auto [before, after] = printer.ApplyCounts();
        output_.out << "private DEVMODE: apply count " << before << " -> " << after << "\n"
                    << "selections kept in " << Utf8FromPath(printer.StoreFile()) << "\n";
    }

    SheetKind kind_;
    const Arguments& arguments_;
    Output& output_;
    bool json_;
    SheetReport report_;
    std::ofstream record_;
};

// What a sheet is worked with, behind the printer's options.
constexpr OptionRow kSheetOptions[]{
    {"page", "PAGE",
     "brings a page to the front: main, layout, colors, correction,\nconsumption, ink, screen, advanced; "
     "or information"},
    {"set", "FEATURE=N",
     "moves a slider to a position, or types into a number field:\n--set halvBrightness=2"},
    {"choose", "FEATURE=OPTION",
     "selects an option of the PPD on whatever control stands for it:\n--choose PageSize=A4, --choose "
     "halvBrightness=10 (the PPD value);\ninstallable options are set before the pages open"},
    {"check", "FEATURE[=on|off]", "switches a check box: --check halvPreview"},
    {"press", "TEXT", "presses a button of the page in front, by its text or number"},
    {"show", "FEATURE", "tells what a feature's control shows"},
    {"screenshot", "DIR",
     "saves a picture of the page in front as DIR/PAGE.png (real windows\nonly: Windows, or ./run under "
     "Wine)"},
    {"tour", "DIR", "saves a picture of every page (real windows only)"},
    {"apply", "", "presses Apply"},
    {"ok", "", "presses OK"},
    {"cancel", "", "presses Cancel; also happens by itself behind the last step"},
    {"script", "FILE",
     "plays the steps of a file, one a line as on the command line, \"#\" for\ncomments; - is standard "
     "input"},
    {"record", "FILE", "writes what is done in the sheet, by hand or by steps, as such a script"},
    {"answer", "ok|cancel", "how questions that come up are answered (default: cancel)"},
    {"pace", "MS", "milliseconds between two steps (default: 10)"},
    {"time-limit", "S", "seconds that a script may take (default: 60)"},
    {"json", "", "tells everything as JSON instead: pages, controls, selections, calls"},
};

Command CommandOf(SheetKind kind, std::string_view name, std::string_view summary, std::string_view usage,
                  std::string_view notes = {})
{
    return {name,
            summary,
            usage,
            notes,
            PrinterOptions(kSheetOptions),
            [kind](const Arguments& arguments, Output& output) {
                return SheetCommand(kind, arguments, output).Run();
            }};
}

} // namespace

Command PreferencesCommand()
{
    return CommandOf(
        SheetKind::Preferences, "preferences", "opens the printing preferences",
        "tintwerk preferences --ppd FILE [OPTION ...] [STEP ...]",
        "Steps are done in the order in which they stand, on the real controls of the sheet. Without any "
        "step the window\nstays open until you close it.\n");
}

Command PropertiesCommand()
{
    return CommandOf(SheetKind::Properties, "properties",
                     "opens the printer properties (the driver's information page)",
                     "tintwerk properties --ppd FILE [OPTION ...] [STEP ...]");
}

} // namespace tintwerk
