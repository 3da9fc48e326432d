// tintwerk ink: what the consumption page reads from a printer's ink counter file.
#include <cstdio>
#include <iomanip>
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

Json ChannelsOf(const InkCounters& counters)
{
    Json channels = Json::array();
    for (int i = 0; i < kInkChannels; ++i) {
        if (counters.shownRank[i] == 0) continue;
        channels.push_back({{"code", kInkChannelTable[i].code},
                            {"name", kInkChannelTable[i].name},
                            {"last_job", counters.lastJob[i]},
                            {"total", counters.total[i]},
                            {"last_job_shown", LineNumber(counters.lastJob[i])},
                            {"total_shown", LineNumber(TotalValue(counters.total[i]))}});
    }
    return channels;
}

void Print(std::ostream& out, const Json& channels)
{
    const auto line = [&out](const std::string& code, const std::string& ink, const std::string& lastJob,
                             const std::string& total) {
        out << std::left << std::setw(9) << code << std::setw(16) << ink << std::setw(25) << lastJob << total
            << "\n";
    };
    line("channel", "ink", "last job (counter)", "total (counter)");
    for (const Json& each : channels)
        line(each["code"], each["name"], Shown(each["last_job_shown"], each["last_job"]),
             Shown(each["total_shown"], each["total"]));
}

int ShowInk(const Arguments& arguments, Output& output)
{
    const std::string& file = arguments.OneOperand("ink counter file");
    ContentOfFile(file); // that it can be read
    const auto context = std::make_unique<SheetContext>();
    ReadInkFile(file.c_str(), *context);
    const Json channels = ChannelsOf(context->inkCounters);
    if (arguments.Has("json"))
        output.out << JsonText({{"command", "ink"}, {"file", file}, {"channels", channels}}) << "\n";
    else if (channels.empty())
        output.out << file << ": no ink counters; the consumption page stays empty\n";
    else
        Print(output.out, channels);
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
            ShowInk};
}

} // namespace tintwerk
