// The COM object behind IPrintCoreUI2 and IPrintCoreHelperPS. Made by CoreDriver, shared with the plug-in by
// reference counting; it outlives the driver while the plug-in holds it, and then refuses every call.
#pragma once

#include <atomic>
#include <initializer_list>
#include <optional>
#include <vector>

#include "host/core/core_driver.h"
#include "host/core/core_model.h"

namespace tintwerk {

// Methods that this plug-in never calls answer E_NOTIMPL.
class CoreHelper final : public IPrintCoreUI2, public IPrintCoreHelperPS
{
public:
    explicit CoreHelper(CoreDriver& driver) : driver_(&driver) {}

    void Disconnect() { driver_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override;

    // IPrintCoreUI2
    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize,
                                         PSTR reply, DWORD replySize, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override;
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list,
                                                     DWORD size, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                             PSTR pairs, DWORD size, PDWORD needed) override;
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

    // IPrintCoreHelperPS
    HRESULT STDMETHODCALLTYPE GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                        PCSTR* option) override;
    HRESULT STDMETHODCALLTYPE EnumOptions(PCSTR feature, PCSTR** options, DWORD* count) override;

    // clang-format off
    HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID, PCSTR, PVOID, DWORD, PDWORD, PDWORD) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(POEMUIOBJ, DWORD, PCSTR, PDWORD, PBYTE, DWORD, PDWORD) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE QuerySimulationSupport(HANDLE, DWORD, PBYTE, DWORD, PDWORD) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE SetOptions(DEVMODEW*, DWORD, BOOL, const PRINT_FEATURE_OPTION*, DWORD, DWORD*, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(const DEVMODEW*, DWORD, PCSTR, PCSTR**, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE WhyConstrained(const DEVMODEW*, DWORD, PCSTR, PCSTR, const PRINT_FEATURE_OPTION**, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE EnumFeatures(PCSTR**, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE GetFontSubstitution(PCWSTR, PCWSTR*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE SetFontSubstitution(PCWSTR, PCWSTR) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE CreateInstanceOfMSXMLObject(REFCLSID, IUnknown*, DWORD, REFIID, void**) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(PCSTR, DWORD*, PBYTE*, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(PCSTR, PCSTR, DWORD*, PBYTE*, DWORD*) override { return NotServed(); }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(PCSTR, PCSTR, PCSTR, DWORD*, PBYTE*, DWORD*) override { return NotServed(); }
    // clang-format on

private:
    // What every method has in common. The body may take the number of the feature that the first name gives,
    // and of the option that the second gives; names that the printer lacks are refused before it. `reply`
    // tells what was answered for the log.
    template <typename Body, typename ReplyText>
    HRESULT Answer(CoreMethod method, std::initializer_list<PCSTR> names, const Body& body,
                   const ReplyText& reply) noexcept;
    // The same for the methods of IPrintCoreUI2, whose flags must be 0.
    template <typename Body, typename ReplyText>
    HRESULT AnswerUi(CoreMethod method, POEMUIOBJ core, DWORD flags, std::initializer_list<PCSTR> names,
                     const Body& body, const ReplyText& reply) noexcept;
    HRESULT NotServed() noexcept;
    HRESULT Set(DWORD flags, PCSTR pairs, DWORD size, DWORD& result);
    // Makes these the current selections; what changed goes into the selections file's lines.
    void Adopt(std::vector<std::size_t> selected, const std::vector<bool>& chosen);

    const CoreModel& Model() const { return *driver_->model_; }

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

// The selections that a DEVMODE carries; nothing when it was not made for this printer by this driver.
std::optional<std::vector<std::size_t>> SelectionsOf(const CoreModel& model, const DEVMODEW* devmode,
                                                     std::size_t size);

} // namespace tintwerk
