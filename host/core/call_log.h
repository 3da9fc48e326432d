// Counts, and on demand records, the calls that a plug-in makes to the core driver's helpers; tests let one
// of them be refused. Read by the host's commands (--json) and by tests.
#pragma once

#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

// The methods that this plug-in uses of IPrintCoreUI2 and, with the prefix "PS", of IPrintCoreHelperPS.
enum class CoreMethod
{
    GetOptions,
    SetOptions,
    EnumConstrainedOptions,
    WhyConstrained,
    GetFeatureAttribute,
    GetOptionAttribute,
    EnumFeatures,
    EnumOptions,
    PSGetOption,
    PSEnumOptions,
    NotServed, // any other
    Count
};

const char* CoreMethodName(CoreMethod method);

class CallLog
{
public:
    // Lines are recorded only while this is on; counting costs one addition a call and is always on.
    void Record(bool on) { recording_ = on; }

    std::size_t Count(CoreMethod method) const { return counts_[static_cast<std::size_t>(method)]; }
    // One line a call: "SetOptions halvBrightness=10 -> 0x00000000".
    const std::vector<std::string>& Lines() const { return lines_; }

    // Lets the nth call from now on, 1 being the next, be refused with E_UNEXPECTED before it does anything.
    void RefuseCall(std::size_t nth) { untilRefusal_ = nth; }
    bool Refused() const { return refused_; } // it came to that
    // Called by every method before it looks at what it was given.
    bool RefusesNext()
    {
        if (untilRefusal_ == 0 || --untilRefusal_ > 0) return false;
        return refused_ = true;
    }

    // Called by every method with its result; `arguments` makes the text between name and result.
    template <typename Arguments> HRESULT Note(CoreMethod method, HRESULT result, const Arguments& arguments)
    {
        ++counts_[static_cast<std::size_t>(method)];
        try {
            if (recording_) Add(method, result, arguments());
        } catch (const std::bad_alloc&) { // the line is lost, the call is not
        }
        return result;
    }

private:
    void Add(CoreMethod method, HRESULT result, const std::string& arguments);

    bool recording_ = false;
    bool refused_ = false;
    std::size_t untilRefusal_ = 0;
    std::array<std::size_t, static_cast<std::size_t>(CoreMethod::Count)> counts_{};
    std::vector<std::string> lines_;
};

} // namespace tintwerk
