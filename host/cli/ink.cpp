// tintwerk ink: what the consumption page reads from a printer's ink counter file.
#include <cstring>
#include <memory>
#include <ostream>

#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"
#include "src/ink/ink_channels.h"
#include "src/ink/ink_file.h"

namespace tintwerk {

namespace {

void Print(std::ostream& out, const SheetContext& context)
{
    out << "channel  ink               last job       total\n";
    for (int i = 0; i < kInkChannels; ++i) {
        if (context.inkCounters.shownRank[i] == 0) continue;
        char line[96];
        std::snprintf(line, sizeof line, "%-8s %-15s %10d  %10d\n", kInkChannelTable[i].code,
                      kInkChannelTable[i].name, static_cast<int>(context.inkCounters.lastJob[i]),
                      static_cast<int>(context.inkCounters.total[i]));
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
                                    {"total", context.inkCounters.total[i]}});
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
