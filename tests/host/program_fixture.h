// Runs the program as a shell would, in this process; a folder and files for it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "host/cli/program.h"

namespace tintwerk {

// A folder for one test, gone with it.
class TemporaryFolder
{
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("tintwerk-test-" + std::to_string(std::random_device()())))
    {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string Text() const { return path_.generic_string(); }

private:
    std::filesystem::path path_;
};

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
