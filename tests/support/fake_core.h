// Stand-ins for the core driver's helpers. FakeCore answers from what a test offers, or with
// the exact bytes that a test scripts, and records every call with its arguments.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/coredriver.h"

namespace tintwerk {

// Counts its references.
template <typename Interface, const IID& kId> class Counted : public Interface
{
public:
    std::atomic<int> references{1};

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override
    {
        const bool known = IsEqualIID(interfaceId, kId);
        *object = known ? this : nullptr;
        references += known;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
};

// Refuses every call; the base of the stand-ins for the user interface helper.
class RefusingCore : public Counted<IPrintCoreUI2, IID_IPrintCoreUI2>
{
public:
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
        std::string keyword;
        std::vector<std::string> options;
        std::string selected;                         // empty: cannot be read
        std::map<std::string, WideString> names = {}; // display names by option; the feature's own under ""
    };
    // In the order of the PPD.
    class FeatureList : public std::vector<Feature>
    {
    public:
        using std::vector<Feature>::vector;
        using std::vector<Feature>::operator[];
        Feature& operator[](const std::string& keyword)
        {
            const auto found = std::ranges::find(*this, keyword, &Feature::keyword);
            return found == end() ? emplace_back(Feature{keyword, {}, {}}) : *found;
        }
        const Feature* Find(const std::string& keyword) const
        {
            const auto found = std::ranges::find(*this, keyword, &Feature::keyword);
            return found == end() ? nullptr : &*found;
        }
    };
    struct Answer
    {
        HRESULT result = S_OK;
        std::string bytes;
        std::optional<DWORD> needed = {}; // else the size of the bytes is reported
        DWORD type = kADT_UNICODE;
    };

    FeatureList features;
    bool namesEveryOption = true; // an option without display name has its keyword in brackets
    // What is answered instead, by method and keywords or the first of these words: "WhyConstrained MediaType
    // Film", "GetOptions".
    std::map<std::string, Answer> answers;
    // Method, keywords or request (its zeros as '|'), and the size of the buffer.
    std::vector<std::string> calls;
    std::vector<std::string> written; // "feature=option" by every SetOptions

    static POEMUIOBJ Object() { return reinterpret_cast<POEMUIOBJ>(0xC0DE); }

    void Offer(const std::string& feature, const std::string& options, const std::string& selected)
    {
        features[feature] = {feature, Words(options), selected};
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
        std::vector<std::string> pairs;
        bool known = false;
        for (const char* keyword = request; *keyword; keyword += std::strlen(keyword) + 1) {
            const Feature* const feature = features.Find(keyword);
            known |= feature != nullptr;
            if (feature && !feature->selected.empty())
                pairs.insert(pairs.end(), {keyword, feature->selected});
        }
        return Reply(std::string("GetOptions ") + request, known, List(pairs), reply, size, needed);
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ object, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override
    {
        Record("SetOptions", object, flags - SETOPTIONS_FLAG_KEEP_CONFLICT, {pairs, size}, 0);
        const std::string feature = pairs;
        const std::string option = pairs + feature.size() + 1;
        written.push_back(feature + "=" + option);
        *result = SETOPTIONS_RESULT_CONFLICT_REMAINED;
        if (const Answer* const scripted = Scripted("SetOptions " + feature)) return scripted->result;
        if (!features.Find(feature)) return E_INVALIDARG;
        features[feature].selected = option;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ object, DWORD flags, PSTR list, DWORD size,
                                           PDWORD needed) override
    {
        Record("EnumFeatures", object, flags, "", size);
        std::vector<std::string> keywords;
        for (const Feature& feature : features)
            keywords.push_back(feature.keyword);
        return Reply("EnumFeatures", true, List(keywords), list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ object, DWORD flags, PCSTR feature, PSTR list,
                                                     DWORD size, PDWORD needed) override
    {
        Record("EnumConstrainedOptions", object, flags, feature, size);
        return Reply("EnumConstrainedOptions " + std::string(feature), false, "", list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ object, DWORD flags, PCSTR feature, PCSTR option,
                                             PSTR pairs, DWORD size, PDWORD needed) override
    {
        const std::string keywords = std::string(feature) + " " + option;
        Record("WhyConstrained", object, flags, keywords, size);
        return Reply("WhyConstrained " + keywords, false, "", pairs, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ object, DWORD flags, PCSTR feature,
                                                  PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                  PDWORD needed) override
    {
        Record("GetFeatureAttribute", object, flags, std::string(feature) + " " + attribute, size);
        return ReplyName("GetFeatureAttribute " + std::string(feature), feature, "", type, value, size,
                         needed);
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ object, DWORD flags, PCSTR feature, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override
    {
        const std::string keywords = std::string(feature) + " " + option;
        Record("GetOptionAttribute", object, flags, keywords + " " + attribute, size);
        return ReplyName("GetOptionAttribute " + keywords, feature, option, type, value, size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ object, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                          PDWORD needed) override
    {
        Record("EnumOptions", object, flags, feature, size);
        const Feature* const known = features.Find(feature);
        return Reply("EnumOptions " + std::string(feature), known,
                     List(known ? known->options : std::vector<std::string>()), list, size, needed);
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
    const Answer* Scripted(std::string call) const
    {
        for (;; call.resize(call.rfind(' '))) {
            if (const auto answer = answers.find(call); answer != answers.end()) return &answer->second;
            if (call.find(' ') == call.npos) return nullptr;
        }
    }
    HRESULT ReplyName(const std::string& call, const char* feature, const std::string& option, PDWORD type,
                      PBYTE value, DWORD size, PDWORD needed)
    {
        const Answer* const scripted = Scripted(call);
        *type = scripted ? scripted->type : kADT_UNICODE;
        const Feature* const known = features.Find(feature);
        const bool named = known && known->names.contains(option);
        return Reply(call, named || (known && namesEveryOption),
                     BytesOf(named ? known->names.at(option) : NameOf(option)), reinterpret_cast<PSTR>(value),
                     size, needed);
    }
    HRESULT Reply(const std::string& call, bool known, const std::string& value, PSTR buffer, DWORD size,
                  PDWORD needed)
    {
        if (const Answer* const scripted = Scripted(call)) {
            std::memcpy(buffer, scripted->bytes.data(), std::min<size_t>(size, scripted->bytes.size()));
            *needed = scripted->needed.value_or(static_cast<DWORD>(scripted->bytes.size()));
            return scripted->result;
        }
        if (!known) return E_INVALIDARG;
        *needed = static_cast<DWORD>(value.size());
        if (value.size() > size) return E_OUTOFMEMORY;
        std::memcpy(buffer, value.data(), value.size());
        return S_OK;
    }
};

// The PostScript helper: answers options from a table.
class FakeHelperPS : public Counted<IPrintCoreHelperPS, IID_IPrintCoreHelperPS>
{
public:
    std::map<std::string, std::string> selected; // option by feature; a feature that is not here fails
    std::map<std::string, std::vector<const char*>> offered; // options by feature
    std::string asked; // the last feature, and how large the devmode was
    DWORD askedSize = 0;

    HRESULT STDMETHODCALLTYPE GetOption(const DEVMODEW*, DWORD size, PCSTR feature, PCSTR* option) override
    {
        asked = feature;
        askedSize = size;
        const auto at = selected.find(feature);
        if (at == selected.end()) return E_INVALIDARG;
        *option = at->second.c_str();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(PCSTR feature, PCSTR** options, DWORD* count) override
    {
        const auto at = offered.find(feature);
        if (at == offered.end()) return E_INVALIDARG;
        *options = at->second.data();
        *count = static_cast<DWORD>(at->second.size());
        return S_OK;
    }

    // clang-format off
    HRESULT STDMETHODCALLTYPE SetOptions(DEVMODEW*, DWORD, BOOL, const PRINT_FEATURE_OPTION*, DWORD, DWORD*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(const DEVMODEW*, DWORD, PCSTR, PCSTR**, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE WhyConstrained(const DEVMODEW*, DWORD, PCSTR, PCSTR, const PRINT_FEATURE_OPTION**, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFeatures(PCSTR**, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFontSubstitution(PCWSTR, PCWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetFontSubstitution(PCWSTR, PCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateInstanceOfMSXMLObject(REFCLSID, IUnknown*, DWORD, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(PCSTR, DWORD*, PBYTE*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(PCSTR, PCSTR, DWORD*, PBYTE*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(PCSTR, PCSTR, PCSTR, DWORD*, PBYTE*, DWORD*) override { return E_NOTIMPL; }
    // clang-format on
};

} // namespace tintwerk
