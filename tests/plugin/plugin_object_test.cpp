// The module as the core driver meets it: entry points, class factory, and the plug-in object with its
// answers.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/coredriver.h"
#include "platform/owners.h"
#include "src/plugin/class_factory.h"
#include "src/plugin/module_counters.h"
#include "src/records/process_values.h"
#include "tests/support/fake_core.h"
#include "tests/support/fake_helper_ps.h"
#include "tests/support/testing.h"

EXTERN_C BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object);
STDAPI DllCanUnloadNow();

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

template <typename Interface> void** Out(ComPtr<Interface>& pointer)
{
    return reinterpret_cast<void**>(pointer.Receive());
}

ComPtr<IClassFactory> Factory()
{
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(S_OK, DllGetClassObject(kPluginClassId, IID_IClassFactory, Out(factory)));
    return factory;
}

ComPtr<IPrintOemUI2> Plugin()
{
    ComPtr<IPrintOemUI2> plugin;
    EXPECT_EQ(S_OK, Factory()->CreateInstance(nullptr, IID_IPrintOemUI2, Out(plugin)));
    return plugin;
}

TEST(Module, TellsOfItsComingAndGoing)
{
    const HINSTANCE before = Process().module;
    DebugLines lines;
    int address = 0;
    const HINSTANCE module = reinterpret_cast<HINSTANCE>(&address);
    const struct
    {
        DWORD reason;
        const WCHAR* line;
    } cases[] = {{1, TEXT("UI:  Process attach.\r\n")},
                 {2, TEXT("UI:  Thread attach.\r\n")},
                 {3, TEXT("UI:  Thread detach.\r\n")},
                 {0, TEXT("UI:  Process detach.\r\n")},
                 {4, nullptr},
                 {0x70002, TEXT("UI:  Thread attach.\r\n")}};
    for (const auto& row : cases) {
        EXPECT_TRUE(DllMain(module, row.reason, nullptr));
        EXPECT_EQ(row.line ? std::vector<Text>{row.line} : std::vector<Text>(), lines.Take()) << row.reason;
    }
    EXPECT_EQ(module, Process().module);
    Process().module = before;
}

TEST(Module, ServesOneClass)
{
    HeapWatch heaps;
    GUID other = kPluginClassId;
    other.Data4[7] ^= 1;
    void* object = &heaps;
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, DllGetClassObject(other, IID_IClassFactory, &object));
    EXPECT_EQ(&heaps, object);
    EXPECT_EQ(E_NOINTERFACE, DllGetClassObject(kPluginClassId, IID_IPrintOemUI2, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(0, heaps.LiveBlocks());
    ComPtr<IUnknown> unknown;
    EXPECT_EQ(S_OK, DllGetClassObject(kPluginClassId, IID_IUnknown, Out(unknown)));
    EXPECT_EQ(1, heaps.LiveBlocks());
}

TEST(Module, StaysWhileItIsNeeded)
{
    EXPECT_EQ(S_OK, DllCanUnloadNow());
    ComPtr<IClassFactory> factory = Factory();
    EXPECT_EQ(S_OK, DllCanUnloadNow()); // a factory alone does not hold it
    factory->LockServer(TRUE);
    EXPECT_EQ(S_FALSE, DllCanUnloadNow());
    {
        const ComPtr<IPrintOemUI2> plugin = Plugin();
        factory->LockServer(FALSE);
        EXPECT_EQ(S_FALSE, DllCanUnloadNow());
    }
    EXPECT_EQ(S_OK, DllCanUnloadNow());
}

TEST(Module, RefusesWhatItCannotMake)
{
    HeapWatch heaps;
    ComPtr<IClassFactory> factory = Factory();
    void* object = nullptr;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(factory.Get(), IID_IPrintOemUI2, &object));
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IClassFactory, &object));
    EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, IID_IPrintOemUI, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(S_OK, DllCanUnloadNow());
    heaps.FailAllocation(1, 100);
    EXPECT_EQ(E_OUTOFMEMORY, factory->CreateInstance(nullptr, IID_IPrintOemUI2, &object));
    EXPECT_EQ(E_OUTOFMEMORY, DllGetClassObject(kPluginClassId, IID_IClassFactory, &object));
    heaps.FailAllocation(0, 0);
    factory.Reset();
    EXPECT_EQ(0, heaps.LiveBlocks());
}

TEST(PluginObject, CountsReferencesFromManyThreads)
{
    const DebugLines lines; // or every line goes the long way to a debugger
    ComPtr<IPrintOemUI2> plugin = Plugin();
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&plugin] {
            for (int step = 0; step < 50; ++step) {
                plugin->AddRef();
                plugin->Release();
                ComPtr<IPrintOemUI2> other = Plugin();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(2u, plugin->AddRef());
    EXPECT_EQ(1u, plugin->Release());
    plugin.Reset();
    EXPECT_EQ(S_OK, DllCanUnloadNow());
}

TEST(PluginObject, TracesItsInterfaces)
{
    const ComPtr<IPrintOemUI2> plugin = Plugin();
    const Text entry = TEXT("UI:  IOemUI:QueryInterface entry.\r\n\r\n"),
               counted = TEXT("UI:  IOemUI:AddRef entry.\r\n");
    const struct
    {
        GUID id;
        HRESULT result;
        std::vector<Text> lines;
    } cases[] = {
        {IID_IUnknown, S_OK, {entry, TEXT("UI:  IOemUI:Return pointer to IUnknown.\r\n\r\n"), counted}},
        {IID_IPrintOemUI2, S_OK, {entry, TEXT("UI:  IOemUI:Return pointer to IPrintOemUI.\r\n"), counted}},
        {IID_IPrintOemUI, E_NOINTERFACE, {entry, TEXT("UI:  IOemUI:No Interface. Return NULL.\r\n")}},
    };
    for (const auto& row : cases) {
        DebugLines lines;
        void* object = &lines;
        EXPECT_EQ(row.result, plugin->QueryInterface(row.id, &object));
        EXPECT_EQ(row.lines, lines.Lines());
        EXPECT_EQ(row.result == S_OK ? plugin.Get() : nullptr, object);
        if (object) plugin->Release();
    }
}

TEST(PluginObject, AnswersWhatTheCoreDriverWantsToKnow)
{
    const ComPtr<IPrintOemUI2> plugin = Plugin();
    constexpr DWORD kUntouched = 0x5A5A5A5A;
    const struct
    {
        const char* what;
        DWORD mode;
        bool buffer;
        DWORD size;
        DWORD error; // 0: answers
        DWORD needed;
        DWORD answer;
        const WCHAR* line;
    } cases[] = {
        // clang-format off
        {"signature",       1, true,  4, 0,   4,          0x48414C56, TEXT("UI:  IOemUI::GetInfo() exit S_OK, (*pBuffer is 0x48414c56).\r\r\n")},
        {"version",         3, true,  4, 0,   4,          5,          TEXT("UI:  IOemUI::GetInfo() exit S_OK, (*pBuffer is 0x5).\r\r\n")},
        {"helpers",         5, true,  9, 0,   4,          1,          TEXT("UI:  IOemUI::GetInfo() exit S_OK, (*pBuffer is 0x1).\r\r\n")},
        {"publisher",       4, true,  4, 50,  0,          kUntouched, TEXT("UI:  IOemUI::GetInfo() exit mode not supported.\r\r\n")},
        {"interface",       2, true,  4, 87,  kUntouched, kUntouched, TEXT("UI:  IOemUI::GetInfo() exit pcbNeeded is NULL! ERROR_INVALID_PARAMETER\r\r\n")},
        {"unknown",         6, true,  4, 87,  kUntouched, kUntouched, TEXT("UI:  IOemUI::GetInfo() exit pcbNeeded is NULL! ERROR_INVALID_PARAMETER\r\r\n")},
        {"small",           1, true,  3, 122, 4,          kUntouched, TEXT("UI:  IOemUI::GetInfo() exit insufficient buffer!\r\r\n")},
        {"no buffer",       3, false, 4, 122, 4,          kUntouched, TEXT("UI:  IOemUI::GetInfo() exit insufficient buffer!\r\r\n")},
        {"small publisher", 4, true,  0, 122, 4,          kUntouched, TEXT("UI:  IOemUI::GetInfo() exit insufficient buffer!\r\r\n")},
        // clang-format on
    };
    for (const auto& row : cases) {
        DebugLines lines;
        DWORD answer = kUntouched, needed = kUntouched;
        SetLastError(0);
        EXPECT_EQ(row.error ? E_FAIL : S_OK,
                  plugin->GetInfo(row.mode, row.buffer ? &answer : nullptr, row.size, &needed))
            << row.what;
        if (row.error) {
            EXPECT_EQ(row.error, GetLastError()) << row.what;
        }
        EXPECT_EQ(row.needed, needed) << row.what;
        EXPECT_EQ(row.answer, answer) << row.what;
        EXPECT_TRUE(lines.Contains(row.line)) << row.what;
        EXPECT_EQ(2u, lines.Lines().size()) << row.what;
    }
    DWORD answer = 0;
    SetLastError(0);
    EXPECT_EQ(E_FAIL, plugin->GetInfo(1, &answer, 4, nullptr));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
}

class PublishedCore : public RefusingCore
{
public:
    int references = 1;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override
    {
        const bool known = IsEqualIID(interfaceId, IID_IPrintCoreUI2);
        *object = known ? this : nullptr;
        references += known;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
};

TEST(PluginObject, HoldsTheHelpersUntilItsEnd)
{
    PublishedCore core;
    FakeHelperPS helper;
    ComPtr<IPrintOemUI2> plugin = Plugin();
    EXPECT_EQ(E_FAIL, plugin->PublishDriverInterface(&helper)); // the user interface helper comes first
    EXPECT_EQ(E_FAIL, plugin->PublishDriverInterface(nullptr));
    EXPECT_EQ(S_OK, plugin->PublishDriverInterface(&core));
    EXPECT_EQ(E_FAIL, plugin->PublishDriverInterface(&core));
    EXPECT_EQ(S_OK, plugin->PublishDriverInterface(&helper));
    EXPECT_EQ(S_OK, plugin->PublishDriverInterface(&helper)); // both are held
    EXPECT_EQ(2, core.references);
    EXPECT_EQ(2, helper.references);
    plugin.Reset();
    EXPECT_EQ(1, core.references);
    EXPECT_EQ(1, helper.references);
}

TEST(PluginObject, NamesOneColorProfile)
{
    const ComPtr<IPrintOemUI2> plugin = Plugin();
    const struct
    {
        const char* what;
        ULONG mode;
        bool buffer;
        ULONG size;
        HRESULT result;
        DWORD error;
        ULONG reported;
    } cases[] = {
        {"room", 0, true, 32, S_OK, 0, 32},          {"more room", 0, true, 64, S_OK, 0, 32},
        {"short", 0, true, 30, E_FAIL, 122, 32},     {"only the size", 0, false, 77, E_FAIL, 122, 32},
        {"other query", 1, true, 64, E_FAIL, 0, 64},
    };
    for (const auto& row : cases) {
        WCHAR name[32] = {};
        ULONG size = row.size;
        FLONG flags = 9;
        SetLastError(0);
        EXPECT_EQ(row.result, plugin->QueryColorProfile(nullptr, nullptr, nullptr, nullptr, row.mode,
                                                        row.buffer ? name : nullptr, &size, &flags))
            << row.what;
        EXPECT_EQ(row.reported, size) << row.what;
        EXPECT_EQ(row.result == S_OK ? Text(TEXT("OEMPROFILE.icm")) : Text(), name) << row.what;
        EXPECT_EQ(row.result == S_OK ? 2u : 9u, flags) << row.what;
        if (row.error) {
            EXPECT_EQ(row.error, GetLastError()) << row.what;
        }
    }
}

TEST(PluginObject, DeclinesTheRest)
{
    const ComPtr<IPrintOemUI2> plugin = Plugin();
    DebugLines lines;
    EXPECT_EQ(S_OK, plugin->CommonUIProp(0, nullptr));
    EXPECT_EQ(E_NOTIMPL, plugin->DevQueryPrintEx(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, plugin->DeviceCapabilities(nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                                                    0, nullptr));
    EXPECT_EQ(E_NOTIMPL, plugin->UpgradePrinter(0, nullptr));
    EXPECT_EQ(E_NOTIMPL, plugin->PrinterEvent(nullptr, 0, 0, 0));
    EXPECT_EQ(E_NOTIMPL, plugin->DriverEvent(0, 0, nullptr, 0));
    EXPECT_EQ(E_NOTIMPL, plugin->FontInstallerDlgProc(nullptr, 0, 0, 0));
    EXPECT_EQ(E_NOTIMPL, plugin->UpdateExternalFonts(nullptr, nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, plugin->QueryJobAttributes(nullptr, nullptr, 0, nullptr));
    for (const DWORD mode : {0u, 1u, 2u, 99u})
        EXPECT_EQ(S_OK, plugin->HideStandardUI(mode));
    std::vector<Text> expected;
    for (const WCHAR* name : {TEXT("CommonUIProp"), TEXT("DevQueryPrintEx"), TEXT("DeviceCapabilities"),
                              TEXT("UpgradePrinter"), TEXT("PrinterEvent"), TEXT("DriverEvent"),
                              TEXT("FontInstallerDlgProc"), TEXT("UpdateExternalFonts")})
        expected.push_back(Text(TEXT("UI:  IOemUI:")) + name + TEXT(" entry.\r\n"));
    EXPECT_EQ(expected, lines.Lines());
    INT result = 9;
    EXPECT_EQ(S_OK, plugin->DocumentEvent(nullptr, nullptr, 1, 0, nullptr, 0, nullptr, &result));
    EXPECT_EQ(1, result);
}

} // namespace
} // namespace tintwerk
