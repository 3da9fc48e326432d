// The rules of the PPD format, whatever the driver: what the file says about itself, texts, codes, defaults
// and translations.
#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "host/cli/check_rules.h"
#include "host/cli/near_names.h"
#include "host/ppd/encoding.h"
#include "host/ppd/keyword_table.h"
#include "host/ppd/ppd_draft.h"
#include "host/ppd/ppd_text.h"

namespace tintwerk {

namespace {

using K = PpdKeyword;

constexpr std::string_view kRequired[] = {
    "FormatVersion", "FileVersion", "LanguageVersion", "PCFileName",    "Manufacturer",
    "Product",       "PSVersion",   "ModelName",       "ShortNickName", "NickName",
};
constexpr std::string_view kSections[] = {"ExitServer", "Prolog",   "DocumentSetup",
                                          "PageSetup",  "JCLSetup", "AnySetup"};
constexpr std::size_t kLongestLine = 255;
constexpr std::size_t kLongestText = 80;
constexpr std::size_t kLongestKeyword = 40;
constexpr std::size_t kLongestShortName = 31;

std::string_view WithoutText(std::string_view value)
{
    return Trim(value.substr(0, value.find('/')));
}

bool IsAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

// ---- what the file says about itself

void CheckPcFileName(PpdCheck& check, const PpdStatement& statement)
{
    const std::string_view name = Trim(statement.value);
    const std::size_t dot = name.find('.');
    const bool good = dot != name.npos && dot > 0 && dot <= 8 &&
                      EqualIgnoringCase(name.substr(dot), ".ppd") && name.find(' ') == name.npos;
    if (!good)
        check.Tell("file-name", statement, Quoted(name),
                   " is not of the form NAME.PPD with at most 8 characters before the dot");
}

bool TakesValue(K keyword)
{
    return keyword >= K::OrderDependency && keyword <= K::Default;
}

} // namespace

void CheckHeader(PpdCheck& check)
{
    std::set<std::string_view> present;
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (!statement.hasValue && TakesValue(statement.keyword))
            check.Tell(
                "colon", statement, "\":\" and a value expected behind ",
                Quoted(Starred(statement.keyword == K::Default ? "Default" + std::string(statement.main)
                                                               : std::string(statement.main))),
                "; the line says nothing");
        if (statement.keyword != K::Header && statement.keyword != K::Other) continue;
        if (std::ranges::find(kRequired, statement.main) != std::end(kRequired))
            present.insert(statement.main);
        if (statement.main == "PCFileName") CheckPcFileName(check, statement);
        if (statement.main == "Product" && statement.hasValue &&
            !(Trim(statement.value).starts_with('(') && Trim(statement.value).ends_with(')')))
            check.Tell("product-form", statement, Quoted(statement.value),
                       " expected in parentheses, as the interpreter answers it");
    }
    for (const std::string_view keyword : kRequired) {
        if (!present.contains(keyword))
            check.Tell("required-missing", Place(), Quoted(Starred(keyword)),
                       " is missing; every PPD must have it");
    }
    const Ppd::Header& header = check.ppd.About();
    if (header.languageEncoding.empty())
        check.Tell("encoding-missing", Place(),
                   "\"*LanguageEncoding\" is missing: texts beyond ASCII are taken as UTF-8 or Windows ANSI");
    else if (PpdEncodingFromName(header.languageEncoding) == PpdEncoding::Unknown &&
             header.languageEncoding != "None")
        check.Tell("encoding-unknown", Place(header.languageEncoding.data()), Quoted(header.languageEncoding),
                   " is no encoding of the format: texts beyond ASCII are taken as UTF-8 or Windows ANSI");
    if (header.shortNickName.size() > kLongestShortName)
        check.Tell("short-name", Place(header.shortNickName.data()), header.shortNickName.size(),
                   " characters; ", kLongestShortName, " are allowed");
}

// A file may override what it includes; that is no mistake.
void CheckRepeated(PpdCheck& check)
{
    KeywordTable first;
    const std::span<const PpdStatement> statements = check.ppd.Statements();
    const auto fileOf = [&](const PpdStatement& statement) {
        return std::ranges::find_if(check.ppd.Files(),
                                    [&](const PpdFile& file) { return file.Holds(statement.at); });
    };
    for (std::uint32_t i = 0; i < statements.size(); ++i) {
        const PpdStatement& statement = statements[i];
        const K keyword = statement.keyword;
        const bool sized = keyword == K::PaperDimension || keyword == K::ImageableArea;
        const bool single =
            keyword == K::Default || keyword == K::LanguageEncoding || keyword == K::LanguageLevel ||
            keyword == K::ColorDevice || keyword == K::MaxMediaWidth || keyword == K::MaxMediaHeight ||
            (keyword == K::Header && statement.main != "Product" && statement.main != "PSVersion");
        if (!sized && !single) continue;
        const std::uint32_t at =
            first.Insert(sized ? statement.option : statement.main, i, static_cast<std::uint32_t>(keyword));
        const PpdStatement& before = statements[at];
        if (at == i || WithoutText(before.value) == WithoutText(statement.value) ||
            fileOf(before) != fileOf(statement))
            continue;
        const std::string name = (keyword == K::Default ? "*Default" : "*") + std::string(statement.main) +
                                 (sized ? " " + std::string(statement.option) : "");
        check.Tell("keyword-twice", statement, name, " again with another value; the first one, ",
                   Quoted(Trim(before.value)), " at line ", std::to_string(check.ppd.At(before.at, {}).line),
                   ", counts");
    }
}

void CheckDefaults(PpdCheck& check)
{
    std::set<std::string_view> told;
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword != K::Default) continue;
        if (const auto feature = check.ppd.FindFeature(statement.main)) {
            const PpdFeature& found = check.ppd.Feature(*feature);
            if (WithoutText(statement.value) == "Unknown" && !check.ppd.FindOption(*feature, "Unknown"))
                check.Tell("default-no-option", statement, "the default is Unknown; the first option ",
                           Quoted(found.options.front().keyword), " is taken");
            continue;
        }
        const auto meant = std::ranges::find_if(check.ppd.Features(), [&](const PpdFeature& feature) {
            return !feature.hasDefault && IsNearName(feature.keyword, statement.main);
        });
        if (meant == check.ppd.Features().end()) continue;
        told.insert(meant->keyword);
        check.Tell("default-lost", {statement.at, meant->keyword}, "\"*Default", statement.main,
                   "\" belongs to no feature; did you mean "
                   "\"*Default",
                   meant->keyword, "\"?");
    }
    for (const PpdFeature& feature : check.ppd.Features()) {
        if (!feature.hasDefault && !told.contains(feature.keyword))
            check.Tell("default-missing", feature, "no \"*Default", feature.keyword, "\"; the first option ",
                       Quoted(feature.options.front().keyword), " is taken");
        const std::size_t number = *check.ppd.FindFeature(feature.keyword);
        for (const std::string_view option : {"True", "False"}) {
            if (feature.type == PpdFeatureType::Boolean && !check.ppd.FindOption(number, option))
                check.Tell("boolean-options", feature, "the feature is Boolean but has no option ", option);
        }
        KeywordTable texts;
        for (std::uint32_t i = 0; i < feature.options.size(); ++i) {
            const PpdOption& option = feature.options[i];
            if (const std::uint32_t first = texts.Insert(option.text, i); first != i)
                check.Tell("text-twice", {feature, option}, Quoted(option.text), " is also the text of ",
                           feature.options[first].keyword);
        }
    }
}

// ---- texts

namespace {

// A text's bytes that its encoding does not have.
bool HasForeignBytes(const std::string& bytes, PpdEncoding encoding)
{
    const auto any = [&](auto foreign) {
        return std::ranges::any_of(bytes, [&](char c) { return foreign(static_cast<unsigned char>(c)); });
    };
    switch (encoding) {
    case PpdEncoding::Utf8:
        return !IsUtf8(bytes);
    case PpdEncoding::WindowsAnsi:
        return any([](unsigned c) { return c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D; });
    case PpdEncoding::IsoLatin1:
    case PpdEncoding::IsoLatin2:
    case PpdEncoding::IsoLatin5:
        return any([](unsigned c) { return c >= 0x80 && c < 0xA0; });
    default:
        return false;
    }
}

// The first "<...>" that looks as if it were to be hexadecimal, but is not.
std::string_view BrokenHex(std::string_view text)
{
    for (std::size_t open = text.find('<'); open != text.npos; open = text.find('<', open + 1)) {
        const std::size_t close = text.find('>', open);
        if (close == text.npos) return {};
        const std::string_view digits = text.substr(open + 1, close - open - 1);
        const bool meant =
            !digits.empty() && digits.find('<') == digits.npos && std::ranges::all_of(digits, [](char c) {
                return IsBlank(c) || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                       (c >= 'A' && c <= 'Z');
            });
        if (meant && ResolvePpdHex(text.substr(open, close + 1 - open)).size() > digits.size() / 2 + 1)
            return text.substr(open, close + 1 - open);
    }
    return {};
}

std::size_t CharactersOf(const std::string& bytes)
{
    if (!IsUtf8(bytes)) return bytes.size();
    return static_cast<std::size_t>(std::ranges::count_if(bytes, [](char c) { return (c & 0xC0) != 0x80; }));
}

void CheckKeywords(PpdCheck& check, const PpdStatement& statement)
{
    const std::string_view keyword =
        statement.keyword == K::Option ? statement.option : WithoutAsterisk(statement.option);
    if (keyword.size() > kLongestKeyword)
        check.Tell("keyword-length", statement, "the keyword ", keyword, " has ", keyword.size(),
                   " characters; ", kLongestKeyword, " are allowed");
    if (!std::ranges::all_of(keyword, [](char c) { return c > ' ' && c < 127; }))
        check.Tell("keyword-form", statement, "the keyword ", Quoted(keyword),
                   " holds a blank or a letter beyond ASCII");
}

void CheckText(PpdCheck& check, const PpdStatement& statement, std::string_view text, PpdEncoding encoding)
{
    if (text.size() <= kLongestText && IsPlainPpdText(text)) return;
    if (const std::string_view hex = BrokenHex(text); !hex.empty())
        check.Tell("hex", statement, Quoted(hex),
                   " is not made of hexadecimal digits in pairs; people see it as it stands");
    const std::string bytes = ResolvePpdHex(Trim(text));
    if (const std::size_t length = CharactersOf(bytes); length > kLongestText)
        check.Tell("text-length", statement, "the text has ", length, " characters; ", kLongestText,
                   " are allowed");
    if (std::ranges::all_of(bytes, IsAscii)) return;
    if (HasForeignBytes(bytes, encoding))
        check.Tell(
            "encoding-bytes", statement, "the text holds bytes that ",
            (statement.keyword == K::Translation ? "UTF-8" : std::string(check.ppd.About().languageEncoding)),
            " does not have; people see wrong letters");
    else if (encoding == PpdEncoding::Unknown)
        check.Tell("encoding-none", statement,
                   "the text holds bytes beyond ASCII, but the file names no encoding for them");
}

void CheckLines(PpdCheck& check, const PpdStatement& statement)
{
    const char* const end = std::max({statement.main.data() + statement.main.size(),
                                      statement.text.data() + statement.text.size(),
                                      statement.value.data() + statement.value.size()});
    if (end - statement.at <= static_cast<std::ptrdiff_t>(kLongestLine)) return;
    std::string_view rest(statement.at, static_cast<std::size_t>(end - statement.at));
    while (rest.size() > kLongestLine) {
        const std::size_t length = std::min(rest.find_first_of("\r\n"), rest.size());
        if (length > kLongestLine)
            return check.Tell("line-length", {rest.data(), Place(statement).feature},
                              "the line has more than ", kLongestLine, " characters");
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
}

} // namespace

void CheckTexts(PpdCheck& check)
{
    const PpdEncoding encoding = PpdEncodingFromName(check.ppd.About().languageEncoding);
    for (const PpdStatement& statement : check.ppd.Statements()) {
        CheckLines(check, statement);
        switch (statement.keyword) {
        case K::OpenUI:
        case K::JclOpenUI:
        case K::Option:
            CheckKeywords(check, statement);
            [[fallthrough]];
        case K::PaperDimension:
        case K::ImageableArea:
            CheckText(check, statement, statement.text, encoding);
            break;
        case K::Translation:
            CheckText(check, statement, statement.text, PpdEncoding::Utf8);
            break;
        case K::Header:
            CheckText(check, statement, statement.value, encoding);
            break;
        default:
            break;
        }
    }
}

// ---- PostScript code

namespace {

const char* AfterString(const char* at, const char* end)
{
    for (int depth = 1; at < end && depth > 0; ++at) {
        if (*at == '\\')
            ++at;
        else if (*at == '(')
            ++depth;
        else if (*at == ')' && --depth == 0)
            return at + 1;
    }
    return nullptr;
}

// What is wrong with the brackets of a code; empty when they balance. Where the code works with marks of its
// own, "[" and "<<" may end otherwise.
std::string Imbalance(std::string_view code)
{
    const bool marks = code.find("mark") != code.npos;
    std::string open; // closing brackets that are expected; '>' stands for ">>"
    const auto name = [](char bracket) { return bracket == '>' ? "\">>\"" : Quoted({&bracket, 1}); };
    const char* const end = code.data() + code.size();
    for (const char* at = code.data(); at < end;) {
        const char c = *at++;
        const bool twice = at < end && *at == c;
        switch (c) {
        case '%':
            while (at < end && !IsLineEnd(*at))
                ++at;
            break;
        case '(':
            at = AfterString(at, end);
            if (!at) return "\")\" is missing";
            break;
        case '<':
            if (!twice && (at = std::find(at, end, '>')) == end) return "\">\" is missing";
            ++at;
            if (twice && !marks) open += '>';
            break;
        case '[':
            if (!marks) open += ']';
            break;
        case '{':
            open += '}';
            break;
        case '>':
            if (twice) ++at;
            [[fallthrough]];
        case ')':
        case ']':
        case '}':
            if (marks && (c == '>' || c == ']')) break;
            if (open.empty()) return name(c) + " closes nothing";
            if (open.back() != c) return name(c) + " stands where " + name(open.back()) + " is expected";
            open.pop_back();
            break;
        default:
            break;
        }
    }
    return open.empty() ? "" : name(open.back()) + " is missing";
}

} // namespace

void CheckCode(PpdCheck& check)
{
    std::set<std::string_view> symbols;
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword == K::SymbolValue) symbols.insert(statement.option);
    }
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword != K::Option && statement.keyword != K::CustomPageSize) continue;
        const std::string_view feature = statement.keyword == K::Option ? statement.main : "PageSize";
        if (!statement.quoted && statement.value.starts_with('^')) {
            if (!symbols.contains(statement.value))
                check.Tell("symbol-unknown", statement, "the symbol ", statement.value, " is not defined");
            continue;
        }
        if (!statement.quoted) {
            check.Tell("option-quotes", statement, "the code ", Quoted(statement.value.substr(0, 40)),
                       " expected in quotes");
            continue;
        }
        const PpdFeature* const found = check.ppd.Find(feature);
        if (statement.unclosed || (found && found->jcl) || statement.value.empty()) continue;
        if (std::string problem = Imbalance(statement.value); !problem.empty())
            check.Tell("code-balance", statement, "the code does not balance: ", std::move(problem),
                       "; the printer stops the job");
    }
}

// ---- what names features

void CheckOrders(PpdCheck& check)
{
    for (const PpdStatement& statement : check.ppd.Statements()) {
        std::string_view rest = statement.value;
        if (statement.keyword == K::UIConstraints || statement.keyword == K::NonUIConstraints) {
            std::string_view first = NextWord(rest), second = NextWord(rest);
            if (!second.starts_with('*')) second = NextWord(rest);
            if (first == second && first.starts_with('*'))
                check.Tell("constraint-self", statement, "the constraint names ", first, " twice");
            continue;
        }
        if (statement.keyword != K::OrderDependency || !statement.hasValue) continue;
        const std::string_view number = NextWord(rest), section = NextWord(rest);
        const std::string_view feature = WithoutAsterisk(NextWord(rest));
        if (number.empty() || number.find_first_not_of("0123456789.+-") != number.npos)
            check.Tell("order-number", statement, Quoted(number), " is no number; the code is sent first");
        if (std::ranges::find(kSections, section) == std::end(kSections))
            check.Tell("order-section", statement, Quoted(section), " is no section of a job (",
                       Joined({std::begin(kSections), std::end(kSections)}), ")");
        if (statement.main == "OrderDependency" && !check.ppd.Find(feature))
            check.Tell("order-feature", statement, Quoted(Starred(feature)), " is no feature of the file");
    }
}

void CheckTranslations(PpdCheck& check)
{
    // Groups (one of them takes what stands outside of all), and what the file says about itself.
    std::set<std::string_view> others{"General"};
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword == K::OpenGroup || statement.keyword == K::OpenSubGroup)
            others.insert(WithoutText(statement.hasValue ? statement.value : statement.option));
        else if (statement.keyword == K::Header)
            others.insert(statement.main);
    }
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword != K::Translation) continue;
        const std::string_view main = statement.main.substr(statement.main.find('.') + 1);
        const bool ofFeature = main == "Translation";
        const std::string_view keyword = ofFeature ? statement.option : main;
        const auto feature = check.ppd.FindFeature(keyword);
        if (ofFeature ? !feature && !others.contains(keyword)
                      : !feature && !keyword.starts_with("Custom") && !keyword.starts_with("Param") &&
                            IsNearFeature(check.ppd, keyword))
            check.Tell("translation-unknown", statement, Quoted(keyword), " is no feature of the file");
        else if (feature && !ofFeature && !statement.option.empty() && statement.option != "Custom" &&
                 !check.ppd.FindOption(*feature, statement.option))
            check.Tell("translation-unknown", statement, Quoted(statement.option), " is no option of ",
                       Quoted(Starred(keyword)));
    }
}

} // namespace tintwerk
