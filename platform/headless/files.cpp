// Files and handles of the headless platform, on those of this system. Backslashes in paths are read as
// slashes.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/headless/hookable.h"
#include "platform/headless/kernel_objects.h"
#include "platform/headless/wide.h"

using namespace tintwerk::headless;
using tintwerk::Refuse;

namespace tintwerk::headless {

HandleTable<KernelObject>& KernelObjects()
{
    static auto& objects = *new HandleTable<KernelObject>;
    return objects;
}

} // namespace tintwerk::headless

namespace {

bool DirectoryExists(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

DWORD ErrorOf(int number, const std::string& path)
{
    switch (number) {
    case ENOENT: {
        const std::size_t slash = path.rfind('/');
        const bool parent =
            slash == std::string::npos || slash == 0 || DirectoryExists(path.substr(0, slash));
        return parent ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
    }
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case ENOSPC:
        return ERROR_DISK_FULL;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENAMETOOLONG:
        return ERROR_INVALID_NAME;
    default:
        return ERROR_ACCESS_DENIED;
    }
}

BOOL Result(int status, const std::string& path)
{
    return status == 0 ? TRUE : Refuse(ErrorOf(errno, path));
}

int OpenFlags(DWORD access, DWORD disposition)
{
    const bool writes = access & GENERIC_WRITE;
    const int flags = O_CLOEXEC | (writes ? (access & GENERIC_READ ? O_RDWR : O_WRONLY) : O_RDONLY);
    switch (disposition) {
    case CREATE_ALWAYS:
        return flags | O_CREAT | O_TRUNC;
    case OPEN_ALWAYS:
        return flags | O_CREAT;
    default:
        return flags;
    }
}

HANDLE OpenFile(LPCSTR name, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD, HANDLE)
{
    const std::string path = NativePath(name ? name : "");
    struct stat status;
    const bool exists = stat(path.c_str(), &status) == 0;
    // The superuser of this system may write anything; a read-only file is read-only all the same.
    const bool readOnly =
        exists && !(status.st_mode & S_IWUSR) && (access & GENERIC_WRITE || disposition == CREATE_ALWAYS);
    if (readOnly || (exists && S_ISDIR(status.st_mode))) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    const int descriptor = open(path.c_str(), OpenFlags(access, disposition), 0666);
    if (descriptor < 0) {
        SetLastError(ErrorOf(errno, path));
        return INVALID_HANDLE_VALUE;
    }
    const bool keeps = exists && (disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS);
    SetLastError(keeps ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return KernelObjects().Open(std::make_shared<KernelObject>(descriptor));
}

// Calls a function with the descriptor of an open file.
template <typename Function> BOOL WithFile(HANDLE handle, Function function)
{
    const std::shared_ptr<KernelObject> object = KernelObjects().Get(handle);
    return object && object->descriptor >= 0 ? function(object->descriptor) : FALSE;
}

// Moves all bytes in as many calls as it takes; stops early at the end of the file.
template <typename Buffer, typename Move> BOOL MoveAll(Buffer buffer, DWORD bytes, LPDWORD moved, Move move)
{
    DWORD done = 0;
    while (done < bytes) {
        const ssize_t count = move(buffer + done, bytes - done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Refuse(ErrorOf(errno, ""));
        if (count == 0) break;
        done += static_cast<DWORD>(count);
    }
    if (moved) *moved = done;
    return TRUE;
}

BOOL WriteBytes(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED)
{
    return WithFile(file, [&](int descriptor) {
        return MoveAll(
            static_cast<const char*>(buffer), bytes, written,
            [descriptor](const char* from, std::size_t count) { return write(descriptor, from, count); });
    });
}

BOOL ReadBytes(HANDLE file, LPVOID buffer, DWORD bytes, LPDWORD read, LPOVERLAPPED)
{
    return WithFile(file, [&](int descriptor) {
        return MoveAll(static_cast<char*>(buffer), bytes, read,
                       [descriptor](char* to, std::size_t count) { return ::read(descriptor, to, count); });
    });
}

BOOL Flush(HANDLE file)
{
    return WithFile(file, [](int descriptor) { return Result(fsync(descriptor), ""); });
}

// A file of the new name makes way, as MOVEFILE_REPLACE_EXISTING asks.
BOOL Rename(LPCSTR name, LPCSTR newName, DWORD)
{
    const std::string from = NativePath(name);
    return Result(std::rename(from.c_str(), NativePath(newName).c_str()), from);
}

BOOL EndHandle(HANDLE handle)
{
    return KernelObjects().Close(handle);
}

Hookable<OpenFile> createFile{"CreateFileA"};
Hookable<ReadBytes> readFile{"ReadFile"};
Hookable<WriteBytes> writeFile{"WriteFile"};
Hookable<Flush> flushFile{"FlushFileBuffers"};
Hookable<Rename> moveFile{"MoveFileExA"};
Hookable<EndHandle> closeHandle{"CloseHandle"};

} // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD flags, HANDLE pattern)
{
    return createFile(path, access, share, security, disposition, flags, pattern);
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD bytes, LPDWORD read, LPOVERLAPPED overlapped)
{
    return readFile(file, buffer, bytes, read, overlapped);
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped)
{
    return writeFile(file, buffer, bytes, written, overlapped);
}

BOOL CloseHandle(HANDLE handle)
{
    return closeHandle(handle);
}

BOOL SetEndOfFile(HANDLE file)
{
    return WithFile(file, [](int descriptor) {
        return Result(ftruncate(descriptor, lseek(descriptor, 0, SEEK_CUR)), "");
    });
}

BOOL FlushFileBuffers(HANDLE file)
{
    return flushFile(file);
}

BOOL MoveFileExA(LPCSTR path, LPCSTR newPath, DWORD flags)
{
    return moveFile(path, newPath, flags);
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value)
{
    return (value ? setenv(name, value, 1) : unsetenv(name)) == 0;
}
