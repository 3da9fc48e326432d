// The program's own surroundings: its arguments, its terminal, and whether a person can see its windows. Used
// by the host program only.
#pragma once

#include <string>
#include <vector>

namespace tintwerk {

// The arguments without the program's name, in UTF-8. Also makes standard output and error write bytes as
// they are.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// True when standard output, or standard error, goes to a terminal.
bool OutputIsTerminal();
bool ErrorIsTerminal();

// False when windows open where nobody sees them: without a display, or on a virtual one (environment
// variable TINTWERK_VIRTUAL_DISPLAY).
bool WindowsAreVisible();

} // namespace tintwerk
