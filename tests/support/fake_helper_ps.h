// A stand-in for the core driver's PostScript helper: answers options from a table, records what it was
// asked, counts its references.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/coredriver.h"

namespace tintwerk {

class FakeHelperPS : public IPrintCoreHelperPS
{
public:
    std::map<std::string, std::string> selected; // option by feature; a feature that is not here fails
    std::map<std::string, std::vector<const char*>> offered; // options by feature

    struct Question
    {
        const DEVMODEW* devmode;
        DWORD size;
        std::string feature;
    };
    std::vector<Question> Questions() const
    {
        const std::lock_guard lock(mutex_);
        return questions_;
    }
    std::atomic<int> references{1};

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override
    {
        const bool known = IsEqualIID(interfaceId, IID_IPrintCoreHelperPS);
        *object = known ? this : nullptr;
        references += known;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }

    HRESULT STDMETHODCALLTYPE GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                        PCSTR* option) override
    {
        const std::lock_guard lock(mutex_);
        questions_.push_back({devmode, size, feature});
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

private:
    mutable std::mutex mutex_;
    std::vector<Question> questions_;
};

} // namespace tintwerk
