// Runs the program as a shell would, in this process.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "host/cli/program.h"
#include "tests/host/temporary_folder.h"

namespace tintwerk {

struct ProgramResult
{
    int status;
    std::string out, err;
};

inline ProgramResult RunTintwerk(const std::vector<std::string>& arguments)
{
    std::ostringstream out, err;
    Output output{out, err};
    const int status = RunProgram(arguments, output);
    return {status, out.str(), err.str()};
}

inline std::string Sample(const std::string& name)
{
    return std::string(TINTWERK_SOURCE_DIR) + "/samples/" + name;
}

inline std::string ContentOf(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace tintwerk
