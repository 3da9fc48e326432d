#include "host/cli/check_rules.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <tuple>
#include <utility>

#include "host/ppd/ppd_draft.h"
#include "host/ppd/ppd_text.h"

namespace tintwerk {

namespace {

using enum Severity;

// clang-format off
constexpr Rule kRules[] = {
    // The file as a text.
    {"unreadable",         Error,   "The file is no PPD, cannot be read, or lacks a part without which the rest has no meaning.", nullptr},
    {"first-line",         Error,   "*PPD-Adobe is not the first line; programs do not know the file as a PPD.", nullptr},
    {"byte-order-mark",    Warning, "A byte order mark stands before the first statement; other readers refuse the file.", nullptr},
    {"stray-line",         Warning, "A line outside of a value does not begin with an asterisk; it is passed over.", nullptr},
    {"closing-quote",      Error,   "The closing quote of a value is missing; other readers lose the statements that follow.", nullptr},
    {"colon",              Warning, "A colon is missing behind a keyword that takes a value; the line says nothing.", CheckStatements},
    {"keyword-misspelt",   Warning, "A keyword is spelt almost like one of the format's; the line says nothing.", CheckStatements},
    {"line-length",        Note,    "A line has more than 255 characters; readers with buffers of that size cut it.", CheckStatements},
    // What the file says about itself.
    {"required-missing",   Warning, "A keyword that every PPD must have is missing or empty.", CheckHeader},
    {"encoding-missing",   Warning, "There is no *LanguageEncoding; texts beyond ASCII are guessed.", CheckHeader},
    {"encoding-unknown",   Warning, "*LanguageEncoding names no encoding of the format; texts beyond ASCII are guessed.", CheckHeader},
    {"value-quotes",       Warning, "A value that the format wants in quotes stands without; other readers refuse or misread it.", CheckStatements},
    {"value-unknown",      Warning, "A keyword has a value that the format does not know.", CheckStatements},
    {"file-name",          Warning, "*PCFileName is not of the form NAME.PPD with at most 8 characters before the dot.", CheckStatements},
    {"product-form",       Warning, "*Product is not a PostScript string in parentheses; interpreters are not recognised by it.", CheckStatements},
    {"short-name",         Warning, "*ShortNickName has more than 31 characters; Windows cuts it.", CheckHeader},
    {"keyword-twice",      Warning, "A keyword is given twice with different values; the first one counts here, the last one in other readers.", CheckRepeated},
    // Features, options and groups.
    {"feature-not-closed", Error,   "A feature is not closed; other readers refuse the file.", nullptr},
    {"feature-closed-as",  Error,   "A feature is closed under another name; other readers refuse the file.", nullptr},
    {"feature-not-open",   Error,   "A feature is closed that is not open; other readers refuse the file.", nullptr},
    {"group-not-closed",   Error,   "A group is not closed; other readers refuse the file.", nullptr},
    {"group-closed-as",    Error,   "A group is closed under another name; other readers refuse the file.", nullptr},
    {"group-not-open",     Error,   "A group is closed that is not open; other readers refuse the file.", nullptr},
    {"feature-twice",      Warning, "A feature is opened twice; the options of both are taken together.", nullptr},
    {"feature-type",       Warning, "A feature is none of PickOne, PickMany and Boolean; it is taken as PickOne.", nullptr},
    {"no-options",         Error,   "A feature has no options; the pages leave it out.", nullptr},
    {"boolean-options",    Warning, "A Boolean feature lacks the option True or False; a check box of other drivers cannot show it.", CheckFeatures},
    {"option-twice",       Warning, "An option is given twice; the first one counts.", nullptr},
    {"option-form",        Warning, "A line of an option lacks its keyword or its colon; it is passed over.", nullptr},
    {"option-lost",        Warning, "An option is spelt almost like the feature in which it stands; it is passed over.", CheckStatements},
    {"option-quotes",      Warning, "The code of an option is not quoted; other readers refuse or misread it.", CheckStatements},
    {"symbol-unknown",     Error,   "The code of an option is a symbol that no *SymbolValue defines; it is sent as it stands.", CheckStatements},
    {"code-balance",       Error,   "Brackets or parentheses of PostScript code do not balance; the printer stops the job.", CheckStatements},
    {"default-missing",    Warning, "A feature has no default; its first option is taken.", CheckFeatures},
    {"default-lost",       Warning, "A default names a feature that the file spells otherwise; it says nothing.", CheckFeatures},
    {"default-no-option",  Warning, "A default is Unknown, but no such option exists; the first option is taken.", nullptr},
    {"default-unknown",    Warning, "A default is no option of its feature; the first option is taken.", nullptr},
    {"constraint-form",    Warning, "A constraint does not name two features; it is passed over.", nullptr},
    {"constraint-unknown", Warning, "A constraint names what the file does not define; it is passed over.", nullptr},
    {"constraint-self",    Warning, "A constraint names the same feature twice; it is passed over.", nullptr},
    {"order-number",       Warning, "An order dependency does not begin with a number; the feature's code is sent first.", CheckStatements},
    {"order-section",      Warning, "An order dependency names no section of a PostScript job; the feature's code may get lost.", CheckStatements},
    {"order-feature",      Warning, "An order dependency names a feature that the file does not define; it says nothing.", CheckStatements},
    // Texts.
    {"encoding-bytes",     Warning, "A text holds bytes that the file's encoding does not have; people see wrong letters.", CheckStatements},
    {"encoding-none",      Note,    "A text holds bytes beyond ASCII, but the file names no encoding; people may see wrong letters.", CheckStatements},
    {"text-length",        Warning, "A text has more than 80 characters; other readers cut it.", CheckStatements},
    {"keyword-length",     Warning, "A keyword has more than 40 characters; other readers cut it or refuse the file.", CheckStatements},
    {"keyword-form",       Warning, "A keyword holds a blank or a letter beyond ASCII; other readers cut it there.", CheckStatements},
    {"hex",                Warning, "Between \"<\" and \">\" of a text stand no hexadecimal digits in pairs; people see the brackets.", CheckStatements},
    {"text-twice",         Warning, "Two options of a feature have the same text; people cannot tell them apart.", CheckFeatures},
    {"translation-unknown", Warning, "A translation is of a feature or an option that the file does not define; it says nothing.", CheckStatements},
    // Page sizes.
    {"page-size-missing",  Warning, "There is no PageSize; the pages offer no paper, and the spooler gets no forms.", CheckSizes},
    {"page-region-missing", Warning, "There is a PageSize but no PageRegion; a size cannot be chosen together with a paper source.", CheckSizes},
    {"page-region-default", Warning, "The default of PageRegion is not that of PageSize.", CheckSizes},
    {"size-not-in-all",    Warning, "A page size lacks its region, dimension or printable area; its size is unknown.", CheckSizes},
    {"size-unknown",       Warning, "A dimension or a printable area is of no page size; it says nothing.", CheckSizes},
    {"size-numbers",       Warning, "A dimension or a printable area is not made of numbers that describe a rectangle.", CheckSizes},
    {"size-name",          Warning, "The dimension of a page size is not that of the paper it is named after.", CheckSizes},
    {"area-outside",       Warning, "The printable area of a page size is larger than the paper.", CheckSizes},
    {"custom-size",        Warning, "The limits of page sizes of the user's own are missing or make no sense.", CheckCustomSize},
    // What the driver's pages make of it.
    {"feature-misspelt",   Error,   "A feature is spelt almost like one of the driver's own; no control stands for it.", CheckFeatureNames},
    {"feature-missing",    Note,    "A control of the pages finds no feature.", CheckControls},
    {"slider-number",      Error,   "An option is no number; the slider cannot stand for it.", CheckControls},
    {"slider-value",       Error,   "No position of the slider stands for an option; an apply turns it into another one.", CheckControls},
    {"slider-gap",         Error,   "Positions of the slider write options that are not there, which changes nothing.", CheckControls},
    {"slider-text",        Warning, "The text of an option says another number than the page beside the slider.", CheckControls},
    {"field-number",       Error,   "An option is no number; its part of the number field counts 0.", CheckControls},
    {"field-gap",          Error,   "The number field writes options that are not there, which changes nothing.", CheckControls},
    {"box-number",         Error,   "An option is no number; the check box hides.", CheckControls},
    {"box-gap",            Error,   "The check box writes an option that is not there, which changes nothing.", CheckControls},
    {"popup-full",         Error,   "A feature has more options than a popup offers; the last ones cannot be chosen.", CheckControls},
    {"popup-text",         Error,   "The text of an option is longer than the core driver's reply; the popup shows an empty line.", CheckControls},
    {"popup-hidden",       Note,    "A popup with a single option is hidden.", CheckControls},
    {"popup-empty",        Error,   "A selection forbids every option of a popup, which is left empty.", CheckEmptyPopups},
    {"popup-empty-pair",   Warning, "Two selections together forbid every option of a popup, which is left empty.", CheckEmptyPopups},
    {"borderless-alone",   Note,    "A borderless size has no size to go with; it stands in the list by itself, its box checked.", CheckBorderless},
    {"cartridge-colors",   Error,   "The option CartridgeColors, whose text lists the colours of the cartridges, is missing.", CheckScreenPrinting},
    {"cartridge-code",     Warning, "A colour code has no picture.", CheckScreenPrinting},
    {"cartridge-count",    Warning, "There are fewer colour codes than cartridges; the last one is repeated.", CheckScreenPrinting},
    {"screen-modes",       Error,   "The screen mode has fewer options than the page writes.", CheckScreenPrinting},
    {"too-long",           Error,   "A keyword is longer than a request to the core driver; it cannot be asked for or chosen.", CheckLengths},
    {"defaults-conflict",  Warning, "The defaults exclude each other.", CheckConflicts},
    {"advanced-none",      Error,   "The keywords of all features are longer than the core driver's list; there is no advanced page.", CheckAdvancedPage},
    {"advanced-full",      Error,   "The advanced page is full and leaves features out.", CheckAdvancedPage},
    {"advanced-lists",     Note,    "What the advanced page lists.", CheckAdvancedPage},
    // With --pages.
    {"pages-problem",      Error,   "The pages do not open or do not apply.", nullptr},
    {"pages-change",       Error,   "Applying the pages without a change changes a selection.", nullptr},
    {"pages-message",      Warning, "The pages show a message by themselves.", nullptr},
};
// clang-format on
static_assert(std::size(kRules) <= RuleChoice().size());

} // namespace

std::string_view TextOf(Severity severity)
{
    constexpr std::string_view kTexts[] = {"error", "warning", "note"};
    return kTexts[static_cast<std::size_t>(severity)];
}

std::span<const Rule> Rules()
{
    return kRules;
}

std::size_t NumberOf(const Rule& rule)
{
    return static_cast<std::size_t>(&rule - kRules);
}

const Rule* FindRule(std::string_view code)
{
    const Rule* const rule = std::ranges::find(kRules, code, &Rule::code);
    return rule == std::end(kRules) ? nullptr : rule;
}

namespace {

// Feature and option that a statement speaks of.
std::pair<std::string_view, std::string_view> ConcernOf(const PpdStatement& statement)
{
    using enum PpdKeyword;
    std::string_view words = statement.value;
    switch (statement.keyword) {
    case OpenUI:
    case JclOpenUI:
        return {WithoutAsterisk(statement.option), {}};
    case Default:
        return {statement.main, {}};
    case Option:
        return {statement.main, statement.option};
    case Translation:
        if (statement.main.ends_with(".Translation")) return {statement.option, {}};
        return {statement.main.substr(statement.main.find('.') + 1), statement.option};
    case PaperDimension:
    case ImageableArea:
        return {"PageSize", statement.option};
    case CustomPageSize:
    case ParamCustomPageSize:
        return {"PageSize", kCustomPageSize};
    case OrderDependency: // "10 AnySetup *Duplex"
        NextWord(words);
        NextWord(words);
        [[fallthrough]];
    case UIConstraints:
    case NonUIConstraints:
        return {WithoutAsterisk(NextWord(words)), {}};
    default:
        return {};
    }
}

} // namespace

Place::Place(const PpdStatement& statement) : at(statement.at)
{
    std::tie(feature, option) = ConcernOf(statement);
}

// A size of the user's own has no line of its own among the options.
Place::Place(const PpdFeature& one, const PpdOption& its)
    : at(its.keyword.data() == kCustomPageSize.data() ? its.value.data() : its.keyword.data()),
      feature(one.keyword), option(its.keyword)
{
}

std::string FirstOf(const std::vector<std::string>& texts, std::size_t most)
{
    const std::span first(texts.data(), std::min(texts.size(), most));
    return Joined(first) +
           (texts.size() > most ? " and " + std::to_string(texts.size() - most) + " more" : "");
}

std::string Counted(std::size_t count, std::string_view thing)
{
    return std::to_string(count).append(" ").append(thing) + (count == 1 ? "" : "s");
}

void AddFinding(std::vector<Finding>& findings, const RuleChoice& choice, std::string_view code,
                const PpdMessage& message)
{
    const Rule* const rule = FindRule(code);
    if (rule && choice[NumberOf(*rule)])
        findings.push_back(
            {rule, message.file, std::max(message.line, 1u), message.feature, message.option, message.text});
}

void PpdCheck::Add(std::string_view code, const Place& place, std::string text)
{
    AddFinding(findings_, choice_, code,
               ppd.At(place.at, std::move(text), code, place.feature, place.option));
}

std::vector<Finding> PpdCheck::Run()
{
    std::set<void (*)(PpdCheck&)> done;
    for (const Rule& rule : kRules) {
        if (rule.find && choice_[NumberOf(rule)] && done.insert(rule.find).second) rule.find(*this);
    }
    for (const PpdMessage& warning : ppd.Warnings())
        AddFinding(findings_, choice_, warning.code, warning);
    return std::move(findings_);
}

} // namespace tintwerk
