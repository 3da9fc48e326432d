// A file in the system's directory for temporary files, gone with its owner.
#pragma once

#include <string>

#include "platform/whole_file.h"
#include "platform/win32.h"

namespace tintwerk {

class TempFile
{
public:
    // The file does not exist until it is written.
    explicit TempFile(const char* name)
    {
        char directory[MAX_PATH] = {};
        GetTempPathA(MAX_PATH, directory);
        path = std::string(directory) + "tintwerk_" + std::to_string(GetCurrentProcessId()) + "_" + name;
    }
    TempFile(const char* name, const std::string& content) : TempFile(name) { Write(content); }
    ~TempFile() { DeleteFileA(path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    void Write(const std::string& content) const { WriteWhole(path, content); }

    std::string Content() const
    {
        std::string content;
        return Exists() && ReadWhole(path, content) ? content : "no file";
    }

    bool Exists() const { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

    std::string path;
};

} // namespace tintwerk
