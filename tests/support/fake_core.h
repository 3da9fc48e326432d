// Stand-ins for the core driver's user interface helper. FakeCore answers from what a test offers, or with
// the exact bytes that a test scripts, and records every call with its arguments.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/coredriver.h"

namespace tintwerk {

// Refuses every call; the base of the other stand-ins.
class RefusingCore : public IPrintCoreUI2
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override
    {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    // clang-format off
    HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID, PCSTR, PVOID, DWORD, PDWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ, DWORD, PCSTR, DWORD, PSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ, DWORD, PCSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ, DWORD, PCSTR, PSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ, DWORD, PCSTR, PCSTR, PSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(POEMUIOBJ, DWORD, PCSTR, PDWORD, PBYTE, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ, DWORD, PCSTR, PCSTR, PDWORD, PBYTE, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ, DWORD, PCSTR, PCSTR, PCSTR, PDWORD, PBYTE, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ, DWORD, PSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ, DWORD, PCSTR, PSTR, DWORD, PDWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QuerySimulationSupport(HANDLE, DWORD, PBYTE, DWORD, PDWORD) override { return E_NOTIMPL; }
    // clang-format on
};

// The strings of a list with their zeros and the closing one.
inline std::string List(const std::vector<std::string>& texts)
{
    std::string bytes;
    for (const std::string& text : texts)
        bytes += text + '\0';
    return bytes + '\0';
}

inline std::vector<std::string> Words(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

class FakeCore : public RefusingCore
{
public:
    using WideString = std::basic_string<WCHAR>;

    struct Feature
    {
        std::vector<std::string> options;
        std::string selected;
    };
    struct Answer
    {
        HRESULT result = S_OK;
        std::string bytes;
        DWORD needed = 0; // 0 reports the size of the bytes
        DWORD type = kADT_UNICODE;
    };

    std::map<std::string, Feature> features;
    // What is answered instead, by method and keywords: "GetOptions PageSize", "WhyConstrained MediaType
    // Film".
    std::map<std::string, Answer> answers;
    // Method, keywords or request (its zeros as '|'), and the size of the buffer.
    std::vector<std::string> calls;

    static POEMUIOBJ Object() { return reinterpret_cast<POEMUIOBJ>(0xC0DE); }

    // Every option's display name is its keyword in brackets.
    void Offer(const std::string& feature, const std::string& options, const std::string& selected)
    {
        features[feature] = {Words(options), selected};
    }
    static WideString NameOf(const std::string& option)
    {
        WideString name(TEXT("["));
        name.append(option.begin(), option.end());
        name += TEXT(']');
        return name;
    }
    int Count(const std::string& method) const
    {
        return static_cast<int>(
            std::ranges::count_if(calls, [&](auto& call) { return call.starts_with(method + " "); }));
    }

    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ object, DWORD flags, PCSTR request, DWORD requestSize,
                                         PSTR reply, DWORD size, PDWORD needed) override
    {
        Record("GetOptions", object, flags, {request, requestSize}, size);
        const std::string feature = request;
        return Reply(
            "GetOptions " + feature, features.contains(feature),
            [&] {
                return List({feature, features[feature].selected});
            },
            reply, size, needed);
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ object, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override
    {
        Record("SetOptions", object, flags - SETOPTIONS_FLAG_KEEP_CONFLICT, {pairs, size}, 0);
        *result = SETOPTIONS_RESULT_CONFLICT_REMAINED;
        const auto feature = features.find(pairs);
        if (feature == features.end()) return E_INVALIDARG;
        feature->second.selected = pairs + std::strlen(pairs) + 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ object, DWORD flags, PCSTR feature, PSTR list,
                                                     DWORD size, PDWORD needed) override
    {
        Record("EnumConstrainedOptions", object, flags, feature, size);
        return Reply(
            "EnumConstrainedOptions " + std::string(feature), false, [] { return ""; }, list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ object, DWORD flags, PCSTR feature, PCSTR option,
                                             PSTR pairs, DWORD size, PDWORD needed) override
    {
        const std::string keywords = std::string(feature) + " " + option;
        Record("WhyConstrained", object, flags, keywords, size);
        return Reply(
            "WhyConstrained " + keywords, false, [] { return ""; }, pairs, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ object, DWORD flags, PCSTR feature, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override
    {
        const std::string keywords = std::string(feature) + " " + option;
        Record("GetOptionAttribute", object, flags, keywords + " " + attribute, size);
        const auto answer = answers.find("GetOptionAttribute " + keywords);
        *type = answer != answers.end() ? answer->second.type : kADT_UNICODE;
        return Reply(
            "GetOptionAttribute " + keywords, features.contains(feature),
            [&] { return BytesOf(NameOf(option)); }, reinterpret_cast<PSTR>(value), size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ object, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                          PDWORD needed) override
    {
        Record("EnumOptions", object, flags, feature, size);
        return Reply(
            "EnumOptions " + std::string(feature), features.contains(feature),
            [&] { return List(features[feature].options); }, list, size, needed);
    }

    // A 16-bit text with its terminator, as an attribute's value.
    static std::string BytesOf(const WideString& text)
    {
        return {reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(WCHAR)};
    }

private:
    void Record(const char* method, POEMUIOBJ object, DWORD flags, std::string arguments, DWORD size)
    {
        std::ranges::replace(arguments, '\0', '|');
        std::string call = std::string(method) + " " + arguments;
        if (size) call += " " + std::to_string(size);
        if (object != Object() || flags != 0) call += " with a wrong object or flags";
        calls.push_back(std::move(call));
    }

    template <typename Bytes>
    HRESULT Reply(const std::string& call, bool known, const Bytes& bytes, PSTR buffer, DWORD size,
                  PDWORD needed)
    {
        if (const auto scripted = answers.find(call); scripted != answers.end()) {
            const Answer& answer = scripted->second;
            std::memcpy(buffer, answer.bytes.data(), std::min<size_t>(size, answer.bytes.size()));
            *needed = answer.needed ? answer.needed : static_cast<DWORD>(answer.bytes.size());
            return answer.result;
        }
        if (!known) return E_INVALIDARG;
        const std::string value = bytes();
        *needed = static_cast<DWORD>(value.size());
        if (value.size() > size) return E_OUTOFMEMORY;
        std::memcpy(buffer, value.data(), value.size());
        return S_OK;
    }
};

} // namespace tintwerk
