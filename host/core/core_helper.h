// The COM object behind IPrintCoreUI2 and IPrintCoreHelperPS. Made by CoreDriver, shared with the plug-in by
// reference counting; it outlives the driver while the plug-in holds it, and then refuses every call.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "host/core/core_driver.h"
#include "host/core/core_model.h"

namespace tintwerk {

class CoreHelper;

class CoreUiHelper final : public IPrintCoreUI2
{
public:
    explicit CoreUiHelper(CoreHelper& owner) : owner_(owner) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID core, PCSTR feature, PVOID output, DWORD size,
                                                  PDWORD needed, PDWORD returned) override;
    HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE printer, PCSTR feature, PCSTR option) override;
    HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID core, PVOID item, DWORD previous, DWORD mode) override;
    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize,
                                         PSTR reply, DWORD replySize, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override;
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list,
                                                     DWORD size, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                             PSTR pairs, DWORD size, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(POEMUIOBJ core, DWORD flags, PCSTR attribute, PDWORD type,
                                                 PBYTE value, DWORD size, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR attribute,
                                                  PDWORD type, PBYTE value, DWORD size,
                                                  PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ core, DWORD flags, PSTR list, DWORD size,
                                           PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                          PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE QuerySimulationSupport(HANDLE printer, DWORD level, PBYTE output, DWORD size,
                                                     PDWORD needed) override;

private:
    HRESULT Attribute(const std::optional<CoreAttribute>& attribute, PDWORD type, PBYTE value, DWORD size,
                      PDWORD needed);
    HRESULT Options(PCSTR request, DWORD requestSize, PSTR reply, DWORD replySize, PDWORD needed) const;
    HRESULT Set(DWORD flags, PCSTR pairs, DWORD size, DWORD& result);
    bool Accepts(POEMUIOBJ core, DWORD flags) const;

    CoreHelper& owner_;
};

class CorePsHelper final : public IPrintCoreHelperPS
{
public:
    explicit CorePsHelper(CoreHelper& owner) : owner_(owner) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                        PCSTR* option) override;
    HRESULT STDMETHODCALLTYPE SetOptions(DEVMODEW* devmode, DWORD size, BOOL resolve,
                                         const PRINT_FEATURE_OPTION* pairs, DWORD count, DWORD* written,
                                         DWORD* result) override;
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                                     PCSTR** options, DWORD* count) override;
    HRESULT STDMETHODCALLTYPE WhyConstrained(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR option,
                                             const PRINT_FEATURE_OPTION** pairs, DWORD* count) override;
    HRESULT STDMETHODCALLTYPE EnumFeatures(PCSTR** features, DWORD* count) override;
    HRESULT STDMETHODCALLTYPE EnumOptions(PCSTR feature, PCSTR** options, DWORD* count) override;
    HRESULT STDMETHODCALLTYPE GetFontSubstitution(PCWSTR font, PCWSTR* deviceFont) override;
    HRESULT STDMETHODCALLTYPE SetFontSubstitution(PCWSTR font, PCWSTR deviceFont) override;
    HRESULT STDMETHODCALLTYPE CreateInstanceOfMSXMLObject(REFCLSID classId, IUnknown* outer, DWORD context,
                                                          REFIID interfaceId, void** object) override;
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(PCSTR attribute, DWORD* type, PBYTE* value,
                                                 DWORD* size) override;
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(PCSTR feature, PCSTR attribute, DWORD* type, PBYTE* value,
                                                  DWORD* size) override;
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(PCSTR feature, PCSTR option, PCSTR attribute, DWORD* type,
                                                 PBYTE* value, DWORD* size) override;

private:
    HRESULT Attribute(const std::optional<CoreAttribute>& attribute, DWORD* type, PBYTE* value, DWORD* size);

    CoreHelper& owner_;
    std::vector<PCSTR> constrained_;             // the last answer of EnumConstrainedOptions
    std::vector<PRINT_FEATURE_OPTION> whyPairs_; // the last answer of WhyConstrained
};

// The object's identity: what both interfaces share.
class CoreHelper final : public IUnknown
{
public:
    explicit CoreHelper(CoreDriver& driver) : ui(*this), ps(*this), driver_(&driver) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    void Disconnect() { driver_ = nullptr; }
    // Asked first by every method.
    bool Answers() { return driver_ && !driver_->calls_.RefusesNext(); }
    ULONG References() const { return references_; }

    const CoreModel& Model() const { return *driver_->model_; }
    std::vector<std::size_t>& Selected() { return driver_->selected_; }
    CallLog& Calls() { return driver_->calls_; }
    bool IsCoreObject(POEMUIOBJ core) const { return driver_ && core == driver_->CoreObject(); }
    std::optional<std::size_t> Feature(PCSTR keyword) const;
    std::optional<std::size_t> Option(std::size_t feature, PCSTR keyword) const;
    // Makes these the current selections; what changed goes into the selections file's lines.
    void Adopt(std::vector<std::size_t> selected, const std::vector<bool>& chosen);

    CoreUiHelper ui;
    CorePsHelper ps;

private:
    CoreDriver* driver_;
    std::atomic<ULONG> references_{1};
};

// The core driver's own section behind the public part of a DEVMODE; the selected option's number of every
// feature follows as 16-bit words, then the plug-in's part.
struct CoreDevmodeSection
{
    DWORD size; // with the numbers
    DWORD signature;
    DWORD version;
    DWORD checksum; // of the PPD's keywords
    DWORD features;
    DWORD pluginSize;

    static constexpr DWORD kSignature = 0x54574B43;
    static constexpr DWORD kVersion = 1;
};

DWORD CoreSectionSize(const CoreModel& model);
// The selections that a DEVMODE carries; nothing when it was not made for this printer by this driver.
std::optional<std::vector<std::size_t>> SelectionsOf(const CoreModel& model, const DEVMODEW* devmode,
                                                     std::size_t size);
void StoreSelections(const CoreModel& model, DEVMODEW* devmode, const std::vector<std::size_t>& selected);

} // namespace tintwerk
