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

// What the format asks of a keyword's value, whoever reads it.
struct ValueForm
{
    std::string_view keyword;
    bool required, quoted;
    std::string_view words = {}; // that it may be; empty for any
};
// clang-format off
constexpr ValueForm kForms[] = {
    {"FormatVersion",        true,  true, "4.0 4.1 4.2 4.3"},
    {"FileVersion",          true,  true},
    {"LanguageVersion",      true,  false},
    {"PCFileName",           true,  true},
    {"Manufacturer",         true,  true},
    {"Product",              true,  true},
    {"PSVersion",            true,  true},
    {"ModelName",            true,  true},
    {"ShortNickName",        true,  true},
    {"NickName",             true,  true},
    {"LanguageLevel",        false, true, "1 2 3"},
    {"FreeVM",               false, true},
    {"Throughput",           false, true},
    {"PaperDimension",       false, true},
    {"ImageableArea",        false, true},
    {"MaxMediaWidth",        false, true},
    {"MaxMediaHeight",       false, true},
    {"ColorDevice",          false, false, "True False"},
    {"FileSystem",           false, false, "True False"},
    {"VariablePaperSize",    false, false, "True False"},
    {"LandscapeOrientation", false, false, "Plus90 Minus90 Any"},
    {"TTRasterizer",         false, false, "None Accept68K Type42 TrueImage"},
};
// clang-format on
constexpr std::string_view kSections[] = {"ExitServer", "Prolog",   "DocumentSetup",
                                          "PageSetup",  "JCLSetup", "AnySetup"};
constexpr std::size_t kLongestLine = 255;
constexpr std::ptrdiff_t kLongestText = 80;
constexpr std::size_t kLongestKeyword = 40;
constexpr std::size_t kLongestShortName = 31;

bool TakesValue(K keyword)
{
    return keyword >= K::OrderDependency && keyword <= K::Default;
}

} // namespace

// ---- what the file says about itself

void CheckHeader(PpdCheck& check)
{
    for (const auto& [keyword, required, quoted, words] : kForms) {
        if (!required) continue;
        const auto found = std::ranges::find(check.ppd.Statements(), keyword, &PpdStatement::main);
        if (found == check.ppd.Statements().end())
            check.Tell("required-missing", Place(), "\"*", keyword, "\" is missing; every PPD must have it");
        else if (found->hasValue && Trim(found->value).empty())
            check.Tell("required-missing", *found, "\"*", keyword, "\" is empty; every PPD must have it");
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
    // Without texts, the feature of an order, and what makers remark behind a value; code counts as a whole.
    const auto meaning = [](const PpdStatement& each) {
        if (each.keyword == K::SymbolValue || each.keyword == K::CustomPageSize) return Trim(each.value);
        return WithoutText(each.quoted ? each.value : each.value.substr(0, each.value.find('*')));
    };
    for (std::size_t i = 0; i < statements.size(); ++i) {
        const PpdStatement& statement = statements[i];
        const K keyword = statement.keyword;
        const bool sized = keyword >= K::SymbolValue && keyword <= K::ParamCustomPageSize;
        const bool single =
            keyword == K::Default || keyword == K::MaxMediaWidth || keyword == K::MaxMediaHeight ||
            (keyword == K::Header && statement.main != "Product" && statement.main != "PSVersion");
        const std::string_view key = single  ? statement.main
                                     : sized ? statement.option
                                             : Place(statement).feature;
        if (key.empty() || (!sized && !single && keyword != K::OrderDependency)) continue;
        const std::size_t at = first.Insert(key, i, static_cast<std::size_t>(keyword));
        const PpdStatement& before = statements[at];
        if (at == i || meaning(before) == meaning(statement)) continue;
        const std::string_view value = Trim(before.value);
        const PpdMessage counts = check.ppd.At(before.at, {});
        if (counts.file == check.ppd.At(statement.at, {}).file)
            check.Tell("keyword-twice", statement, keyword == K::Default ? "*Default" : "*", statement.main,
                       sized ? " " : "", sized ? statement.option : "",
                       " again with another value; the first one, ",
                       Quoted(value.substr(0, std::min<std::size_t>(value.find_first_of("\r\n"), 40))),
                       " at line ", counts.line, ", counts");
    }
}

// ---- features

namespace {

// The default may be there under a name that is almost the feature's.
void CheckNoDefault(PpdCheck& check, const PpdFeature& feature)
{
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (statement.keyword == K::Default && IsNearName(feature.keyword, statement.main) &&
            !check.ppd.Find(statement.main))
            return check.Tell("default-lost", {statement.at, feature.keyword}, "\"*Default", statement.main,
                              "\" belongs to no feature; did you mean \"*Default", feature.keyword, "\"?");
    }
    check.Tell("default-missing", feature, "no \"*Default", feature.keyword, "\"; the first option ",
               Quoted(feature.options.front().keyword), " is taken");
}

} // namespace

void CheckFeatures(PpdCheck& check)
{
    for (const PpdFeature& feature : check.ppd.Features()) {
        if (!feature.hasDefault) CheckNoDefault(check, feature);
        const bool on = check.ppd.Find(feature.keyword, "True"),
                   off = check.ppd.Find(feature.keyword, "False");
        if (feature.type == PpdFeatureType::Boolean && !(on && off))
            check.Tell("boolean-options", feature, "the feature is Boolean but has no option ",
                       on    ? "False"
                       : off ? "True"
                             : "True or False");
        KeywordTable texts;
        for (std::size_t i = 0; i < feature.options.size(); ++i) {
            const PpdOption& option = feature.options[i];
            if (const std::size_t first = texts.Insert(option.text, i); first != i)
                check.Tell("text-twice", {feature, option}, Quoted(option.text), " is also the text of ",
                           feature.options[first].keyword);
        }
    }
}

// ---- texts

namespace {

// Whether a text holds bytes that its encoding does not have.
bool HasForeignBytes(const std::string& bytes, PpdEncoding encoding)
{
    if (encoding == PpdEncoding::Utf8) return !IsUtf8(bytes);
    if (encoding > PpdEncoding::Utf8) // of which the platform may have none: two bytes that each has tell
        return !DecodePpdText(bytes, encoding) && DecodePpdText("\xB0\xA1", encoding);
    const bool isoLatin = encoding >= PpdEncoding::IsoLatin1 && encoding <= PpdEncoding::IsoLatin5;
    constexpr std::string_view kNotWindows = "\x81\x8D\x8F\x90\x9D";
    return std::ranges::any_of(bytes, [&](char c) {
        return (isoLatin && (c & 0xE0) == 0x80) ||
               (encoding == PpdEncoding::WindowsAnsi && kNotWindows.find(c) != kNotWindows.npos);
    });
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

void CheckKeyword(PpdCheck& check, const PpdStatement& statement)
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
    if (std::ssize(text) <= kLongestText && IsPlainPpdText(text)) return;
    if (const std::string_view hex = BrokenHex(text); !hex.empty())
        check.Tell("hex", statement, Quoted(hex),
                   " is not made of hexadecimal digits in pairs; people see it as it stands");
    const std::string bytes = ResolvePpdHex(Trim(text));
    const std::ptrdiff_t following = // bytes that are not the first of their character
        IsUtf8(bytes) ? std::ranges::count_if(bytes, [](char c) { return (c & 0xC0) == 0x80; }) : 0;
    if (const auto length = std::ssize(bytes) - following; length > kLongestText)
        check.Tell("text-length", statement, "the text has ", length, " characters; ", kLongestText,
                   " are allowed");
    if (std::ranges::all_of(bytes, [](char c) { return (c & 0x80) == 0; })) return;
    if (HasForeignBytes(bytes, encoding))
        check.Tell("encoding-bytes", statement, "the text holds bytes that ",
                   statement.keyword == K::Translation ? "UTF-8" : check.ppd.About().languageEncoding,
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

// ---- PostScript code

// The place behind a string of which `at` is the first character; npos when the string does not end.
std::size_t AfterString(std::string_view code, std::size_t at)
{
    int depth = 1;
    for (; at < code.size() && depth > 0; ++at) {
        if (code[at] == '\\')
            ++at;
        else if (code[at] == '(' || code[at] == ')')
            depth += code[at] == '(' ? 1 : -1;
    }
    return depth == 0 ? at : code.npos;
}

// What is wrong with the brackets of a code; empty when they balance. Where the code works with `marks` of
// its own, "[" and "<<" may end otherwise.
std::string Imbalance(std::string_view code, bool marks = false)
{
    constexpr std::string_view kOpening = "{<[", kClosing = "}>])";
    const std::size_t strict = marks ? 1 : kClosing.size();
    std::string open; // closing brackets that are expected; '>' stands for ">>"
    const auto name = [](char bracket) { return bracket == '>' ? "\">>\"" : Quoted({&bracket, 1}); };
    for (std::size_t at = 0; at < code.size();) {
        const char c = code[at++];
        if (IsBlank(c) || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'))
            continue;
        const bool twice = at < code.size() && code[at] == c && (c == '<' || c == '>');
        if (twice) ++at;
        if (c == '%') {
            at = code.find_first_of("\r\n", at);
        } else if (c == '(') {
            at = AfterString(code, at);
            if (at == code.npos) return "\")\" is missing";
        } else if (c == '>' && !twice) {
            return "\">\" closes nothing";
        } else if (c == '<' && !twice) {
            at = code.find('>', at);
            if (at++ == code.npos) return "\">\" is missing";
        } else if (const std::size_t opened = kOpening.find(c); opened < strict) {
            open += kClosing[opened];
        } else if (const std::size_t closed = kClosing.find(c); closed < strict || c == ')') {
            if (open.empty()) return name(c) + " closes nothing";
            if (open.back() != c) return name(c) + " stands where " + name(open.back()) + " is expected";
            open.pop_back();
        }
    }
    return open.empty() ? "" : name(open.back()) + " is missing";
}

void CheckCode(PpdCheck& check, const PpdStatement& statement)
{
    const Place place(statement);
    const PpdFeature* const feature = check.ppd.Find(place.feature);
    if (!statement.quoted && statement.value.starts_with('^')) {
        const PpdOption* const option = check.ppd.Find(place.feature, place.option);
        if (option && option->value == statement.value) // the reader puts in what the symbol stands for
            check.Tell("symbol-unknown", statement, "the symbol ", statement.value, " is not defined");
    } else if (!statement.quoted) {
        check.Tell("option-quotes", statement, "the code ", Quoted(statement.value.substr(0, 40)),
                   " expected in quotes");
    } else if (!statement.unclosed && !(feature && feature->jcl)) {
        std::string problem = Imbalance(statement.value);
        if (!problem.empty() && statement.value.find("mark") != statement.value.npos)
            problem = Imbalance(statement.value, true);
        if (!problem.empty())
            check.Tell("code-balance", statement, "the code does not balance: ", problem,
                       "; the printer stops the job");
    }
}

// ---- statements of other kinds

void CheckForm(PpdCheck& check, const PpdStatement& statement)
{
    const auto form = std::ranges::find(kForms, statement.main, &ValueForm::keyword);
    if (form == std::end(kForms) || !statement.hasValue) return;
    if (form->required && Trim(statement.value).empty()) return; // told as missing
    if (form->quoted && !statement.quoted)
        check.Tell("value-quotes", statement, "the value ", Quoted(statement.value), " expected in quotes");
    std::string_view value = statement.value, words = form->words;
    const std::string_view word = NextWord(value); // makers put remarks behind it
    while (!words.empty() && NextWord(words) != word)
        if (words.empty()) check.Tell("value-unknown", statement, Quoted(word), " is none of ", form->words);
}

void CheckAbout(PpdCheck& check, const PpdStatement& statement)
{
    const std::string_view value = Trim(statement.value);
    if (value.empty()) return;
    const std::size_t dot = value.find('.');
    if (statement.main == "PCFileName" &&
        (dot == 0 || dot > 8 || !EqualIgnoringCase(value.substr(dot), ".ppd") ||
         value.find(' ') != value.npos))
        check.Tell("file-name", statement, Quoted(value),
                   " is not of the form NAME.PPD with at most 8 characters before the dot");
    if (statement.main == "Product" && statement.quoted && !(value.starts_with('(') && value.ends_with(')')))
        check.Tell("product-form", statement, Quoted(statement.value),
                   " expected in parentheses, as the interpreter answers it");
}

void CheckOrder(PpdCheck& check, const PpdStatement& statement)
{
    if (!statement.hasValue) return;
    std::string_view rest = statement.value;
    const std::string_view number = NextWord(rest), section = NextWord(rest);
    const std::string_view feature = WithoutAsterisk(NextWord(rest));
    if (number.empty() || number.find_first_not_of("0123456789.+-") != number.npos)
        check.Tell("order-number", statement, Quoted(number), " is no number; the code is sent first");
    if (std::ranges::find(kSections, section) == std::end(kSections))
        check.Tell("order-section", statement, Quoted(section), " is no section of a job (",
                   Joined(kSections), ")");
    if (statement.main == "OrderDependency" && !check.ppd.Find(feature))
        check.Tell("order-feature", statement, Quoted(Starred(feature)), " is no feature of the file");
}

// Translations are of features, of groups (one takes what stands outside of all), and of what else the file
// says.
bool IsTranslatable(const Ppd& ppd, std::string_view keyword)
{
    return keyword == "General" || std::ranges::any_of(ppd.Statements(), [&](const PpdStatement& each) {
               const bool group = each.keyword == K::OpenGroup || each.keyword == K::OpenSubGroup;
               return each.main == keyword || (group && each.Named() == keyword);
           });
}

void CheckTranslation(PpdCheck& check, const PpdStatement& statement)
{
    const auto [at, keyword, option] = Place(statement);
    if (!check.ppd.Find(keyword)) {
        if (!keyword.starts_with("Custom") && !keyword.starts_with("Param") &&
            !IsTranslatable(check.ppd, keyword))
            check.Tell("translation-unknown", statement, Quoted(keyword), " is no feature of the file");
    } else if (!option.empty() && option != "Custom" && !check.ppd.Find(keyword, option)) {
        check.Tell("translation-unknown", statement, Quoted(option), " is no option of ",
                   Quoted(Starred(keyword)));
    }
}

// A line that says nothing, for it is spelt almost like one that would; `open` is the feature in which it
// stands.
void CheckSpelling(PpdCheck& check, const PpdStatement& statement, std::string_view open)
{
    if (!statement.option.empty() && statement.hasValue && IsNearName(open, statement.main))
        return check.Tell("option-lost", {statement.at, open}, "\"*", statement.main, " ", statement.option,
                          "\" is no option of \"*", open, "\", in which it stands; did you mean \"*", open,
                          " ", statement.option, "\"?");
    for (const std::string_view keyword : PpdKeywords()) {
        if (statement.main.starts_with(keyword[0]) && IsNearName(keyword, statement.main))
            return check.Tell("keyword-misspelt", {statement.at}, "unknown keyword \"*", statement.main,
                              "\", did you mean \"*", keyword, "\"? The line says nothing");
    }
}

} // namespace

void CheckStatements(PpdCheck& check)
{
    const PpdEncoding encoding = PpdEncodingFromName(check.ppd.About().languageEncoding);
    std::string_view open, last; // the feature that is open, the keyword of the line before
    for (const PpdStatement& statement : check.ppd.Statements()) {
        if (!statement.hasValue && TakesValue(statement.keyword))
            check.Tell("colon", statement, "\":\" and a value expected behind \"*",
                       statement.keyword == K::Default ? "Default" : "", statement.main,
                       "\"; the line says nothing");
        CheckLines(check, statement);
        const K keyword = statement.keyword;
        const bool opens = keyword == K::OpenUI || keyword == K::JclOpenUI;
        if (opens || keyword == K::CloseUI || keyword == K::JclCloseUI)
            open = opens ? Place(statement).feature : std::string_view();
        if (keyword == K::Other && statement.main != last) CheckSpelling(check, statement, open);
        last = statement.main;
        if (opens || keyword == K::Option) CheckKeyword(check, statement);
        if (opens || keyword == K::Option || keyword == K::PaperDimension || keyword == K::ImageableArea)
            CheckText(check, statement, statement.text, encoding);
        if (keyword == K::Header) CheckText(check, statement, statement.value, encoding);
        if (keyword == K::Translation) CheckText(check, statement, statement.text, PpdEncoding::Utf8);
        if (keyword == K::Option || keyword == K::CustomPageSize) CheckCode(check, statement);
        if (keyword == K::Header) CheckAbout(check, statement);
        if (keyword >= K::PaperDimension && keyword <= K::Header) CheckForm(check, statement);
        if (keyword == K::OrderDependency) CheckOrder(check, statement);
        if (keyword == K::Translation) CheckTranslation(check, statement);
    }
}

} // namespace tintwerk
