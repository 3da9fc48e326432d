#include "host/cli/program.h"

#include <algorithm>
#include <ostream>

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
    out << "\ntintwerk help COMMAND explains a command; --version tells the version.\n"
           "Exit status: 0 all went well, 1 the run failed, 2 the command line makes no sense.\n";
}

bool AsksForHelp(std::string_view word)
{
    return word == "--help" || word == "-h";
}

int RunCommand(const Command& command, std::span<const std::string> words, Output& output)
{
    if (std::ranges::none_of(words, AsksForHelp))
        return command.run(Arguments(words, command.options, command.name), output);
    output.out << "tintwerk " << command.name << ": " << command.summary << "\n\nUsage: " << command.usage
               << "\n\n"
               << OptionLines(command.options);
    if (!command.notes.empty()) output.out << "\n" << command.notes;
    return kExitSuccess;
}

int Dispatch(std::span<const std::string> arguments, Output& output)
{
    const std::vector<Command> commands = Commands();
    const std::string_view first = arguments.empty() ? std::string_view() : std::string_view(arguments[0]);
    if (first == "help" && arguments.size() > 1) {
        const std::string words[] = {arguments[1], "--help"};
        return Dispatch(words, output);
    }
    if (first.empty() || AsksForHelp(first) || first == "help") {
        PrintOverview(first.empty() ? output.err : output.out, commands);
        return first.empty() ? kExitUsage : kExitSuccess;
    }
    if (first == "--version") {
        output.out << "tintwerk " << TINTWERK_VERSION << "\n";
        return kExitSuccess;
    }
    const auto command = std::ranges::find(commands, first, &Command::name);
    if (command == commands.end()) {
        output.err << "tintwerk: " << first << ": no such command"
                   << DidYouMean(first, commands, "", &Command::name) << "; tintwerk --help lists them\n";
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
