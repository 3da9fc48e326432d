#include "host/core/call_log.h"

#include <cstdio>

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

void CallLog::Add(CoreMethod method, HRESULT result, const std::string& arguments)
{
    char status[24];
    std::snprintf(status, sizeof status, " -> 0x%08lx",
                  static_cast<unsigned long>(static_cast<DWORD>(result)));
    lines_.push_back(std::string(CoreMethodName(method)) + (arguments.empty() ? "" : " " + arguments) +
                     status);
}

} // namespace tintwerk
