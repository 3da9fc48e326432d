// The consumption page's lines: where they stand, and in real controls names, numbers, bars, the sum, and
// what is hidden.
#include "src/ink/consumption_page.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/i18n/string_table.h"
#include "src/ink/bar_value.h"
#include "src/ink/consumption_layout.h"
#include "src/ink/ink_channels.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr int kLowest = -2147483647 - 1;
constexpr int kHighest = 2147483647;

TEST(ConsumptionLayout, PlacesTheLines)
{
    // clang-format off
    const struct { const char* what; LineBand band; int shown, block, start, spacing; } cases[] = {
        {"no channel", {10, 15, 208}, 0, 0, 116, 15},
        {"one channel in the middle, without gap", {10, 15, 208}, 1, 15, 109, 15},
        {"few channels, at most 8 apart", {10, 15, 208}, 2, 38, 97, 23},
        {"all twelve", {10, 15, 208}, 12, 202, 15, 17},
        {"more than there are lines", {10, 15, 208}, 20, 224, 5, 11},
        {"too small a band, at most 8 into each other", {10, 30, 50}, 12, 272, -91, 22},
        {"no controls were found", {0, 1, 0}, 12, 12, -5, 1},
        {"the ends of 32 bits", {kLowest, kHighest, kLowest}, 20, kHighest, kLowest, kHighest - 8},
    };
    // clang-format on
    for (const auto& row : cases) {
        const LineLayout lines = LayOutLines(row.band, row.shown);
        EXPECT_EQ(row.block, lines.blockHeight) << row.what;
        EXPECT_EQ(row.start, lines.startLine) << row.what;
        EXPECT_EQ(row.spacing, lines.spacing) << row.what;
    }
}

TEST(ConsumptionLayout, RoundsValuesHalfUpWithinTheirBits)
{
    EXPECT_EQ(1, LineNumber(149));
    EXPECT_EQ(2, LineNumber(150));
    EXPECT_EQ(0, LineNumber(-149)) << "truncates toward zero";
    EXPECT_EQ(-1, LineNumber(-150));
    EXPECT_EQ(kHighest / 100, LineNumber(kHighest - 50));
    EXPECT_EQ(1, TotalPercent(TotalValue(14994)));
    EXPECT_EQ(2, TotalPercent(TotalValue(14995)));
    EXPECT_EQ(214748365, TotalValue(kHighest));
    EXPECT_EQ(33, LastJobPercent(1, 3));
    EXPECT_EQ(100, LastJobPercent(kHighest, kHighest));
    EXPECT_EQ(kLowest, LastJobPercent(kLowest, 1));
    EXPECT_EQ(0x2C000000u, PackBarValue({300, 0, 0, 0})) << "the low byte of the percentage";
    EXPECT_EQ(0x30000000u, PackBarValue({-2000, 0, 0, 0}));
}

// The names of the channels in the order of the lines.
constexpr const WCHAR* kNames[] = {
    TEXT("Black"),       TEXT("Photo Black"),   TEXT("Pigment Black"), TEXT("Matte Black"),
    TEXT("Photo Black"), TEXT("Gray"),          TEXT("Bright Gray"),   TEXT("Dark Gray"),
    TEXT("Yellow"),      TEXT("Bright Yellow"), TEXT("Magenta"),       TEXT("Bright Magenta"),
    TEXT("Cyan"),        TEXT("Bright Cyan"),   TEXT("Red"),           TEXT("Green"),
    TEXT("Blue"),        TEXT("Optimizer"),     TEXT("Orange"),        TEXT("Violet")};

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
    static Text Number(int number)
    {
        const std::string text = std::to_string(number);
        return {text.begin(), text.end()};
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
        context.inkCounters.shownRank[channel] = 1;
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
            Show(kDisplayOrder[static_cast<size_t>(shown - 1)], 100 * shown, 1000 * shown);
            DrawConsumptionPage(context);
            for (int slot = 0; slot < kConsumptionSlots; ++slot) {
                const bool used = slot < shown;
                for (const HWND control : {view.names[slot], view.bars[slot], view.numbers[slot]})
                    EXPECT_EQ(used, Shown(control)) << shown << '/' << slot;
                EXPECT_EQ(used ? Number(slot + 1) : TEXT(" "), TextOf(view.numbers[slot]));
                EXPECT_EQ(used ? kNames[slot] : TEXT(""), TextOf(view.names[slot]));
                EXPECT_EQ(Place(view.names[slot]).top, Place(view.numbers[slot]).top);
                EXPECT_EQ(Place(view.names[slot]).top + 1, Place(view.bars[slot]).top);
                EXPECT_GT(Place(view.names[slot]).top, slot ? Place(view.names[slot - 1]).top : 0);
            }
            EXPECT_EQ(Number(shown * (shown + 1) / 2), TextOf(view.numbers[12]));
        }
    }
}

TEST_F(ConsumptionPage, FillsBarsRelativeToTheLargestLastJobOrByTheConsumption)
{
    Show(0, 0, 500000);
    Show(4, 50, 1800000);
    Show(6, 200, 0);
    const DWORD bars[2][3] = {
        {0x00000000, 0x19FFFF00, 0x6400FFFF},  // an empty bar is shown, 25 % yellow, 100 % cyan
        {0x32000000, 0xB4FFFF00, 0x0000FFFF}}; // 50 % black, 180 % yellow
    for (const int mode : {0, 1}) {
        context.consumption.displayMode = mode;
        DrawConsumptionPage(context);
        for (int slot = 0; slot < 3; ++slot) {
            EXPECT_EQ(bars[mode][slot], Bar(view.bars[slot])) << mode << slot;
            EXPECT_TRUE(Shown(view.bars[slot])) << mode << slot;
        }
    }
    EXPECT_EQ(TEXT("500"), TextOf(view.numbers[0]));
    EXPECT_EQ(TEXT("2300"), TextOf(view.numbers[12]));
}

TEST_F(ConsumptionPage, KeepsSizeAndLeftEdgeOfWhatItMoves)
{
    Show(0, 100, 100);
    const RECT before = Place(view.bars[0]);
    for (int time = 0; time < 2; ++time) // what was moved is not measured again
        DrawConsumptionPage(context);
    const RECT after = Place(view.bars[0]);
    EXPECT_TRUE(before.left == after.left && before.right == after.right);
    EXPECT_EQ(109 + 1, after.top);
    EXPECT_EQ(before.bottom - before.top, after.bottom - after.top);
}

TEST_F(ConsumptionPage, SurvivesExtremeCounters)
{
    for (const int mode : {0, 1}) {
        context.consumption.displayMode = mode;
        for (const int value : {kLowest, -1, 0, kHighest}) {
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
    EXPECT_EQ("", MissingLine(trace.Take(),
                              {"Setting inkChannels (curInkDisplay=0)\n", "UI:  firstline=10\n",
                               "UI:  lastline=208\n", "UI:  allheight=15\n", "UI:  height=15\n",
                               "UI:  startline=109\n", "UI:  spacing=15\n", "Zeile #0 mit Kanal #17\n",
                               "Control missing!\n", "Zeile #1 mit Kanal #17\n", "UI:  Set bar to 100%\n",
                               "UI:  Set barcounter to 250\n", "UI:  Textstring = Matte Black\n",
                               "Zeile #2 mit Kanal #20\n", "empty channel-!_!_!_!!_!_!_!\n",
                               "Namecontrol not found!\n", "UI:  Set bar to -800%\n",
                               "UI:  Set barcounter to -2000\n", "UI:  Textstring = \n"}));
}

} // namespace
} // namespace tintwerk
