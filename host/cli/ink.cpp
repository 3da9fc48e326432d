// tintwerk ink: what the consumption page reads from a printer's ink counter file.
#include <cstring>
#include <memory>
#include <ostream>

#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"
#include "src/ink/consumption_layout.h"
#include "src/ink/ink_channels.h"
#include "src/ink/ink_file.h"

namespace tintwerk {

namespace {

// As the page shows it, with the counter behind it.
std::string Shown(int shown, int counter)
{
    char text[64];
    std::snprintf(text, sizeof text, "%8d  (%d)", shown, counter);
    return text;
}

void Print(std::ostream& out, const SheetContext& context)
{
    char line[160];
    std::snprintf(line, sizeof line, "%-8s %-15s %-24s %s\n", "channel", "ink", "last job (counter)",
                  "total (counter)");
    out << line;
    for (int i = 0; i < kInkChannels; ++i) {
        if (context.inkCounters.shownRank[i] == 0) continue;
        const int lastJob = context.inkCounters.lastJob[i], total = context.inkCounters.total[i];
        std::snprintf(line, sizeof line, "%-8s %-15s %-24s %s\n", kInkChannelTable[i].code,
                      kInkChannelTable[i].name, Shown(LineNumber(lastJob), lastJob).c_str(),
                      Shown(LineNumber(TotalValue(total)), total).c_str());
        out << line;
    }
}

Json AsJson(const std::string& file, const SheetContext& context)
{
    Json json{{"command", "ink"}, {"file", file}};
    json["channels"] = Json::array();
    for (int i = 0; i < kInkChannels; ++i) {
        if (context.inkCounters.shownRank[i] == 0) continue;
        json["channels"].push_back({{"code", kInkChannelTable[i].code},
                                    {"name", kInkChannelTable[i].name},
                                    {"last_job", context.inkCounters.lastJob[i]},
                                    {"total", context.inkCounters.total[i]},
                                    {"last_job_shown", LineNumber(context.inkCounters.lastJob[i])},
                                    {"total_shown", LineNumber(TotalValue(context.inkCounters.total[i]))}});
    }
    return json;
}

int Run(const Arguments& arguments, Output& output)
{
    const std::string& file = arguments.OneOperand("ink counter file");
    if (!std::filesystem::is_regular_file(PathFromUtf8(file)))
        throw CommandError(kExitFailed, file + ": the file cannot be read");
    const auto context = std::make_unique<SheetContext>();
    ReadInkFile(file.c_str(), *context);
    if (arguments.Has("json"))
        WriteJson(output.out, AsJson(file, *context));
    else if (context->inkCounters.shownCount == 0)
        output.out << file << ": no ink counters; the consumption page stays empty\n";
    else
        Print(output.out, *context);
    return kExitSuccess;
}

} // namespace

Command InkCommand()
{
    return {"ink",
            "shows an ink counter file as the consumption page reads it",
            "tintwerk ink FILE [--json]",
            "Plain black is left out where a special black has counters, as on the page.\n",
            {{"json", "", "tells it as JSON"}},
            Run};
}

} // namespace tintwerk
