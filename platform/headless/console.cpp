#include "platform/console.h"

#include <unistd.h>

namespace tintwerk {

std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    return {argv + 1, argv + argc};
}

bool OutputIsTerminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

bool ErrorIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool WindowsAreVisible()
{
    return false;
}

} // namespace tintwerk
