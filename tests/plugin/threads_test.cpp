// The loaded module in a process like the host of all 32-bit applications: sheets of printers in both
// languages open and close on several threads, and jobs start in between.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/coredriver.h"
#include "platform/debug_sink.h"
#include "platform/function_hook.h"
#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "platform/plugin_module.h"
#include "src/plugin/class_factory.h"
#include "src/resources/control_ids.h"
#include "tests/sheets/scripted_core.h"
#include "tests/support/config_dir_value.h"
#include "tests/support/fake_helper_ps.h"

namespace tintwerk {
namespace {

constexpr int kRounds = 12;
constexpr DWORD kJob = 7;

class PublishedCore final : public ScriptedCore
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** result) override
    {
        const bool known = IsEqualIID(interfaceId, IID_IPrintCoreUI2);
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
};

// One property sheet of the plug-in object with all its tabbed pages as windows.
class OpenedSheet
{
public:
    using Callback = HRESULT (STDMETHODCALLTYPE IPrintOemUI2::*)(PPROPSHEETUI_INFO, LPARAM);

    OpenedSheet(IPrintOemUI2& plugin, Callback callback, POEMUIOBJ object, HANDLE printer)
        : plugin_(plugin), callback_(callback)
    {
        window_ = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 600, 500, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
        parameters_.cbSize = sizeof parameters_;
        parameters_.poemuiobj = object;
        parameters_.hPrinter = printer;
        parameters_.pPrinterName = name_;
        parameters_.hOEMHeap = heap_.Get();
        info_.cbSize = sizeof info_;
        info_.Version = PROPSHEETUI_INFO_VERSION;
        info_.hComPropSheet = this;
        info_.pfnComPropSheet = &AddPage;
        info_.lParamInit = reinterpret_cast<LPARAM>(&parameters_);
        Call(PROPSHEETUI_REASON_INIT);
    }
    ~OpenedSheet()
    {
        DestroyWindow(window_);
        Call(PROPSHEETUI_REASON_DESTROY);
    }
    OpenedSheet(const OpenedSheet&) = delete;
    OpenedSheet& operator=(const OpenedSheet&) = delete;

    const std::vector<HWND>& Pages() const { return pages_; }
    const std::vector<Text>& Titles() const { return titles_; }
    Text TextOf(int id) const
    {
        WCHAR text[128] = {};
        GetDlgItemTextW(pages_.at(0), id, text, 128);
        return text;
    }
    void Apply() const
    {
        for (const HWND page : pages_) {
            NMHDR apply{window_, 0, static_cast<UINT>(PSN_APPLY)};
            SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply));
        }
    }

private:
    void Call(WORD reason)
    {
        info_.Reason = reason;
        (plugin_.*callback_)(&info_, 0);
    }
    static LONG_PTR CALLBACK AddPage(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2)
    {
        if (function == CPSFUNC_ADD_PCOMPROPSHEETUIW) *reinterpret_cast<DWORD*>(lParam2) = 1;
        if (function != CPSFUNC_ADD_PROPSHEETPAGEW) return 1;
        auto& self = *static_cast<OpenedSheet*>(sheet);
        const auto& page = *reinterpret_cast<const PropertySheetPage*>(lParam1);
        self.titles_.push_back(page.dwFlags & PSP_USETITLE ? page.pszTitle : TEXT(""));
        PropertySheetPage copy = page;
        self.pages_.push_back(CreateDialogParamW(page.hInstance, page.pszTemplate, self.window_,
                                                 page.pfnDlgProc, reinterpret_cast<LPARAM>(&copy)));
        return 1;
    }

    IPrintOemUI2& plugin_;
    Callback callback_;
    WCHAR name_[2] = {'P', 0};
    HWND window_;
    HeapHandle heap_{HeapCreate(0, 0, 0)};
    OEMUIPSPARAM parameters_{};
    PROPSHEETUI_INFO info_{};
    std::vector<HWND> pages_;
    std::vector<Text> titles_;
};

class Threads : public testing::Test
{
protected:
    Threads()
    {
        const INITCOMMONCONTROLSEX families{sizeof families,
                                            ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_TAB_CLASSES};
        InitCommonControlsEx(&families);
        SetDebugSink([](const WCHAR*, void*) { ++lines; }, nullptr);
        UseMemorySpooler();
        DEVMODEW devmode{};
        devmode.dmSize = sizeof devmode;
        std::vector<BYTE> bytes(sizeof devmode);
        std::memcpy(bytes.data(), &devmode, sizeof devmode);
        MemorySpooler::Printer printer;
        printer.name = TEXT("P");
        printer.status = PRINTER_STATUS_OFFLINE;
        printer.jobs[kJob] = {TEXT("Poster"), bytes};
        TheMemorySpooler().SetPrinter(printer);
        ReplaceFunction("MessageBoxW", &Answer);
    }
    ~Threads() override
    {
        RestoreFunction("MessageBoxW");
        StopMemorySpooler();
        SetDebugSink(nullptr, nullptr);
    }

    static int WINAPI Answer(HWND, LPCWSTR, LPCWSTR caption, UINT)
    {
        germanBoxes += Text(TEXT("Achtung:")) == caption;
        englishBoxes += Text(TEXT("Attention:")) == caption;
        return IDOK;
    }

    // The sheet opened last decides for all of them, so a text is in either language and in nothing else.
    static bool IsEither(const Text& text, const WCHAR* english, const WCHAR* german)
    {
        return text == english || text == german;
    }

    void CheckDocumentSheet(const OpenedSheet& sheet)
    {
        const bool readable =
            !sheet.Titles().empty() && IsEither(sheet.Titles()[0], TEXT("Main"), TEXT("Druck")) &&
            IsEither(sheet.TextOf(IDC_MAIN_MEDIA_TYPE_CAPTION), TEXT("Paper:"), TEXT("Papiertyp:"));
        wrong += !readable;
    }

    // The three pictures stay while the page is open, whoever else opens and closes pages.
    void CheckInformationSheet(const OpenedSheet& sheet)
    {
        for (const auto& [id, width] :
             {std::array{IDC_INFORMATION_MAKER_LOGO, 116}, std::array{IDC_INFORMATION_PRODUCT_LOGO, 180}}) {
            BITMAP picture{};
            const LRESULT shown =
                SendMessageW(GetDlgItem(sheet.Pages().at(0), id), STM_GETIMAGE, IMAGE_BITMAP, 0);
            GetObjectW(reinterpret_cast<HBITMAP>(shown), sizeof picture, &picture);
            wrong += picture.bmWidth != width;
        }
    }

    void OpenSheets(bool german, bool reduced)
    {
        PublishedCore core;
        core.features = {
            {"halvLanguage",
             german ? std::vector<std::string>{"de", "en"} : std::vector<std::string>{"en", "de"}, ""},
            {"MediaType", {"Plain_0", "Photo_6"}, "Photo_6"},
            {"PageSize", {"A4", "A4Borderless"}, "A4"},
            {"halvScreenmode", {"off", "a"}, "off"},
            {"halvScreenCartridge0", {"0", "1"}, "1"},
            {"halvBrightness", {"-50", "0"}, german ? "-50" : "0"}};
        if (reduced)
            core.features.insert(core.features.end(), {{"halvGuiMode", {"oem2"}, "oem2"},
                                                       {"halvGuiIcon", {"a-b.bmp"}, "a-b.bmp"}});
        FakeHelperPS helper;
        helper.selected["halvPreview"] = "1";
        helper.offered["halvLanguage"] = {german ? "de" : "en"};
        WCHAR name[] = TEXT("P");
        PrinterHandle printer;
        OpenPrinterW(name, printer.Receive(), nullptr);

        ComPtr<IClassFactory> factory;
        module.GetClassObject(kPluginClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
        for (int round = 0; round < kRounds; ++round) {
            ComPtr<IPrintOemUI2> plugin;
            factory->CreateInstance(nullptr, IID_IPrintOemUI2, reinterpret_cast<void**>(plugin.Receive()));
            plugin->PublishDriverInterface(&core);
            plugin->PublishDriverInterface(&helper);
            const OpenedSheet information(*plugin.Get(), &IPrintOemUI2::DevicePropertySheets, core.object,
                                          printer.Get());
            {
                const OpenedSheet document(*plugin.Get(), &IPrintOemUI2::DocumentPropertySheets, core.object,
                                           printer.Get());
                CheckDocumentSheet(document);
                document.Apply();
                pages += document.Pages().size();
            }
            INT result = 0;
            DWORD job = kJob;
            plugin->DocumentEvent(printer.Get(), nullptr, 13, sizeof job, &job, 0, nullptr, &result);
            wrong += result != 1;
            CheckInformationSheet(information);
        }
    }

    inline static std::atomic<int> lines, germanBoxes, englishBoxes;
    const ConfigDirValue directory{"C:\\conf"};
    const PluginModule module;
    std::atomic<int> wrong{0};
    std::atomic<size_t> pages{0};
};

TEST_F(Threads, OpenSheetsInBothLanguagesWithJobsInBetween)
{
    ASSERT_TRUE(module);
    lines = germanBoxes = englishBoxes = 0;
    std::vector<std::thread> threads;
    for (const bool german : {false, true})
        for (const bool reduced : {false, true})
            threads.emplace_back([this, german, reduced] { OpenSheets(german, reduced); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(2u * kRounds * (6 + 2), pages);
    EXPECT_EQ(2 * kRounds, germanBoxes);
    EXPECT_EQ(2 * kRounds, englishBoxes);
    EXPECT_LT(100 * 4 * kRounds, lines);
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

} // namespace
} // namespace tintwerk
