// The printer properties, and the activation context that all pages share.
#include "src/sheets/device_sheet.h"

#include "src/pages/page_procedure.h"
#include "tests/sheets/sheet_fixture.h"

namespace tintwerk {
namespace {

// Answers for the module's path and records what activation contexts are asked for.
struct TestModule
{
    inline static std::size_t pathLength;
    inline static std::vector<Text> sources;
    inline static HANDLE context;

    TestModule()
    {
        pathLength = 20;
        sources.clear();
        context = reinterpret_cast<HANDLE>(0x77);
        ReplaceFunction("GetModuleFileNameW", &Path);
        ReplaceFunction("CreateActCtxW", &Create);
    }
    ~TestModule()
    {
        RestoreFunction("CreateActCtxW");
        RestoreFunction("GetModuleFileNameW");
    }

    static DWORD WINAPI Path(HMODULE, LPWSTR path, DWORD size)
    {
        const DWORD copied = std::min<DWORD>(size, static_cast<DWORD>(pathLength));
        std::fill_n(path, copied, WCHAR{'m'});
        if (copied < size) path[copied] = 0;
        return copied;
    }
    static HANDLE WINAPI Create(PCACTCTXW description)
    {
        EXPECT_EQ(sizeof(ACTCTXW), description->cbSize);
        EXPECT_EQ(static_cast<DWORD>(ACTCTX_FLAG_RESOURCE_NAME_VALID), description->dwFlags);
        EXPECT_EQ(2u, reinterpret_cast<UINT_PTR>(description->lpResourceName));
        sources.emplace_back(description->lpSource);
        return context;
    }
};

class DeviceSheet : public SheetTest
{
protected:
    DeviceSheet()
    {
        Process().activationContext = kNoActivationContext;
        sheet.entry = &hrOEMDevicePropertySheets;
    }

    const PropertySheetPage& Open()
    {
        EXPECT_EQ(S_OK, sheet.Open());
        return sheet.added.back().page;
    }

    TestModule module;
    TestSheet sheet{&core, core.object};
};

TEST_F(DeviceSheet, AddsTheInformationPage)
{
    const PropertySheetPage& page = Open();
    EXPECT_EQ(1u, sheet.info.Result);
    EXPECT_EQ("106", sheet.Pages());
    EXPECT_EQ(104u, page.dwSize);
    EXPECT_EQ(static_cast<DWORD>(PSP_USEFUSIONCONTEXT), page.dwFlags);
    EXPECT_EQ(TestModule::context, page.hActCtx);
    EXPECT_EQ(&DevicePageProc, page.pfnDlgProc);

    const auto& record = *reinterpret_cast<const SheetRecord*>(page.lParam);
    EXPECT_EQ(core.object, record.coreObject);
    EXPECT_EQ(&core, record.coreHelper);
    EXPECT_EQ(sheet.parameters.hPrinter, record.printer);
    EXPECT_EQ(sheet.info.hComPropSheet, record.sheet);
    EXPECT_EQ(sheet.info.pfnComPropSheet, record.sheetFunction);
    EXPECT_EQ(101, record.lastPageHandle);
}

TEST_F(DeviceSheet, DoesNotOpenWithoutParametersOrMemory)
{
    HeapWatch heap;
    heap.Fail(2); // the first is a trace line's
    EXPECT_EQ(E_FAIL, sheet.Open());
    sheet.info.lParamInit = 0;
    EXPECT_EQ(E_FAIL, sheet.Open());
    EXPECT_TRUE(sheet.added.empty());
}

TEST_F(DeviceSheet, MakesTheActivationContextOnceForAllPagesAndTriesAgainUntilItCan)
{
    TestModule::pathLength = 0; // the module has no path, then none can be kept
    EXPECT_EQ(0u, Open().dwFlags);
    TestModule::pathLength = 20;
    {
        HeapWatch heap;
        heap.Fail(3); // behind those of a trace line and the sheet's record
        EXPECT_EQ(0u, Open().dwFlags);
    }
    EXPECT_TRUE(TestModule::sources.empty());
    TestModule::context = INVALID_HANDLE_VALUE;
    EXPECT_EQ(0u, Open().dwFlags);
    EXPECT_EQ(kNoActivationContext, Process().activationContext);
    TestModule::context = reinterpret_cast<HANDLE>(0x99);
    Open();
    TestModule::context = nullptr;
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x99), Open().hActCtx);
    TestSheet document(&core, core.object);
    document.Open();
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x99), document.Find("193")->page.hActCtx);
    EXPECT_EQ(std::vector<Text>(2, Text(20, 'm')), TestModule::sources);
}

TEST_F(DeviceSheet, FindsRoomForALongModulePath)
{
    for (const auto& [length, used] : {std::pair{259u, 259u}, {260, 260}, {200000, 133120}}) {
        TestModule::pathLength = length;
        Process().activationContext = kNoActivationContext;
        Open();
        EXPECT_EQ(used, TestModule::sources.back().size());
    }
}

} // namespace
} // namespace tintwerk
