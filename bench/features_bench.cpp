// What opening a sheet, applying a page and reading or writing one feature cost, and which part of it is our
// own: every run is measured against the same calls made straight to the core driver.
#include <benchmark/benchmark.h>

#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/core/core_driver.h"
#include "host/ppd/ppd_reader.h"
#include "platform/owners.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/popups.h"
#include "src/bindings/sliders.h"
#include "src/features/feature_access.h"
#include "src/features/initial_read.h"
#include "src/features/page_settings.h"
#include "src/features/popup_filling.h"
#include "tests/support/fake_core.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

// Answers every question at once: each feature has the same options, the first selected, all with one long
// name.
class InstantCore : public RefusingCore
{
public:
    explicit InstantCore(int options)
    {
        std::vector<std::string> keywords;
        for (int i = 0; i < options; ++i)
            keywords.push_back(std::to_string(10 + i));
        list_ = List(keywords);
        name_ = FakeCore::BytesOf(std::basic_string<WCHAR>(100, TEXT('n')));
    }

    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ, DWORD, PCSTR request, DWORD requestSize, PSTR reply,
                                         DWORD, PDWORD needed) override
    {
        std::memcpy(reply, request, requestSize - 1);
        std::memcpy(reply + requestSize - 1, "10\0", 4);
        *needed = requestSize + 3;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ, DWORD, PCSTR, DWORD, PDWORD result) override
    {
        *result = SETOPTIONS_RESULT_NO_CONFLICT;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ, DWORD, PCSTR, PCSTR, PCSTR, PDWORD type,
                                                 PBYTE value, DWORD, PDWORD needed) override
    {
        *type = kADT_UNICODE;
        return Give(name_, reinterpret_cast<PSTR>(value), needed);
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ, DWORD, PCSTR, PSTR list, DWORD, PDWORD needed) override
    {
        return Give(list_, list, needed);
    }

private:
    static HRESULT Give(const std::string& bytes, PSTR buffer, PDWORD needed)
    {
        std::memcpy(buffer, bytes.data(), bytes.size());
        *needed = static_cast<DWORD>(bytes.size());
        return S_OK;
    }

    std::string list_;
    std::string name_;
};

// Passes every call on and can make the same calls again.
class CallRecorder : public RefusingCore
{
public:
    explicit CallRecorder(IPrintCoreUI2* core) : core_(core) {}

    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ object, DWORD flags, PCSTR request, DWORD requestSize,
                                         PSTR reply, DWORD size, PDWORD needed) override
    {
        const std::string bytes(request, requestSize);
        return Run([=, this](char* buffer, DWORD* count) {
            return core_->GetOptions(object, flags, bytes.data(), requestSize, buffer ? buffer : reply, size,
                                     count ? count : needed);
        });
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ object, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override
    {
        const std::string bytes(pairs, size);
        return Run([=, this](char*, DWORD* count) {
            return core_->SetOptions(object, flags, bytes.data(), size, count ? count : result);
        });
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ object, DWORD flags, PCSTR feature, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override
    {
        const std::string featureText(feature), optionText(option), attributeText(attribute);
        return Run([=, this](char* buffer, DWORD* count) {
            return core_->GetOptionAttribute(object, flags, featureText.c_str(), optionText.c_str(),
                                             attributeText.c_str(), count ? count : type,
                                             buffer ? reinterpret_cast<BYTE*>(buffer) : value, size,
                                             count ? count : needed);
        });
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ object, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                          PDWORD needed) override
    {
        const std::string text(feature);
        return Run([=, this](char* buffer, DWORD* count) {
            return core_->EnumOptions(object, flags, text.c_str(), buffer ? buffer : list, size,
                                      count ? count : needed);
        });
    }

    std::size_t Calls() const { return calls_.size(); }
    void Repeat() const
    {
        static char buffer[1 << 16];
        DWORD count = 0;
        for (const auto& call : calls_)
            benchmark::DoNotOptimize(call(buffer, &count));
    }

private:
    using Call = std::function<HRESULT(char* buffer, DWORD* count)>;
    HRESULT Run(Call call)
    {
        calls_.push_back(std::move(call));
        return calls_.back()(nullptr, nullptr);
    }

    IPrintCoreUI2* core_;
    std::vector<Call> calls_;
};

// An open sheet without pages.
struct Sheet
{
    explicit Sheet(IPrintCoreUI2* core, POEMUIOBJ object = nullptr)
    {
        context->options = table.get();
        context->core = {object, core, nullptr, HeapCreate(0, 0, 0)};
    }
    ~Sheet() { HeapDestroy(context->core.heap); }
    int Options() const
    {
        int count = 0;
        for (const OptionList& list : table->lists)
            count += CountOptions(list.data());
        return count;
    }
    std::unique_ptr<OptionTable> table = std::make_unique<OptionTable>();
    std::unique_ptr<SheetContext> context = std::make_unique<SheetContext>();
};

// Runs an action in the benchmark's loop, then only the core driver calls that it makes, and tells the
// difference.
template <typename Action>
void Measure(benchmark::State& state, IPrintCoreUI2* core, POEMUIOBJ object, double units,
             const Action& action)
{
    // Processor time: other programs of the machine do not count.
    const auto nanoseconds = [](std::clock_t ticks, auto rounds) {
        return 1e9 / CLOCKS_PER_SEC * static_cast<double>(ticks) / static_cast<double>(rounds);
    };

    CallRecorder recorder(core);
    {
        const HeapWatch heaps;
        const DebugLines lines;
        action(&recorder, object);
        const auto traced = static_cast<double>(lines.Lines().size());
        state.counters["lines"] = traced;
        state.counters["allocations/unit"] = (heaps.Calls() - traced) / units;
    }
    const auto start = std::clock();
    for ([[maybe_unused]] auto round : state)
        action(core, object);
    const double all = nanoseconds(std::clock() - start, state.iterations());

    constexpr int kRounds = 500;
    const auto coreStart = std::clock();
    for (int i = 0; i < kRounds; ++i)
        recorder.Repeat();
    const double coreOnly = nanoseconds(std::clock() - coreStart, kRounds);
    state.counters["calls"] = static_cast<double>(recorder.Calls());
    state.counters["core_ns/call"] = coreOnly / static_cast<double>(recorder.Calls());
    state.counters["own_ns/unit"] = (all - coreOnly) / units;
}

void ReadSheet(IPrintCoreUI2* core, POEMUIOBJ object)
{
    Sheet sheet(core, object);
    benchmark::DoNotOptimize(InitPPDSettings(*sheet.context));
}

void InitialReadOfTheSamplePrinter(benchmark::State& state)
{
    const PpdResult printer = ReadPpd(TINTWERK_SOURCE_DIR "/samples/tintwerk-x12.ppd");
    if (!printer) return state.SkipWithError(printer.error.Full().c_str());
    Selections selections;
    CoreDriver driver(*printer.ppd, selections);
    ComPtr<IPrintCoreUI2> core;
    driver.Helper()->QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(core.Receive()));
    Sheet sheet(core.Get(), driver.CoreObject());
    InitPPDSettings(*sheet.context);
    state.counters["options"] = sheet.Options();
    Measure(state, core.Get(), driver.CoreObject(), sheet.Options(), ReadSheet);
}
BENCHMARK(InitialReadOfTheSamplePrinter)->Unit(benchmark::kMicrosecond);

void InitialReadOf14Popups(benchmark::State& state)
{
    InstantCore core(static_cast<int>(state.range(0)));
    Measure(state, &core, nullptr, static_cast<double>(kPopupRows * state.range(0)), ReadSheet);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(InitialReadOf14Popups)
    ->DenseRange(10, 80, 10)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

void ReadOneFeature(benchmark::State& state)
{
    InstantCore core(1);
    Sheet sheet(&core);
    Measure(state, &core, nullptr, 1, [&](IPrintCoreUI2* helper, POEMUIOBJ) {
        sheet.context->core.helper = helper;
        int value = 0;
        benchmark::DoNotOptimize(getPPDOptionSV(*sheet.context, "halvBrightness", &value, nullptr, 0));
    });
}
BENCHMARK(ReadOneFeature);

void WriteOneFeature(benchmark::State& state)
{
    InstantCore core(1);
    Sheet sheet(&core);
    Measure(state, &core, nullptr, 1, [&](IPrintCoreUI2* helper, POEMUIOBJ) {
        sheet.context->core.helper = helper;
        benchmark::DoNotOptimize(SetOption(*sheet.context, "*MediaType", "Glossy22"));
    });
}
BENCHMARK(WriteOneFeature);

// Every control that a page can have, in one window.
HWND MakeControls(SheetContext& context)
{
    const HWND page = CreateWindowExW(0, TEXT("STATIC"), TEXT(""), WS_OVERLAPPED, 0, 0, 400, 400, nullptr,
                                      nullptr, nullptr, nullptr);
    const auto child = [page](const WCHAR* kind, DWORD style) {
        return CreateWindowExW(0, kind, TEXT(""), WS_CHILD | style, 0, 0, 100, 20, page, nullptr, nullptr,
                               nullptr);
    };
    for (int row = 0; row < kPopups; ++row) {
        context.popups.windows[row] = child(TEXT("COMBOBOX"), CBS_DROPDOWNLIST);
        FillPopUp(context.popups.windows[row], PopupList(context, row), PopupVisibility(context, row),
                  context.popups.selections[row]);
    }
    for (HWND& slider : context.sliders.windows)
        slider = child(TRACKBAR_CLASSW, 0);
    for (HWND& box : context.checkBoxes.windows)
        box = child(TEXT("BUTTON"), BS_AUTOCHECKBOX);
    return page;
}

void ApplyPage(benchmark::State& state)
{
    InstantCore core(20);
    Sheet sheet(&core);
    InitPPDSettings(*sheet.context);
    const HWND page = MakeControls(*sheet.context);
    const DWORD tabBit = kPageKindTable[static_cast<std::size_t>(state.range(0))].tabBit;
    Measure(state, &core, nullptr, 1, [&](IPrintCoreUI2* helper, POEMUIOBJ) {
        sheet.context->core.helper = helper;
        SavePPDOptions(*sheet.context, tabBit);
    });
    DestroyWindow(page);
}
BENCHMARK(ApplyPage)->DenseRange(0, kPageKinds - 1)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tintwerk
