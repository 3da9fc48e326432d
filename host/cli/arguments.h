// Command lines: what each command takes, reading them, and the help text, all from one table.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tintwerk {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailed = 1; // the run failed
inline constexpr int kExitUsage = 2;  // the command line makes no sense

// Ends a command: the text goes to the person at the terminal, the status to the shell.
class CommandError : public std::runtime_error
{
public:
    CommandError(int status, const std::string& text) : std::runtime_error(text), status_(status) {}
    int Status() const { return status_; }

private:
    int status_;
};

// The run failed; the command line makes no sense.
[[noreturn]] void Fail(const std::string& text);
[[noreturn]] void Misused(const std::string& text);

// A file's bytes. One that cannot be read ends the command, with `before` in front of its name.
std::string ContentOfFile(const std::string& file, int status = kExitFailed, const std::string& before = {});

struct OptionRow
{
    std::string_view name;  // without the leading "--"
    std::string_view value; // what people see for its value; empty for an option without one
    std::string_view help;
};

struct GivenOption
{
    std::string name;
    std::string value;
};

// A command line in the order in which it was typed.
class Arguments
{
public:
    // Throws a CommandError that says what is wrong and what is accepted.
    Arguments(std::span<const std::string> words, std::span<const OptionRow> options,
              std::string_view command);

    bool Has(std::string_view option) const;
    // The value of the option's last appearance; the fallback without one.
    std::string Value(std::string_view option, std::string_view fallback = {}) const;
    // Throws when it is missing.
    std::string Required(std::string_view option) const;
    // A whole number within the limits; throws for anything else.
    int Number(std::string_view option, int fallback, int minimum, int maximum) const;
    // One of the values; throws for anything else.
    std::string OneOf(std::string_view option, std::string_view fallback,
                      std::span<const std::string_view> values) const;

    // The only operand; throws when there is none or more than one. `what`: "PPD file".
    const std::string& OneOperand(std::string_view what) const;

    std::span<const GivenOption> Options() const { return options_; }
    // What stands there without an option's name.
    std::span<const std::string> Operands() const { return operands_; }

private:
    std::string command_;
    std::vector<GivenOption> options_;
    std::vector<std::string> operands_;
};

// The options as aligned lines for a help text.
std::string OptionLines(std::span<const OptionRow> options);

} // namespace tintwerk
