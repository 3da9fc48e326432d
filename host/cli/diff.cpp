// tintwerk diff: what came, went or changed between two PPDs or two selections files.
#include <algorithm>
#include <ostream>

#include "host/cli/json.h"
#include "host/cli/ppd_files.h"
#include "host/cli/program.h"
#include "host/core/selections.h"
#include "host/ppd/wide_text.h"
#include "platform/whole_file.h"

namespace tintwerk {

namespace {

struct Difference
{
    std::string_view
        what; // "text", "default", "code", "constraint", ...; that of the feature or option itself
    std::string feature, option;
    std::optional<std::string> before, after; // nothing where there is none
};

using Differences = std::vector<Difference>;

void Compare(Differences& found, std::string_view what, std::string_view feature, std::string_view option,
             std::string_view before, std::string_view after)
{
    if (before != after)
        found.push_back(
            {what, std::string(feature), std::string(option), std::string(before), std::string(after)});
}

std::string DefaultOf(const PpdFeature& feature)
{
    return std::string(feature.options[feature.defaultOption].keyword);
}

const PpdOption* FindOption(const PpdFeature& feature, std::string_view keyword)
{
    const auto option = std::ranges::find(feature.options, keyword, &PpdOption::keyword);
    return option == feature.options.end() ? nullptr : &*option;
}

void CompareFeatures(Differences& found, const PpdFeature& a, const PpdFeature& b)
{
    Compare(found, "text", a.keyword, "", a.text, b.text);
    Compare(found, "default", a.keyword, "", DefaultOf(a), DefaultOf(b));
    for (const PpdOption& option : a.options) {
        const PpdOption* const other = FindOption(b, option.keyword);
        if (!other) {
            found.push_back({"option",
                             std::string(a.keyword),
                             std::string(option.keyword),
                             std::string(option.text),
                             {}});
            continue;
        }
        Compare(found, "text", a.keyword, option.keyword, option.text, other->text);
        Compare(found, "code", a.keyword, option.keyword, option.value, other->value);
    }
    for (const PpdOption& option : b.options) {
        if (!FindOption(a, option.keyword))
            found.push_back({"option",
                             std::string(a.keyword),
                             std::string(option.keyword),
                             {},
                             std::string(option.text)});
    }
}

// "MediaType Film / Duplex *": an asterisk stands for every option that is not off.
std::vector<std::string> ConstraintsOf(const Ppd& ppd)
{
    const auto side = [&ppd](std::size_t feature, std::size_t option) {
        const PpdFeature& found = ppd.Feature(feature);
        return std::string(found.keyword) + " " +
               (option == kNoOption ? "*" : std::string(found.options[option].keyword));
    };
    std::vector<std::string> texts;
    for (const PpdConstraint& each : ppd.Constraints()) {
        std::string first = side(each.feature1, each.option1), second = side(each.feature2, each.option2);
        if (second < first) std::swap(first, second);
        texts.push_back(first + " / " + second);
    }
    std::ranges::sort(texts);
    texts.erase(std::ranges::unique(texts).begin(), texts.end());
    return texts;
}

Differences ComparePpds(const Ppd& a, const Ppd& b)
{
    Differences found;
    for (const PpdFeature& feature : a.Features()) {
        if (const PpdFeature* const other = b.Find(feature.keyword))
            CompareFeatures(found, feature, *other);
        else
            found.push_back({"feature", std::string(feature.keyword), "", std::string(feature.text), {}});
    }
    for (const PpdFeature& feature : b.Features()) {
        if (!a.Find(feature.keyword))
            found.push_back({"feature", std::string(feature.keyword), "", {}, std::string(feature.text)});
    }
    const std::vector<std::string> before = ConstraintsOf(a), after = ConstraintsOf(b);
    for (const std::string& text : before)
        if (!std::ranges::binary_search(after, text)) found.push_back({"constraint", "", "", text, {}});
    for (const std::string& text : after)
        if (!std::ranges::binary_search(before, text)) found.push_back({"constraint", "", "", {}, text});
    return found;
}

Differences CompareSelections(const Selections& a, const Selections& b)
{
    Differences found;
    const auto add = [&found](std::string_view feature, const std::string* before, const std::string* after) {
        if (before && after ? *before != *after : before != after)
            found.push_back({"selection", std::string(feature), "",
                             before ? std::optional(*before) : std::nullopt,
                             after ? std::optional(*after) : std::nullopt});
    };
    for (const auto& [feature, option] : a.Chosen())
        add(feature, a.Find(feature), b.Find(feature));
    for (const auto& [feature, option] : b.Chosen())
        if (!a.Find(feature)) add(feature, nullptr, b.Find(feature));
    return found;
}

std::string TextOf(const Difference& each)
{
    const std::string name = each.feature + (each.option.empty() ? "" : " " + each.option);
    const std::string what =
        each.what == "constraint" || each.what == "feature" ? std::string(each.what) + " " : "";
    if (!each.before) return "+ " + what + name + (name.empty() ? "" : ": ") + *each.after;
    if (!each.after) return "- " + what + name + (name.empty() ? "" : ": ") + *each.before;
    if (each.what == "code") return "  " + name + ": another code";
    return "  " + name + ": " + std::string(each.what) + " " + *each.before + " -> " + *each.after;
}

void Report(std::ostream& out, const Arguments& arguments, const Differences& found)
{
    if (!arguments.Has("json")) {
        for (const Difference& each : found)
            out << TextOf(each) << "\n";
        return;
    }
    const auto orNull = [](const std::optional<std::string>& text) { return text ? Json(*text) : Json(); };
    Json json{{"command", "diff"}, {"before", arguments.Operands()[0]}, {"after", arguments.Operands()[1]}};
    json["differences"] = Json::array();
    for (const Difference& each : found)
        json["differences"].push_back({{"what", each.what},
                                       {"feature", each.feature},
                                       {"option", each.option},
                                       {"before", orNull(each.before)},
                                       {"after", orNull(each.after)}});
    WriteJson(out, json);
}

bool IsSelections(const std::string& file)
{
    return file.ends_with(".selections");
}

int Run(const Arguments& arguments, Output& output)
{
    const auto operands = arguments.Operands();
    if (operands.size() != 2) throw CommandError(kExitUsage, "two files are expected: tintwerk diff A B");
    const std::string &a = operands[0], &b = operands[1];
    if (IsSelections(a) != IsSelections(b))
        throw CommandError(kExitUsage, "two PPDs or two .selections files are expected, not one of each");
    Differences found;
    if (IsSelections(a)) {
        for (const std::string& file : operands)
            if (!std::filesystem::is_regular_file(PathFromUtf8(file)))
                throw CommandError(kExitUsage, file + ": the file cannot be read");
        found = CompareSelections(Selections::Load(PathFromUtf8(a)), Selections::Load(PathFromUtf8(b)));
    } else {
        const PpdResult before = ReadPpdOperand(a), after = ReadPpdOperand(b);
        for (const PpdResult* each : {&before, &after})
            if (!*each) throw CommandError(kExitUsage, each->error.Full());
        found = ComparePpds(*before.ppd, *after.ppd);
    }
    Report(output.out, arguments, found);
    return found.empty() ? kExitSuccess : kExitFailed;
}

} // namespace

Command DiffCommand()
{
    return {
        "diff",
        "tells what differs between two PPDs or two selections files",
        "tintwerk diff A B [--json]",
        "\"+\" stands before what B adds, \"-\" before what it lacks. Exit status: 0 alike, 1 different, 2 "
        "wrong "
        "use or a\nfile that cannot be read. Selections are kept in files named .selections in the store.\n",
        {{"json", "", "tells it as JSON"}},
        Run};
}

} // namespace tintwerk
