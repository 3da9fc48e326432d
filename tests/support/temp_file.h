// A file in the system's directory for temporary files, gone with its owner.
#pragma once

#include <string>

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

    void Write(const std::string& content) const
    {
        const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
    }

    std::string Content() const
    {
        std::string content;
        const HANDLE file =
            CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return "no file";
        char bytes[4096];
        DWORD read = 0;
        while (ReadFile(file, bytes, sizeof bytes, &read, nullptr) && read > 0)
            content.append(bytes, read);
        CloseHandle(file);
        return content;
    }

    bool Exists() const { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

    std::string path;
};

} // namespace tintwerk
