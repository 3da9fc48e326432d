// A file in the system's directory for temporary files, gone with its owner.
#pragma once

#include <filesystem>
#include <string>

#include "platform/whole_file.h"
#include "platform/win32.h"

namespace tintwerk {

class TempFile
{
public:
    // The file does not exist until it is written.
    explicit TempFile(const std::string& name)
        : path((std::filesystem::temp_directory_path() /
                ("tintwerk_" + std::to_string(GetCurrentProcessId()) + "_" + name))
                   .string())
    {
    }
    TempFile(const std::string& name, const std::string& content) : TempFile(name) { Write(content); }
    ~TempFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    void Write(const std::string& content) const { WriteWhole(path, content); }

    std::string Content() const
    {
        std::string content;
        return Exists() && ReadWhole(path, content) ? content : "no file";
    }

    bool Exists() const { return std::filesystem::exists(path); }

    const std::string path;
};

} // namespace tintwerk
