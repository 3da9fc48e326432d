#include "src/ink/consumption_page.h"

#include "src/features/control_access.h"
#include "src/i18n/texts.h"
#include "src/ink/bar_value.h"
#include "src/ink/consumption_layout.h"
#include "src/ink/ink_channels.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kEndMarker = kInkChannels;           // stands behind the last shown channel
constexpr int kEndMarkerValue = -100 * kEndMarker; // hides a line's controls
constexpr InkChannel kEndMarkerChannel{"", "", 0, 0, 0};

const InkChannel& Channel(int position)
{
    return position == kEndMarker ? kEndMarkerChannel : kInkChannelTable[static_cast<size_t>(position)];
}

// The shown channels in display order, then the end marker for ever.
class ShownChannels
{
public:
    explicit ShownChannels(const InkCounters& counters) : counters_(counters) { SkipHidden(); }

    int Position() const { return next_ < kDisplayOrder.size() ? kDisplayOrder[next_] : kEndMarker; }
    void Advance()
    {
        if (next_ < kDisplayOrder.size()) ++next_;
        SkipHidden();
    }

private:
    void SkipHidden()
    {
        while (next_ < kDisplayOrder.size() && counters_.shownRank[kDisplayOrder[next_]] == 0)
            ++next_;
    }

    const InkCounters& counters_;
    size_t next_ = 0;
};

void MeasureLines(ConsumptionArea& consumption)
{
    const RECT first = PlaceInParent(consumption.lastJob.names[0]);
    consumption.firstLine = first.top;
    consumption.lineHeight = first.bottom - first.top + 1;
    consumption.lastLine = PlaceInParent(consumption.lastJob.names[kConsumptionSlots - 1]).top;
}

LineLayout PlaceLines(const ConsumptionArea& consumption, int shown)
{
    const LineLayout lines =
        LayOutLines({consumption.firstLine, consumption.lineHeight, consumption.lastLine}, shown);
    Trace(TEXT("UI:  firstline=%d\n"), consumption.firstLine);
    Trace(TEXT("UI:  lastline=%d\n"), consumption.lastLine);
    Trace(TEXT("UI:  allheight=%d\n"), lines.blockHeight);
    Trace(TEXT("UI:  height=%d\n"), consumption.lineHeight);
    Trace(TEXT("UI:  startline=%d\n"), lines.startLine);
    Trace(TEXT("UI:  spacing=%d\n"), lines.spacing);
    return lines;
}

// One line of the pane and what it is to show.
struct Line
{
    HWND number;
    HWND bar;
    HWND name;
    int y;
    int channel; // position in the channel table, or kEndMarker
    int value;
    int percent;
};

void DrawNumber(const Line& line)
{
    MoveControlToY(line.number, line.y);
    SetNumberText(line.number, LineNumber(line.value));
    ShowControl(line.number, line.percent >= 0 && line.channel != kEndMarker);
}

void DrawBar(const Line& line)
{
    if (!line.bar) return;
    Trace(TEXT("UI:  Set bar to %d%%\n"), line.percent);
    MoveControlToY(line.bar, line.y + 1);
    SendMessageW(line.bar, PBM_SETPOS, static_cast<WPARAM>(line.percent), 0);
    const InkChannel& channel = Channel(line.channel);
    const BarValue value{line.percent, channel.red, channel.green, channel.blue};
    SetWindowLongPtrW(line.bar, GWLP_USERDATA, static_cast<LONG_PTR>(PackBarValue(value)));
    InvalidateRect(line.bar, nullptr, TRUE);
    ShowControl(line.bar, line.value >= 0);
}

void SetName(HWND control, const char* english)
{
    const WideText query = CopyWideFromUtf8(english);
    const WideText name = query ? CFCopyLocalizedString(query.get(), TEXT("")) : nullptr;
    if (!name) {
        Trace(TEXT("Error Create namestring!\n"));
        return;
    }
    SetWindowTextW(control, name.get());
    UpdateWindow(control);
    Trace(TEXT("UI:  Textstring = %s\n"), name.get());
}

void DrawName(const Line& line)
{
    if (!line.name) {
        Trace(TEXT("Namecontrol not found!\n"));
        return;
    }
    MoveControlToY(line.name, line.y);
    Trace(TEXT("UI:  Set barcounter to %d\n"), line.value);
    SetName(line.name, Channel(line.channel).name);
    ShowControl(line.name, line.value >= 0);
}

void DrawLines(const SheetContext& context, const InkSums& sums, const LineLayout& layout)
{
    const InkCounters& counters = context.inkCounters;
    const bool totals = context.consumption.displayMode != 0;
    const ConsumptionView& view = totals ? context.consumption.totals : context.consumption.lastJob;

    ShownChannels channels(counters);
    for (int slot = 0; slot < kConsumptionSlots; ++slot) {
        const int channel = channels.Position();
        Trace(TEXT("Zeile #%d mit Kanal #%d\n"), slot, channel);
        int value = kEndMarkerValue;
        if (channel == kEndMarker)
            Trace(TEXT("empty channel-!_!_!_!!_!_!_!\n"));
        else
            value = totals ? TotalValue(counters.total[channel]) : counters.lastJob[channel];

        if (!view.numbers[slot]) {
            Trace(TEXT("Control missing!\n"));
            continue; // the next slot shows this channel
        }
        const int y = Narrow(layout.startLine + static_cast<long long>(slot) * layout.spacing);
        const int percent = totals ? TotalPercent(value) : LastJobPercent(value, sums.largestLastJob);
        const Line line{view.numbers[slot], view.bars[slot], view.names[slot], y, channel, value, percent};
        DrawNumber(line);
        DrawBar(line);
        DrawName(line);
        channels.Advance();
    }
}

void DrawSum(const ConsumptionArea& consumption, const InkSums& sums)
{
    if (consumption.displayMode != 0)
        SetNumberText(consumption.totals.numbers[kSumSlot], Narrow((sums.total + 500) / 1000));
    else
        SetNumberText(consumption.lastJob.numbers[kSumSlot], Narrow((sums.lastJob + 50) / 100));

    if (const HWND caption = consumption.totals.names[kSumSlot]) {
        const WideText text = CFCopyLocalizedString(TEXT("Total:"), TEXT(""));
        if (text) SetWindowTextW(caption, text.get());
    }
}

} // namespace

void SetNumberText(HWND control, int number)
{
    const WideText text =
        number < 0 ? CopyFormattedString(TEXT(" ")) : CopyFormattedString(TEXT("%d"), number);
    if (!text) return;
    SetWindowTextW(control, text.get());
    UpdateWindow(control);
}

void MoveControlToY(HWND control, int y)
{
    const RECT place = PlaceInParent(control);
    MoveWindow(control, place.left, y, place.right - place.left, place.bottom - place.top, TRUE);
}

void DrawConsumptionPage(SheetContext& context)
{
    ConsumptionArea& consumption = context.consumption;
    Trace(TEXT("Setting inkChannels (curInkDisplay=%d)\n"), consumption.displayMode);
    const InkSums sums = SumUp(context.inkCounters);
    if (consumption.firstLine < 0) MeasureLines(consumption);
    DrawLines(context, sums, PlaceLines(consumption, sums.shown));
    DrawSum(consumption, sums);
}

} // namespace tintwerk
