// The program's main job while something fails, one thing a run: it neither crashes nor leaks, and the
// selections on the disk are always the old ones or the new ones, whole.
#include "tests/host/program_fixture.h"

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>

#include "host/cli/printer_run.h"
#include "host/cli/watchdog.h"
#include "host/sheet/script_player.h"
#include "platform/plugin_module.h"
#include "platform/testing.h"
#include "src/records/private_devmode.h"
#include "src/records/process_values.h"

namespace tintwerk {
namespace {

using GivenSteps = std::vector<std::pair<const char*, const char*>>;

// Every kind of control, the pages without one, and both ways to apply.
const GivenSteps kFirst{{"set", "halvBrightness=1"},  {"choose", "PageSize=A3"},
                        {"check", "halvPreview"},     {"set", "halvTAC=-5"},
                        {"choose", "PagePerSheet=4"}, {"choose", "halvMirror=1"},
                        {"page", "screen"},           {"page", "ink"},
                        {"page", "correction"},       {"ok", ""}};
const GivenSteps kStory{{"page", "consumption"},
                        {"press", "Reset counters"},
                        {"set", "halvBrightness=2"},
                        {"choose", "PageSize=A4"},
                        {"check", "halvPreview=off"},
                        {"set", "halvTAC=0"},
                        {"apply", ""},
                        {"choose", "PagePerSheet=1"},
                        {"choose", "halvMirror=0"},
                        {"page", "screen"},
                        {"show", "halvScreenLPI"},
                        {"page", "correction"},
                        {"ok", ""}};

class StoryFaults : public testing::Test
{
protected:
    StoryFaults()
    {
        Process().configDirectory[0] = 0; // where earlier sheets of this process kept their ink
        std::filesystem::copy(Sample("config"), config_.Path(), std::filesystem::copy_options::recursive);
        Play(kFirst);
        EXPECT_EQ(problem_, "");
        old_ = Stored();
        EXPECT_THAT(old_, testing::HasSubstr("PageSize=A3\n"));
    }

    ~StoryFaults() override { Process().configDirectory[0] = 0; }

    // One run; `prepare` gets it before the sheet opens.
    void Play(const GivenSteps& given, const std::function<void(PrinterRun&)>& prepare = {})
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
                                printer.Printer(), printer.IsGerman(), [&printer] { printer.Keep(); });
            ScriptSettings settings;
            for (const auto& [name, value] : given)
                settings.steps.push_back(std::get<Step>(ParseStep(name, value)));
            settings.pace = 1;
            settings.confirmsQuestions = true;
            settings.tell = [](const std::string&) {};
            ScriptPlayer player(sheet, std::move(settings));
            problem_ = sheet.Run();
            problem_ += player.Problem() + printer.KeepProblem();
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

    // The old text, or what the core driver had selected when it was kept, to the last byte.
    void ExpectWholeSelections()
    {
        const std::string stored = Stored();
        const auto files = std::filesystem::directory_iterator(store_.Path());
        EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "a file was left behind";
        if (!kept_) {
            EXPECT_EQ(stored, old_);
            return;
        }
        const Selections now = Selections::FromText("now", stored);
        const Selections before = Selections::FromText("before", old_);
        EXPECT_EQ(now.Text(), stored);
        EXPECT_EQ(now.PrivateDevmode().size(), sizeof(OemPrivateDevmode));
        for (const auto& [feature, option] : before.Chosen())
            EXPECT_TRUE(now.Find(feature)) << feature;
        for (const auto& [feature, option] : now.Chosen())
            EXPECT_EQ((*kept_)[std::string(feature)], option) << feature;
    }

    // Plays the story with the first, second, ... fault until a run had no such fault any more. The run tells
    // how many chances for one there were. Returns the faults. Of a kind with hundreds of them the daily run
    // takes every `step`th; with TINTWERK_EVERY_FAULT in the environment none is left out.
    int FailInTurn(int step, const std::function<int(int nth)>& run)
    {
        if (std::getenv("TINTWERK_EVERY_FAULT")) step = 1;
        int faults = 0;
        for (int nth = 1;; nth += step, ++faults) {
            SCOPED_TRACE(nth);
            std::ofstream(StoreFile(), std::ios::binary) << old_;
            const int chances = run(nth);
            ExpectWholeSelections();
            if (chances < nth) {
                EXPECT_EQ(problem_, "");
                EXPECT_THAT(Stored(), testing::HasSubstr("PageSize=A4\n"));
                std::cout << faults << " faults\n";
                return faults;
            }
            if (HasFailure()) return 0;
        }
    }

    const PluginModule module_; // one process, many sheets: what is left to its end counts once
    TemporaryFolder store_, config_;
    std::string old_, problem_;
    bool refused_ = false;
    std::optional<std::map<std::string, std::string>> kept_;
};

TEST_F(StoryFaults, HeapAllocation)
{
    HeapWatch heap;
    Play(kStory);
    const int kept = heap.LiveBlocks(); // what stays until the next sheet replaces it
    const int faults = FailInTurn(149, [&](int nth) {
        const int before = heap.Allocations();
        heap.FailAllocation(nth);
        Play(kStory);
        EXPECT_LE(heap.LiveBlocks(), kept);
        return heap.Allocations() - before;
    });
    EXPECT_GE(faults, 8);
}

TEST_F(StoryFaults, CallOfTheCoreDriver)
{
    const int faults = FailInTurn(37, [this](int nth) {
        Play(kStory, [nth](PrinterRun& printer) { printer.Core().Calls().RefuseCall(nth); });
        return refused_ ? nth : 0;
    });
    EXPECT_GE(faults, 8);
}

TEST_F(StoryFaults, Window)
{
    const int faults = FailInTurn(29, [this](int nth) {
        WindowWatch windows;
        windows.FailWindow(nth);
        Play(kStory);
        return windows.Windows();
    });
    EXPECT_GE(faults, 8);
}

TEST_F(StoryFaults, FileCall)
{
    const int faults = FailInTurn(5, [this](int nth) {
        FileWatch files;
        files.FailCall(nth);
        Play(kStory);
        return files.Calls();
    });
    EXPECT_GE(faults, 8);
}

} // namespace
} // namespace tintwerk
