// The module as the core driver meets it: entry points, class factory, and the plug-in object with its
// answers; its part of the DEVMODE, byte for byte.
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "platform/coredriver.h"
#include "platform/owners.h"
#include "src/plugin/class_factory.h"
#include "src/plugin/devmode_requests.h"
#include "src/records/process_values.h"
#include "tests/support/fake_core.h"
#include "tests/support/testing.h"

EXTERN_C BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object);
STDAPI DllCanUnloadNow();

namespace tintwerk {
namespace {

using Text = DebugLines::Text;

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
    const HINSTANCE module = reinterpret_cast<HINSTANCE>(&lines);
    for (const DWORD reason : {1, 2, 3, 0, 4, 0x70002})
        EXPECT_TRUE(DllMain(module, reason, nullptr));
    EXPECT_EQ((std::vector<Text>{TEXT("UI:  Process attach.\r\n"), TEXT("UI:  Thread attach.\r\n"),
                                 TEXT("UI:  Thread detach.\r\n"), TEXT("UI:  Process detach.\r\n"),
                                 TEXT("UI:  Thread attach.\r\n")}),
              lines.Lines());
    EXPECT_EQ(module, Process().module);
    Process().module = before;
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
    GUID other = kPluginClassId;
    other.Data4[7] ^= 1;
    void* object = &heaps;
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE, DllGetClassObject(other, IID_IClassFactory, &object));
    EXPECT_EQ(&heaps, object);
    EXPECT_EQ(E_NOINTERFACE, DllGetClassObject(kPluginClassId, IID_IPrintOemUI2, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(0, heaps.LiveBlocks());

    ComPtr<IClassFactory> factory;
    EXPECT_EQ(S_OK, DllGetClassObject(kPluginClassId, IID_IUnknown, Out(factory)));
    EXPECT_EQ(1, heaps.LiveBlocks());
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory->CreateInstance(factory.Get(), IID_IPrintOemUI2, &object));
    for (const GUID& id : {IID_IClassFactory, IID_IPrintOemUI})
        EXPECT_EQ(E_NOINTERFACE, factory->CreateInstance(nullptr, id, &object));
    heaps.Fail(1, 100);
    EXPECT_EQ(E_OUTOFMEMORY, factory->CreateInstance(nullptr, IID_IPrintOemUI2, &object));
    EXPECT_EQ(E_OUTOFMEMORY, DllGetClassObject(kPluginClassId, IID_IClassFactory, &object));
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(S_OK, DllCanUnloadNow());
    factory.Reset();
    EXPECT_EQ(0, heaps.LiveBlocks());
}

class PluginObject : public testing::Test
{
protected:
    ComPtr<IPrintOemUI2> plugin = Plugin();
    DebugLines lines;
};

TEST_F(PluginObject, TracesItsInterfaces)
{
    for (const GUID& id : {IID_IUnknown, IID_IPrintOemUI2, IID_IPrintOemUI}) {
        void* object = &lines;
        const HRESULT result = plugin->QueryInterface(id, &object);
        EXPECT_EQ(result == S_OK ? plugin.Get() : nullptr, object);
        if (object) plugin->Release();
        EXPECT_EQ(IsEqualIID(id, IID_IPrintOemUI) ? E_NOINTERFACE : S_OK, result);
    }
    const Text entry = TEXT("UI:  IOemUI:QueryInterface entry.\r\n\r\n"),
               counted = TEXT("UI:  IOemUI:AddRef entry.\r\n"), left = TEXT("UI:  IOemUI:Release entry.\r\n");
    EXPECT_EQ((std::vector<Text>{entry, TEXT("UI:  IOemUI:Return pointer to IUnknown.\r\n\r\n"), counted,
                                 left, entry, TEXT("UI:  IOemUI:Return pointer to IPrintOemUI.\r\n"), counted,
                                 left, entry, TEXT("UI:  IOemUI:No Interface. Return NULL.\r\n")}),
              lines.Lines());
}

TEST_F(PluginObject, AnswersWhatTheCoreDriverWantsToKnow)
{
    constexpr DWORD kUntouched = 0x5A5A5A5A, kNoBuffer = 77;
    const std::map<DWORD, Text> exits{
        {0x48414C56, TEXT("S_OK, (*pBuffer is 0x48414c56).")}, // by answer or error
        {5, TEXT("S_OK, (*pBuffer is 0x5).")},
        {1, TEXT("S_OK, (*pBuffer is 0x1).")},
        {50, TEXT("mode not supported.")},
        {87, TEXT("pcbNeeded is NULL! ERROR_INVALID_PARAMETER")},
        {122, TEXT("insufficient buffer!")}};
    const struct
    {
        const char* what;
        DWORD mode, size, error; // 0: answers
        DWORD needed = kUntouched, answer = kUntouched;
    } cases[] = {
        {"signature", 1, 4, 0, 4, 0x48414C56},
        {"version", 3, 4, 0, 4, 5},
        {"helpers", 5, 9, 0, 4, 1},
        {"publisher", 4, 4, 50, 0},
        {"interface", 2, 4, 87},
        {"unknown", 6, 4, 87},
        {"small", 1, 3, 122, 4},
        {"no buffer", 3, kNoBuffer, 122, 4},
        {"small publisher", 4, 0, 122, 4},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.what);
        lines.Take();
        DWORD answer = kUntouched, needed = kUntouched;
        SetLastError(0);
        EXPECT_EQ(row.error ? E_FAIL : S_OK,
                  plugin->GetInfo(row.mode, row.size == kNoBuffer ? nullptr : &answer, row.size, &needed));
        EXPECT_EQ(row.error, GetLastError());
        EXPECT_EQ(row.needed, needed);
        EXPECT_EQ(row.answer, answer);
        const Text& told = exits.at(row.error ? row.error : row.answer);
        EXPECT_EQ(TEXT("UI:  IOemUI::GetInfo() exit ") + told + TEXT("\r\r\n"), lines.Lines().at(1));
    }
    SetLastError(0);
    EXPECT_EQ(E_FAIL, plugin->GetInfo(1, nullptr, 4, nullptr));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
}

TEST_F(PluginObject, HoldsTheHelpersUntilItsEnd)
{
    RefusingCore core;
    FakeHelperPS helper;
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

TEST_F(PluginObject, NamesOneColorProfile)
{
    WCHAR name[32] = {};
    ULONG size = 64;
    FLONG flags = 9;
    const auto query = [&](ULONG mode, WCHAR* buffer) {
        SetLastError(0);
        return plugin->QueryColorProfile(nullptr, nullptr, nullptr, nullptr, mode, buffer, &size, &flags);
    };
    EXPECT_EQ(E_FAIL, query(1, name));
    EXPECT_EQ(64u, size);
    for (const auto& [room, buffer] : {std::pair{0u, name}, {31u, name}, {77u, nullptr}}) {
        size = room;
        EXPECT_EQ(E_FAIL, query(0, buffer)) << room;
        EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
        EXPECT_EQ(32u, size);
        EXPECT_TRUE(!name[0] && flags == 9);
    }
    EXPECT_EQ(S_OK, query(0, name));
    EXPECT_EQ(32u, size);
    EXPECT_EQ(TEXT("OEMPROFILE.icm"), Text(name));
    EXPECT_EQ(2u, flags);
}

TEST_F(PluginObject, DeclinesTheRest)
{
    EXPECT_EQ(S_OK, plugin->CommonUIProp(0, nullptr));
    for (const HRESULT result :
         {plugin->DevQueryPrintEx(nullptr, nullptr, nullptr, nullptr),
          plugin->DeviceCapabilities(nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr),
          plugin->UpgradePrinter(0, nullptr), plugin->PrinterEvent(nullptr, 0, 0, 0),
          plugin->DriverEvent(0, 0, nullptr, 0), plugin->FontInstallerDlgProc(nullptr, 0, 0, 0),
          plugin->UpdateExternalFonts(nullptr, nullptr, nullptr),
          plugin->QueryJobAttributes(nullptr, nullptr, 0, nullptr)})
        EXPECT_EQ(E_NOTIMPL, result);
    for (const DWORD mode : {0u, 1u, 2u, 99u})
        EXPECT_EQ(S_OK, plugin->HideStandardUI(mode));
    std::vector<Text> expected;
    for (const WCHAR* name : {TEXT("CommonUIProp"), TEXT("DevQueryPrintEx"), TEXT("DeviceCapabilities"),
                              TEXT("UpgradePrinter"), TEXT("PrinterEvent"), TEXT("DriverEvent"),
                              TEXT("FontInstallerDlgProc"), TEXT("UpdateExternalFonts")})
        expected.push_back(Text(TEXT("UI:  IOemUI:")) + name + TEXT(" entry.\r\n"));
    EXPECT_EQ(expected, lines.Take());
    EXPECT_NE(S_OK, plugin->DocumentPropertySheets(nullptr, 0));
    EXPECT_NE(S_OK, plugin->DevicePropertySheets(nullptr, 0));
    EXPECT_EQ("", MissingLine(lines.Take(), {"UI:  IOemUI:DocumentPropertySheets entry.\r\n",
                                             "UI:  IOemUI:DevicePropertySheets entry.\r\n"}));
}

constexpr DWORD kHalv = 0x48414C56;
constexpr DWORD kGarbage = 0xABABABAB;

using Record = std::array<DWORD, 6>; // size, signature, version, two settings, apply count

Record After(DWORD mode, const Record* input, Record output, DWORD size = 24)
{
    OEMDMPARAM parameters{};
    parameters.pOEMDMIn = const_cast<Record*>(input);
    parameters.pOEMDMOut = &output;
    parameters.cbBufSize = size;
    EXPECT_EQ(S_OK, HandleDevMode(mode, &parameters));
    EXPECT_EQ(mode == OEMDM_SIZE ? 24u : size, parameters.cbBufSize);
    return output;
}

TEST(PrivateDevmode, HasASizeAndDefaults)
{
    Record garbage;
    garbage.fill(kGarbage);
    EXPECT_EQ(garbage, After(OEMDM_SIZE, nullptr, garbage, 4096));
    EXPECT_EQ((Record{24, kHalv, 5, 0, 0, kGarbage}), After(OEMDM_DEFAULT, nullptr, garbage, 0));
    OEMDMPARAM without{};
    for (const DWORD mode : {OEMDM_DEFAULT, OEMDM_CONVERT, OEMDM_MERGE})
        EXPECT_EQ(S_OK, HandleDevMode(mode, &without));
}

TEST(PrivateDevmode, ConvertsAndMerges)
{
    const Record whole{24, kHalv, 5, 50, 60, 7}, blank{24, kHalv, 5, 11, 12, 99},
        full{24, kHalv, 5, 0, 0, 99};
    const WCHAR* const taken = TEXT("UI:  pOEMDevIn:\r\n");
    const WCHAR* const foreign = TEXT("UI:  Unknown DEVMODE signature, pOEMDMIn ignored.\r\n");
    const WCHAR* const refused = TEXT("ERROR UI:  ConvertOEMDevmode() invalid parameters.\r\n");
    const struct
    {
        const char* what;
        Record input;
        Record output;
        DWORD size;
        Record converted;
        Record merged;
        const WCHAR* line;
    } cases[] = {
        // clang-format off
        {"same layout",       whole, blank, 24, whole, whole, taken},
        {"shorter input",     {16, kHalv, 4, 50, 60, 7}, blank, 24, {24, kHalv, 5, 50, 0, 99}, {24, kHalv, 5, 50, 0, 99}, taken},
        {"longer input",      {40, kHalv, 9, 50, 60, 7}, blank, 64, whole, whole, taken},
        {"empty input",       {0, kHalv, 9, 50, 60, 7}, blank, 24, full, full, taken},
        {"shorter output",    whole, {20, kHalv, 5, 1, 2, 3}, 24, {24, kHalv, 5, 50, 60, 3}, {24, kHalv, 5, 50, 60, 3}, taken},
        {"other plug-in",     {24, 0x1234, 5, 50, 60, 7}, blank, 24, full, full, foreign},
        {"other on both sides", {24, 0x1234, 5, 50, 60, 7}, {24, 0x1234, 5, 1, 2, 3}, 24, {24, 0x1234, 5, 50, 60, 7}, whole, taken},
        {"out of range",      {24, kHalv, 5, 150, 100, 7}, blank, 24, {24, kHalv, 5, 150, 100, 7}, {24, kHalv, 5, 0, 100, 7}, taken},
        {"just out of range", {24, kHalv, 5, 100, 101, 7}, blank, 24, {24, kHalv, 5, 100, 101, 7}, {24, kHalv, 5, 100, 0, 7}, taken},
        {"no room",           whole, {1, 2, 3, 400, 5, 6}, 23, {1, 2, 3, 400, 5, 6}, {24, kHalv, 5, 0, 5, 6}, refused},
        // clang-format on
    };
    for (const auto& row : cases) {
        DebugLines lines;
        EXPECT_EQ(row.converted, After(OEMDM_CONVERT, &row.input, row.output, row.size)) << row.what;
        EXPECT_EQ(row.merged, After(OEMDM_MERGE, &row.input, row.output, row.size)) << row.what;
        EXPECT_TRUE(lines.Contains(row.line)) << row.what;
        Record output = row.output;
        EXPECT_EQ(row.line != refused, ConvertOEMDevmode(&row.input, &output, row.size)) << row.what;
        EXPECT_EQ(row.line == taken, lines.Contains(TEXT("UI:  Converting private OEM Devmode.\r\n")));
    }
    EXPECT_EQ(blank, After(OEMDM_CONVERT, nullptr, blank));
}

TEST(PrivateDevmode, RefusesOtherModes)
{
    OEMDMPARAM parameters{};
    DebugLines lines;
    for (const auto& [mode, record] :
         {std::pair{0u, &parameters}, {5u, &parameters}, {OEMDM_DEFAULT, nullptr}}) {
        SetLastError(0);
        lines.Take();
        EXPECT_EQ(E_FAIL, HandleDevMode(mode, record));
        EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    }
    EXPECT_EQ((std::vector<Text>{TEXT("UI:  IOemUI:DevMode(2, 0) entry.\r\n"),
                                 TEXT("ERROR UI:  DevMode() ERROR_INVALID_PARAMETER.\r\n"),
                                 TEXT("UI:  \tdwMode = 2, pOemDMParam = 0.\r\n")}),
              lines.Lines());
}

} // namespace
} // namespace tintwerk
