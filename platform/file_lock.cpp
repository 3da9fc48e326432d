#include "platform/file_lock.h"

#include <system_error>

#include "platform/win32.h"

namespace tintwerk {

FileLock::Outcome FileLock::Take(const std::filesystem::path& file, const std::string& holder, unsigned wait)
{
    constexpr DWORD kPause = 20; // milliseconds between two tries
    file_ = file;
    for (const ULONGLONG started = GetTickCount64();; Sleep(kPause)) {
        bool possible = true;
        if (Try(holder, possible)) return Outcome::Taken;
        if (!possible) return Outcome::Impossible;
        if (GetTickCount64() - started < wait) continue;
        // A folder that takes no file of ours denies access as a file that is about to go does.
        std::error_code ignored;
        return std::filesystem::is_regular_file(file, ignored) ? Outcome::Held : Outcome::Impossible;
    }
}

} // namespace tintwerk
