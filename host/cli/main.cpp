// tintwerk: opens the driver's pages for any PPD. See tintwerk --help.
#include <iostream>

#include "host/cli/program.h"
#include "platform/console.h"

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments = tintwerk::ProgramArguments(argc, argv);
    tintwerk::Output output{std::cout, std::cerr};
    const int status = tintwerk::RunProgram(arguments, output);
    std::cout.flush();
    return status;
}
