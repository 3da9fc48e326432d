// Runs of the program's main job in one process, on a printer and a configuration directory of their own:
// open the sheet, work its controls, apply, close.
#pragma once

#include "tests/host/program_fixture.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>

#include "host/cli/printer_run.h"
#include "host/cli/watchdog.h"
#include "host/sheet/script_player.h"
#include "platform/plugin_module.h"
#include "src/records/process_values.h"

namespace tintwerk {

using GivenSteps = std::vector<std::pair<const char*, const char*>>;

class WholeStory : public testing::Test
{
protected:
    WholeStory()
    {
        Process().configDirectory.Set({}); // where earlier sheets of this process kept their ink
        std::filesystem::copy(Sample("config"), config_.Path(), std::filesystem::copy_options::recursive);
    }

    ~WholeStory() override { Process().configDirectory.Set({}); }

    // One run; `prepare` gets it before the sheet opens, `atEnd` works the sheet behind the last step.
    void Play(const GivenSteps& given, const std::function<void(PrinterRun&)>& prepare = {},
              const std::function<void(ScriptPlayer&)>& atEnd = {})
    {
        const Watchdog watchdog(60, "the story took longer than a minute");
        std::ostringstream out, err;
        Output output{out, err};
        kept_.reset();
        refused_ = true; // of a run that ends before it counts
        problem_.clear();
        try {
            const std::vector<std::string> words{"--ppd",        Sample("tintwerk-x12.ppd"),
                                                 "--store",      store_.Text(),
                                                 "--config-dir", config_.Text()};
            PrinterRun printer(Arguments(words, PrinterOptions(), "preferences"), output);
            if (prepare) prepare(printer);
            PropertySheet sheet(printer.StartPlugin(), SheetKind::Preferences, printer.Name(),
                                printer.Printer(), printer.IsGerman(), [&] { printer.Keep(); });
            ScriptSettings settings;
            for (const auto& [name, value] : given)
                settings.steps.push_back(std::get<Step>(ParseStep(name, value)));
            settings.pace = 1;
            settings.confirmsQuestions = true;
            settings.tell = [](const std::string&) {};
            settings.beforeClosing = atEnd;
            ScriptPlayer player(sheet, std::move(settings));
            problem_ = player.Run() + printer.KeepProblem();
            refused_ = printer.Core().Calls().Refused();
            if (printer.Kept())
                kept_.emplace(printer.KeptSelections().begin(), printer.KeptSelections().end());
        } catch (const CommandError& error) {
            problem_ = error.what();
        } catch (const std::runtime_error& error) {
            problem_ = error.what();
        }
    }

    std::string Stored() const
    {
        std::ifstream in(StoreFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::filesystem::path StoreFile() const { return store_.Path() / "Tintwerk X12 0012.selections"; }

    const PluginModule module_; // one process, many sheets: what is left to its end counts once
    TemporaryFolder store_, config_;
    std::string problem_;
    bool refused_ = false;
    std::optional<std::map<std::string, std::string>> kept_;
};

} // namespace tintwerk
