#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>

namespace tintwerk {

bool FileLock::Try(const std::string& holder, bool& possible)
{
    const int file = open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    possible = file >= 0;
    if (!possible) return false;
    struct stat locked, named;
    const bool taken = flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &locked) == 0 &&
                       stat(file_.c_str(), &named) == 0 &&
                       locked.st_ino == named.st_ino; // not one that is gone
    if (!taken || ftruncate(file, 0) != 0 || write(file, holder.data(), holder.size()) < 0) {
        close(file);
        return false;
    }
    handle_ = reinterpret_cast<void*>(static_cast<std::intptr_t>(file) + 1);
    return true;
}

FileLock::~FileLock()
{
    if (!handle_) return;
    unlink(file_.c_str());
    close(static_cast<int>(reinterpret_cast<std::intptr_t>(handle_) - 1));
}

} // namespace tintwerk
