#include "host/cli/program.h"

#include <algorithm>
#include <ostream>
#include <ranges>

#include "host/cli/near_names.h"

namespace tintwerk {

namespace {

std::vector<Command> Commands()
{
    return {PreferencesCommand(), PropertiesCommand(), PrintCommand(), FeaturesCommand(),
            InkCommand(),         DevmodeCommand(),    CheckCommand(), DiffCommand()};
}

void PrintOverview(std::ostream& out, std::span<const Command> commands)
{
    out << "tintwerk opens the pages of the Tintwerk printer driver for any PPD.\n\nUsage: tintwerk COMMAND "
           "...\n\n";
    for (const Command& command : commands) {
        std::string line = "  " + std::string(command.name);
        line.resize(15, ' ');
        out << line << command.summary << "\n";
    }
    out << "\ntintwerk COMMAND --help explains a command; --version tells the version.\n"
           "Exit status: 0 all went well, 1 the run failed, 2 the command line makes no sense.\n";
}

void PrintHelp(std::ostream& out, const Command& command)
{
    out << "tintwerk " << command.name << ": " << command.summary << "\n\nUsage: " << command.usage << "\n\n"
        << OptionLines(command.options);
    if (!command.notes.empty()) out << "\n" << command.notes;
}

int RunCommand(const Command& command, std::span<const std::string> words, Output& output)
{
    if (std::ranges::any_of(words,
                            [](const std::string& word) { return word == "--help" || word == "-h"; })) {
        PrintHelp(output.out, command);
        return kExitSuccess;
    }
    return command.run(Arguments(words, command.options, command.name), output);
}

} // namespace

namespace {

int Dispatch(std::span<const std::string> arguments, Output& output)
{
    const std::vector<Command> commands = Commands();
    const std::string_view first = arguments.empty() ? std::string_view() : std::string_view(arguments[0]);
    if (first == "--help" || first == "-h" || first == "help") {
        PrintOverview(output.out, commands);
        return kExitSuccess;
    }
    if (first == "--version") {
        output.out << "tintwerk " << TINTWERK_VERSION << "\n";
        return kExitSuccess;
    }
    if (first.empty()) {
        PrintOverview(output.err, commands);
        return kExitUsage;
    }
    const auto command = std::ranges::find(commands, first, &Command::name);
    if (command == commands.end()) {
        output.err << "tintwerk: " << first << ": no such command"
                   << DidYouMean(first, commands | std::views::transform(&Command::name), "")
                   << "; tintwerk --help lists them\n";
        return kExitUsage;
    }
    try {
        return RunCommand(*command, arguments.subspan(1), output);
    } catch (const CommandError& error) {
        output.out.flush();
        output.err << "tintwerk: " << error.what() << "\n";
        return error.Status();
    } catch (const std::exception& error) {
        output.err << "tintwerk: " << error.what() << "\n";
        return kExitFailed;
    }
}

} // namespace

// What a script reads must be whole: output that is lost, on a full disk for example, fails every command.
int RunProgram(std::span<const std::string> arguments, Output& output)
{
    const int status = Dispatch(arguments, output);
    output.out.flush();
    if (output.out) return status;
    output.err << "tintwerk: the output could not be written; a part of it is lost\n";
    return std::max(status, kExitFailed);
}

} // namespace tintwerk
