// Ends the program when something takes too long: a script whose sheet never opens or never closes must not
// hang.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace tintwerk {

class Watchdog
{
public:
    Watchdog(int seconds, std::string message);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable ended_;
    bool done_ = false;
    std::thread thread_;
};

} // namespace tintwerk
