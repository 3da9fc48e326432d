// A lock between processes that stands for a file of the store: the host takes it while it may change the
// file.
#pragma once

#include <filesystem>
#include <string>

namespace tintwerk {

class FileLock
{
public:
    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    enum class Outcome
    {
        Taken,
        Held,      // by another, all the time
        Impossible // such a file cannot be made there
    };
    // Waits at most so many milliseconds for others to let go. The file tells them of `holder` and goes with
    // the lock, which is let go at the latest when the process ends.
    Outcome Take(const std::filesystem::path& file, const std::string& holder, unsigned wait);

private:
    bool Try(const std::string& holder, bool& possible);

    std::filesystem::path file_;
    void* handle_ = nullptr; // what the platform holds it by
};

} // namespace tintwerk
