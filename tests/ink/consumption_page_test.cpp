// The consumption page's lines in real controls: names, numbers, bars, the sum, and what is hidden.
#include "src/ink/consumption_page.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/i18n/string_table.h"
#include "src/ink/ink_channels.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

// The names of the channels in the order of the lines.
constexpr const WCHAR* kNames[] = {
    TEXT("Black"),       TEXT("Photo Black"),   TEXT("Pigment Black"), TEXT("Matte Black"),
    TEXT("Photo Black"), TEXT("Gray"),          TEXT("Bright Gray"),   TEXT("Dark Gray"),
    TEXT("Yellow"),      TEXT("Bright Yellow"), TEXT("Magenta"),       TEXT("Bright Magenta"),
    TEXT("Cyan"),        TEXT("Bright Cyan"),   TEXT("Red"),           TEXT("Green"),
    TEXT("Blue"),        TEXT("Optimizer"),     TEXT("Orange"),        TEXT("Violet")};
constexpr int kChannels[] = {0, 1, 16, 17, 18, 2, 3, 19, 4, 9, 5, 7, 6, 8, 10, 11, 12, 13, 14, 15};

class ConsumptionPage : public testing::Test
{
protected:
    ConsumptionPage()
    {
        InitStringTable("en");
        pane = Create(nullptr, WS_POPUP, 0, 0, 400, 300);
        ConsumptionArea& area = context.consumption;
        for (int slot = 0; slot < kConsumptionSlots; ++slot) {
            const int y = 10 + 18 * slot; // 14 high: the line height is 15
            area.lastJob.names[slot] = area.totals.names[slot] = Create(pane, WS_CHILD, 5, y, 90, 14);
            area.lastJob.bars[slot] = area.totals.bars[slot] = Create(pane, WS_CHILD, 100, y, 105, 12);
            area.lastJob.numbers[slot] = area.totals.numbers[slot] = Create(pane, WS_CHILD, 210, y, 50, 14);
        }
        area.lastJob.numbers[12] = area.totals.numbers[12] = Create(pane, WS_CHILD, 210, 250, 50, 14);
        area.totals.names[12] = Create(pane, WS_CHILD, 5, 250, 90, 14);
        area.firstLine = -1;
    }
    ~ConsumptionPage() override
    {
        DestroyWindow(pane);
        UseStringTable(nullptr);
    }

    static HWND Create(HWND parent, DWORD style, int x, int y, int width, int height)
    {
        return CreateWindowExW(0, TEXT("Static"), TEXT("template"), style, x, y, width, height, parent,
                               nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    static Text TextOf(HWND control)
    {
        WCHAR text[128] = {};
        GetWindowTextW(control, text, 128);
        return text;
    }
    static bool Shown(HWND control) { return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }
    static DWORD Bar(HWND control) { return static_cast<DWORD>(GetWindowLongPtrW(control, GWLP_USERDATA)); }
    RECT Place(HWND control) const
    {
        RECT place{};
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, pane, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }

    void Show(int channel, int lastJob, int total)
    {
        context.inkCounters.lastJob[channel] = lastJob;
        context.inkCounters.total[channel] = total;
        context.inkCounters.shownRank[channel] = ++context.inkCounters.shownCount;
    }

    HWND pane;
    DebugLines trace;
    SheetContext context{};
    const ConsumptionView& view = context.consumption.lastJob;
};

TEST_F(ConsumptionPage, GivesOneLineToEachOfTheFirstTwelveShownChannels)
{
    for (const int mode : {0, 1}) {
        context.consumption.displayMode = mode;
        context.inkCounters = {};
        for (int shown = 1; shown <= kInkChannels; ++shown) {
            Show(kChannels[shown - 1], 100 * shown, 1000 * shown);
            DrawConsumptionPage(context);
            for (int slot = 0; slot < kConsumptionSlots; ++slot) {
                const bool used = slot < shown;
                EXPECT_EQ(used, Shown(view.names[slot])) << shown << '/' << slot;
                EXPECT_EQ(used, Shown(view.bars[slot])) << shown << '/' << slot;
                EXPECT_EQ(used, Shown(view.numbers[slot])) << shown << '/' << slot;
                const std::string number = std::to_string(slot + 1);
                EXPECT_EQ(used ? Text(number.begin(), number.end()) : TEXT(" "), TextOf(view.numbers[slot]));
                EXPECT_EQ(used ? kNames[slot] : TEXT(""), TextOf(view.names[slot]));
                EXPECT_EQ(Place(view.names[slot]).top, Place(view.numbers[slot]).top);
                EXPECT_EQ(Place(view.names[slot]).top + 1, Place(view.bars[slot]).top);
                EXPECT_GT(Place(view.names[slot]).top, slot ? Place(view.names[slot - 1]).top : 0);
            }
            const std::string sum = std::to_string(shown * (shown + 1) / 2);
            EXPECT_EQ(Text(sum.begin(), sum.end()), TextOf(view.numbers[12]));
        }
    }
}

TEST_F(ConsumptionPage, FillsBarsRelativeToTheLargestLastJob)
{
    Show(0, 0, 0);
    Show(4, 50, 0);
    Show(6, 200, 0);
    DrawConsumptionPage(context);
    EXPECT_EQ(0x00000000u, Bar(view.bars[0])) << "an empty bar is shown";
    EXPECT_TRUE(Shown(view.bars[0]));
    EXPECT_EQ(0x19FFFF00u, Bar(view.bars[1])) << "25 % yellow";
    EXPECT_EQ(0x6400FFFFu, Bar(view.bars[2])) << "100 % cyan";
}

TEST_F(ConsumptionPage, FillsTotalBarsByTheConsumption)
{
    context.consumption.displayMode = 1;
    Show(14, 0, 500000);
    Show(15, 0, 1800000);
    DrawConsumptionPage(context);
    EXPECT_EQ(0x32FF8000u, Bar(view.bars[0])) << "50 % orange";
    EXPECT_EQ(0xB4FF0080u, Bar(view.bars[1])) << "180 % violet";
    EXPECT_EQ(TEXT("500"), TextOf(view.numbers[0]));
    EXPECT_EQ(TEXT("2300"), TextOf(view.numbers[12]));
}

TEST_F(ConsumptionPage, KeepsSizeAndLeftEdgeOfWhatItMoves)
{
    Show(0, 100, 100);
    const RECT before = Place(view.bars[0]);
    DrawConsumptionPage(context);
    DrawConsumptionPage(context); // does not measure again what it has moved
    const RECT after = Place(view.bars[0]);
    EXPECT_EQ(before.left, after.left);
    EXPECT_EQ(before.right, after.right);
    EXPECT_EQ(109 + 1, after.top);
    EXPECT_EQ(before.bottom - before.top, after.bottom - after.top);
    EXPECT_EQ(10, context.consumption.firstLine);
    EXPECT_EQ(15, context.consumption.lineHeight);
    EXPECT_EQ(208, context.consumption.lastLine);
}

TEST_F(ConsumptionPage, SurvivesExtremeCounters)
{
    for (const int mode : {0, 1}) {
        context.consumption.displayMode = mode;
        for (const int value : {-2147483647 - 1, -1, 0, 2147483647}) {
            context.inkCounters = {};
            for (int channel = 0; channel < kInkChannels; ++channel)
                Show(channel, value, value);
            DrawConsumptionPage(context);
            EXPECT_EQ(mode ? value >= -5 : value >= 0, Shown(view.bars[0])) << value;
        }
    }
    EXPECT_EQ(TEXT("42949673"), TextOf(view.numbers[12]));
    context.inkCounters = {};
    context.consumption.displayMode = 0;
    Show(0, 1000000, 0); // the largest value makes 0 % of the end marker's
    DrawConsumptionPage(context);
    EXPECT_FALSE(Shown(view.numbers[1]));
}

TEST_F(ConsumptionPage, TracesWhatItShows)
{
    Show(17, 250, 0);
    context.consumption.lastJob.numbers[0] = nullptr; // the second slot shows the channel
    context.consumption.lastJob.names[2] = nullptr;
    context.consumption.lastJob.bars[2] = nullptr;
    DrawConsumptionPage(context);
    const std::vector<Text> lines = trace.Take();
    const std::vector<Text> head{
        TEXT("Setting inkChannels (curInkDisplay=0)\n"),
        TEXT("UI:  firstline=10\n"),
        TEXT("UI:  lastline=208\n"),
        TEXT("UI:  allheight=15\n"),
        TEXT("UI:  height=15\n"),
        TEXT("UI:  startline=109\n"),
        TEXT("UI:  spacing=15\n"),
        TEXT("Zeile #0 mit Kanal #17\n"),
        TEXT("Control missing!\n"),
        TEXT("Zeile #1 mit Kanal #17\n"),
        TEXT("UI:  Set bar to 100%\n"),
        TEXT("UI:  Set barcounter to 250\n"),
        TEXT("CFCopyLocalizedString: Matte Black\n"),
        TEXT("defaultstring found #15: Matte Black\n"),
        TEXT("Translation = Matte Black\n"),
        TEXT("UI:  Textstring = Matte Black\n"),
        TEXT("Zeile #2 mit Kanal #20\n"),
        TEXT("empty channel-!_!_!_!!_!_!_!\n"),
        TEXT("Namecontrol not found!\n"),
        TEXT("Zeile #3 mit Kanal #20\n"),
        TEXT("empty channel-!_!_!_!!_!_!_!\n"),
        TEXT("UI:  Set bar to -800%\n"),
        TEXT("UI:  Set barcounter to -2000\n"),
        TEXT("CFCopyLocalizedString: \n"),
        TEXT("defaultstring not found: \n"),
        TEXT("Translation = \n"),
        TEXT("UI:  Textstring = \n"),
        TEXT("Zeile #4 mit Kanal #20\n"),
    };
    ASSERT_GE(lines.size(), head.size());
    EXPECT_EQ(head,
              std::vector<Text>(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(head.size())));
}

} // namespace
} // namespace tintwerk
