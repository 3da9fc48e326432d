// Where the lines of the consumption page stand and what the counters read there.
#include "src/ink/consumption_layout.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "src/ink/bar_value.h"

namespace tintwerk {
namespace {

constexpr int kLowest = -2147483647 - 1;
constexpr int kHighest = 2147483647;

TEST(ConsumptionLayout, PlacesTheLines)
{
    struct
    {
        const char* what;
        LineBand band;
        int shown, block, start, spacing;
    } const cases[] = {
        {"no channel", {10, 15, 208}, 0, 0, 116, 15},
        {"one channel in the middle, without gap", {10, 15, 208}, 1, 15, 109, 15},
        {"few channels, at most 8 apart", {10, 15, 208}, 2, 38, 97, 23},
        {"all twelve", {10, 15, 208}, 12, 202, 15, 17},
        {"more than there are lines", {10, 15, 208}, 20, 224, 5, 11},
        {"too small a band, at most 8 into each other", {10, 30, 50}, 12, 272, -91, 22},
        {"no controls were found", {0, 1, 0}, 12, 12, -5, 1},
    };
    for (const auto& row : cases) {
        const LineLayout lines = LayOutLines(row.band, row.shown);
        EXPECT_EQ(row.block, lines.blockHeight) << row.what;
        EXPECT_EQ(row.start, lines.startLine) << row.what;
        EXPECT_EQ(row.spacing, lines.spacing) << row.what;
    }
}

TEST(ConsumptionLayout, CentresEveryNumberOfChannels)
{
    for (const LineBand band : {LineBand{10, 15, 208}, LineBand{0, 20, 100}, LineBand{50, 9, 700}}) {
        for (int shown = 1; shown <= kInkChannels; ++shown) {
            const LineLayout lines = LayOutLines(band, shown);
            const int above = lines.startLine - band.firstLine;
            const int below = band.lastLine + band.lineHeight -
                              (lines.startLine + (shown - 1) * lines.spacing + band.lineHeight);
            EXPECT_LE(std::abs(above - below), 1) << shown;
            EXPECT_LE(std::abs(lines.spacing - band.lineHeight), 8) << shown;
        }
    }
}

TEST(ConsumptionLayout, SurvivesTheEndsOf32Bits)
{
    for (const int first : {kLowest, 0, kHighest}) {
        for (const int height : {kLowest, 0, kHighest}) {
            for (const int last : {kLowest, 0, kHighest}) {
                for (const int shown : {0, 1, 20})
                    LayOutLines({first, height, last}, shown);
            }
        }
    }
    EXPECT_EQ(kHighest / 100, LineNumber(kHighest - 50));
    EXPECT_EQ(214748365, TotalValue(kHighest));
    EXPECT_EQ(100, LastJobPercent(kHighest, kHighest));
    EXPECT_EQ(kLowest, LastJobPercent(kLowest, 1));
}

TEST(ConsumptionValues, AreRoundedHalfUp)
{
    EXPECT_EQ(1, LineNumber(149));
    EXPECT_EQ(2, LineNumber(150));
    EXPECT_EQ(12, LineNumber(TotalValue(12345)));
    EXPECT_EQ(0, LineNumber(0));
    EXPECT_EQ(0, LineNumber(-149)) << "truncates toward zero";
    EXPECT_EQ(-1, LineNumber(-150));
    EXPECT_EQ(1, TotalPercent(TotalValue(14994)));
    EXPECT_EQ(2, TotalPercent(TotalValue(14995)));
    EXPECT_EQ(300, TotalPercent(TotalValue(3000000)));
    EXPECT_EQ(33, LastJobPercent(1, 3));
}

TEST(ConsumptionValues, AddUpBeyond32Bits)
{
    InkCounters counters{};
    for (int channel = 0; channel < kInkChannels; ++channel) {
        counters.lastJob[channel] = kHighest;
        counters.total[channel] = kLowest;
        counters.shownRank[channel] = channel % 2;
    }
    const InkSums sums = SumUp(counters);
    EXPECT_EQ(20LL * kHighest, sums.lastJob);
    EXPECT_EQ(20LL * kLowest, sums.total);
    EXPECT_EQ(kHighest, sums.largestLastJob);
    EXPECT_EQ(10, sums.shown);
    EXPECT_EQ(1, SumUp(InkCounters{}).largestLastJob);
}

TEST(BarValue, KeepsTheLowByteOfThePercentage)
{
    EXPECT_EQ(0x32FF8000u, PackBarValue({50, 255, 128, 0}));
    EXPECT_EQ(0xB4000000u, PackBarValue({180, 0, 0, 0}));
    EXPECT_EQ(0x2C000000u, PackBarValue({300, 0, 0, 0}));
    EXPECT_EQ(0x30000000u, PackBarValue({-2000, 0, 0, 0}));
    EXPECT_EQ((BarValue{180, 1, 2, 3}), UnpackBarValue(0xB4010203));
}

} // namespace
} // namespace tintwerk
