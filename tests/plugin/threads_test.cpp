// The loaded module in a process like the host of all 32-bit applications: sheets of printers in both
// languages open and close on several threads, and jobs start in between.
#include <atomic>
#include <thread>

#include "platform/debug_sink.h"
#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "platform/plugin_module.h"
#include "src/plugin/class_factory.h"
#include "src/resources/control_ids.h"
#include "tests/sheets/sheet_fixture.h"
#include "tests/support/fake_core.h"
#include "tests/support/installed_value.h"

namespace tintwerk {
namespace {

constexpr int kRounds = 6, kThreadsOfAKind = 2;
DWORD job = 7;

// One property sheet of the plug-in object with all its tabbed pages as windows.
class OpenedSheet : TestSheet
{
public:
    using Callback = HRESULT (STDMETHODCALLTYPE IPrintOemUI2::*)(PPROPSHEETUI_INFO, LPARAM);

    OpenedSheet(IPrintOemUI2& plugin, Callback callback, POEMUIOBJ object, HANDLE printer)
        : TestSheet(nullptr, object), plugin_(plugin), callback_(callback)
    {
        parameters.hPrinter = printer;
        Send(PROPSHEETUI_REASON_INIT);
        for (const AddedPage& each : added)
            if (each.function == CPSFUNC_ADD_PROPSHEETPAGEW)
                pages_.push_back(CreateDialogParamW(each.page.hInstance, each.page.pszTemplate, window_,
                                                    each.page.pfnDlgProc,
                                                    reinterpret_cast<LPARAM>(&each.page)));
    }
    ~OpenedSheet()
    {
        DestroyWindow(window_);
        Send(PROPSHEETUI_REASON_DESTROY);
    }

    // The sheet opened last decides the language of all of them, so a text is in either and in nothing else.
    bool IsReadable() const
    {
        WCHAR text[128] = {};
        GetDlgItemTextW(pages_.at(0), IDC_MAIN_MEDIA_TYPE_CAPTION, text, 128);
        const Text& title = added.at(0).title;
        return (title == TEXT("Main") || title == TEXT("Druck")) &&
               (Text(TEXT("Paper:")) == text || Text(TEXT("Papiertyp:")) == text);
    }
    LONG PictureWidth(int id) const
    {
        BITMAP picture{};
        const LRESULT shown = SendMessageW(GetDlgItem(pages_.at(0), id), STM_GETIMAGE, IMAGE_BITMAP, 0);
        GetObjectW(reinterpret_cast<HBITMAP>(shown), sizeof picture, &picture);
        return picture.bmWidth;
    }
    // Returns the number of pages.
    size_t Apply() const
    {
        NMHDR apply{window_, 0, static_cast<UINT>(PSN_APPLY)};
        for (const HWND page : pages_)
            SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply));
        return pages_.size();
    }

private:
    void Send(WORD reason)
    {
        info.Reason = reason;
        (plugin_.*callback_)(&info, 0);
    }

    IPrintOemUI2& plugin_;
    Callback callback_;
    const HWND window_ = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 600, 500, nullptr,
                                         nullptr, GetModuleHandleW(nullptr), nullptr);
    std::vector<HWND> pages_;
};

class Threads : public testing::Test
{
protected:
    Threads()
    {
        const INITCOMMONCONTROLSEX families{sizeof families,
                                            ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_TAB_CLASSES};
        InitCommonControlsEx(&families);
        SetDebugSink([](const WCHAR*, void*) {}, nullptr);
        UseMemorySpooler();
        MemorySpooler::Printer printer;
        printer.name = TEXT("P");
        printer.status = PRINTER_STATUS_OFFLINE;
        printer.jobs[job].devmode.resize(sizeof(DEVMODEW));
        reinterpret_cast<DEVMODEW*>(printer.jobs[job].devmode.data())->dmSize = sizeof(DEVMODEW);
        TheMemorySpooler().SetPrinter(printer);
        germanBoxes = englishBoxes = 0;
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

    ComPtr<IPrintOemUI2> Plugin() const
    {
        ComPtr<IClassFactory> factory;
        ComPtr<IPrintOemUI2> plugin;
        module.GetClassObject(kPluginClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
        factory->CreateInstance(nullptr, IID_IPrintOemUI2, reinterpret_cast<void**>(plugin.Receive()));
        return plugin;
    }

    void OpenSheets(bool german, bool reduced)
    {
        using Options = std::vector<std::string>;
        ScriptedCore core;
        core.features = {{"halvLanguage", german ? Options{"de", "en"} : Options{"en", "de"}, ""},
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

        for (int round = 0; round < kRounds; ++round) {
            const ComPtr<IPrintOemUI2> plugin = Plugin();
            shared->AddRef();
            plugin->PublishDriverInterface(&core);
            plugin->PublishDriverInterface(&helper);
            const OpenedSheet information(*plugin.Get(), &IPrintOemUI2::DevicePropertySheets, core.object,
                                          printer.Get());
            {
                const OpenedSheet document(*plugin.Get(), &IPrintOemUI2::DocumentPropertySheets, core.object,
                                           printer.Get());
                wrong += !document.IsReadable();
                pages += document.Apply();
            }
            INT result = 0;
            plugin->DocumentEvent(printer.Get(), nullptr, 13, sizeof job, &job, 0, nullptr, &result);
            wrong += result != 1;
            // Pictures stay while their page is open, whoever else opens and closes pages.
            wrong += information.PictureWidth(IDC_INFORMATION_MAKER_LOGO) != 116;
            wrong += information.PictureWidth(IDC_INFORMATION_PRODUCT_LOGO) != 180;
            shared->Release();
        }
    }

    inline static std::atomic<int> germanBoxes, englishBoxes;
    const InstalledValue directory{"ConfigDir", "C:\\conf"};
    const PluginModule module;
    ComPtr<IPrintOemUI2> shared = Plugin();
    std::atomic<int> wrong{0};
    std::atomic<size_t> pages{0};
};

TEST_F(Threads, OpenSheetsInBothLanguagesWithJobsInBetween)
{
    std::vector<std::thread> threads;
    for (const bool german : {false, true})
        for (const bool reduced : {false, true})
            for (int i = 0; i < kThreadsOfAKind; ++i)
                threads.emplace_back([this, german, reduced] { OpenSheets(german, reduced); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(2u * kThreadsOfAKind * kRounds * (6 + 2), pages);
    EXPECT_EQ(2 * kThreadsOfAKind * kRounds, germanBoxes);
    EXPECT_EQ(2 * kThreadsOfAKind * kRounds, englishBoxes);
    EXPECT_EQ(2u, shared->AddRef());
    EXPECT_EQ(1u, shared->Release());
    shared.Reset();
    EXPECT_EQ(S_OK, module.CanUnloadNow());
}

} // namespace
} // namespace tintwerk
