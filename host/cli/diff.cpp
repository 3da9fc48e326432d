// tintwerk diff: what came, went or changed between two PPDs or two selections files.
#include <map>
#include <ostream>
#include <tuple>

#include "host/cli/json.h"
#include "host/cli/ppd_files.h"
#include "host/cli/program.h"
#include "host/core/selections.h"
#include "host/ppd/wide_text.h"

namespace tintwerk {

namespace {

// Everything that a file says: feature, option, what ("text", "default", "code", "constraint", "selection").
using Facts = std::map<std::tuple<std::string, std::string, std::string>, std::string>;

// "MediaType Film", or with an asterisk for every option that is not off.
std::string SideText(const Ppd& ppd, std::size_t feature, std::size_t option)
{
    const PpdFeature& found = ppd.Feature(feature);
    return std::string(found.keyword) + " " +
           (option == kNoOption ? "*" : std::string(found.options[option].keyword));
}

Facts FactsOf(const Ppd& ppd)
{
    Facts facts;
    for (const PpdFeature& feature : ppd.Features()) {
        const std::string keyword(feature.keyword);
        facts[{keyword, "", "text"}] = feature.text;
        facts[{keyword, "", "default"}] = feature.options[feature.defaultOption].keyword;
        for (const PpdOption& option : feature.options) {
            facts[{keyword, std::string(option.keyword), "text"}] = option.text;
            facts[{keyword, std::string(option.keyword), "code"}] = option.value;
        }
    }
    for (const PpdConstraint& each : ppd.Constraints()) {
        const std::string first = SideText(ppd, each.feature1, each.option1);
        const std::string second = SideText(ppd, each.feature2, each.option2);
        const std::string both = std::min(first, second) + " / " + std::max(first, second);
        facts[{"", both, "constraint"}] = both;
    }
    return facts;
}

Facts FactsOf(const std::string& file)
{
    Facts facts;
    if (file.ends_with(".selections")) {
        const Selections selections = Selections::FromText(file, ContentOfFile(file, kExitUsage));
        if (!selections.Warnings().empty()) Misused(selections.Warnings().front().Full());
        for (const auto& [feature, option] : selections.Chosen())
            facts[{std::string(feature), "", "selection"}] = option;
        return facts;
    }
    const PpdResult read = ReadPpdOperand(file);
    if (!read) Misused(read.error.Full());
    return FactsOf(*read.ppd);
}

struct Difference
{
    std::string feature, option, what;
    const std::string *before, *after; // null where one says nothing
};

// Of a feature or an option that one lacks only its text is told.
bool IsImplied(const Facts& facts, const Facts& others, const Facts::key_type& key)
{
    const auto& [feature, option, what] = key;
    const auto lacks = [&others, &feature = feature](const std::string& of, const char* fact) {
        return !others.contains({feature, of, fact});
    };
    return facts.contains({feature, "", "text"}) &&
           ((!option.empty() && lacks("", "text")) || (what != "text" && lacks(option, "text")));
}

std::vector<Difference> Compare(const Facts& before, const Facts& after)
{
    std::vector<Difference> found;
    const auto add = [&found](const Facts::key_type& key, const std::string* first,
                              const std::string* second) {
        const auto& [feature, option, what] = key;
        const bool whole = what == "text" && (!first || !second);
        found.push_back({feature, feature.empty() ? "" : option,
                         !whole           ? what
                         : option.empty() ? "feature"
                                          : "option",
                         first, second});
    };
    for (const auto& [key, text] : before) {
        const auto other = after.find(key);
        if (other == after.end() ? !IsImplied(before, after, key) : other->second != text)
            add(key, &text, other == after.end() ? nullptr : &other->second);
    }
    for (const auto& [key, text] : after)
        if (!before.contains(key) && !IsImplied(after, before, key)) add(key, nullptr, &text);
    return found;
}

std::string TextOf(const Difference& each)
{
    const std::string name = each.feature + (each.option.empty() ? "" : " " + each.option);
    if (each.before && each.after)
        return "  " + name + ": " +
               (each.what == "code" ? "another code" : each.what + " " + *each.before + " -> " + *each.after);
    const std::string& text = each.before ? *each.before : *each.after;
    const bool isNamed = each.what == "option" || each.what == "selection";
    return (each.before ? "- " : "+ ") + (isNamed ? name : each.what + (name.empty() ? "" : " " + name)) +
           (text.empty() ? "" : ": " + text);
}

int CompareSides(const Arguments& arguments, Output& output)
{
    const auto files = arguments.Operands();
    if (files.size() != 2 || files[0].ends_with(".selections") != files[1].ends_with(".selections"))
        Misused("two PPDs or two .selections files are expected: tintwerk diff A B");
    const Facts before = FactsOf(files[0]), after = FactsOf(files[1]);
    const std::vector<Difference> found = Compare(before, after);
    Json json{{"command", "diff"}, {"before", files[0]}, {"after", files[1]}, {"differences", Json::array()}};
    const auto orNull = [](const std::string* text) { return text ? Json(*text) : Json(); };
    for (const Difference& each : found) {
        if (!arguments.Has("json")) output.out << TextOf(each) << "\n";
        json["differences"].push_back({{"what", each.what},
                                       {"feature", each.feature},
                                       {"option", each.option},
                                       {"before", orNull(each.before)},
                                       {"after", orNull(each.after)}});
    }
    if (arguments.Has("json")) output.out << JsonText(json) << "\n";
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
        CompareSides};
}

} // namespace tintwerk
