// tintwerk features: what the driver sees in a PPD, and which control stands for what.
#include <algorithm>
#include <ostream>

#include "host/cli/feature_use.h"
#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"

namespace tintwerk {

namespace {

struct FeatureLine
{
    std::string_view keyword, text;
    FeatureUseInfo use;
    std::string_view selected;
    std::vector<std::string_view> options;
};

std::vector<FeatureLine> LinesOf(const CoreDriver& core)
{
    std::vector<FeatureLine> lines;
    for (const std::string_view keyword : core.Features()) {
        const PpdFeature* const feature = core.Description().Find(keyword);
        lines.push_back({keyword, feature ? feature->text : std::string_view(), UseOfFeature(keyword),
                         core.Selected(keyword), core.Options(keyword)});
    }
    return lines;
}

std::string Padded(std::string text, std::size_t width)
{
    if (text.size() < width) text.resize(width, ' ');
    return text + " ";
}

std::string OptionsText(const FeatureLine& line)
{
    constexpr std::size_t kMost = 60;
    std::string text;
    for (const std::string_view option : line.options) {
        if (text.size() > kMost) return text + " ... (" + std::to_string(line.options.size()) + ")";
        text += (text.empty() ? "" : " ") +
                (option == line.selected ? "*" + std::string(option) : std::string(option));
    }
    return text;
}

void Print(std::ostream& out, const Ppd& ppd, std::vector<FeatureLine> lines)
{
    out << ppd.PrinterName() << " (" << ppd.FileName() << "): " << lines.size() << " features, "
        << ppd.Constraints().size() << " constraints\n";
    constexpr std::string_view kPages[] = {"main", "layout", "colors",  "correction",
                                           "ink",  "screen", "advanced"};
    const auto section = [&](const std::string& title, const auto& belongs) {
        bool begun = false;
        for (const FeatureLine& line : lines) {
            if (!belongs(line)) continue;
            if (!std::exchange(begun, true)) out << "\n" << title << "\n";
            out << "  " << Padded(std::string(line.keyword), 24) << Padded(line.use.control, 22)
                << OptionsText(line) << "\n";
        }
    };
    for (const std::string_view page : kPages)
        section("Page " + std::string(page), [&](const FeatureLine& line) { return line.use.page == page; });
    section("Behaviour", [](const FeatureLine& line) { return line.use.use == FeatureUse::Behaviour; });
    section("Not shown by the driver",
            [](const FeatureLine& line) { return line.use.use == FeatureUse::None; });
}

Json AsJson(const Ppd& ppd, const std::vector<FeatureLine>& lines)
{
    Json json;
    json["command"] = "features";
    json["ppd"] = ppd.FileName();
    json["printer"] = ppd.PrinterName();
    json["features"] = Json::array();
    for (const FeatureLine& line : lines) {
        Json feature{{"keyword", line.keyword}, {"text", line.text}};
        feature["page"] = line.use.page.empty() ? Json() : Json(line.use.page);
        feature["control"] = line.use.control.empty() ? Json() : Json(line.use.control);
        feature["selected"] = line.selected;
        feature["options"] = line.options;
        json["features"].push_back(std::move(feature));
    }
    return json;
}

int Run(const Arguments& arguments, Output& output)
{
    if (arguments.Operands().size() != 1)
        throw CommandError(kExitUsage, "one PPD file is expected: tintwerk features FILE");
    const PpdResult read = ReadPpd(PathFromUtf8(arguments.Operands()[0]));
    if (!read) throw CommandError(kExitFailed, read.error.Full());
    Selections defaults;
    const CoreDriver core(*read.ppd, defaults);
    const std::vector<FeatureLine> lines = LinesOf(core);
    if (arguments.Has("json"))
        output.out << AsJson(*read.ppd, lines).dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
    else
        Print(output.out, *read.ppd, lines);
    return kExitSuccess;
}

} // namespace

Command FeaturesCommand()
{
    return {"features",
            "lists a PPD's features and the controls that stand for them",
            "tintwerk features FILE [--json]",
            "The option that is selected by default stands behind an asterisk.\n",
            {{"json", "", "tells it as JSON"}},
            Run};
}

} // namespace tintwerk
