// The printing preferences as the common property sheet UI sees them: answers to every reason (those of the
// printer properties beside them), pages, titles, records, trace lines and failures.
#include "tests/sheets/sheet_fixture.h"

#include <array>
#include <cstdio>
#include <optional>
#include <tuple>

#include "src/pages/page_procedure.h"
#include "src/sheets/device_sheet.h"
#include "tests/support/installed_value.h"

namespace tintwerk {
namespace {

FakeCore::Feature Feature(const char* keyword, const char* option)
{
    return {keyword, {option}, option};
}

std::string Hex(const void* pointer)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%#x", static_cast<unsigned>(reinterpret_cast<UINT_PTR>(pointer)));
    return text;
}

using DocumentSheet = SheetTest;

const std::tuple<decltype(&hrOEMDocumentPropertySheets), std::string, Text> kSheets[] = {
    {&hrOEMDocumentPropertySheets, "hrOEMDocumentPropertySheets", TEXT("Print")},
    {&hrOEMDevicePropertySheets, "hrOEMDevicePropertySheets", TEXT("INFO Page")}};

TEST_F(DocumentSheet, RefusesACallWithoutInfoOrOfAnotherVersion)
{
    PROPSHEETUI_INFO other{};
    other.Version = 0x101;
    other.Reason = PROPSHEETUI_REASON_GET_ICON;
    other.Result = 77;
    for (const auto& [entry, name, title] : kSheets) {
        for (PROPSHEETUI_INFO* info : {static_cast<PROPSHEETUI_INFO*>(nullptr), &other}) {
            SetLastError(0);
            EXPECT_EQ(E_FAIL, entry(info, 0x1234, &core));
            EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
            EXPECT_EQ("",
                      MissingLine(trace.Take(), {"UI:  " + name + "(" + Hex(info) + ", 0x1234) entry\r\n",
                                                 "ERROR UI:  " + name + "() ERROR_INVALID_PARAMETER.\r\n"}));
        }
    }
    EXPECT_EQ(77u, other.Result);
}

TEST_F(DocumentSheet, AnswersTheReasonsBesideOpening)
{
    PROPSHEETUI_INFO_HEADER header{};
    SETRESULT_INFO result{};
    result.Result = 3;
    // What the document sheet returns (the other one S_OK), and the results of both.
    const std::tuple<int, LPARAM, HRESULT, std::array<ULONG_PTR, 2>> cases[] = {
        {PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&header), 1, {1, 1}},
        {PROPSHEETUI_REASON_GET_INFO_HEADER, 0, 1, {1, 1}},
        {PROPSHEETUI_REASON_DESTROY, 0, 1, {1, 1}},
        {PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&result), 0, {3, 3}},
        {PROPSHEETUI_REASON_SET_RESULT, 0, 0, {77, 77}},
        {PROPSHEETUI_REASON_GET_ICON, 0, 1, {0, 0}},
        {5, 0, 1, {77, 1}}};
    for (const int kind : {0, 1}) {
        TestSheet sheet(&core, core.object);
        sheet.entry = std::get<0>(kSheets[kind]);
        for (const auto& [reason, lParam, returned, results] : cases) {
            sheet.info.Result = 77;
            EXPECT_EQ(kind ? S_OK : returned, sheet.Call(reason, lParam)) << reason;
            EXPECT_EQ(results[static_cast<size_t>(kind)], sheet.info.Result) << kind << reason;
        }
        EXPECT_EQ(std::get<2>(kSheets[kind]), header.pTitle);
    }
    EXPECT_TRUE(trace.Contains(TEXT("PROPSHEET - REASON SET RESULT\n")));
}

TEST_F(DocumentSheet, ChoosesItsPagesByWindowsVersionAndGuiMode)
{
    // Windows, the PPD's GUI mode, whether it knows screen printing, and the pages.
    const std::tuple<DWORD, DWORD, const char*, bool, std::string> cases[] = {
        {10, 0, nullptr, false, "193 layout 189 192 191 190 advanced"},
        {10, 0, nullptr, true, "193 layout 189 192 191 190 229 advanced"},
        {6, 1, "oem0", true, "193 layout 189 192 191 190 229 advanced"},
        {6, 1, "oem", true, "193 layout 189 192 191 190 229 advanced"},
        {10, 0, "OEM1", false, "193 layout 189 192 191 190 advanced"},
        {10, 0, "oem129", false, "193 layout advanced"}, // two characters count
        {10, 0, "oem1", true, "194 layout advanced"},
        {10, 0, "oem2", true, "194 layout 191 advanced"},
        {10, 0, "oem3", false, "194 layout 191 advanced"},
        {10, 0, "oem4", true, "193 layout advanced"},
        {10, 0, "oem6", true, "193 layout 191 advanced"},
        {10, 0, "oem12", true, "193 layout advanced"},
        {6, 0, nullptr, true, "149 layout 162 163 107 164 advanced"},
        {6, 0, "oem1", true, "149 layout advanced"},
        {5, 2, "oem2", false, "149 layout 107 advanced"},
    };
    for (const auto& [major, minor, guiMode, screenPrinting, pages] : cases) {
        SetWindowsVersion(major, minor);
        core.features.clear();
        if (guiMode) core.features.push_back(Feature("halvGuiMode", guiMode));
        if (screenPrinting) core.features.push_back(Feature("halvScreenmode", "off"));
        TestSheet sheet(&core, core.object);
        EXPECT_EQ(1, sheet.Open());
        EXPECT_EQ(pages, sheet.Pages()) << major << "." << minor << " " << (guiMode ? guiMode : "-");
    }
}

TEST_F(DocumentSheet, TitlesItsPagesInTheFirstLanguageOfThePpd)
{
    const Text german = TEXT("Druck, Farben, Korrektur, Verbrauch, Tinte, Siebdruck, ");
    const Text english = TEXT("Main, Color, Correction, Consumption, Ink Ctrl, Screen Printing, ");
    const std::pair<std::vector<std::string>, Text> cases[] = {
        {{"de", "en"}, german}, {{"en", "de"}, english}, {{}, english}};
    for (const auto& [languages, expected] : cases) {
        core.features = {{"halvLanguage", languages, "en"}, Feature("halvScreenmode", "on")};
        TestSheet sheet(&core, core.object);
        sheet.Open();
        Text titles;
        for (const AddedPage& page : sheet.added)
            if (page.hasTitle) titles += page.title + TEXT(", ");
        EXPECT_EQ(expected, titles);
    }
}

TEST_F(DocumentSheet, DescribesEveryPageAndKeepsItsHandle)
{
    core.features = {Feature("halvScreenmode", "on")};
    TestSheet sheet(&core, core.object);
    sheet.Open();
    EXPECT_EQ(1u, sheet.info.Result);

    DWORD position = 0;
    for (const AddedPage& added : sheet.added) {
        if (added.function != CPSFUNC_ADD_PROPSHEETPAGEW) continue;
        const PROPSHEETPAGEW& page = added.page;
        const PageEntry& entry = sheet.Record().pages[position];
        EXPECT_EQ(104u, page.dwSize);
        EXPECT_EQ(static_cast<DWORD>(PSP_USETITLE | PSP_USEFUSIONCONTEXT), page.dwFlags);
        EXPECT_EQ(Process().module, page.hInstance);
        EXPECT_EQ(&DocumentPageProc, page.pfnDlgProc);
        EXPECT_EQ(reinterpret_cast<LPARAM>(&entry), page.lParam);
        EXPECT_EQ(position++, entry.position);
        EXPECT_EQ(&sheet.Record(), entry.record);
        EXPECT_EQ(101 + (&added - sheet.added.data()), entry.pageHandle);
    }
    EXPECT_EQ(6u, position);
    EXPECT_EQ(&sheet.devmode, sheet.Record().privateDevmode);
    EXPECT_EQ(static_cast<LONG_PTR>(100 + sheet.added.size()), sheet.Record().lastPageHandle);
}

TEST_F(DocumentSheet, WorksWithoutACoreHelperOrPagesButNotWithoutParameters)
{
    Process().gui.Set({4, ""});
    TestSheet sheet(nullptr, core.object);
    sheet.refusesPages = true;
    sheet.printerName = Text(200, 'p');
    sheet.parameters.pPrinterName = sheet.printerName.data();
    EXPECT_EQ(1, sheet.Open());
    EXPECT_EQ(Text(127, 'p'), sheet.Context().printerName);
    EXPECT_EQ("193 layout 189 192 191 190", sheet.Pages());
    EXPECT_EQ(0, sheet.Find("layout")->items.cOptItem);
    EXPECT_EQ(0, Process().gui.Get().mode);
    EXPECT_EQ(0, sheet.Record().lastPageHandle);
    EXPECT_EQ(0, sheet.Record().pages[3].pageHandle);

    TestSheet none(&core, core.object);
    none.info.lParamInit = 0;
    EXPECT_EQ(E_FAIL, none.Open());
    EXPECT_TRUE(none.added.empty());
    EXPECT_EQ(0u, none.info.UserData);
    EXPECT_EQ(1, none.Call(PROPSHEETUI_REASON_DESTROY));
}

TEST_F(DocumentSheet, TellsItsStepsInOrder)
{
    core.features = {Feature("halvGuiMode", "oem2"), Feature("halvGuiIcon", "logos-acme-2.bmp")};
    TestSheet sheet(&core, core.object);
    sheet.Open();
    EXPECT_EQ(
        "",
        MissingLine(trace.Lines(),
                    {"UI:  hrOEMDocumentPropertySheets(" + Hex(&sheet.info) + ", 0) entry\r\n",
                     "UI:  DocPropSheet - INIT\n", "GetPrinter needs 164 Bytes\n", "pPrinterInfo2 is ",
                     "*** extracted drivername: Tintwerk 0042\n", "Got 1 args with number=42\n",
                     "UI:  set poemuiobj to " + Hex(core.object) + "\r\n", "UI:  DocPropSheet - INITPPD\n",
                     "UI:  Reply length=47\n", "UI:  **Feature Option halvGuiMode is oem2\r\n",
                     "UI:  **Feature Option halvGuiIcon is logos-acme-2.bmp\r\n", "UI:  halvGUIMODE= 2\n",
                     "UI:  halvOemLogoFilename= logos\\acme-2.bmp\n", "DokumentPropSheets - Add Tab Pages\n",
                     "Add Page #1 - tabidx = 1\n", "*** *** CPSFUNC_ADD_PCOMPROPSHEET: pages: 1\n",
                     "Add Page #4 - tabidx = 8\n", "*** optionspage CPSFUNC_ADD_PCOMPROPSHEET: pages: 1\n"}));
    EXPECT_EQ(2, Process().gui.Get().mode);
    EXPECT_STREQ("logos\\acme-2.bmp", Process().gui.Get().oemLogoFileName);

    // The next sheet knows nothing of it.
    core.answers["GetOptions"] = {E_UNEXPECTED, ""};
    TestSheet next(&core, core.object);
    next.Open();
    EXPECT_EQ("193 layout 189 192 191 190 advanced", next.Pages());
    EXPECT_EQ(0, Process().gui.Get().mode);
    EXPECT_STREQ("", Process().gui.Get().oemLogoFileName);
    EXPECT_TRUE(trace.Contains(TEXT("UI:  GetOptions failed with result = 8000ffff\n")));
}

TEST_F(DocumentSheet, TakesThePrinterNumberFromTheDriverName)
{
    // The number, what was found at the end of the name; nothing where the name is not looked at.
    const std::tuple<const char*, int, std::string> cases[] = {
        {"Tintwerk 12345", 2345, "Got 1 args with number=2345\n"},
        {"Tintwerk -123", -123, "Got 1 args with number=-123\n"},
        {"x0042", 42, "Got 1 args with number=42\n"},
        {"x \t+7", 7, "Got 1 args with number=7\n"},
        {"x12ab", 12, "Got 1 args with number=12\n"},
        {"x9 99", 9, "Got 1 args with number=9\n"},
        {"x  -1", 0, "Got 1 args with number=-1\n"},
        {"xa1b2", 0, "Got 0 args with number=-1\n"},
        {"x- 12", 0, "Got 0 args with number=-1\n"},
        {"x    ", 0, "Got 0 args with number=-1\n"},
        {"x\xB2\xB2\xB2\xB2", 0, "Got 0 args with number=-1\n"},
        {"0042", 0, ""},
        {"", 0, ""},
    };
    for (const auto& [driver, number, got] : cases) {
        TestSpooler::driverName = Wide(driver);
        trace.Take();
        TestSheet sheet(&core, core.object);
        sheet.Open();
        EXPECT_EQ(number, sheet.Record().printerNumber) << driver;
        EXPECT_EQ(number == 0, trace.Contains(TEXT("GetPrinter failed\n"))) << driver;
        EXPECT_EQ("", MissingLine(trace.Take(), {got})) << driver;
        EXPECT_TRUE(number != -123 || std::string(sheet.Context().inkFilePath).ends_with("printer-0123.ink"));
    }
    TestSpooler::driverName = TEXT("Tintwerk 0042");
    for (const DWORD told : {162u, 0xFFFFFFF0u}) { // no room for the name's zero; more than any printer has
        TestSpooler::told = told;
        TestSheet lied(&core, core.object);
        lied.Open();
        EXPECT_EQ(0, lied.Record().printerNumber) << told;
    }
    EXPECT_EQ("", MissingLine(trace.Take(), {"*** extracted drivername: \n", "GetPrinter needs -16 Bytes\n",
                                             "pPrinterInfo2 is 0\n", "GetPrinter2 failed - cbNeeded=-16\n"}));
    TestSpooler::told = 0;
    TestSpooler::driverName = {};
    TestSpooler::sizeOnly = true;
    TestSheet refused(&core, core.object);
    refused.Open();
    EXPECT_EQ(0, refused.Record().printerNumber);
    EXPECT_EQ("", MissingLine(trace.Take(), {"GetPrinter2 failed - cbNeeded=0\n", "GetPrinter failed\n"}));
    TestSheet none(&core, core.object);
    none.parameters.hPrinter = nullptr;
    none.Open();
    EXPECT_EQ(0, none.Record().printerNumber);
    EXPECT_STREQ("C:\\conf\\ink\\printer0000.ink", none.Context().inkFilePath);
}

TEST_F(DocumentSheet, AsksTheRegistryForTheConfigurationDirectoryUntilItIsKnown)
{
    Process().configDirectory.Set({});
    std::optional<InstalledValue> value(std::in_place, "ConfigDir", "");
    value.reset(); // one of an earlier program of this system is gone
    const auto inkFile = [this] {
        TestSheet sheet(&core, core.object);
        sheet.Open();
        return std::string(sheet.Context().inkFilePath);
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ("\\ink\\printer0042.ink", inkFile());
    EXPECT_EQ("get_settings_directory failed\n", testing::internal::GetCapturedStderr());
    for (const char* const directory : {"D:\\tint", "E:\\later"}) {
        value.emplace("ConfigDir", directory);
        EXPECT_EQ("D:\\tint\\ink\\printer0042.ink", inkFile());
    }
}

} // namespace
} // namespace tintwerk
