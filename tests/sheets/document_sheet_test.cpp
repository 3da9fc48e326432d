// The printing preferences as the common property sheet UI sees them: answers to every reason, pages, titles,
// records, trace lines and failures.
#include "tests/sheets/sheet_fixture.h"

#include <cstdio>

#include "src/pages/page_procedure.h"
#include "src/sheets/gui_features.h"
#include "tests/support/config_dir_value.h"

namespace tintwerk {
namespace {

ScriptedFeature GuiMode(const std::string& option)
{
    return {"halvGuiMode", {option}, option};
}

Text Hex(const void* pointer)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%#x", static_cast<unsigned>(reinterpret_cast<UINT_PTR>(pointer)));
    return Wide(text);
}

using DocumentSheet = SheetTest;

TEST_F(DocumentSheet, RefusesACallWithoutInfoOrOfAnotherVersion)
{
    PROPSHEETUI_INFO other{};
    other.Version = 0x101;
    other.Reason = PROPSHEETUI_REASON_GET_ICON;
    other.Result = 77;
    for (PROPSHEETUI_INFO* info : {static_cast<PROPSHEETUI_INFO*>(nullptr), &other}) {
        SetLastError(0);
        EXPECT_EQ(E_FAIL, hrOEMDocumentPropertySheets(info, 0x1234, &core));
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
        EXPECT_EQ((std::vector<Text>{
                      TEXT("UI:  hrOEMDocumentPropertySheets(") + Hex(info) + TEXT(", 0x1234) entry\r\n"),
                      TEXT("ERROR UI:  hrOEMDocumentPropertySheets() ERROR_INVALID_PARAMETER.\r\n")}),
                  trace.Take());
    }
    EXPECT_EQ(77u, other.Result);
}

TEST_F(DocumentSheet, AnswersTheReasonsBesideOpening)
{
    PROPSHEETUI_INFO_HEADER header{};
    SETRESULT_INFO result{};
    result.Result = 2;
    const struct
    {
        int reason;
        LPARAM lParam;
        HRESULT returned;
        ULONG_PTR result;
    } cases[] = {{PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&header), 1, 1},
                 {PROPSHEETUI_REASON_GET_INFO_HEADER, 0, 1, 1},
                 {PROPSHEETUI_REASON_DESTROY, 0, 1, 1},
                 {PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&result), 0, 2},
                 {PROPSHEETUI_REASON_SET_RESULT, 0, 0, 77},
                 {PROPSHEETUI_REASON_GET_ICON, 0, 1, 0},
                 {5, 0, 1, 77}};
    TestSheet sheet(&core, core.object);
    for (const auto& row : cases) {
        sheet.info.Result = 77;
        EXPECT_EQ(row.returned, sheet.Call(row.reason, row.lParam)) << row.reason;
        EXPECT_EQ(row.result, sheet.info.Result) << row.reason;
    }
    EXPECT_EQ(Text(TEXT("Print")), header.pTitle);
    EXPECT_TRUE(trace.Contains(TEXT("PROPSHEET - REASON SET RESULT\n")));
}

TEST_F(DocumentSheet, ChoosesItsPagesByWindowsVersionAndGuiMode)
{
    const struct
    {
        DWORD major, minor;
        const char* guiMode;
        bool screenPrinting;
        const char* pages;
    } cases[] = {
        {10, 0, nullptr, false, "193 layout 189 192 191 190 advanced"},
        {10, 0, nullptr, true, "193 layout 189 192 191 190 229 advanced"},
        {6, 1, "oem0", true, "193 layout 189 192 191 190 229 advanced"},
        {6, 1, "oem", true, "193 layout 189 192 191 190 229 advanced"},
        {10, 0, "oem1", true, "194 layout advanced"},
        {10, 0, "oem2", true, "194 layout 191 advanced"},
        {10, 0, "oem3", false, "194 layout 191 advanced"},
        {10, 0, "oem4", true, "193 layout advanced"},
        {10, 0, "oem5", false, "193 layout advanced"},
        {10, 0, "oem6", true, "193 layout 191 advanced"},
        {6, 3, "oem7", false, "193 layout 191 advanced"},
        {10, 0, "oem12", true, "193 layout advanced"},
        {6, 0, nullptr, true, "149 layout 162 163 107 164 advanced"},
        {6, 0, "oem1", true, "149 layout advanced"},
        {5, 2, "oem2", false, "149 layout 107 advanced"},
    };
    for (const auto& row : cases) {
        SetWindowsVersion(row.major, row.minor);
        core.features.clear();
        if (row.guiMode) core.features.push_back(GuiMode(row.guiMode));
        if (row.screenPrinting) core.features.push_back({"halvScreenmode", {"off"}, "off"});
        TestSheet sheet(&core, core.object);
        EXPECT_EQ(1, sheet.Open());
        EXPECT_EQ(row.pages, sheet.Pages())
            << row.major << "." << row.minor << " " << (row.guiMode ? row.guiMode : "-");
    }
}

TEST_F(DocumentSheet, TitlesItsPagesInTheFirstLanguageOfThePpd)
{
    const struct
    {
        std::vector<std::string> languages;
        std::vector<Text> titles;
    } cases[] = {{{"de", "en"},
                  {TEXT("Druck"), TEXT("Farben"), TEXT("Korrektur"), TEXT("Verbrauch"), TEXT("Tinte"),
                   TEXT("Siebdruck")}},
                 {{"en", "de"},
                  {TEXT("Main"), TEXT("Color"), TEXT("Correction"), TEXT("Consumption"), TEXT("Ink Ctrl"),
                   TEXT("Screen Printing")}},
                 {{},
                  {TEXT("Main"), TEXT("Color"), TEXT("Correction"), TEXT("Consumption"), TEXT("Ink Ctrl"),
                   TEXT("Screen Printing")}}};
    for (const auto& row : cases) {
        core.features = {{"halvLanguage", row.languages, "en"}, {"halvScreenmode", {"on"}, "on"}};
        TestSheet sheet(&core, core.object);
        sheet.Open();
        std::vector<Text> titles;
        for (const AddedPage& page : sheet.added)
            if (page.hasTitle) titles.push_back(page.title);
        EXPECT_EQ(row.titles, titles);
    }
}

TEST_F(DocumentSheet, DescribesEveryPageAndKeepsItsHandle)
{
    core.features = {{"halvScreenmode", {"on"}, "on"}};
    TestSheet sheet(&core, core.object);
    sheet.Open();
    EXPECT_EQ(1u, sheet.info.Result);

    DWORD position = 0;
    for (const AddedPage& added : sheet.added) {
        if (added.function != CPSFUNC_ADD_PROPSHEETPAGEW) continue;
        const PROPSHEETPAGEW& page = added.page;
        const PageEntry& entry = sheet.Record().pages[position];
        EXPECT_EQ(104u, page.dwSize);
        EXPECT_EQ(0u, page.dwFlags & ~static_cast<DWORD>(PSP_USETITLE | PSP_USEFUSIONCONTEXT));
        EXPECT_EQ(Process().module, page.hInstance);
        EXPECT_EQ(&DocumentPageProc, page.pfnDlgProc);
        EXPECT_EQ(reinterpret_cast<LPARAM>(&entry), page.lParam);
        EXPECT_EQ(nullptr, added.page.hbmHeader);
        EXPECT_EQ(position, entry.position);
        EXPECT_EQ(&sheet.Record(), entry.record);
        EXPECT_EQ(101 + (&added - sheet.added.data()), entry.pageHandle);
        ++position;
    }
    EXPECT_EQ(6u, position);
    EXPECT_EQ(static_cast<LONG_PTR>(100 + sheet.added.size()), sheet.Record().lastPageHandle);
}

TEST_F(DocumentSheet, CutsALongPrinterName)
{
    TestSheet sheet(&core, core.object);
    sheet.printerName = Text(200, 'p');
    sheet.parameters.pPrinterName = sheet.printerName.data();
    sheet.Open();
    EXPECT_EQ(Text(127, 'p'), sheet.Context().printerName);
}

TEST_F(DocumentSheet, GoesOnWhenThePageIsRefused)
{
    TestSheet sheet(&core, core.object);
    sheet.refusesPages = true;
    EXPECT_EQ(1, sheet.Open());
    EXPECT_EQ("193 layout 189 192 191 190 advanced", sheet.Pages());
    EXPECT_EQ(0, sheet.Record().lastPageHandle);
    EXPECT_EQ(0, sheet.Record().pages[3].pageHandle);
}

TEST_F(DocumentSheet, WorksWithoutACoreHelper)
{
    Process().gui.Set({4, ""});
    TestSheet sheet(nullptr, core.object);
    EXPECT_EQ(1, sheet.Open());
    EXPECT_EQ("193 layout 189 192 191 190", sheet.Pages());
    EXPECT_EQ(0, sheet.Find("layout")->items.cOptItem);
    EXPECT_EQ(0, Process().gui.Get().mode);
}

TEST_F(DocumentSheet, TellsItsStepsInOrder)
{
    core.features = {GuiMode("oem2"), {"halvGuiIcon", {"logos-acme.bmp"}, "logos-acme.bmp"}};
    TestSheet sheet(&core, core.object);
    trace.Take();
    sheet.Open();

    const std::vector<Text> expected{
        TEXT("UI:  hrOEMDocumentPropertySheets(") + Hex(&sheet.info) + TEXT(", 0) entry\r\n"),
        TEXT("UI:  DocPropSheet - INIT\n"),
        TEXT("GetPrinter needs 164 Bytes\n"),
        TEXT("pPrinterInfo2 is "), // and an address
        TEXT("*** extracted drivername: Tintwerk 0042\n"),
        TEXT("Got 1 args with number=42\n"),
        TEXT("UI:  set poemuiobj to ") + Hex(core.object) + TEXT("\r\n"),
        TEXT("UI:  DocPropSheet - INITPPD\n"),
        TEXT("UI:  Reply length=45\n"),
        TEXT("UI:  **Feature Option halvGuiMode is oem2\r\n"),
        TEXT("UI:  **Feature Option halvGuiIcon is logos-acme.bmp\r\n"),
        TEXT("UI:  halvGUIMODE= 2\n"),
        TEXT("UI:  halvOemLogoFilename= logos\\acme.bmp\n"),
        TEXT("DokumentPropSheets - Add Tab Pages\n"),
        TEXT("Add Page #1 - tabidx = 1\n"),
        TEXT("*** *** CPSFUNC_ADD_PCOMPROPSHEET: pages: 1\n"),
        TEXT("Add Page #4 - tabidx = 8\n"),
        TEXT("*** optionspage CPSFUNC_ADD_PCOMPROPSHEET: pages: 1\n"),
    };
    std::vector<Text> lines = trace.Lines();
    for (Text& line : lines)
        if (line.starts_with(TEXT("pPrinterInfo2 is "))) line.resize(17);
    EXPECT_EQ(expected,
              LinesLike(lines, {TEXT("UI:  hrOEM"), TEXT("UI:  Doc"), TEXT("GetPrinter"), TEXT("pPrinter"),
                                TEXT("*** extr"), TEXT("Got "), TEXT("UI:  set"), TEXT("UI:  Reply"),
                                TEXT("UI:  **F"), TEXT("UI:  halv"), TEXT("Dokument"), TEXT("Add Page"),
                                TEXT("*** *** C"), TEXT("*** optionspage")}));
    EXPECT_EQ(2, Process().gui.Get().mode);
    EXPECT_STREQ("logos\\acme.bmp", Process().gui.Get().oemLogoFileName);
}

TEST_F(DocumentSheet, ForgetsGuiModeAndLogoOfTheSheetBefore)
{
    core.features = {GuiMode("oem2"), {"halvGuiIcon", {"a-b"}, "a-b"}, {"halvScreenmode", {"on"}, "on"}};
    TestSheet(&core, core.object).Open();
    core.failures["GetOptions"] = E_UNEXPECTED;
    TestSheet sheet(&core, core.object);
    sheet.Open();
    EXPECT_EQ("193 layout 189 192 191 190 advanced", sheet.Pages());
    EXPECT_EQ(0, Process().gui.Get().mode);
    EXPECT_STREQ("", Process().gui.Get().oemLogoFileName);
    EXPECT_TRUE(trace.Contains(TEXT("UI:  GetOptions failed with result = 8000ffff\n")));
}

TEST_F(DocumentSheet, ComesUpWhateverTheGuiReplyHolds)
{
    std::string full("halvGuiMode\0oem3\0", 17);
    full.resize(12512, 'x');
    const struct
    {
        std::string reply;
        DWORD reported;
        int mode;
    } cases[] = {{std::string("halvGuiMode\0oem3\0halvGuiIcon\0", 29), 29, 3}, // a feature without option
                 {std::string("halvGuiMode\0oem3", 16), 16, 0},                // the option has no end
                 {std::string("halvGuiMode\0oem3\0", 17), 0xFFFFFFFF, 3},
                 {std::string("halvGuimode\0oem3\0\0", 18), 18, 0},
                 {std::string("halvGuiModeX\0oem3\0\0", 19), 19, 0},
                 {std::string("\0halvGuiMode\0oem3\0\0", 19), 19, 0},
                 {full, 12512, 3}};
    for (const auto& row : cases) {
        core.replies["GetOptions halvGuiMode"] = row.reply;
        core.reportedSizes["GetOptions halvGuiMode"] = row.reported;
        TestSheet sheet(&core, core.object);
        EXPECT_EQ(1, sheet.Open());
        EXPECT_EQ(row.mode, Process().gui.Get().mode) << row.reply.substr(0, 40);
    }
}

TEST_F(DocumentSheet, TakesThePrinterNumberFromTheDriverName)
{
    const struct
    {
        const char* driver;
        int number;
        const char* path;
        std::vector<Text> lines;
    } cases[] = {
        {"Tintwerk 12345", 2345, "\\ink\\printer2345.ink", {TEXT("Got 1 args with number=2345\n")}},
        {"0042", 0, "\\ink\\printer0000.ink", {TEXT("GetPrinter failed\n")}},
        {"x0042", 42, "\\ink\\printer0042.ink", {TEXT("Got 1 args with number=42\n")}},
        {"Tintwerk a1b2",
         0,
         "\\ink\\printer0000.ink",
         {TEXT("Got 0 args with number=-1\n"), TEXT("GetPrinter failed\n")}},
        {"Tintwerk -123", -123, "\\ink\\printer-0123.ink", {TEXT("Got 1 args with number=-123\n")}},
        {"Tintwerk   -1",
         0,
         "\\ink\\printer0000.ink",
         {TEXT("Got 1 args with number=-1\n"), TEXT("GetPrinter failed\n")}},
        {"", 0, "\\ink\\printer0000.ink", {TEXT("GetPrinter failed\n")}},
    };
    for (const auto& row : cases) {
        TestSpooler::driverName = Wide(row.driver);
        trace.Take();
        TestSheet sheet(&core, core.object);
        sheet.Open();
        EXPECT_EQ(row.number, sheet.Record().printerNumber) << row.driver;
        EXPECT_EQ(std::string("C:\\conf") + row.path, sheet.Context().inkFilePath);
        EXPECT_EQ(row.lines,
                  LinesLike(trace.Lines(), {TEXT("Got "), TEXT("GetPrinter f"), TEXT("GetPrinter2")}))
            << row.driver;
    }
}

TEST_F(DocumentSheet, CountsAPrinterThatTheSpoolerDoesNotTellAs0)
{
    TestSpooler::sizeOnly = true;
    {
        TestSheet sheet(&core, core.object);
        sheet.Open();
        EXPECT_EQ(0, sheet.Record().printerNumber);
        EXPECT_TRUE(trace.Contains(TEXT("GetPrinter2 failed - cbNeeded=164\n")));
    }
    TestSheet sheet(&core, core.object);
    sheet.parameters.hPrinter = nullptr;
    trace.Take();
    sheet.Open();
    EXPECT_EQ(0, sheet.Record().printerNumber);
    EXPECT_EQ(std::vector<Text>{TEXT("GetPrinter failed\n")}, LinesLike(trace.Lines(), {TEXT("GetPrinter")}));
}

TEST_F(DocumentSheet, AsksTheRegistryForTheConfigurationDirectoryUntilItIsKnown)
{
    static int opened;
    opened = 0;
    ReplaceFunction("RegOpenKeyExA",
                    static_cast<decltype(&RegOpenKeyExA)>([](HKEY, LPCSTR, DWORD, REGSAM, PHKEY) -> LSTATUS {
                        ++opened;
                        return ERROR_FILE_NOT_FOUND;
                    }));
    Process().configDirectory.Set({});
    testing::internal::CaptureStderr();
    for (const int sheets : {1, 2}) {
        TestSheet sheet(&core, core.object);
        sheet.Open();
        EXPECT_STREQ("\\ink\\printer0042.ink", sheet.Context().inkFilePath);
        EXPECT_EQ(sheets, opened);
    }
    EXPECT_EQ("get_settings_directory failed\nget_settings_directory failed\n",
              testing::internal::GetCapturedStderr());
    Process().configDirectory.Set({"D:\\t"});
    TestSheet sheet(&core, core.object);
    sheet.Open();
    EXPECT_EQ(2, opened);
    EXPECT_STREQ("D:\\t\\ink\\printer0042.ink", sheet.Context().inkFilePath);
    RestoreFunction("RegOpenKeyExA");
}

TEST_F(DocumentSheet, KeepsTheConfigurationDirectoryOfTheRegistry)
{
    Process().configDirectory.Set({});
    for (const char* const directory : {"D:\\tint", "E:\\later"}) {
        const ConfigDirValue value(directory);
        TestSheet sheet(&core, core.object);
        sheet.Open();
        EXPECT_STREQ("D:\\tint\\ink\\printer0042.ink", sheet.Context().inkFilePath);
    }
}

TEST_F(DocumentSheet, DoesNotOpenWithoutParameters)
{
    TestSheet sheet(&core, core.object);
    sheet.info.lParamInit = 0;
    EXPECT_EQ(E_FAIL, sheet.Open());
    EXPECT_TRUE(sheet.added.empty());
    EXPECT_EQ(0u, sheet.info.UserData);
    EXPECT_EQ(1, sheet.Call(PROPSHEETUI_REASON_DESTROY));
}

} // namespace
} // namespace tintwerk
