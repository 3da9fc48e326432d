#include "platform/file_lock.h"

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
        if (GetTickCount64() - started >= wait) return Outcome::Held;
    }
}

} // namespace tintwerk
