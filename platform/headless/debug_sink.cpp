// The debugger output of this process: one sink at most, else nobody listens.
#include "platform/debug_sink.h"

#include <atomic>

namespace tintwerk {

namespace {

std::atomic<DebugSink> currentSink{nullptr};
std::atomic<void*> currentContext{nullptr};

} // namespace

void SetDebugSink(DebugSink sink, void* context)
{
    currentContext.store(context);
    currentSink.store(sink);
}

} // namespace tintwerk

void OutputDebugStringW(LPCWSTR line)
{
    if (const tintwerk::DebugSink sink = tintwerk::currentSink.load(); sink && line)
        sink(line, tintwerk::currentContext.load());
}
