// A folder for one test, gone with it.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace tintwerk {

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

} // namespace tintwerk
