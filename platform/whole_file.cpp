#include "platform/whole_file.h"

#include <algorithm>
#include <cstdio>
#include <system_error>

#include "platform/owners.h"

namespace tintwerk {

namespace {

using Path = std::filesystem::path;

// Paths are kept in the platform's own characters, which elsewhere than on Windows are any bytes: they are
// handed on as they are, never converted.
[[maybe_unused]] HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    return CreateFileA(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

[[maybe_unused]] HANDLE Create(const WCHAR* path, DWORD access, DWORD share, DWORD disposition)
{
    return CreateFileW(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

constexpr DWORD kInOneStep = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;

[[maybe_unused]] bool Move(const char* path, const char* newPath)
{
    return MoveFileExA(path, newPath, kInOneStep) != FALSE;
}

[[maybe_unused]] bool Move(const WCHAR* path, const WCHAR* newPath)
{
    return MoveFileExW(path, newPath, kInOneStep) != FALSE;
}

KernelHandle Open(const Path& file, DWORD access, DWORD disposition)
{
    // While a file is read, another run may put a new one in its place; two runs never write the same one.
    const DWORD share =
        access == GENERIC_READ ? FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE : FILE_SHARE_READ;
    const HANDLE handle = Create(file.c_str(), access, share, disposition);
    return KernelHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace

bool ReadWhole(const Path& file, std::string& text, std::size_t most)
{
    text.clear();
    const KernelHandle handle = Open(file, GENERIC_READ, OPEN_EXISTING);
    if (!handle) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    }
    while (text.size() < most) {
        const std::size_t done = text.size();
        const DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(most - done, 0x10000));
        text.resize(done + chunk);
        DWORD bytes = 0;
        if (!ReadFile(handle.Get(), text.data() + done, chunk, &bytes, nullptr)) return false;
        text.resize(done + bytes);
        if (bytes == 0) break;
    }
    return true;
}

std::vector<BYTE> ReadWholeFile(const char* path)
{
    std::vector<BYTE> bytes;
    if (std::FILE* const file = std::fopen(path, "rb")) {
        BYTE piece[16384];
        for (std::size_t read; (read = std::fread(piece, 1, sizeof piece, file)) > 0;)
            bytes.insert(bytes.end(), piece, piece + read);
        std::fclose(file);
    }
    return bytes;
}

bool WriteWhole(const Path& file, std::string_view text)
{
    DWORD written = 0;
    {
        const KernelHandle handle = Open(file, GENERIC_WRITE, CREATE_ALWAYS);
        if (!handle) return false;
        const DWORD size = static_cast<DWORD>(text.size());
        if (WriteFile(handle.Get(), text.data(), size, &written, nullptr) && written == size &&
            FlushFileBuffers(handle.Get()))
            return true;
    }
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return false;
}

bool PutInPlace(const Path& fresh, const Path& file)
{
    return Move(fresh.c_str(), file.c_str());
}

} // namespace tintwerk
