// A core driver with the features that a test names, which records what is written and can be told to answer
// badly.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/fake_core.h"

namespace tintwerk {

using Text = std::basic_string<WCHAR>;

// ISO 8859-1.
inline Text Wide(std::string_view text)
{
    Text wide;
    for (const char c : text)
        wide += static_cast<WCHAR>(static_cast<unsigned char>(c));
    return wide;
}

struct ScriptedFeature
{
    std::string keyword;
    std::vector<std::string> options;
    std::string selected;                   // empty: the selection cannot be read
    std::map<std::string, Text> names = {}; // display names by option; the feature's own under ""
};

class ScriptedCore : public RefusingCore
{
public:
    std::vector<ScriptedFeature> features;
    std::vector<std::string> written;        // "feature=option" by every SetOptions
    std::map<std::string, HRESULT> failures; // by method, or by method and keyword: "EnumOptions halvX"
    std::map<std::string, std::string>
        replies; // raw bytes instead of the right answer, named in the same way
    std::map<std::string, DWORD> reportedSizes; // "needed" instead of the right one
    POEMUIOBJ object = reinterpret_cast<POEMUIOBJ>(this);

    ScriptedFeature* Find(std::string_view keyword)
    {
        const auto found = std::ranges::find(features, keyword, &ScriptedFeature::keyword);
        return found == features.end() ? nullptr : &*found;
    }

    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD size, PSTR reply,
                                         DWORD replySize, PDWORD needed) override
    {
        if (core != object || flags != 0 || request[size - 1] != 0) return E_INVALIDARG;
        std::vector<std::string> pairs;
        for (const char* keyword = request; *keyword; keyword += std::strlen(keyword) + 1) {
            const ScriptedFeature* const feature = Find(keyword);
            if (feature && !feature->selected.empty())
                pairs.insert(pairs.end(), {feature->keyword, feature->selected});
        }
        return Answer("GetOptions", request, List(pairs), reply, replySize, needed);
    }

    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD,
                                         PDWORD result) override
    {
        if (core != object || flags != SETOPTIONS_FLAG_KEEP_CONFLICT) return E_INVALIDARG;
        *result = SETOPTIONS_RESULT_NO_CONFLICT;
        const std::string feature = pairs;
        written.push_back(feature + "=" + (pairs + feature.size() + 1));
        return Failure("SetOptions", feature);
    }

    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ core, DWORD, PSTR reply, DWORD size,
                                           PDWORD needed) override
    {
        if (core != object) return E_INVALIDARG;
        std::vector<std::string> keywords;
        for (const ScriptedFeature& feature : features)
            keywords.push_back(feature.keyword);
        return Answer("EnumFeatures", "", List(keywords), reply, size, needed);
    }

    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ core, DWORD, PCSTR keyword, PSTR reply, DWORD size,
                                          PDWORD needed) override
    {
        const ScriptedFeature* const feature = Find(keyword);
        if (core != object || !feature) return E_INVALIDARG;
        return Answer("EnumOptions", keyword, List(feature->options), reply, size, needed);
    }

    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ core, DWORD, PCSTR keyword, PCSTR attribute,
                                                  PDWORD type, PBYTE value, DWORD size,
                                                  PDWORD needed) override
    {
        return core == object && Find(keyword) ? AnswerName("GetFeatureAttribute", *Find(keyword), "",
                                                            attribute, type, value, size, needed)
                                               : E_INVALIDARG;
    }

    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ core, DWORD, PCSTR keyword, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override
    {
        return core == object && Find(keyword) ? AnswerName("GetOptionAttribute", *Find(keyword), option,
                                                            attribute, type, value, size, needed)
                                               : E_INVALIDARG;
    }

private:
    HRESULT AnswerName(const std::string& method, const ScriptedFeature& feature, const std::string& option,
                       std::string_view attribute, PDWORD type, PBYTE value, DWORD size, PDWORD needed)
    {
        const auto name = feature.names.find(option);
        if (const HRESULT failure = Failure(method, feature.keyword); FAILED(failure)) return failure;
        if (name == feature.names.end() || attribute != "DisplayName") return E_INVALIDARG;
        *type = kADT_UNICODE;
        const std::string bytes(reinterpret_cast<const char*>(name->second.c_str()),
                                (name->second.size() + 1) * sizeof(WCHAR));
        return Answer(method, feature.keyword, bytes, reinterpret_cast<PSTR>(value), size, needed);
    }

    HRESULT Failure(const std::string& method, const std::string& keyword) const
    {
        for (const std::string& name : {method, method + " " + keyword})
            if (const auto failure = failures.find(name); failure != failures.end()) return failure->second;
        return S_OK;
    }

    HRESULT Answer(const std::string& method, const std::string& keyword, std::string bytes, PSTR reply,
                   DWORD size, PDWORD needed)
    {
        const std::string both = method + " " + keyword;
        if (const HRESULT failure = Failure(method, keyword); FAILED(failure)) return failure;
        for (const std::string& name : {method, both})
            if (replies.contains(name)) bytes = replies[name];
        *needed = static_cast<DWORD>(bytes.size());
        if (bytes.size() > size) return E_OUTOFMEMORY;
        std::ranges::copy(bytes, reply);
        for (const std::string& name : {method, both})
            if (reportedSizes.contains(name)) *needed = reportedSizes[name];
        return S_OK;
    }
};

} // namespace tintwerk
