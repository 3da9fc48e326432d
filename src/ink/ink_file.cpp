#include "src/ink/ink_file.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/owners.h"
#include "src/i18n/texts.h"
#include "src/ink/consumption_page.h"
#include "src/ink/ink_channels.h"
#include "src/ink/ink_parsing.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kChunkBytes = 16384;

// Position in the channel table; -1 when no channel has the code.
int FindChannel(std::string_view code)
{
    for (int channel = 0; channel < kInkChannels; ++channel) {
        if (code == kInkChannelTable[static_cast<size_t>(channel)].code) return channel;
    }
    return -1;
}

void TakeLine(std::string_view text, InkCounters& counters)
{
    const std::optional<InkLine> line = ParseInkLine(text);
    const int channel = line ? FindChannel(line->code) : -1;
    if (channel < 0) return;
    counters.shownRank[channel] = 1;
    (line->total ? counters.total : counters.lastJob)[channel] = line->value;
    Trace(TEXT("UI:  %S Value for '%S' = %d\n"), line->total ? "Total1" : "Last",
          kInkChannelTable[static_cast<size_t>(channel)].code, line->value);
}

void TakeLines(HANDLE file, InkCounters& counters)
{
    const auto take = [&counters](std::string_view line) { TakeLine(line, counters); };
    InkLines lines;
    char chunk[kChunkBytes];
    DWORD bytes = 0;
    while (ReadFile(file, chunk, kChunkBytes, &bytes, nullptr) && bytes > 0)
        lines.Feed({chunk, bytes}, take);
    lines.Finish(take);
}

// A printer with a special black shows that one instead of the plain one.
void HidePlainBlack(InkCounters& counters)
{
    for (const char* special : {"KP", "KR", "KM", "KG"}) {
        if (counters.shownRank[FindChannel(special)] != 0) counters.shownRank[FindChannel("K")] = 0;
    }
}

void NumberShownChannels(InkCounters& counters)
{
    DWORD shown = 0;
    for (DWORD& rank : counters.shownRank) {
        if (rank != 0) rank = ++shown;
    }
}

bool UserWantsReset(HWND owner)
{
    const WideText caption = CFCopyLocalizedString(TEXT("Attention:"), TEXT(""));
    const WideText question = CFCopyLocalizedString(
        TEXT("Do you really want to reset all ink counters of this printer? This is cannot be undone!"),
        TEXT(""));
    return question && MessageBoxW(owner, question.get(), caption.get(),
                                   MB_OKCANCEL | MB_ICONWARNING | MB_SYSTEMMODAL) == IDOK;
}

// Lines end as the platform's text files do, with CR LF; readers in text mode see "\n". The old bytes go only
// after the new ones were written, so a write that is refused leaves the old file in place.
void WriteLastJob(const char* path, const InkCounters& counters)
{
    const KernelHandle file = OpenSharedFile(path, GENERIC_WRITE, OPEN_ALWAYS);
    if (!file) return;

    char text[1024]; // 2 header lines and at most 20 lines of 24 characters
    int length = std::snprintf(text, sizeof text, "[Tintwerk_Ink_Info]\r\n[Last]\r\n");
    for (int channel = 0; channel < kInkChannels; ++channel) {
        if (counters.shownRank[channel] == 0) continue;
        length +=
            std::snprintf(text + length, sizeof text - static_cast<size_t>(length), "LastInk_%s=%d\r\n",
                          kInkChannelTable[static_cast<size_t>(channel)].code, counters.lastJob[channel]);
    }
    DWORD written = 0;
    if (WriteFile(file.Get(), text, static_cast<DWORD>(length), &written, nullptr)) SetEndOfFile(file.Get());
}

} // namespace

void ReadInkFile(const char* path, SheetContext& context)
{
    InkCounters& counters = context.inkCounters;
    std::memset(counters.lastJob, 0, sizeof counters.lastJob);
    std::memset(counters.total, 0, sizeof counters.total);
    std::memset(counters.shownRank, 0, sizeof counters.shownRank);

    const KernelHandle file = OpenSharedFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file) {
        Trace(TEXT("UI:  Inkdata-File not found:%S\n"), path);
        return;
    }
    Trace(TEXT("Start ink-data-Scan\n"));
    TakeLines(file.Get(), counters);
    HidePlainBlack(counters);
    NumberShownChannels(counters);
}

void ResetInkCounters(SheetContext& context)
{
    if (!UserWantsReset(context.owner)) return;
    InkCounters& counters = context.inkCounters;
    std::memset(counters.lastJob, 0, sizeof counters.lastJob);
    std::memset(counters.total, 0, sizeof counters.total);
    DrawConsumptionPage(context);
    WriteLastJob(context.inkFilePath, counters);
}

} // namespace tintwerk
