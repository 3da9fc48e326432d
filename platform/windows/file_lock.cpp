#include "platform/file_lock.h"

#include "platform/win32.h"

namespace tintwerk {

// Only readers may open the file beside the one who holds it.
bool FileLock::Try(const std::string& holder, bool& possible)
{
    const HANDLE handle =
        CreateFileW(file_.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        possible = error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING;
        if (error != ERROR_ACCESS_DENIED) return false;
        // A file that is about to go denies access as a folder does, and a place that takes no files.
        const DWORD attributes = GetFileAttributesW(file_.c_str());
        possible = attributes == INVALID_FILE_ATTRIBUTES ? GetLastError() != ERROR_FILE_NOT_FOUND
                                                         : !(attributes & FILE_ATTRIBUTE_DIRECTORY);
        return false;
    }
    DWORD written = 0;
    WriteFile(handle, holder.data(), static_cast<DWORD>(holder.size()), &written, nullptr);
    handle_ = handle;
    return true;
}

FileLock::~FileLock()
{
    if (handle_) CloseHandle(handle_);
}

} // namespace tintwerk
