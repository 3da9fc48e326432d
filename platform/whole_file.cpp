#include "platform/whole_file.h"

#include <algorithm>
#include <system_error>

#include "platform/owners.h"

namespace tintwerk {

namespace {

using Path = std::filesystem::path;

KernelHandle Open(const Path& file, DWORD access, DWORD disposition)
{
    // While a file is read, another run may put a new one in its place; two runs never write the same one.
    const DWORD share =
        access == GENERIC_READ ? FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE : FILE_SHARE_READ;
    const HANDLE handle = CreateFileW(file.string<WCHAR>().c_str(), access, share, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
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
    return MoveFileExW(fresh.string<WCHAR>().c_str(), file.string<WCHAR>().c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
}

} // namespace tintwerk
