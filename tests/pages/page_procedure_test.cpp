// The dialog procedure of the pages: which message does what, what it answers, and what the sheet hears of
// it.
#include "src/pages/page_procedure.h"

#include <gtest/gtest.h>

#include "src/pages/consumption_tabs.h"
#include "src/pages/page_centring.h"
#include "src/resources/control_ids.h"
#include "tests/pages/open_sheet.h"
#include "tests/support/canvas.h"
#include "tests/support/config_dir_value.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

// A file of one 24-bit pixel.
void WriteBitmapFile(const std::string& path)
{
    BITMAPFILEHEADER file{0x4D42, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + 4, 0, 0,
                          sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER)};
    BITMAPINFOHEADER info{sizeof info, 1, 1, 1, 24, BI_RGB, 4, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info).append("\xFF\x80\x00\x00", 4);
    DWORD written = 0;
    const HANDLE handle = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(handle);
}

class PageProcedure : public PageTest
{
protected:
    INT_PTR Send(int position, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return DocumentPageProc(sheet.Page(position), message, wParam, lParam);
    }
};

TEST_F(PageProcedure, AnswersItsMessages)
{
    sheet.Open(kMain);
    EXPECT_EQ(0, Send(kMain, WM_NULL, MAKEWPARAM(1023, 77))) << "the low word is the event";
    EXPECT_EQ(0, Send(kMain, WM_SIZE));
    EXPECT_EQ(0, Send(kMain, WM_COMMAND, MAKEWPARAM(1024, 0)));
    EXPECT_EQ(0, Send(kMain, WM_HSCROLL));
    const std::pair<UINT, INT_PTR> cases[] = {
        {PSN_KILLACTIVE, 1},     {PSN_SETACTIVE, 1}, {PSN_APPLY, 1}, {UDN_DELTAPOS, 1},
        {NM_RELEASEDCAPTURE, 1}, {TCN_SELCHANGE, 0}, {PSN_RESET, 0}, {NM_CLICK, 0},
    };
    for (const auto& [code, result] : cases) {
        NMUPDOWN notification{};
        notification.hdr.code = code;
        EXPECT_EQ(result, Send(kMain, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification))) << code;
    }
    EXPECT_EQ("", Missing({"UI:  Handle event #1023\n", "UI:  NO LPARAM AS CTRL\n\r",
                           "UI:  NOTIFY RELEASEDCAPTURE code=-16!\r\n"}));
}

TEST_F(PageProcedure, HandlesNothingWithoutASheet)
{
    sheet.Open(kMain);
    const HWND page = sheet.Page(kMain);
    for (const LPARAM entry : {static_cast<LPARAM>(0), reinterpret_cast<LPARAM>(&sheet.record.pages[1])}) {
        sheet.record.context = nullptr;
        SetWindowLongPtrW(page, GWLP_USERDATA, entry);
        NMHDR apply{page, 0, PSN_APPLY};
        EXPECT_EQ(0, DocumentPageProc(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply)));
        EXPECT_EQ(0, DocumentPageProc(page, WM_COMMAND, 1073, 0));
    }
    EXPECT_EQ(0, DocumentPageProc(page, WM_INITDIALOG, 0, 0));
    EXPECT_EQ(0u, sheet.devmode.applyCount);
}

TEST_F(PageProcedure, TracesTheOpeningOfAPage)
{
    sheet.Read();
    trace.Take();
    sheet.Open(kCorrection);
    EXPECT_EQ("", Missing({"UI:  DevicePropPageProc - INIT - (0x", "UI:  \nINIT - xpos2=", "**MOVE by ",
                           "UI:  INIT document 0x", "UI:  \n!!!MyEmbedControls!!! - idx=4 - window=",
                           "DLGINDEX=4 (2)\n", "----- TRANSLAGE DLGPAGE dlgidx is 4\n"}));
}

TEST_F(PageProcedure, MarksThePageChangedForEveryAcceptedCommand)
{
    sheet.Open(kMain);
    struct
    {
        int id, code, changes;
    } const cases[] = {
        {1073, CBN_SELENDOK, 1}, {1073, CBN_DROPDOWN, 0}, {1073, CBN_CLOSEUP, 0}, {1073, CBN_SELCHANGE, 0},
        {1123, BN_CLICKED, 1},   {12346, BN_CLICKED, 1},  {1161, STN_CLICKED, 1},
    };
    for (const auto& row : cases) {
        sheet.changes = 0;
        trace.Take();
        sheet.Command(kMain, row.id, row.code);
        EXPECT_EQ(row.changes, sheet.changes) << row.id << '/' << row.code;
        const std::string told = "\n!!!COMMAND - ID=" + std::to_string(row.id) + "\n";
        EXPECT_EQ(row.changes ? "" : told, Missing({told})) << row.id << '/' << row.code;
    }
}

TEST_F(PageProcedure, FollowsTheSliders)
{
    sheet.Open(kMain);
    sheet.Open(kColors);
    sheet.Open(kScreenPrinting);
    struct
    {
        int position, slider, label, at;
        const WCHAR* text;
    } const cases[] = {
        {kMain, 1232, 1093, -10, TEXT("50%")},
        {kMain, 1232, 1093, 10, TEXT("200%")},
        {kScreenPrinting, 1255, 1256, 10, TEXT("400%")},
        {kColors, 1186, 1191, 0, TEXT("D80")}, // a vertical slider has its least value at the bottom
        {kColors, 1186, 1191, 6, TEXT("D50")},
    };
    for (const auto& row : cases) {
        sheet.changes = 0;
        const HWND slider = sheet.Control(row.position, row.slider);
        SendMessageW(slider, TBM_SETPOS, TRUE, row.at);
        EXPECT_EQ(0, Send(row.position, WM_HSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(slider)));
        EXPECT_EQ(row.text, TextOf(sheet.Control(row.position, row.label))) << row.slider << '/' << row.at;
        EXPECT_EQ(1, sheet.changes);
    }
    trace.Take();
    Send(kMain, WM_HSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(sheet.Control(kMain, 1217)));
    EXPECT_EQ("", Missing({"UI:  SetScrollValue - CtrlProperty = 0", "UI:  SetScrollValue - Value = 2"}))
        << "a slider without label";
    sheet.changes = 0;
    Send(kScreenPrinting, WM_VSCROLL, TB_THUMBTRACK,
         reinterpret_cast<LPARAM>(sheet.Control(kScreenPrinting, 1250)));
    EXPECT_EQ(1, sheet.changes) << "a spin control changes the page";
    EXPECT_TRUE(trace.Lines().empty()) << "but is no slider";
}

TEST_F(PageProcedure, AppliesItsOwnPageOnly)
{
    sheet.Open(kMain);
    sheet.Open(kColors);
    sheet.core.calls.clear();
    trace.Take();
    EXPECT_EQ(1, sheet.Notify(kColors, 0, PSN_APPLY));
    EXPECT_EQ("", Missing({"UI:  !!!APPLY BUTTON !!!\r\n", "--- tabpage = 1 ---\n",
                           "Setting PPDOptions for dlgpage bits 2\n"}));
    for (const std::string& call : sheet.core.calls)
        EXPECT_EQ(std::string::npos, call.find("halvBrightness")) << call;
    EXPECT_EQ(1u, sheet.devmode.applyCount);
    EXPECT_EQ(std::vector<std::string>{std::to_string(CPSFUNC_SET_RESULT) + " 4711 1"}, sheet.sheetCalls);
    EXPECT_EQ(PSNRET_NOERROR, GetWindowLongPtrW(sheet.Page(kColors), DWLP_MSGRESULT));
    sheet.devmode.applyCount = 0xFFFFFFFF;
    sheet.Notify(kMain, 0, PSN_APPLY);
    EXPECT_EQ(0u, sheet.devmode.applyCount);
}

TEST_F(PageProcedure, StepsANumberFieldWithItsSpinControl)
{
    sheet.Open(kScreenPrinting);
    const HWND spin = sheet.Control(kScreenPrinting, 1252);
    const HWND edit = sheet.Control(kScreenPrinting, 1251);
    struct
    {
        const char* what;
        const WCHAR* typed;
        int at, delta;
        const WCHAR* shown;
        int position; // where the spin control lands when it has added the delta
    } const cases[] = {
        {"up", TEXT("37.5"), 375, 5, TEXT("38.0"), 380},
        {"down", TEXT("38.0"), 380, -5, TEXT("37.5"), 375},
        {"at the top", TEXT("180.0"), 1800, 5, TEXT("180.0"), 1805},
        {"at the bottom", TEXT("0.0"), 0, -5, TEXT("0.0"), -5},
        {"the typed number counts", TEXT("90"), 100, 5, TEXT("90.5"), 905},
        {"or the position when it is none", TEXT("x"), 100, 5, TEXT("10.5"), 105},
        {"a held button counts as one click", TEXT("10"), 100, 50, TEXT("10.5"), 105},
        {"no direction is down", TEXT("10"), 100, 0, TEXT("9.5"), 95},
    };
    for (const auto& row : cases) {
        SetWindowTextW(edit, row.typed);
        SendMessageW(spin, UDM_SETPOS32, 0, row.at);
        sheet.changes = 0;
        trace.Take();
        NMUPDOWN notification{{spin, 1252, UDN_DELTAPOS}, row.at, row.delta};
        EXPECT_EQ(1, Send(kScreenPrinting, WM_NOTIFY, 1252, reinterpret_cast<LPARAM>(&notification)));
        EXPECT_EQ(row.shown, TextOf(edit)) << row.what;
        EXPECT_EQ(row.position, SendMessageW(spin, UDM_GETPOS32, 0, 0) + row.delta) << row.what;
        EXPECT_LE(1, sheet.changes) << row.what;
    }
    EXPECT_EQ(95, sheet.context.numberFields.values[1]);
    EXPECT_EQ("", Missing({"UI:  NOTIFY DELTAPOS pos=100 delta=0!\r\n",
                           "UI:  Found Spin #1 set to 100 (was 100)\r\n", "Set numval to 95\n\r",
                           "UI:  Set Spin #1 to 95 (was 100)\r\n"}));
    NMUPDOWN stranger{{sheet.Control(kScreenPrinting, 1257), 1257, UDN_DELTAPOS}, 1, 1};
    Send(kScreenPrinting, WM_NOTIFY, 1257, reinterpret_cast<LPARAM>(&stranger));
    EXPECT_EQ(TEXT("9.5"), TextOf(edit)) << "not bound";
}

TEST_F(PageProcedure, CommitsANumberFieldWhenItLosesTheFocus)
{
    sheet.Open(kScreenPrinting);
    const HWND edit = sheet.Control(kScreenPrinting, 1244);
    struct
    {
        const WCHAR* typed;
        const WCHAR* shown;
        int value;
    } const cases[] = {
        {TEXT("12.5"), TEXT("12.5"), 125},  {TEXT("12,5"), TEXT("12.0"), 120},
        {TEXT("200"), TEXT("150.0"), 1500}, {TEXT("letters"), TEXT("150.0"), 1500},
        {TEXT(""), TEXT("150.0"), 1500},    {TEXT("-7"), TEXT("10.0"), 100},
    };
    for (const auto& row : cases) {
        SetWindowTextW(edit, row.typed);
        sheet.Command(kScreenPrinting, 1244, EN_KILLFOCUS);
        EXPECT_EQ(row.shown, TextOf(edit));
        EXPECT_EQ(row.value, sheet.context.numberFields.values[0]);
        EXPECT_EQ(row.value, SendMessageW(sheet.Control(kScreenPrinting, 1250), UDM_GETPOS32, 0, 0));
    }
    EXPECT_TRUE(trace.Contains(TEXT("UI:  KILLFOCUS received from edit #0\n\r")));
}

TEST_F(PageProcedure, SwitchesTheCountersWithTheTabs)
{
    const TempFile file("tabs.ink", "LastInk_K=200\nTotalInk_K=30000\n");
    lstrcpyA(sheet.context.inkFilePath, file.path.c_str());
    sheet.Open(kConsumption);
    EXPECT_EQ("",
              Missing({"OnTabbedDialogInit prt=", "TabCtrl =", "DoLockRed Findresource name=188\n",
                       "DoLockRed Findresource=", "DoLockRed Loadresource=",
                       "DoLockRed Findresource name=187\n", "OnSelectionChanged prt=", "resSize=271 x 127\n",
                       "myrect: 0,0, ", "WindowPos ", "ChildDialog Ptr is set\n"}));
    const HWND tabs = sheet.Control(kConsumption, IDC_CONSUMPTION_TABS);
    const HWND pane = PaneOf(sheet.Page(kConsumption));
    ASSERT_TRUE(pane);
    EXPECT_EQ(2, SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
    const WCHAR* const numbers[] = {TEXT("2"), TEXT("30")};
    for (const int tab : {1, 0}) {
        SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
        EXPECT_EQ(0, sheet.Notify(kConsumption, IDC_CONSUMPTION_TABS, TCN_SELCHANGE));
        EXPECT_EQ(numbers[tab], TextOf(GetDlgItem(pane, 3111)));
        OnSelectionChanged(sheet.Page(kConsumption), tabs);
        EXPECT_EQ(pane, PaneOf(sheet.Page(kConsumption))) << "there is one pane for both tabs";
    }
    sheet.context.consumption.displayMode = 1;
    Send(kConsumption, WM_DESTROY);
    EXPECT_FALSE(PaneOf(sheet.Page(kConsumption))) << "the tabs have nobody to reach any more";
    DestroyWindow(sheet.Page(kConsumption));
    sheet.Open(kConsumption);
    EXPECT_EQ(TEXT("2"), TextOf(GetDlgItem(PaneOf(sheet.Page(kConsumption)), 3111))) << "on its first tab";
}

TEST_F(PageProcedure, NamesItsTabsInTheLanguageOfThePrinter)
{
    const std::pair<const char*, Text> cases[] = {{"en", TEXT("Last Job|Total Consumption|")},
                                                  {"de", TEXT("Letzter Druckjob|Gesamtverbrauch|")}};
    for (const auto& [language, names] : cases) {
        InitStringTable(language);
        sheet.Open(kConsumption);
        Text told;
        for (const WPARAM tab : {0, 1}) {
            WCHAR text[64] = {};
            TCITEMW item{};
            item.mask = TCIF_TEXT | TCIF_IMAGE;
            item.pszText = text;
            item.cchTextMax = 64;
            EXPECT_TRUE(SendMessageW(sheet.Control(kConsumption, IDC_CONSUMPTION_TABS), TCM_GETITEMW, tab,
                                     reinterpret_cast<LPARAM>(&item)));
            EXPECT_EQ(-1, item.iImage);
            told += Text(text) + TEXT("|");
        }
        EXPECT_EQ(names, told);
        DestroyWindow(sheet.Page(kConsumption));
    }
}

TEST_F(PageProcedure, PaintsTheBarsOfThePageAndOfThePane)
{
    sheet.Open(kConsumption);
    const HWND page = sheet.Page(kConsumption);
    const HWND bar = GetDlgItem(PaneOf(page), 3011);
    SetWindowLongPtrW(bar, GWLP_USERDATA, 0x64000000);
    DRAWITEMSTRUCT item{};
    item.hwndItem = bar;
    for (const HWND window : {page, PaneOf(page)}) {
        const Canvas canvas(200, 50);
        item.hDC = canvas.Dc();
        SendMessageW(window, WM_DRAWITEM, 3011, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(RGB(0, 0, 0), canvas.At(8, 5)) << (window == page);
    }
}

TEST_F(PageProcedure, PlacesThePaneInTheTabControl)
{
    struct
    {
        int width, height;
        bool fitted;
    } const cases[] = {{600, 300, true}, {481, 300, true}, {480, 300, false}};
    for (const auto& row : cases) {
        const HWND page = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 800, 600, nullptr,
                                          nullptr, GetModuleHandleW(nullptr), nullptr);
        const HWND tabs =
            CreateWindowExW(0, WC_TABCONTROLW, TEXT(""), WS_CHILD, 7, 11, row.width, row.height, page,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_CONSUMPTION_TABS)),
                            GetModuleHandleW(nullptr), nullptr);
        OnTabbedDialogInit(page);
        RECT area{7, 11, 7 + row.width, 11 + row.height}, pane{};
        SendMessageW(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
        GetWindowRect(PaneOf(page), &pane);
        MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&pane), 2);
        const int margin = MulDiv(LOWORD(GetDialogBaseUnits()), 36, 4);
        EXPECT_EQ(area.left + (row.fitted ? margin / 2 : 0), pane.left) << row.width;
        EXPECT_EQ(area.top, pane.top) << row.width;
        EXPECT_EQ(row.fitted ? row.width - margin / 2 - 20 : area.right - area.left + 1,
                  pane.right - pane.left);
        EXPECT_EQ(row.fitted ? row.height - 30 : area.bottom - area.top + 1, pane.bottom - pane.top);
        ReleaseTabs(page);
        EXPECT_FALSE(PaneOf(page));
        DestroyWindow(page);
    }
}

TEST_F(PageProcedure, ShowsAnOemLogoInAReducedGui)
{
    // The logo is any bitmap file below "oem" of the configuration directory.
    const TempFile place("logos");
    const std::string& config = place.path;
    CreateDirectoryA(config.c_str(), nullptr);
    CreateDirectoryA((config + "\\oem").c_str(), nullptr);
    const std::string name = "logo.bmp";
    WriteBitmapFile(config + "\\oem\\" + name);
    const ConfigDirValue value(config);
    struct
    {
        int guiMode;
        std::string file;
        bool tried, logo;
    } const cases[] = {
        {0, name, false, false},
        {1, name, true, true},
        {2, name, true, true},
        {4, name, false, false},
        {6, name, false, false},
        {1, "missing.bmp", true, false},
        {1, "", true, false},
        {1, std::string(249 - config.size(), 'x'), true, false}, // directory and name: below 250
        {1, std::string(250 - config.size(), 'x'), false, false},
    };
    for (const auto& row : cases) {
        GuiChoice gui{row.guiMode, {}};
        row.file.copy(gui.oemLogoFileName, 255);
        Process().gui.Set(gui);
        trace.Take();
        sheet.Open(kMain);
        const std::string told = ("UI:  Load OEMlogo path= " + config + "\\oem\\" + row.file).substr(0, 260);
        EXPECT_EQ(row.tried ? "" : told, Missing({told})) << row.guiMode << row.file;
        EXPECT_EQ(row.logo, Picture(sheet.Control(kMain, 1238)) != nullptr) << row.guiMode << row.file;
        DestroyWindow(sheet.Page(kMain));
    }
    DeleteFileA((config + "\\oem\\" + name).c_str());
    RemoveDirectoryA((config + "\\oem").c_str());
    RemoveDirectoryA(config.c_str());
}

TEST(PageCentring, MovesTheReferenceControlToTheMiddle)
{
    const std::pair<RECT, int> cases[] = {
        {{20, 0, 319, 9}, 70},
        {{20, 0, 479, 9}, -10},
        {{20, 0, 320, 9}, 69}, // 159 / 2 truncates
        {{20, 0, 520, 9}, -30},
    };
    for (const LONG left : {0, 100}) // of the sheet on the screen
        for (auto [control, move] : cases) {
            control.left += left;
            control.right += left;
            EXPECT_EQ(move, CentringMove(control, {left + 10, 0, left + 489, 9}, {left, 0, left + 499, 9}));
        }
}

TEST_F(PageProcedure, CentresAPageInAWiderSheet)
{
    MoveWindow(sheet.sheet, 0, 0, 1200, 600, FALSE);
    sheet.Open(kMain, 106);
    const HWND page = sheet.Page(kMain);
    const HWND frame = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_CHILD, 10, 20, 100, 14, page,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(1159)), nullptr, nullptr);
    trace.Take();
    CentrePage(page, 1159);
    RECT place{};
    GetWindowRect(frame, &place);
    MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&place), 2);
    // The page begins at the sheet's left edge: (1201 - 20 - 101) / 2 - 10.
    EXPECT_EQ(10 + 530, place.left);
    EXPECT_EQ(20, place.top);
    EXPECT_EQ(101, place.right - place.left);
    EXPECT_EQ(15, place.bottom - place.top);
    EXPECT_TRUE(trace.Contains(TEXT("**MOVE by 530 Pixels\n")));
    CentrePage(page, 4711);
}

class InformationPages : public PageProcedure
{
protected:
    InformationPages() { page_.lParam = reinterpret_cast<LPARAM>(&device_); }

    HWND OpenPage()
    {
        return CreateDialogParamW(Process().module, MAKEINTRESOURCEW(IDD_INFORMATION), sheet.sheet,
                                  &DevicePageProc, reinterpret_cast<LPARAM>(&page_));
    }
    static void ExpectPictures(HWND window, const char* when)
    {
        for (const auto& [id, width, height] :
             {std::array{1062, 116, 23}, {1063, 180, 38}, {1066, 128, 64}}) {
            BITMAP picture{};
            GetObjectW(Picture(GetDlgItem(window, id)), sizeof picture, &picture);
            EXPECT_EQ(width, picture.bmWidth) << when << id;
            EXPECT_EQ(height, picture.bmHeight) << when << id;
        }
    }

private:
    SheetRecord device_{};
    PROPSHEETPAGEW page_{};
};

TEST_F(InformationPages, ShowPicturesAndVersions)
{
    const HWND window = OpenPage();
    ExpectPictures(window, "alone ");
    EXPECT_EQ(TEXT("Version: unknown"), TextOf(GetDlgItem(window, 1070)));
    EXPECT_EQ(TEXT("[ drv: unknown / pscript: unknown / psui: unknown ]"), TextOf(GetDlgItem(window, 1071)));
    NMHDR apply{window, 0, PSN_APPLY};
    EXPECT_EQ(0, DevicePageProc(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply)));
    EXPECT_EQ(0, DevicePageProc(window, WM_NULL, 1214, 0));
    EXPECT_TRUE(trace.Contains(TEXT("UI:  INIT device\r\n")));
    DestroyWindow(window);
}

TEST_F(InformationPages, KeepTheirPicturesWhileOthersComeAndGo)
{
    int slots[2];
    for (int& freed : slots) {
        const HWND first = OpenPage(), second = OpenPage();
        ExpectPictures(first, "a second page opened ");
        sheet.Open(kMain);
        DestroyWindow(sheet.Page(kMain)); // the slots of the process are released
        ExpectPictures(first, "a main page ended ");
        ExpectPictures(second, "a main page ended ");
        const HWND third = OpenPage();
        DestroyWindow(second);
        ExpectPictures(first, "the second page ended ");
        DestroyWindow(first);
        ExpectPictures(third, "the first page ended ");
        DestroyWindow(third);
        freed = UseOfProcess().gdiObjects;
        sheet.Open(kMain);
        DestroyWindow(sheet.Page(kMain));
        freed -= UseOfProcess().gdiObjects;
    }
    EXPECT_EQ(3, slots[1]);
}

} // namespace
} // namespace tintwerk
