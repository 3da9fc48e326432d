// The program's main job in one process, on a printer and a configuration directory of its own: open the
// sheet, work its controls, apply, close. It fails halfway, and it goes on and on.
#include "tests/host/program_fixture.h"

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>

#include "host/cli/printer_run.h"
#include "host/cli/watchdog.h"
#include "host/sheet/script_player.h"
#include "host/sheet/sheet_controls.h"
#include "platform/plugin_module.h"
#include "src/records/private_devmode.h"
#include "src/records/process_values.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

class WholeStory : public testing::Test
{
protected:
    WholeStory()
    {
        Process().configDirectory.Set({}); // where earlier sheets of this process kept their ink
        std::filesystem::copy(Sample("config"), config_.Path(), std::filesystem::copy_options::recursive);
    }

    ~WholeStory() override { Process().configDirectory.Set({}); }

    // One run of a script; `prepare` gets it before the sheet opens, `atEnd` works the sheet behind the last
    // step.
    void Play(const char* script, const std::function<void(PrinterRun&)>& prepare = {},
              const std::function<void(ScriptPlayer&)>& atEnd = {})
    {
        const Watchdog watchdog(60, "the story took longer than a minute");
        std::ostringstream out, err;
        Output output{out, err};
        kept_.reset();
        refused_ = true; // of a run that ends before it counts
        try {
            const std::vector<std::string> words{"--ppd",        Sample("tintwerk-x12.ppd"),
                                                 "--store",      store_.Text(),
                                                 "--config-dir", config_.Text()};
            PrinterRun printer(Arguments(words, PrinterOptions(), "preferences"), output);
            if (prepare) prepare(printer);
            PropertySheet sheet(printer.StartPlugin(), SheetKind::Preferences, printer.Name(),
                                printer.Printer(), printer.IsGerman(), [&] { printer.Keep(); });
            ScriptSettings settings;
            problem_ = ParseScript(script, "story", settings.steps);
            settings.pace = 1;
            settings.confirmsQuestions = true;
            settings.tell = [](const std::string&) {};
            settings.beforeClosing = atEnd;
            ScriptPlayer player(sheet, std::move(settings));
            problem_ += player.Run() + printer.KeepProblem();
            refused_ = printer.Core().Calls().Refused();
            if (printer.Kept())
                kept_.emplace(printer.KeptSelections().begin(), printer.KeptSelections().end());
        } catch (const std::runtime_error& error) {
            problem_ = error.what();
        }
    }

    std::string Stored() const { return ContentOf(StoreFile()); }
    std::filesystem::path StoreFile() const { return store_.Path() / "Tintwerk X12 0012.selections"; }

    const PluginModule module_; // one process, many sheets: what is left to its end counts once
    TemporaryFolder store_, config_;
    std::string problem_;
    bool refused_ = false;
    std::optional<std::map<std::string, std::string>> kept_;
};

// While something fails, one thing a run, it neither crashes nor leaks, and the selections on the disk are
// always the old ones or the new ones, whole.
class StoryFaults : public WholeStory
{
protected:
    StoryFaults()
    {
        Play("set halvBrightness=1\nchoose PageSize=A3\ncheck halvPreview\nset halvTAC=-5\n"
             "choose PagePerSheet=4\nchoose halvMirror=1\npage screen\npage ink\npage correction\nok");
        EXPECT_EQ(problem_, "");
        old_ = Stored();
        EXPECT_THAT(old_, testing::HasSubstr("PageSize=A3\n"));
    }

    // Every kind of control, the pages without one, and both ways to apply.
    void PlayOn(const std::function<void(PrinterRun&)>& prepare = {})
    {
        Play("page consumption\npress Reset counters\nset halvBrightness=2\nchoose PageSize=A4\n"
             "check halvPreview=off\nset halvTAC=0\napply\nchoose PagePerSheet=1\nchoose halvMirror=0\n"
             "page screen\nshow halvScreenLPI\npage correction\nok",
             prepare);
    }

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

    template <typename Watch> int Chances(int nth)
    {
        Watch watch;
        watch.Fail(nth);
        PlayOn();
        return watch.Calls();
    }
    // Plays the story with the first, second, ... fault until a run had no such fault any more. The run tells
    // how many chances for one there were. Of a kind with hundreds of them the daily run takes every
    // `step`th; with TINTWERK_EVERY_FAULT in the environment none is left out.
    void FailInTurn(int step, const std::function<int(int nth)>& run)
    {
        if (std::getenv("TINTWERK_EVERY_FAULT")) step = 1;
        int faults = 0;
        for (int nth = 1; !HasFailure(); nth += step, ++faults) {
            SCOPED_TRACE(nth);
            std::ofstream(StoreFile(), std::ios::binary) << old_;
            const int chances = run(nth);
            ExpectWholeSelections();
            if (chances < nth) break;
        }
        EXPECT_EQ(problem_, "");
        EXPECT_THAT(Stored(), testing::HasSubstr("PageSize=A4\n"));
        std::cout << faults << " faults\n";
        EXPECT_GE(faults, 5);
    }

    std::string old_;
};

TEST_F(StoryFaults, HeapAllocation)
{
    HeapWatch heap;
    PlayOn();
    const int kept = heap.LiveBlocks(); // what stays until the next sheet replaces it
    FailInTurn(251, [&](int nth) {
        const int before = heap.Calls();
        heap.Fail(nth);
        PlayOn();
        EXPECT_LE(heap.LiveBlocks(), kept);
        return heap.Calls() - before;
    });
}

TEST_F(StoryFaults, CallOfTheCoreDriver)
{
    FailInTurn(61, [this](int nth) {
        PlayOn([nth](PrinterRun& printer) { printer.Core().Calls().RefuseCall(nth); });
        return refused_ ? nth : 0;
    });
}

TEST_F(StoryFaults, Window)
{
    FailInTurn(43, [this](int nth) { return Chances<WindowWatch>(nth); });
}

TEST_F(StoryFaults, FileCall)
{
    FailInTurn(7, [this](int nth) { return Chances<FileWatch>(nth); });
}

// Sheet after sheet: every control is worked, everything applied, and what the process holds of the system
// does not grow.
class Soak : public WholeStory
{
protected:
    // Another value in every round.
    void Touch(HWND control)
    {
        const std::string kind = KindOfControl(control);
        if (kind == "slider") {
            DragSlider(control, static_cast<int>(
                                    SendMessageW(control, odd_ ? TBM_GETRANGEMAX : TBM_GETRANGEMIN, 0, 0)));
        } else if (kind == "popup") {
            const int last = static_cast<int>(ComboItems(control).size()) - 1;
            if (last >= 0) PickComboItem(control, odd_ ? last : 0);
        } else if (kind == "edit box") {
            TypeInto(control, odd_ ? TEXT("1") : TEXT("2"));
        } else if (kind == "tabs") {
            SendMessageW(control, TCM_SETCURFOCUS, odd_ ? 1 : 0, 0);
        } else if (kind == "text" || kind == "picture" || kind == "spin control") {
            return;
        } else {
            Click(control);
        }
        ++touched_;
    }

    void TouchEverything(ScriptPlayer& player)
    {
        for (int i = 0; i < player.PageCount(); ++i) {
            for (const HWND control : ControlsOf(player.ShowPage(i)))
                if (IsWindowVisible(control) && IsWindowEnabled(control)) Touch(control);
            OptionItemsPage* const items = player.Sheet().Pages()[static_cast<std::size_t>(i)].items;
            for (int item = 0; items && item < items->ItemCount(); ++item)
                touched_ += items->Choose(item, odd_ ? items->OptionCount(item) - 1 : 0);
        }
    }

    ProcessUse OpenSheets(int count)
    {
        for (int i = 0; i < count && problem_.empty(); ++i) {
            odd_ = !odd_;
            Play("ok", {}, [this](ScriptPlayer& player) { TouchEverything(player); });
        }
        EXPECT_EQ(problem_, "");
        const ProcessUse use = UseOfProcess();
        std::cout << use.windows << " windows, " << use.gdiObjects << " GDI and " << use.userObjects
                  << " user objects, " << use.handles << " handles, " << use.bytes << " bytes\n";
        return use;
    }

    bool odd_ = false;
    int touched_ = 0;
};

// TINTWERK_SOAK in the environment is the number of sheets.
TEST_F(Soak, NothingGrows)
{
    const char* const given = std::getenv("TINTWERK_SOAK");
    const int count = given ? std::atoi(given) : 12;
    const int forgotten = ForgottenByAStatic(module_.Handle());
    OpenSheets(16); // what is made once and kept, the buffer of the output too
    const ProcessUse before = OpenSheets(8);
    touched_ = 0;
    ProcessUse after{};
    for (int done = 0; done < count && !HasFailure(); done += count / 4)
        after = OpenSheets(count / 4);
    std::cout << touched_ << " controls\n";
    EXPECT_GE(touched_, 70 * count);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects + forgotten * kTemplatePictures * count);
    EXPECT_EQ(after.userObjects, before.userObjects);
    EXPECT_LE(after.handles, before.handles + 4); // the system's threads come and go
    EXPECT_LE(after.bytes - before.bytes,
              4 << 10); // an allocator may count free blocks that it keeps at hand
}

// Every frame of a page, and everything else that stands there.
void ExpectFramedAndApart(HWND page)
{
    std::vector<RECT> frames, others;
    for (const HWND control : ControlsOf(page)) {
        RECT area{};
        GetWindowRect(control, &area);
        const std::string kind = KindOfControl(control);
        if (kind == "popup") area.bottom = area.top + 8; // at least; some systems count the open list
        (kind == "group box" ? frames : others).push_back(area);
    }
    ASSERT_FALSE(frames.empty());
    for (const std::vector<RECT>* areas : {&frames, &others})
        for (const RECT& a : *areas)
            for (const RECT& b : *areas)
                EXPECT_FALSE(&a != &b && a.left < b.right && b.left < a.right && a.top < b.bottom &&
                             b.top < a.bottom)
                    << a.left << ", " << a.top << " and " << b.left << ", " << b.top;
    for (const RECT& area : others)
        EXPECT_TRUE(area.bottom <= frames[0].top || // the page's heading
                    std::ranges::any_of(frames,
                                        [&](const RECT& frame) {
                                            return area.left > frame.left && area.right < frame.right &&
                                                   area.top >= frame.top + 8 && area.bottom < frame.bottom;
                                        }))
            << area.left << ", " << area.top;
}

TEST_F(WholeStory, HasItsOptionItemsApartInTheirFrames)
{
    int pages = 0;
    Play("cancel", {}, [&](ScriptPlayer& player) {
        for (int i = 0; i < player.PageCount(); ++i) {
            if (!player.Sheet().Pages()[static_cast<std::size_t>(i)].items) continue;
            ExpectFramedAndApart(player.ShowPage(i));
            ++pages;
        }
    });
    EXPECT_EQ(pages, 2);
}

} // namespace
} // namespace tintwerk
