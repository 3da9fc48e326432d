// The program tintwerk: finds the command, gives help, turns errors into texts and exit statuses.
#pragma once

#include <functional>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/cli/arguments.h"

namespace tintwerk {

// Where a command writes: results for scripts and people, and everything else.
struct Output
{
    std::ostream& out;
    std::ostream& err;
};

struct Command
{
    std::string_view name;
    std::string_view summary;
    std::string_view usage;
    std::string_view notes; // stands below the options in the help text
    std::vector<OptionRow> options;
    std::function<int(const Arguments& arguments, Output& output)> run;
};

// The arguments stand without the program's name. Returns the exit status.
int RunProgram(std::span<const std::string> arguments, Output& output);

// One function a command; each is defined in the file of its name.
Command PreferencesCommand();
Command PropertiesCommand();
Command PrintCommand();
Command FeaturesCommand();
Command InkCommand();
Command DevmodeCommand();
Command CheckCommand();
Command DiffCommand();

} // namespace tintwerk
