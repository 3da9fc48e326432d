// The program's main job while something fails, one thing a run: it neither crashes nor leaks, and the
// selections on the disk are always the old ones or the new ones, whole.
#include "tests/host/whole_story.h"

#include <cstdlib>
#include <iostream>

#include "src/records/private_devmode.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

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

class StoryFaults : public WholeStory
{
protected:
    StoryFaults()
    {
        Play(kFirst);
        EXPECT_EQ(problem_, "");
        old_ = Stored();
        EXPECT_THAT(old_, testing::HasSubstr("PageSize=A3\n"));
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

    std::string old_;
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
