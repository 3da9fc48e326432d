// The printer properties, and the activation context that all pages share.
#include "src/sheets/device_sheet.h"

#include "src/pages/page_procedure.h"
#include "tests/sheets/sheet_fixture.h"

namespace tintwerk {
namespace {

using ActivationFunction = decltype(&CreateActCtxW);
using ModulePathFunction = decltype(&GetModuleFileNameW);

// Answers for the module's path and records what activation contexts are asked for.
struct TestModule
{
    inline static std::size_t pathLength;
    inline static std::vector<DWORD> pathSizes;
    inline static std::vector<Text> sources;
    inline static HANDLE context;

    TestModule()
    {
        pathLength = 20;
        pathSizes.clear();
        sources.clear();
        context = reinterpret_cast<HANDLE>(0x77);
        ReplaceFunction("GetModuleFileNameW", static_cast<ModulePathFunction>(&Path));
        ReplaceFunction("CreateActCtxW", static_cast<ActivationFunction>(&Create));
    }
    ~TestModule()
    {
        RestoreFunction("CreateActCtxW");
        RestoreFunction("GetModuleFileNameW");
    }

    static DWORD WINAPI Path(HMODULE, LPWSTR path, DWORD size)
    {
        pathSizes.push_back(size);
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
        EXPECT_EQ(nullptr, description->hModule);
        sources.emplace_back(description->lpSource);
        return context;
    }
};

class DeviceSheet : public SheetTest
{
protected:
    DeviceSheet() { Process().activationContext = kNoActivationContext; }

    HRESULT Call(int reason, LPARAM lParam = 0)
    {
        sheet.info.Reason = static_cast<WORD>(reason);
        return hrOEMDevicePropertySheets(&sheet.info, lParam, &core);
    }
    const AddedPage& Open()
    {
        EXPECT_EQ(S_OK, Call(PROPSHEETUI_REASON_INIT));
        return sheet.added.back();
    }

    TestModule module;
    TestSheet sheet{&core, core.object};
};

TEST_F(DeviceSheet, RefusesACallWithoutInfoOrOfAnotherVersion)
{
    sheet.info.Version = 0;
    for (PROPSHEETUI_INFO* info : {static_cast<PROPSHEETUI_INFO*>(nullptr), &sheet.info}) {
        SetLastError(0);
        trace.Take();
        EXPECT_EQ(E_FAIL, hrOEMDevicePropertySheets(info, 0, &core));
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
        ASSERT_EQ(2u, trace.Lines().size());
        EXPECT_TRUE(trace.Lines()[0].starts_with(TEXT("UI:  hrOEMDevicePropertySheets(")));
        EXPECT_EQ(TEXT("ERROR UI:  hrOEMDevicePropertySheets() ERROR_INVALID_PARAMETER.\r\n"),
                  trace.Lines()[1]);
    }
}

TEST_F(DeviceSheet, AnswersTheReasonsBesideOpening)
{
    PROPSHEETUI_INFO_HEADER header{};
    SETRESULT_INFO result{};
    result.Result = 3;
    const struct
    {
        int reason;
        LPARAM lParam;
        ULONG_PTR result;
    } cases[] = {{PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&header), 1},
                 {PROPSHEETUI_REASON_DESTROY, 0, 1},
                 {PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&result), 3},
                 {PROPSHEETUI_REASON_GET_ICON, 0, 0},
                 {5, 0, 1}};
    for (const auto& row : cases) {
        sheet.info.Result = 77;
        EXPECT_EQ(S_OK, Call(row.reason, row.lParam)) << row.reason;
        EXPECT_EQ(row.result, sheet.info.Result) << row.reason;
    }
    EXPECT_EQ(Text(TEXT("INFO Page")), header.pTitle);
}

TEST_F(DeviceSheet, AddsTheInformationPage)
{
    const PROPSHEETPAGEW& page = Open().page;
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
    EXPECT_EQ(nullptr, record.context);
    EXPECT_EQ(nullptr, record.heap);
}

TEST_F(DeviceSheet, DoesNotOpenWithoutParametersOrMemory)
{
    HeapWatch heap;
    heap.FailAllocation(2); // the first is a trace line's
    EXPECT_EQ(E_FAIL, Call(PROPSHEETUI_REASON_INIT));
    sheet.info.lParamInit = 0;
    EXPECT_EQ(E_FAIL, Call(PROPSHEETUI_REASON_INIT));
    EXPECT_TRUE(sheet.added.empty());
}

TEST_F(DeviceSheet, MakesTheActivationContextOnceForAllPages)
{
    Open();
    Open();
    TestSheet document(&core, core.object);
    document.Open();
    EXPECT_EQ(std::vector<Text>{Text(20, 'm')}, TestModule::sources);
    EXPECT_EQ(TestModule::context, document.Find("193")->page.hActCtx);
    EXPECT_TRUE(document.Find("193")->page.dwFlags & PSP_USEFUSIONCONTEXT);
}

TEST_F(DeviceSheet, TriesAgainForAnActivationContextThatCouldNotBeMade)
{
    TestModule::context = INVALID_HANDLE_VALUE;
    EXPECT_EQ(0u, Open().page.dwFlags);
    TestModule::context = reinterpret_cast<HANDLE>(0x99);
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x99), Open().page.hActCtx);
    EXPECT_EQ(2u, TestModule::sources.size());
    Process().activationContext = LONG_PTR{0};
    EXPECT_EQ(0u, Open().page.dwFlags);
    EXPECT_EQ(2u, TestModule::sources.size());
}

TEST_F(DeviceSheet, FindsRoomForALongModulePath)
{
    const struct
    {
        std::size_t path;
        std::vector<DWORD> sizes;
        std::size_t source; // characters of the path that is used
    } cases[] = {{259, {260}, 259},
                 {260, {260, 520}, 260},
                 {1039, {260, 520, 1040}, 1039},
                 {200000, {260, 520, 1040, 2080, 4160, 8320, 16640, 33280, 66560, 133120}, 133120}};
    for (const auto& row : cases) {
        TestModule::pathLength = row.path;
        TestModule::pathSizes.clear();
        Process().activationContext = kNoActivationContext;
        Open();
        EXPECT_EQ(row.sizes, TestModule::pathSizes) << row.path;
        EXPECT_EQ(row.source, TestModule::sources.back().size());
    }
}

TEST_F(DeviceSheet, DoesWithoutAnActivationContextWhenTheModuleHasNoPath)
{
    TestModule::pathLength = 0;
    EXPECT_EQ(0u, Open().page.dwFlags);
    TestModule::pathLength = 20;
    {
        HeapWatch heap;
        heap.FailAllocation(3); // behind those of a trace line and the sheet's record
        EXPECT_EQ(0u, Open().page.dwFlags);
    }
    EXPECT_TRUE(TestModule::sources.empty());
    EXPECT_EQ(kNoActivationContext, Process().activationContext);
}

} // namespace
} // namespace tintwerk
