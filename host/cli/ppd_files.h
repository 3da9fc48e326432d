// The PPDs that a command line names: files, folders, standard input. Used by the commands that explain PPDs.
#pragma once

#include <string>
#include <vector>

#include "host/cli/arguments.h"
#include "host/ppd/ppd_reader.h"

namespace tintwerk {

// Every .ppd and .ppd.gz file below a folder, in any letter case and sorted; other operands as they are.
// Throws when there is none.
std::vector<std::string> PpdOperands(const Arguments& arguments, std::string_view command);

// "-" is standard input.
PpdResult ReadPpdOperand(const std::string& operand, const PpdReadOptions& options = {});

} // namespace tintwerk
