#include "platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace tintwerk {

bool FileLock::Try(const std::string& holder, bool& possible)
{
    const int file = open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    possible = false;
    if (file < 0) return false;
    const bool locked = flock(file, LOCK_EX | LOCK_NB) == 0;
    possible = locked || errno == EWOULDBLOCK;
    struct stat held, named;
    if (!locked || fstat(file, &held) != 0 || stat(file_.c_str(), &named) != 0 ||
        held.st_ino != named.st_ino) { // one that is gone
        close(file);
        return false;
    }
    // Without room for the holder's name the lock holds all the same; half a name is none.
    [[maybe_unused]] const bool told =
        ftruncate(file, 0) == 0 &&
        (write(file, holder.data(), holder.size()) == static_cast<ssize_t>(holder.size()) ||
         ftruncate(file, 0) == 0);
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
