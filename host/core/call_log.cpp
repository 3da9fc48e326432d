#include "host/core/call_log.h"

#include <cstdio>
#include <numeric>

namespace tintwerk {

const char* CoreMethodName(CoreMethod method)
{
    // clang-format off
    static constexpr const char* kNames[] = {
        "GetOptions", "SetOptions", "EnumConstrainedOptions", "WhyConstrained", "GetFeatureAttribute", "GetOptionAttribute",
        "EnumFeatures", "EnumOptions", "PS.GetOption", "PS.EnumOptions", "not served",
    };
    // clang-format on
    static_assert(std::size(kNames) == static_cast<std::size_t>(CoreMethod::Count));
    return kNames[static_cast<std::size_t>(method)];
}

std::size_t CallLog::Total() const
{
    return std::accumulate(counts_.begin(), counts_.end(), std::size_t{0});
}

void CallLog::Clear()
{
    counts_.fill(0);
    lines_.clear();
}

void CallLog::Add(CoreMethod method, HRESULT result, const std::string& arguments) noexcept
{
    char status[24];
    std::snprintf(status, sizeof status, " -> 0x%08lx",
                  static_cast<unsigned long>(static_cast<DWORD>(result)));
    lines_.push_back(std::string(CoreMethodName(method)) + (arguments.empty() ? "" : " " + arguments) +
                     status);
}

} // namespace tintwerk
