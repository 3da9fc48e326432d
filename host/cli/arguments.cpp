#include "host/cli/arguments.h"

#include <algorithm>

#include "host/cli/near_names.h"
#include "host/ppd/ppd_text.h"
#include "host/ppd/wide_text.h"
#include "platform/whole_file.h"

namespace tintwerk {

void Fail(const std::string& text)
{
    throw CommandError(kExitFailed, text);
}

void Misused(const std::string& text)
{
    throw CommandError(kExitUsage, text);
}

std::string ContentOfFile(const std::string& file, int status, const std::string& before)
{
    std::string text;
    const std::filesystem::path path = PathFromUtf8(file);
    if (!std::filesystem::is_regular_file(path) || !ReadWhole(path, text))
        throw CommandError(status, before + file + ": the file cannot be read");
    return text;
}

Arguments::Arguments(std::span<const std::string> words, std::span<const OptionRow> options,
                     std::string_view command)
    : command_(command)
{
    bool onlyOperands = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (!onlyOperands && word == "--") {
            onlyOperands = true;
            continue;
        }
        if (onlyOperands || word == "-" || !word.starts_with('-')) {
            operands_.emplace_back(word);
            continue;
        }
        if (!word.starts_with("--")) Misused(words[i] + ": options begin with two dashes");
        const std::size_t equals = word.find('=');
        const bool hasValue = equals != std::string_view::npos;
        const std::string name(word.substr(2, hasValue ? equals - 2 : equals));
        const auto row = std::ranges::find(options, name, &OptionRow::name);
        if (row == options.end())
            Misused("--" + name + ": no such option" + DidYouMean(name, options, "--", &OptionRow::name) +
                    "; tintwerk " + command_ + " --help lists them");
        if (row->value.empty() && hasValue) Misused("--" + name + ": takes no value");
        std::string value(hasValue ? word.substr(equals + 1) : "");
        if (!row->value.empty() && !hasValue) {
            if (i + 1 == words.size())
                Misused("--" + name + ": its value is missing (" + std::string(row->value) + ")");
            value = words[++i];
        }
        options_.push_back({name, std::move(value)});
    }
}

bool Arguments::Has(std::string_view option) const
{
    return std::ranges::find(options_, option, &GivenOption::name) != options_.end();
}

std::string Arguments::Value(std::string_view option, std::string_view fallback) const
{
    const auto last = std::find_if(options_.rbegin(), options_.rend(),
                                   [option](const GivenOption& given) { return given.name == option; });
    return last != options_.rend() ? last->value : std::string(fallback);
}

std::string Arguments::Required(std::string_view option) const
{
    std::string value = Value(option);
    if (value.empty())
        Misused("--" + std::string(option) + " is missing; tintwerk " + command_ +
                " --help shows how it is called");
    return value;
}

const std::string& Arguments::OneOperand(std::string_view what) const
{
    if (operands_.size() != 1)
        Misused("one " + std::string(what) + " is expected: tintwerk " + command_ + " FILE");
    return operands_.front();
}

int Arguments::Number(std::string_view option, int fallback, int minimum, int maximum) const
{
    if (!Has(option)) return fallback;
    const std::string value = Value(option);
    const std::optional<int> number = DecimalNumber<int>(value);
    if (!number || *number < minimum || *number > maximum)
        Misused("--" + std::string(option) + " " + value + ": a whole number from " +
                std::to_string(minimum) + " to " + std::to_string(maximum) + " is accepted");
    return *number;
}

std::string Arguments::OneOf(std::string_view option, std::string_view fallback,
                             std::span<const std::string_view> values) const
{
    std::string value = Value(option, fallback);
    if (!Has(option) || std::ranges::find(values, value) != values.end()) return value;
    Misused("--" + std::string(option) + " " + value + ": accepted are " + Joined(values));
}

std::string OptionLines(std::span<const OptionRow> options)
{
    constexpr std::size_t kColumn = 28;
    std::string text;
    for (const OptionRow& row : options) {
        std::string line = "  --" + std::string(row.name);
        if (!row.value.empty()) line += " " + std::string(row.value);
        line += line.size() + 1 < kColumn ? std::string(kColumn - line.size(), ' ')
                                          : "\n" + std::string(kColumn, ' ');
        for (const char c : row.help) {
            line += c;
            if (c == '\n') line += std::string(kColumn, ' ');
        }
        text += line + "\n";
    }
    return text;
}

} // namespace tintwerk
