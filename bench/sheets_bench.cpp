// What opening the printing preferences costs: the time of one INIT with its DESTROY, split into the core
// driver's answers and our own work, and the heap that one open sheet holds at most.
#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>

#include "host/core/core_driver.h"
#include "host/ppd/ppd_reader.h"
#include "platform/function_hook.h"
#include "platform/owners.h"
#include "src/bindings/popups.h"
#include "src/sheets/document_sheet.h"

namespace tintwerk {
namespace {

using Clock = std::chrono::steady_clock;

// Passes every call on to a core helper and adds up the time until its answer.
class TimedCore final : public IPrintCoreUI2
{
public:
    explicit TimedCore(IPrintCoreUI2* core) : core_(core) {}

    Clock::duration spent{};

    // clang-format off
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID a, PCSTR b, PVOID c, DWORD d, PDWORD e, PDWORD f) override { return Timed([&] { return core_->DrvGetDriverSetting(a, b, c, d, e, f); }); }
    HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE a, PCSTR b, PCSTR c) override { return Timed([&] { return core_->DrvUpgradeRegistrySetting(a, b, c); }); }
    HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID a, PVOID b, DWORD c, DWORD d) override { return Timed([&] { return core_->DrvUpdateUISetting(a, b, c, d); }); }
    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ a, DWORD b, PCSTR c, DWORD d, PSTR e, DWORD f, PDWORD g) override { return Timed([&] { return core_->GetOptions(a, b, c, d, e, f, g); }); }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ a, DWORD b, PCSTR c, DWORD d, PDWORD e) override { return Timed([&] { return core_->SetOptions(a, b, c, d, e); }); }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ a, DWORD b, PCSTR c, PSTR d, DWORD e, PDWORD f) override { return Timed([&] { return core_->EnumConstrainedOptions(a, b, c, d, e, f); }); }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ a, DWORD b, PCSTR c, PCSTR d, PSTR e, DWORD f, PDWORD g) override { return Timed([&] { return core_->WhyConstrained(a, b, c, d, e, f, g); }); }
    HRESULT STDMETHODCALLTYPE GetGlobalAttribute(POEMUIOBJ a, DWORD b, PCSTR c, PDWORD d, PBYTE e, DWORD f, PDWORD g) override { return Timed([&] { return core_->GetGlobalAttribute(a, b, c, d, e, f, g); }); }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ a, DWORD b, PCSTR c, PCSTR d, PDWORD e, PBYTE f, DWORD g, PDWORD h) override { return Timed([&] { return core_->GetFeatureAttribute(a, b, c, d, e, f, g, h); }); }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ a, DWORD b, PCSTR c, PCSTR d, PCSTR e, PDWORD f, PBYTE g, DWORD h, PDWORD i) override { return Timed([&] { return core_->GetOptionAttribute(a, b, c, d, e, f, g, h, i); }); }
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ a, DWORD b, PSTR c, DWORD d, PDWORD e) override { return Timed([&] { return core_->EnumFeatures(a, b, c, d, e); }); }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ a, DWORD b, PCSTR c, PSTR d, DWORD e, PDWORD f) override { return Timed([&] { return core_->EnumOptions(a, b, c, d, e, f); }); }
    HRESULT STDMETHODCALLTYPE QuerySimulationSupport(HANDLE a, DWORD b, PBYTE c, DWORD d, PDWORD e) override { return Timed([&] { return core_->QuerySimulationSupport(a, b, c, d, e); }); }
    // clang-format on

private:
    template <typename Call> HRESULT Timed(const Call& call)
    {
        const Clock::time_point start = Clock::now();
        const HRESULT result = call();
        spent += Clock::now() - start;
        return result;
    }

    IPrintCoreUI2* core_;
};

// Adds up the bytes of all heap blocks while it lives.
class HeapMeter
{
public:
    HeapMeter()
    {
        bytes = peak = 0;
        blocks.clear();
        allocate = ReplaceFunction("HeapAlloc", static_cast<decltype(&HeapAlloc)>(&Alloc));
        free = ReplaceFunction("HeapFree", static_cast<decltype(&HeapFree)>(&Free));
    }
    ~HeapMeter()
    {
        RestoreFunction("HeapAlloc");
        RestoreFunction("HeapFree");
    }
    SIZE_T Peak() const { return peak; }

private:
    inline static SIZE_T bytes, peak;
    inline static std::map<LPVOID, SIZE_T> blocks;
    inline static decltype(&HeapAlloc) allocate;
    inline static decltype(&HeapFree) free;

    static LPVOID WINAPI Alloc(HANDLE heap, DWORD flags, SIZE_T size)
    {
        const LPVOID block = allocate(heap, flags, size);
        blocks[block] = size;
        peak = std::max(peak, bytes += size);
        return block;
    }
    static BOOL WINAPI Free(HANDLE heap, DWORD flags, LPVOID block)
    {
        if (const auto known = blocks.find(block); known != blocks.end()) {
            bytes -= known->second;
            blocks.erase(known);
        }
        return free(heap, flags, block);
    }
};

LONG_PTR CALLBACK TakePage(HANDLE, UINT, LPARAM, LPARAM)
{
    return 1;
}

// Opens and closes a sheet with a plug-in heap of its own, as the core driver does.
void OpenAndClose(POEMUIOBJ object, IPrintCoreUI2* helper)
{
    OEMUIPSPARAM parameters{};
    parameters.cbSize = sizeof(parameters);
    parameters.poemuiobj = object;
    parameters.hOEMHeap = HeapCreate(0, 0, 0);
    PROPSHEETUI_INFO info{};
    info.Version = PROPSHEETUI_INFO_VERSION;
    info.pfnComPropSheet = TakePage;
    info.lParamInit = reinterpret_cast<LPARAM>(&parameters);
    info.Reason = PROPSHEETUI_REASON_INIT;
    hrOEMDocumentPropertySheets(&info, 0, helper);
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    hrOEMDocumentPropertySheets(&info, 0, helper);
    HeapDestroy(parameters.hOEMHeap);
}

void OpenSheets(benchmark::State& state, const Ppd& ppd)
{
    Selections selections;
    CoreDriver core(ppd, selections);
    ComPtr<IPrintCoreUI2> helper;
    core.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(helper.Receive()));
    for (auto _ : state)
        OpenAndClose(core.CoreObject(), helper.Get());

    constexpr int kTimedRounds = 200;
    TimedCore timed(helper.Get());
    const Clock::time_point start = Clock::now();
    for (int round = 0; round < kTimedRounds; ++round)
        OpenAndClose(core.CoreObject(), &timed);
    const auto microseconds = [](Clock::duration duration) {
        return std::chrono::duration<double, std::micro>(duration).count() / kTimedRounds;
    };
    state.counters["core_us"] = microseconds(timed.spent);
    state.counters["own_us"] = microseconds(Clock::now() - start - timed.spent);

    const HeapMeter meter;
    OpenAndClose(core.CoreObject(), helper.Get());
    state.counters["peak_bytes"] = static_cast<double>(meter.Peak());
}

void OpenSamplePrinter(benchmark::State& state)
{
    const PpdResult sample = ReadPpd(TINTWERK_SOURCE_DIR "/samples/tintwerk-x12.ppd");
    OpenSheets(state, *sample.ppd);
}
BENCHMARK(OpenSamplePrinter)->Unit(benchmark::kMicrosecond);

// Every popup with as many options as a page can show.
std::string LargePpd()
{
    std::string text =
        "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
        "*LanguageEncoding: ISOLatin1\n*PCFileName: \"LARGE.PPD\"\n*Product: \"(Large)\"\n"
        "*Manufacturer: \"Halvaro\"\n*ModelName: \"Large\"\n*ShortNickName: \"Large\"\n*NickName: \"Large\"\n"
        "*PSVersion: \"(3010) 0\"\n";
    for (const PopupBinding& popup : kPopupTable) {
        const std::string feature = popup.keyword[0] == '*' ? popup.keyword + 1 : popup.keyword;
        if (feature.empty()) continue;
        text += "*OpenUI *" + feature + "/" + feature + ": PickOne\n*Default" + feature + ": o0\n";
        for (int option = 0; option < kMaxOptions; ++option)
            text += "*" + feature + " o" + std::to_string(option) + "/Option number " +
                    std::to_string(option) + ": \"\"\n";
        text += "*CloseUI: *" + feature + "\n";
    }
    return text;
}

void OpenLargePrinter(benchmark::State& state)
{
    const PpdResult large = ReadPpdText(LargePpd(), "large.ppd");
    if (!large) return state.SkipWithError(large.error.Full().c_str());
    OpenSheets(state, *large.ppd);
}
BENCHMARK(OpenLargePrinter)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tintwerk
