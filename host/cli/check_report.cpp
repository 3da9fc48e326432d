#include "host/cli/check_report.h"

#include <utility>

#include "host/cli/json.h"

namespace tintwerk {

namespace {

using Format = ReportStyle::Format;

std::string Coloured(Severity severity, bool coloured)
{
    const std::string text(TextOf(severity));
    constexpr const char* kColours[] = {"\033[31m", "\033[33m", "\033[2m"};
    return coloured ? kColours[static_cast<std::size_t>(severity)] + text + "\033[0m" : text;
}

// With the feature and the option that it concerns.
std::string FullText(const Finding& finding)
{
    return finding.feature.empty()
               ? finding.text
               : finding.feature + (finding.option.empty() ? "" : " " + finding.option) + ": " + finding.text;
}

std::string AsText(const Finding& finding, bool coloured)
{
    return finding.file + ":" + std::to_string(finding.line) + ": " +
           Coloured(finding.rule->severity, coloured) + ": " + FullText(finding) + " [" +
           std::string(finding.rule->code) + "]\n";
}

Json AsJson(const CheckedFile& checked)
{
    Json json{{"file", checked.file}, {"findings", Json::array()}};
    for (const Finding& finding : checked.findings) {
        Json row{{"severity", TextOf(finding.rule->severity)}, {"code", finding.rule->code}};
        if (finding.file != checked.file) row["included_file"] = finding.file;
        row["line"] = finding.line;
        row["feature"] = finding.feature;
        row["option"] = finding.option;
        row["text"] = finding.text;
        json["findings"].push_back(std::move(row));
    }
    if (!checked.pages) return json;
    Json changes = Json::array();
    for (const SelectionChange& change : checked.pages->changes)
        changes.push_back({{"feature", change.feature}, {"before", change.before}, {"after", change.after}});
    json["pages"] = {{"trial", checked.pages->selections},
                     {"shown", checked.pages->pages},
                     {"problem", checked.pages->problem},
                     {"changes", changes}};
    return json;
}

// A path as a reference: what has a meaning in addresses is escaped.
std::string AsUri(const std::string& path)
{
    std::string uri;
    for (const char c : path) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                           std::string_view("-._~/").find(c) != std::string_view::npos;
        constexpr char kDigits[] = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\')
            uri += '/';
        else if (plain)
            uri += c;
        else
            uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return path.size() > 1 && path[1] == ':' ? "file:///" + uri
           : path.starts_with('/')           ? "file://" + uri
                                             : uri;
}

Json AsSarif(const Finding& finding)
{
    return {{"ruleId", finding.rule->code},
            {"ruleIndex", NumberOf(*finding.rule)},
            {"level", TextOf(finding.rule->severity)},
            {"message", {{"text", FullText(finding)}}},
            {"locations", Json::array({{{"physicalLocation",
                                         {{"artifactLocation", {{"uri", AsUri(finding.file)}}},
                                          {"region", {{"startLine", finding.line}}}}}}})}};
}

std::string SarifHead()
{
    Json rules = Json::array();
    for (const Rule& rule : Rules())
        rules.push_back({{"id", rule.code},
                         {"shortDescription", {{"text", rule.sentence}}},
                         {"defaultConfiguration", {{"level", TextOf(rule.severity)}}}});
    const Json driver{{"name", "tintwerk check"}, {"version", TINTWERK_VERSION}, {"rules", rules}};
    return "{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\", \"version\": \"2.1.0\", "
           "\"runs\": "
           "[{\"tool\": {\"driver\": " +
           JsonText(driver, -1) + "}, \"columnKind\": \"unicodeCodePoints\", \"results\": [";
}

} // namespace

bool CheckReport::Shows(const Finding& finding) const
{
    const Severity severity = finding.rule->severity;
    const bool fails = severity == Severity::Error || (severity == Severity::Warning && style_.strict);
    return fails || (!style_.quiet && (severity == Severity::Warning || style_.notes));
}

std::string CheckReport::Begin() const
{
    switch (style_.format) {
    case Format::Json:
        return "{\"command\": \"check\", \"files\": [";
    case Format::Sarif:
        return SarifHead();
    default:
        return {};
    }
}

std::string CheckReport::OfFile(const CheckedFile& checked)
{
    ++files_;
    std::string text;
    const auto row = [&](const Json& json) {
        text += (std::exchange(any_, true) ? ",\n" : "\n") + JsonText(json, -1);
    };
    for (const Finding& finding : checked.findings) {
        ++counts_[static_cast<std::size_t>(finding.rule->severity)];
        if (!Shows(finding)) continue;
        if (style_.format == Format::Text)
            text += AsText(finding, style_.coloured);
        else if (style_.format == Format::Sarif)
            row(AsSarif(finding));
    }
    if (style_.format == Format::Json) row(AsJson(checked));
    return text;
}

std::string CheckReport::End() const
{
    switch (style_.format) {
    case Format::Json:
        return "\n], \"errors\": " + std::to_string(counts_[0]) +
               ", \"warnings\": " + std::to_string(counts_[1]) +
               ", \"notes\": " + std::to_string(counts_[2]) + "}\n";
    case Format::Sarif:
        return "\n]}]}\n";
    default:
        if (style_.quiet) return {};
        return Counted(files_, "file") + ": " + Counted(counts_[0], "error") + ", " +
               Counted(counts_[1], "warning") + ", " + Counted(counts_[2], "note") +
               (style_.notes || counts_[2] == 0 ? "" : " (--notes shows them)") + "\n";
    }
}

} // namespace tintwerk
