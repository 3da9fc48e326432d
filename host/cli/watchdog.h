// Ends the program when something takes too long: a script whose sheet never opens or never closes must not
// hang.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include "host/cli/arguments.h"
#include "host/cli/product_registry.h"

namespace tintwerk {

class Watchdog
{
public:
    Watchdog(int seconds, const std::string& message)
        : thread_([seconds, message](const std::stop_token& stop) {
              std::mutex mutex;
              std::unique_lock lock(mutex);
              std::condition_variable_any stopped;
              stopped.wait_for(lock, stop, std::chrono::seconds(seconds), [] { return false; });
              if (stop.stop_requested()) return;
              std::fprintf(stderr, "tintwerk: %s\n", message.c_str());
              std::fflush(stderr);
              ProductValue::PutAllBack();
              std::_Exit(kExitFailed);
          })
    {
    }

private:
    std::jthread thread_;
};

} // namespace tintwerk
