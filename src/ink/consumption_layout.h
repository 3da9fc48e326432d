// The arithmetic of the consumption page: where its lines stand, and what a counter shows. Nothing here knows
// a window. Counters use the whole of 32 bits, so sums and products are computed in 64; divisions truncate
// toward zero.
#pragma once

#include <algorithm>
#include <array>

#include "src/records/sheet_context.h"

namespace tintwerk {

// The channels by position in the channel table, from the top line to the bottom one.
inline constexpr std::array<int, kInkChannels> kDisplayOrder{0, 1, 16, 17, 18, 2,  3,  19, 4,  9,
                                                             5, 7, 6,  8,  10, 11, 12, 13, 14, 15};

constexpr int Narrow(long long value)
{
    return static_cast<int>(std::clamp<long long>(value, -2147483647LL - 1, 2147483647LL));
}

// Where the pane's template puts its lines.
struct LineBand
{
    int firstLine; // top of the first line
    int lineHeight;
    int lastLine; // top of the twelfth line
};

struct LineLayout
{
    int blockHeight; // of all shown lines
    int startLine;   // top of the first shown line
    int spacing;     // from one line to the next
};

// Centres the shown lines in the band; they move together or apart by at most 8 units each.
constexpr LineLayout LayOutLines(const LineBand& band, int shown)
{
    const long long first = band.firstLine;
    const long long height = band.lineHeight;
    const long long last = band.lastLine;
    const long long lines = shown;

    const long long room = last - height * (lines - 1) - first + 1;
    const long long gap = std::clamp<long long>(lines > 1 ? room / lines : 0, -8, 8);
    const long long block = (lines - 1) * gap + height * lines;
    return {Narrow(block), Narrow(first + (height - first - block + last) / 2), Narrow(height + gap)};
}

// A total in tens of counter units, rounded half up; LineNumber and TotalPercent scale it on.
constexpr int TotalValue(int counter)
{
    return Narrow((static_cast<long long>(counter) + 5) / 10);
}

// The number beside a bar; below 0 it is not shown.
constexpr int LineNumber(int value)
{
    return Narrow((static_cast<long long>(value) + 50) / 100);
}

constexpr int TotalPercent(int value)
{
    return Narrow((static_cast<long long>(value) + 500) / 1000);
}

// The last job's bars are relative to its largest value.
constexpr int LastJobPercent(int value, int largest)
{
    return Narrow(static_cast<long long>(value) * 100 / largest);
}

struct InkSums
{
    long long lastJob;
    long long total;
    int largestLastJob; // at least 1
    int shown;          // channels
};

constexpr InkSums SumUp(const InkCounters& counters)
{
    InkSums sums{0, 0, 1, 0};
    for (int channel = 0; channel < kInkChannels; ++channel) {
        sums.lastJob += counters.lastJob[channel];
        sums.total += counters.total[channel];
        sums.largestLastJob = std::max(sums.largestLastJob, counters.lastJob[channel]);
        sums.shown += counters.shownRank[channel] != 0;
    }
    return sums;
}

} // namespace tintwerk
