// A whole sheet with anybody in front of it and any printer behind it: a sample's PPD with lines taken out
// and put in, a core driver that lies now and then, an ink file of any bytes; pages, controls and buttons
// used in any order. A sheet over an honest core driver opens, and writes what the PPD has; after every sheet
// no window is left.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/random_core.h"
#include "host/ppd/ppd_reader.h"
#include "host/sheet/message_boxes.h"
#include "host/sheet/property_sheet.h"
#include "host/sheet/sheet_controls.h"
#include "platform/memory_spooler.h"
#include "platform/whole_file.h"
#include "tests/support/installed_value.h"

namespace tintwerk {
namespace {

constexpr int kMostActions = 60;

// --- The printer

// The samples' configuration directory, whose ink files each run may write anew.
class ConfigDirectory
{
public:
    ConfigDirectory()
        : path_(std::filesystem::temp_directory_path() /
                ("tintwerk-sheet-fuzz-" + std::to_string(GetCurrentProcessId())))
    {
        std::filesystem::copy(TINTWERK_SOURCE_DIR "/samples/config", path_,
                              std::filesystem::copy_options::recursive);
        ReadWhole(path_ / "ink/printer0012.ink", sample_);
    }
    ~ConfigDirectory() { std::filesystem::remove_all(path_); }

    // Nothing: the sample's.
    void WriteInk(const std::optional<std::string>& text) const
    {
        WriteWhole(path_ / "ink/printer0012.ink", text.value_or(sample_));
    }

private:
    std::filesystem::path path_;
    InstalledValue value_{"ConfigDir", path_.string()};
    std::string sample_;
};

std::vector<std::string> LinesOf(const char* sample)
{
    std::string text;
    ReadWhole(std::filesystem::path(TINTWERK_SOURCE_DIR "/samples") / sample, text);
    std::vector<std::string> lines(1);
    for (const char c : text) {
        lines.back() += c;
        if (c == '\n') lines.emplace_back();
    }
    return lines;
}

struct Printer
{
    std::string text;
    bool changed = false; // the PPD is not the sample any more
};

Printer AnyPrinter(FuzzedDataProvider& data)
{
    static const std::array kSamples{LinesOf("tintwerk-x12.ppd"), LinesOf("tintwerk-s8.ppd"),
                                     LinesOf("tintwerk-lite.ppd")};
    std::vector<std::string> lines = kSamples[data.ConsumeIntegralInRange<std::size_t>(0, 2)];
    Printer printer;
    for (int changes = data.ConsumeIntegralInRange(0, 8); changes > 0; --changes) {
        printer.changed = true;
        const auto at = data.ConsumeIntegralInRange<std::ptrdiff_t>(0, std::ssize(lines) - 1);
        const auto count = data.ConsumeIntegralInRange<std::ptrdiff_t>(0, 60);
        const auto first = lines.begin() + at;
        const auto next = lines.erase(first, first + std::min(count, std::ssize(lines) - at));
        lines.insert(next, data.ConsumeRandomLengthString(80) + "\n");
    }
    for (const std::string& line : lines)
        printer.text += line;
    return printer;
}

void ChooseAnything(FuzzedDataProvider& data, CoreDriver& core)
{
    const std::vector<std::string_view> features = core.Features();
    for (int choices = data.ConsumeIntegralInRange(0, 12); choices > 0 && !features.empty(); --choices) {
        const std::string_view feature =
            features[data.ConsumeIntegralInRange<std::size_t>(0, features.size() - 1)];
        const std::vector<std::string_view> options = core.Options(feature);
        if (!options.empty())
            core.Select(feature, options[data.ConsumeIntegralInRange<std::size_t>(0, options.size() - 1)]);
    }
}

// --- The core driver

// Answers truly but for the calls that the fuzzer picks.
class LyingCore : public RefusingCore
{
public:
    LyingCore(IUnknown& honest, FuzzedDataProvider& lies) : lies_(lies)
    {
        honest.QueryInterface(IID_IPrintCoreUI2, reinterpret_cast<void**>(honest_.Receive()));
        honest.QueryInterface(IID_IPrintCoreHelperPS, reinterpret_cast<void**>(postScript_.Receive()));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (IsEqualIID(id, IID_IPrintCoreUI2)) {
            *object = this;
            return S_OK;
        }
        return postScript_->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize,
                                         PSTR reply, DWORD size, PDWORD needed) override
    {
        return Speaker().GetOptions(core, flags, request, requestSize, reply, size, needed);
    }
    HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size,
                                         PDWORD result) override
    {
        if (size < 3 || pairs[size - 1] || pairs[size - 2]) std::abort();
        return Speaker().SetOptions(core, flags, pairs, size, result);
    }
    HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list,
                                                     DWORD size, PDWORD needed) override
    {
        return Speaker().EnumConstrainedOptions(core, flags, feature, list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                             PSTR pairs, DWORD size, PDWORD needed) override
    {
        return Speaker().WhyConstrained(core, flags, feature, option, pairs, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR attribute,
                                                  PDWORD type, PBYTE value, DWORD size,
                                                  PDWORD needed) override
    {
        return Speaker().GetFeatureAttribute(core, flags, feature, attribute, type, value, size, needed);
    }
    HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                                 PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                 PDWORD needed) override
    {
        return Speaker().GetOptionAttribute(core, flags, feature, option, attribute, type, value, size,
                                            needed);
    }
    HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ core, DWORD flags, PSTR list, DWORD size,
                                           PDWORD needed) override
    {
        return Speaker().EnumFeatures(core, flags, list, size, needed);
    }
    HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                          PDWORD needed) override
    {
        return Speaker().EnumOptions(core, flags, feature, list, size, needed);
    }

private:
    IPrintCoreUI2& Speaker()
    {
        if (lies_.remaining_bytes() == 0) return *honest_.Get();
        if (callsToLie_ == 0) callsToLie_ = lies_.ConsumeIntegralInRange(1, 250);
        return --callsToLie_ > 0 ? *honest_.Get() : liar_;
    }

    FuzzedDataProvider& lies_;
    RandomCore liar_{lies_};
    int callsToLie_ = 0;
    ComPtr<IPrintCoreUI2> honest_;
    ComPtr<IPrintCoreHelperPS> postScript_;
};

// --- Whoever sits in front of it

// Takes one action each time the sheet's message loop has nothing else to do.
class Player
{
public:
    Player(PropertySheet& sheet, FuzzedDataProvider& data) : sheet_(sheet), data_(data)
    {
        current = this;
        NextTurn();
    }
    ~Player() { current = nullptr; }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

private:
    void NextTurn()
    {
        PostMessageW(nullptr, WM_TIMER, 1, reinterpret_cast<LPARAM>(static_cast<TIMERPROC>(OnTurn)));
    }

    static void CALLBACK OnTurn(HWND, UINT, UINT_PTR, DWORD)
    {
        if (!current || current->data_.remaining_bytes() == 0 || ++current->actions_ > kMostActions) return;
        current->Act();
        if (current->sheet_.Window()) current->NextTurn();
    }

    void Act()
    {
        const HWND sheet = sheet_.Window();
        const auto page = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
        switch (data_.ConsumeIntegralInRange(0, 15)) {
        case 0:
        case 1:
            SendMessageW(sheet, PSM_SETCURSEL, data_.ConsumeIntegralInRange<WPARAM>(0, 9), 0);
            break;
        case 2:
            SendMessageW(sheet, PSM_PRESSBUTTON, PSBTN_APPLYNOW, 0);
            break;
        case 3:
            SendMessageW(sheet, PSM_PRESSBUTTON, data_.ConsumeBool() ? PSBTN_OK : PSBTN_CANCEL, 0);
            break;
        case 4: // of a control that the page may not even have
            SendMessageW(
                page, WM_COMMAND,
                MAKEWPARAM(data_.ConsumeIntegralInRange(0, 1500), data_.ConsumeIntegralInRange(0, 12)), 0);
            break;
        case 5:
            PressArrow(page);
            break;
        default:
            UseControl(page);
        }
    }

    HWND AnyControl(HWND page)
    {
        const std::vector<HWND> controls = ControlsOf(page);
        if (controls.empty()) return nullptr;
        return controls[data_.ConsumeIntegralInRange<std::size_t>(0, controls.size() - 1)];
    }

    void UseControl(HWND page)
    {
        const HWND control = AnyControl(page);
        if (!control || !IsWindowEnabled(control)) return;
        const std::string kind = KindOfControl(control);
        if (kind == "slider")
            DragSlider(control, data_.ConsumeIntegralInRange(-12, 12));
        else if (kind == "popup")
            PickComboItem(control,
                          data_.ConsumeIntegralInRange(0, static_cast<int>(ComboItems(control).size())) - 1);
        else if (kind == "edit box")
            TypeInto(control, WideFromUtf8(data_.ConsumeRandomLengthString(12)));
        else if (kind == "tabs")
            SendMessageW(control, TCM_SETCURFOCUS, data_.ConsumeIntegralInRange<WPARAM>(0, 3), 0);
        else
            Click(control);
    }

    // The arrows beside a number field, or whatever stands there.
    void PressArrow(HWND page)
    {
        const HWND control = AnyControl(page);
        if (!control) return;
        NMUPDOWN step{};
        step.hdr = {control, static_cast<UINT_PTR>(GetDlgCtrlID(control)), static_cast<UINT>(UDN_DELTAPOS)};
        step.iDelta = data_.ConsumeIntegral<int>();
        SendMessageW(page, WM_NOTIFY, step.hdr.idFrom, reinterpret_cast<LPARAM>(&step));
    }

    static inline Player* current = nullptr;

    PropertySheet& sheet_;
    FuzzedDataProvider& data_;
    int actions_ = 0;
};

// What the pages write for a feature of the PPD is one of its options.
void AbortForLostSettings(const CoreDriver& core)
{
    for (const std::string& setting : core.RefusedSettings()) {
        if (!core.Description().Find(setting.substr(0, setting.find('=')))) continue;
        std::fprintf(stderr, "refused: %s\n", setting.c_str());
        std::abort();
    }
}

BOOL CALLBACK AbortForWindow(HWND, LPARAM)
{
    std::abort();
}

void ShowSheet(FuzzedDataProvider data)
{
    static const ConfigDirectory config;
    const SheetKind kind = data.ConsumeBool() ? SheetKind::Properties : SheetKind::Preferences;
    const bool confirms = data.ConsumeBool(), german = data.ConsumeBool();
    config.WriteInk(data.ConsumeBool() ? std::optional(data.ConsumeRandomLengthString(300)) : std::nullopt);
    const Printer printer = AnyPrinter(data);
    PpdReadOptions options;
    options.language = german ? "de" : "";
    const PpdResult read = ReadPpdText(printer.text, "fuzz.ppd", options, {});
    if (!read) return;
    Selections selections;
    CoreDriver core(*read.ppd, selections);
    ChooseAnything(data, core);
    const std::string lieBytes = data.ConsumeRandomLengthString(1500);
    FuzzedDataProvider lies(reinterpret_cast<const std::uint8_t*>(lieBytes.data()), lieBytes.size());

    MemorySpooler::Printer spooled;
    spooled.name = TEXT("Fuzz");
    spooled.driverName = TEXT("Tintwerk 0012");
    TheMemorySpooler().SetPrinter(spooled);
    PrinterHandle handle;
    if (!OpenPrinterW(spooled.name.data(), handle.Receive(), nullptr)) std::abort();
    {
        LyingCore liar(*core.Helper(), lies);
        PluginSession session(core, selections, &liar);
        if (!session.Start().empty()) std::abort();
        const AnsweredMessageBoxes boxes(confirms, [](const std::string&) {});
        PropertySheet sheet(session, kind, spooled.name, handle.Get(), german, [] {});
        const Player player(sheet, data);
        const std::string problem = sheet.Run();
        if (lieBytes.empty() && !problem.empty()) std::abort();
    }
    if (lieBytes.empty() && !printer.changed) AbortForLostSettings(core);
    EnumThreadWindows(GetCurrentThreadId(), AbortForWindow, 0);
}

} // namespace
} // namespace tintwerk

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count)
{
    tintwerk::ShowSheet({bytes, count});
    return 0;
}
