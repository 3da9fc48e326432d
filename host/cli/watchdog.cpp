#include "host/cli/watchdog.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "host/cli/arguments.h"

namespace tintwerk {

Watchdog::Watchdog(int seconds, std::string message)
{
    thread_ = std::thread([this, seconds, message = std::move(message)] {
        std::unique_lock lock(mutex_);
        if (ended_.wait_for(lock, std::chrono::seconds(seconds), [this] { return done_; })) return;
        std::fprintf(stderr, "tintwerk: %s\n", message.c_str());
        std::fflush(stderr);
        std::_Exit(kExitFailed);
    });
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

} // namespace tintwerk
