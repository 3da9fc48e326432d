// The rules of page sizes: each needs a region, a dimension and a printable area that go together.
#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "host/cli/check_rules.h"
#include "host/ppd/ppd_draft.h"
#include "host/ppd/ppd_text.h"
#include "src/bindings/borderless_sizes.h"

namespace tintwerk {

namespace {

struct KnownPaper
{
    std::string_view name;
    double width, height; // points
};
// Names that mean one size everywhere.
constexpr KnownPaper kPaperSizes[] = {
    {"A0", 2384, 3370},       {"A1", 1684, 2384},     {"A2", 1191, 1684},    {"A3", 842, 1191},
    {"A4", 595, 842},         {"A5", 420, 595},       {"A6", 297, 420},      {"Letter", 612, 792},
    {"Legal", 612, 1008},     {"Tabloid", 792, 1224}, {"Ledger", 1224, 792}, {"Statement", 396, 612},
    {"Env10", 297, 684},      {"EnvDL", 312, 624},    {"EnvC5", 459, 649},   {"EnvC6", 323, 459},
    {"EnvMonarch", 279, 540}, {"AnsiC", 1224, 1584},  {"AnsiD", 1584, 2448}, {"AnsiE", 2448, 3168},
};
constexpr double kTolerance = 4; // points; makers round, and millimetres are no points

// Numbers of a value, in its order; fewer when one is none.
std::vector<double> Numbers(std::string_view value)
{
    std::vector<double> numbers;
    for (std::string_view word = NextWord(value); !word.empty(); word = NextWord(value)) {
        if (word.find_first_not_of("0123456789.+-") != word.npos) break;
        numbers.push_back(PpdNumber(word));
    }
    return numbers;
}

struct SizeParts
{
    const PpdStatement *dimension = nullptr, *area = nullptr;
};

void CheckDimension(PpdCheck& check, const PpdStatement& statement)
{
    const std::vector<double> lengths = Numbers(statement.value);
    if (lengths.size() < 2 || lengths[0] <= 0 || lengths[1] <= 0)
        return check.Tell("size-numbers", statement, "width and height expected, not ",
                          Quoted(statement.value), "; the spooler's form has no size");
    for (const KnownPaper& paper : kPaperSizes) {
        const bool named = paper.name == statement.option || IsTwin(statement.option, paper.name);
        const auto is = [&](double width, double height) {
            return std::abs(lengths[0] - width) <= kTolerance && std::abs(lengths[1] - height) <= kTolerance;
        };
        if (named && !is(paper.width, paper.height) && !is(paper.height, paper.width))
            check.Tell("size-name", statement, paper.name, " has ", static_cast<int>(paper.width), " x ",
                       static_cast<int>(paper.height), " points, not ", Quoted(statement.value));
    }
}

void CheckArea(PpdCheck& check, const SizeParts& parts)
{
    const std::vector<double> sides = Numbers(parts.area->value);
    if (sides.size() < 4 || sides[0] >= sides[2] || sides[1] >= sides[3])
        return check.Tell("size-numbers", *parts.area, "left, bottom, right and top expected, not ",
                          Quoted(parts.area->value), "; nothing can be printed on it");
    const std::vector<double> paper =
        parts.dimension ? Numbers(parts.dimension->value) : std::vector<double>();
    if (paper.size() < 2) return;
    if (sides[0] < -1 || sides[1] < -1 || sides[2] > paper[0] + 1 || sides[3] > paper[1] + 1)
        check.Tell("area-outside", *parts.area, Quoted(parts.area->value), " reaches beyond the paper of ",
                   Quoted(parts.dimension->value));
}

} // namespace

void CheckSizes(PpdCheck& check)
{
    const PpdFeature *const sizes = check.ppd.Find("PageSize"), *const regions = check.ppd.Find("PageRegion");
    if (!sizes) {
        const bool opened = std::ranges::any_of(check.ppd.Statements(), [](const PpdStatement& each) {
            return each.keyword == PpdKeyword::OpenUI && Place(each).feature == "PageSize";
        });
        if (!opened) // it may be told as one without options
            check.Tell("page-size-missing", Place(),
                       "there is no \"*OpenUI *PageSize\": the pages offer no paper");
        return;
    }
    const std::string_view size = sizes->options[sizes->defaultOption].keyword;
    const std::string_view region = regions ? regions->options[regions->defaultOption].keyword : size;
    if (!regions)
        check.Tell("page-region-missing", *sizes, "there is no PageRegion beside it");
    else if (regions->hasDefault && sizes->hasDefault && region != size)
        check.Tell("page-region-default", *regions, "the default ", region, " is not that of PageSize, ",
                   size);
    std::map<std::string_view, SizeParts> known;
    for (const PpdStatement& statement : check.ppd.Statements()) {
        const bool isDimension = statement.keyword == PpdKeyword::PaperDimension;
        if (!isDimension && statement.keyword != PpdKeyword::ImageableArea) continue;
        if (!check.ppd.Find("PageSize", statement.option))
            check.Tell("size-unknown", statement, Quoted(statement.option), " is no option of \"*PageSize\"");
        SizeParts& parts = known[statement.option];
        const PpdStatement*& part = isDimension ? parts.dimension : parts.area;
        if (!part) part = &statement; // the first one counts
    }
    for (const PpdOption& option : sizes->options) {
        if (option.keyword.starts_with(kCustomPrefix)) continue;
        const SizeParts parts = known[option.keyword];
        std::vector<std::string> missing;
        if (regions && !check.ppd.Find("PageRegion", option.keyword)) missing.emplace_back("*PageRegion");
        if (!parts.dimension) missing.emplace_back("*PaperDimension");
        if (!parts.area) missing.emplace_back("*ImageableArea");
        if (!missing.empty())
            check.Tell("size-not-in-all", {*sizes, option}, option.keyword, " has no ", Joined(missing));
        if (parts.dimension) CheckDimension(check, *parts.dimension);
        if (parts.area) CheckArea(check, parts);
    }
}

namespace {

std::string_view UnitOf(const PpdStatement& limit)
{
    std::string_view value = limit.value;
    NextWord(value); // its place among the values of a job
    return NextWord(value);
}

} // namespace

void CheckCustomSize(PpdCheck& check)
{
    if (!check.ppd.Find("PageSize")) return;
    if (!check.ppd.CustomSize()) {
        const auto limit = std::ranges::find(check.ppd.Statements(), PpdKeyword::ParamCustomPageSize,
                                             &PpdStatement::keyword);
        if (limit != check.ppd.Statements().end())
            check.Tell("custom-size", *limit, "the limit says nothing without \"*CustomPageSize True\"");
        return;
    }
    const PpdCustomSize& size = *check.ppd.CustomSize();
    const auto statement = [&](PpdKeyword keyword, std::string_view option) {
        return std::ranges::find_if(check.ppd.Statements(), [=](const PpdStatement& each) {
            return each.keyword == keyword && each.option == option;
        });
    };
    for (const auto& [name, least, most] : {std::tuple("Width", size.minWidth, size.maxWidth),
                                            std::tuple("Height", size.minHeight, size.maxHeight)}) {
        const auto limit = statement(PpdKeyword::ParamCustomPageSize, name);
        if (limit == check.ppd.Statements().end())
            check.Tell("custom-size", *statement(PpdKeyword::CustomPageSize, "True"),
                       "\"*ParamCustomPageSize ", name, "\" is missing");
        else if (most == 0 || least > most || UnitOf(*limit) != "points")
            check.Tell("custom-size", *limit, "place, \"points\", least and greatest value expected, not ",
                       Quoted(limit->value));
    }
}

} // namespace tintwerk
