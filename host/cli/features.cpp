// tintwerk features: what the driver sees in PPDs, and which control stands for what.
#include <algorithm>
#include <ostream>
#include <utility>

#include "host/cli/check_rules.h"
#include "host/cli/feature_use.h"
#include "host/cli/json.h"
#include "host/cli/ppd_files.h"
#include "host/cli/printer_run.h"
#include "host/cli/program.h"
#include "host/sheet/page_controls.h"

namespace tintwerk {

namespace {

struct FeatureLine
{
    std::string_view keyword;
    const PpdFeature* feature; // null for one of the core driver's own
    FeatureUse use;
    std::string_view selected;
    std::vector<std::string_view> options;
};

std::vector<FeatureLine> LinesOf(const CoreDriver& core)
{
    std::vector<FeatureLine> lines;
    for (const std::string_view keyword : core.Features())
        lines.push_back({keyword, core.Description().Find(keyword), UseOfFeature(keyword),
                         core.Selected(keyword), core.Options(keyword)});
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

void Print(std::ostream& out, const Ppd& ppd, const std::vector<FeatureLine>& lines)
{
    out << ppd.PrinterName() << " (" << ppd.FileName() << "): " << lines.size() << " features, "
        << Counted(ppd.Constraints().size(), "constraint") << "\n";
    const auto section = [&](const std::string& title, const auto& belongs) {
        bool begun = false;
        for (const FeatureLine& line : lines) {
            if (!belongs(line)) continue;
            if (!std::exchange(begun, true)) out << "\n" << title << "\n";
            out << "  " << Padded(std::string(line.keyword), 24) << Padded(line.use.control, 22)
                << OptionsText(line) << "\n";
        }
    };
    for (int page = 0; page <= static_cast<int>(PageName::Information); ++page) {
        const std::string_view name = TextOf(static_cast<PageName>(page));
        section("Page " + std::string(name), [&](const FeatureLine& line) { return line.use.page == name; });
    }
    section("Behaviour",
            [](const FeatureLine& line) { return line.use.page.empty() && !line.use.control.empty(); });
    section("Not shown by the driver", [](const FeatureLine& line) { return line.use.control.empty(); });
}

Json OrNull(std::string_view text)
{
    return text.empty() ? Json() : Json(text);
}

// Lengths are kept in thousandths of a millimetre.
Json Millimetres(int length)
{
    return length / 1000.0;
}

Json AsJson(const Ppd& ppd, const FeatureLine& line)
{
    constexpr std::string_view kKinds[] = {"PickOne", "PickMany", "Boolean"};
    const PpdFeature* const feature = line.feature;
    Json json{{"keyword", line.keyword}, {"text", feature ? OrNull(feature->text) : Json()}};
    json["group"] = feature ? OrNull(feature->group) : Json();
    json["kind"] = feature ? Json(kKinds[static_cast<std::size_t>(feature->type)]) : Json();
    json["installable"] = feature && feature->installable;
    json["job_language"] = feature && feature->jcl;
    json["order"] = feature && !feature->section.empty() ? Json(feature->order) : Json();
    json["section"] = feature ? OrNull(feature->section) : Json();
    json["page"] = OrNull(line.use.page);
    json["control"] = OrNull(line.use.control);
    json["control_id"] = line.use.id ? Json(line.use.id) : Json();
    json["selected"] = line.selected;
    json["options"] = line.options;
    json["option_texts"] = Json::array();
    for (const std::string_view option : line.options) {
        const PpdOption* const found = ppd.Find(line.keyword, option);
        json["option_texts"].push_back(found ? Json(found->text) : Json());
    }
    return json;
}

Json SideJson(const Ppd& ppd, std::size_t feature, std::size_t option)
{
    const PpdFeature& found = ppd.Feature(feature);
    return {{"feature", found.keyword},
            {"option", option == kNoOption ? Json() : Json(found.options[option].keyword)}};
}

void AddSizes(const Ppd& ppd, Json& json)
{
    json["sizes"] = Json::array();
    for (const PpdForm& form : ppd.Forms())
        json["sizes"].push_back({{"keyword", form.keyword},
                                 {"width", Millimetres(form.width)},
                                 {"height", Millimetres(form.height)},
                                 {"left", Millimetres(form.left)},
                                 {"bottom", Millimetres(form.bottom)},
                                 {"right", Millimetres(form.right)},
                                 {"top", Millimetres(form.top)}});
    json["custom_size"] = nullptr;
    if (const std::optional<PpdCustomSize>& size = ppd.CustomSize())
        json["custom_size"] = {{"min_width", Millimetres(size->minWidth)},
                               {"max_width", Millimetres(size->maxWidth)},
                               {"min_height", Millimetres(size->minHeight)},
                               {"max_height", Millimetres(size->maxHeight)}};
}

Json AsJson(const Ppd& ppd, const std::vector<FeatureLine>& lines)
{
    Json json{{"ppd", ppd.FileName()}, {"problem", ""}, {"printer", ppd.PrinterName()}};
    json["features"] = Json::array();
    for (const FeatureLine& line : lines)
        json["features"].push_back(AsJson(ppd, line));
    json["constraints"] = Json::array();
    for (const PpdConstraint& each : ppd.Constraints())
        json["constraints"].push_back(Json::array(
            {SideJson(ppd, each.feature1, each.option1), SideJson(ppd, each.feature2, each.option2)}));
    AddSizes(ppd, json);
    return json;
}

// One file is told as one object; several stand in a list, which is written file by file.
int ListFeatures(const Arguments& arguments, Output& output)
{
    const std::vector<std::string> files = PpdOperands(arguments, "features");
    const bool asJson = arguments.Has("json"), asList = asJson && files.size() > 1;
    const char* between = asList ? "{\"command\": \"features\", \"files\": [\n" : "";
    int status = kExitSuccess;
    for (const std::string& file : files) {
        output.out << std::exchange(between, asList ? ",\n" : "\n");
        Json told = asList ? Json::object() : Json{{"command", "features"}};
        const PpdResult read = ReadPpdOperand(file);
        if (!read) {
            output.err << "tintwerk: " << read.error.Full() << "\n";
            status = kExitFailed;
            told.update({{"ppd", file}, {"problem", read.error.Full()}});
        } else {
            Selections defaults;
            const CoreDriver core(*read.ppd, defaults);
            if (asJson)
                told.update(AsJson(*read.ppd, LinesOf(core)));
            else
                Print(output.out, *read.ppd, LinesOf(core));
        }
        if (asJson) output.out << JsonText(told);
    }
    output.out << (asList ? "\n]}\n" : asJson ? "\n" : "");
    return status;
}

} // namespace

Command FeaturesCommand()
{
    return {"features",
            "lists the features of PPDs and the controls that stand for them",
            "tintwerk features FILE|FOLDER|-... [--json]",
            "The option that is selected by default stands behind an asterisk.\n",
            {{"json", "", "tells it as JSON, with texts, groups, constraints and sizes"}},
            ListFeatures};
}

} // namespace tintwerk
