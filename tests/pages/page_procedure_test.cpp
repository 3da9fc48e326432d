// The dialog procedure of the pages: which message does what, what it answers, and what the sheet hears of
// it.
#include "src/pages/page_procedure.h"

#include <gtest/gtest.h>

#include <tuple>

#include "src/features/page_settings.h"
#include "src/pages/consumption_tabs.h"
#include "src/pages/page_centring.h"
#include "src/resources/control_ids.h"
#include "tests/pages/page_test.h"
#include "tests/support/installed_value.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

class PageProcedure : public PageTest
{
protected:
    INT_PTR Send(int position, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return DocumentPageProc(sheet.Page(position), message, wParam, lParam);
    }
    static Text TabNames(HWND tabs)
    {
        Text names;
        for (LRESULT tab = 0; tab < SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0); ++tab) {
            WCHAR text[64] = {};
            TCITEMW item{};
            item.mask = TCIF_TEXT | TCIF_IMAGE;
            item.pszText = text;
            item.cchTextMax = 64;
            SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(-1, item.iImage);
            names += Text(text) + TEXT("|");
        }
        return names;
    }
};

TEST_F(PageProcedure, AnswersItsMessages)
{
    sheet.Open(kMain);
    EXPECT_EQ("", Missing({"UI:  DevicePropPageProc - INIT - (0x", "UI:  \nINIT - xpos2=", "**MOVE by ",
                           "UI:  INIT document 0x", "UI:  \n!!!MyEmbedControls!!! - idx=1 - window=",
                           "DLGINDEX=1 (2)\n", "----- TRANSLAGE DLGPAGE dlgidx is 1\n"}));
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
    const HWND page = sheet.Open(kMain);
    sheet.record.context = nullptr;
    NMHDR apply{page, 0, PSN_APPLY};
    for (const LPARAM entry : {LPARAM{0}, reinterpret_cast<LPARAM>(&sheet.record.pages[1])}) {
        SetWindowLongPtrW(page, GWLP_USERDATA, entry);
        EXPECT_EQ(0, Send(kMain, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply)));
        EXPECT_EQ(0, Send(kMain, WM_COMMAND, 1073));
    }
    EXPECT_EQ(0, Send(kMain, WM_INITDIALOG));
    EXPECT_EQ(0u, sheet.devmode.applyCount);
}

TEST_F(PageProcedure, MarksThePageChangedForEveryAcceptedCommand)
{
    sheet.Open(kMain);
    const std::tuple<int, int, int> cases[] = {
        {1073, CBN_SELENDOK, 1}, {1073, CBN_DROPDOWN, 0}, {1073, CBN_CLOSEUP, 0}, {1073, CBN_SELCHANGE, 0},
        {1123, BN_CLICKED, 1},   {12346, BN_CLICKED, 1},  {1161, STN_CLICKED, 1}};
    for (const auto& [id, code, changes] : cases) {
        sheet.changes = 0;
        trace.Take();
        sheet.Command(kMain, id, code);
        EXPECT_EQ(changes, sheet.changes) << id << '/' << code;
        const std::string told = "\n!!!COMMAND - ID=" + std::to_string(id) + "\n";
        EXPECT_EQ(changes ? "" : told, Missing({told})) << id << '/' << code;
    }
}

TEST_F(PageProcedure, FollowsTheSliders)
{
    sheet.Open(kMain);
    sheet.Open(kColors);
    sheet.Open(kScreenPrinting);
    const std::tuple<int, int, int, int, Text> cases[] = {
        {kMain, 1232, 1093, -10, TEXT("50%")},
        {kScreenPrinting, 1255, 1256, 10, TEXT("400%")},
        {kColors, 1186, 1191, 6, TEXT("D50")}}; // a vertical slider has its least value at the bottom
    for (const auto& [position, id, label, at, text] : cases) {
        sheet.changes = 0;
        const HWND slider = sheet.Control(position, id);
        SendMessageW(slider, TBM_SETPOS, TRUE, at);
        EXPECT_EQ(0, Send(position, WM_HSCROLL, TB_THUMBTRACK, reinterpret_cast<LPARAM>(slider)));
        EXPECT_EQ(text, TextOf(sheet.Control(position, label))) << id << '/' << at;
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

using Strings = std::vector<std::string>;

class Apply : public PageTest
{
protected:
    // The selections that an apply writes.
    Strings Written(int position)
    {
        sheet.core.written.clear();
        trace.Take();
        EXPECT_EQ(1, sheet.Notify(position, 0, PSN_APPLY));
        return sheet.core.written;
    }
    void SetCheck(int position, int id, bool check)
    {
        SendMessageW(sheet.Control(position, id), BM_SETCHECK, check ? BST_CHECKED : BST_UNCHECKED, 0);
    }
};

TEST_F(Apply, WritesItsOwnPageInTheOrderOfTheTablesAndEveryCheckBox)
{
    sheet.Open(kColors);
    SendMessageW(sheet.Control(kColors, 1186), TBM_SETPOS, TRUE, 6); // a vertical one
    EXPECT_EQ((Strings{"halvIntent=photo_0", "halvColorModel=RGB", "halvDithering=fine",
                       "halvColorspace=sRGB", "halvCMYKspace=FOGRA", "halvRefLight=50", "halvGamut=0",
                       "halvShadows=0", "halvGreyToneA=0", "halvGreyToneB=0"}),
              Written(kColors));
    EXPECT_EQ("", Missing({"UI:  !!!APPLY BUTTON !!!\r\n", "--- tabpage = 1 ---\n",
                           "Setting PPDOptions for dlgpage bits 2\n"}));
    EXPECT_EQ(1u, sheet.devmode.applyCount);
    EXPECT_EQ(Strings{std::to_string(CPSFUNC_SET_RESULT) + " 4711 1"}, sheet.sheetCalls);
    EXPECT_EQ(PSNRET_NOERROR, GetWindowLongPtrW(sheet.Page(kColors), DWLP_MSGRESULT));
    sheet.devmode.applyCount = 0xFFFFFFFF;

    sheet.Open(kMain);
    sheet.Open(kScreenPrinting);
    SendMessageW(sheet.Control(kMain, 1232), TBM_SETPOS, TRUE, -3);
    SendMessageW(sheet.Control(kMain, 1072), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    SetCheck(kScreenPrinting, 1240, false);
    Strings written = Written(kMain);
    EXPECT_EQ("halvScreenCartridge0=0", written.at(10)) << "a box of another page that is open";
    written.resize(10);
    EXPECT_EQ((Strings{"halvCartridgeType=Standard", "MediaType=Photo_6", "PageSize=A4", "InputSlot=Sheet",
                       "OutputBin=Rear", "halvBrightness=-15", "halvContrast=0", "halvIntensity=0",
                       "halvBorderlessExpand=2", "halvPreview=1"}),
              written);
    EXPECT_EQ(0u, sheet.devmode.applyCount);
    EXPECT_EQ(0, Current().checkBoxes[kCheckCartridge0]);
    EXPECT_EQ("",
              Missing({"SAVE PPD: PAGESIZE selection = 1\n", "SetOption 'MediaType'='Photo_6' result = 0\n",
                       "Set PPD Feature '*MediaType' to 'Photo_6'\n",
                       "SetOption 'halvContrast'='0' result = -2147024809\n"}));
}

TEST_F(Apply, WritesNothingOfAPageThatWasNeverOpened)
{
    sheet.Read();
    Current().checkBoxes[kCheckScreenPrinting] = 1;
    SavePPDOptions(sheet.context, kMainPage);
    EXPECT_EQ(Strings{}, sheet.core.written);
    EXPECT_EQ(2, sheet.context.popups.selections[kPopupMediaType]);
    EXPECT_EQ(1, Current().checkBoxes[kCheckScreenPrinting]);
}

TEST_F(Apply, WritesTheTwinOfTheShownSizeWhereTheBorderlessBoxIsChecked)
{
    sheet.Open(kMain);
    const std::tuple<int, bool, const char*> cases[] = {{0, false, "PageSize=A4"},
                                                        {1, true, "PageSize=Letter"},
                                                        {2, true, "PageSize=PhotoBorderless"},
                                                        {0, true, "PageSize=A4Borderless"}};
    for (const auto& [item, borderless, written] : cases) {
        sheet.Choose(kMain, 1022, item);
        SetCheck(kMain, 1123, borderless);
        EXPECT_EQ(1, std::ranges::count(Written(kMain), written)) << written;
        EXPECT_EQ(item, SendMessageW(sheet.Control(kMain, 1022), CB_GETCURSEL, 0, 0)) << "keeps its item";
    }
    EXPECT_EQ("", Missing({"SAVE PPD: PAGESIZE selection = 1\n", "SAVE PPD: BORDERLESS is available\n",
                           "SAVE PPD: changed pagesize to selection #2\n"}));
}

TEST_F(Apply, CombinesTwoBoxesAndTheHalftoneToTheScreenMode)
{
    const auto screenMode = [](const Strings& written) {
        const auto found = std::ranges::find_if(
            written, [](auto& selection) { return selection.starts_with("halvScreenmode="); });
        return found == written.end() ? "" : *found;
    };
    sheet.Open(kScreenPrinting);
    const std::tuple<bool, bool, int, std::string> cases[] = {
        // the halftone's item, -1: none
        {false, true, 2, "off"}, {true, false, 0, "a"}, {true, true, 0, "b"}, {true, false, 1, "c"},
        {true, true, 1, "d"},    {true, false, 2, "e"}, {true, true, 2, "f"}, {true, true, -1, ""}};
    for (const auto& [on, multiBlack, item, mode] : cases) {
        SendMessageW(sheet.Control(kScreenPrinting, 1257), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        SetCheck(kScreenPrinting, 1118, on);
        SetCheck(kScreenPrinting, 1239, multiBlack);
        const Strings written = Written(kScreenPrinting);
        EXPECT_EQ(mode.empty() ? "" : "halvScreenmode=" + mode, screenMode(written));
        EXPECT_EQ(
            (Strings{"halvScreenLPI2=15", "halvScreenLPI=44", "halvScreenAngle2=25", "halvScreenAngle=35"}),
            Strings(written.end() - 4, written.end()));
        EXPECT_EQ("", Missing({mode.empty() ? "" : "Set PPD Feature '*halvScreenmode' to '" + mode + "'\n",
                               "Set PPD Number Feature 'halvScreenAngle' to '25' and '35'\n"}));
        EXPECT_EQ(on, Current().checkBoxes[kCheckScreenPrinting]);
        EXPECT_EQ(multiBlack, Current().checkBoxes[kCheckMultiBlack]);
    }
    sheet.context.options->lists[kPopupScreenMode][2].keyword = nullptr; // a mode beyond the printer's list
    SendMessageW(sheet.Control(kScreenPrinting, 1257), CB_SETCURSEL, 2, 0);
    EXPECT_EQ("", screenMode(Written(kScreenPrinting)));
}

TEST_F(PageProcedure, StepsANumberFieldWithItsSpinControl)
{
    sheet.Open(kScreenPrinting);
    const HWND spin = sheet.Control(kScreenPrinting, 1252);
    const HWND edit = sheet.Control(kScreenPrinting, 1251);
    // What is typed, the position, the delta, what is shown, and where the arrows land behind the delta.
    const std::tuple<const char*, const WCHAR*, int, int, Text, int> cases[] = {
        {"up", TEXT("37.5"), 375, 5, TEXT("38.0"), 380},
        {"down", TEXT("38.0"), 380, -5, TEXT("37.5"), 375},
        {"at the top", TEXT("180.0"), 1800, 5, TEXT("180.0"), 1805},
        {"at the bottom", TEXT("0.0"), 0, -5, TEXT("0.0"), -5},
        {"the typed number counts", TEXT("90"), 100, 5, TEXT("90.5"), 905},
        {"or the position when it is none", TEXT("x"), 100, 5, TEXT("10.5"), 105},
        {"a held button counts as one click", TEXT("10"), 100, 50, TEXT("10.5"), 105},
        {"no direction is down", TEXT("10"), 100, 0, TEXT("9.5"), 95}};
    for (const auto& [what, typed, at, delta, shown, position] : cases) {
        SetWindowTextW(edit, typed);
        SendMessageW(spin, UDM_SETPOS32, 0, at);
        sheet.changes = 0;
        trace.Take();
        NMUPDOWN notification{{spin, 1252, UDN_DELTAPOS}, at, delta};
        EXPECT_EQ(1, Send(kScreenPrinting, WM_NOTIFY, 1252, reinterpret_cast<LPARAM>(&notification)));
        EXPECT_EQ(shown, TextOf(edit)) << what;
        EXPECT_EQ(position, SendMessageW(spin, UDM_GETPOS32, 0, 0) + delta) << what;
        EXPECT_LE(1, sheet.changes) << what;
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
    const std::tuple<const WCHAR*, Text, int> cases[] = {
        {TEXT("12.5"), TEXT("12.5"), 125},  {TEXT("12,5"), TEXT("12.0"), 120},
        {TEXT("200"), TEXT("150.0"), 1500}, {TEXT("letters"), TEXT("150.0"), 1500},
        {TEXT(""), TEXT("150.0"), 1500},    {TEXT("-7"), TEXT("10.0"), 100}};
    for (const auto& [typed, shown, value] : cases) {
        SetWindowTextW(edit, typed);
        sheet.Command(kScreenPrinting, 1244, EN_KILLFOCUS);
        EXPECT_EQ(shown, TextOf(edit));
        EXPECT_EQ(value, sheet.context.numberFields.values[0]);
        EXPECT_EQ(value, SendMessageW(sheet.Control(kScreenPrinting, 1250), UDM_GETPOS32, 0, 0));
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
    EXPECT_EQ(TEXT("Last Job|Total Consumption|"), TabNames(tabs));
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
    InitStringTable("de");
    sheet.Open(kConsumption);
    EXPECT_EQ(TEXT("2"), TextOf(GetDlgItem(PaneOf(sheet.Page(kConsumption)), 3111))) << "on its first tab";
    EXPECT_EQ(TEXT("Letzter Druckjob|Gesamtverbrauch|"),
              TabNames(sheet.Control(kConsumption, IDC_CONSUMPTION_TABS)));
}

TEST_F(PageProcedure, PlacesThePaneInTheTabControl)
{
    constexpr int kHeight = 300;
    for (const int width : {600, 481, 480}) {
        const bool fitted = width > 480;
        const HWND page = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 800, 600, nullptr,
                                          nullptr, GetModuleHandleW(nullptr), nullptr);
        const HWND tabs = CreateWindowExW(0, WC_TABCONTROLW, TEXT(""), WS_CHILD, 7, 11, width, kHeight, page,
                                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_CONSUMPTION_TABS)),
                                          nullptr, nullptr);
        OnTabbedDialogInit(page);
        RECT area{7, 11, 7 + width, 11 + kHeight}, pane{};
        SendMessageW(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
        GetWindowRect(PaneOf(page), &pane);
        MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&pane), 2);
        const int margin = MulDiv(LOWORD(GetDialogBaseUnits()), 36, 4);
        EXPECT_EQ(area.left + (fitted ? margin / 2 : 0), pane.left) << width;
        EXPECT_EQ(area.top, pane.top) << width;
        EXPECT_EQ(fitted ? width - margin / 2 - 20 : area.right - area.left + 1, pane.right - pane.left);
        EXPECT_EQ(fitted ? kHeight - 30 : area.bottom - area.top + 1, pane.bottom - pane.top);
        ReleaseTabs(page);
        EXPECT_FALSE(PaneOf(page));
        DestroyWindow(page);
    }
}

TEST_F(PageProcedure, ShowsAnOemLogoInAReducedGui)
{
    // The logo is any bitmap file below "oem" of the configuration directory.
    const std::string config = TINTWERK_SOURCE_DIR "/samples/config";
    const InstalledValue value("ConfigDir", config);
    const std::string name = "logos\\tintwerk.bmp";
    const std::tuple<int, std::string, bool, bool> cases[] = {
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
    for (const auto& [guiMode, file, tried, logo] : cases) {
        GuiChoice gui{guiMode, {}};
        file.copy(gui.oemLogoFileName, 255);
        Process().gui.Set(gui);
        trace.Take();
        sheet.Open(kMain);
        const std::string told = ("UI:  Load OEMlogo path= " + config + "\\oem\\" + file).substr(0, 260);
        EXPECT_EQ(tried ? "" : told, Missing({told})) << guiMode << file;
        EXPECT_EQ(logo, Picture(sheet.Control(kMain, 1238)) != nullptr) << guiMode << file;
        DestroyWindow(sheet.Page(kMain));
    }
}

TEST_F(PageProcedure, CentresAPageInAWiderSheet)
{
    MoveWindow(sheet.sheet, 0, 0, 1200, 600, FALSE);
    const HWND page = sheet.Open(kMain, 106);
    const HWND frame = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_CHILD, 10, 20, 100, 14, page,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(1159)), nullptr, nullptr);
    CentrePage(page, 1159);
    RECT place{};
    GetWindowRect(frame, &place);
    MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&place), 2);
    // The page begins at the sheet's left edge: (1201 - 20 - 101) / 2 - 10.
    EXPECT_EQ(10 + 530, place.left);
    EXPECT_EQ(20, place.top);
    EXPECT_EQ(101, place.right - place.left);
    EXPECT_EQ(15, place.bottom - place.top);
    EXPECT_EQ("", Missing({"**MOVE by 530 Pixels\n"}));
    CentrePage(page, 4711); // a control that is not there
    const std::pair<LONG, int> cases[] = {{419, 70}, {579, -10}, {420, 69}, {620, -30}}; // 159 / 2 truncates
    for (const auto& [right, move] : cases)
        EXPECT_EQ(move, CentringMove({120, 0, right, 9}, {110, 0, 589, 9}, {100, 0, 599, 9}));
}

class InformationPages : public PageTest
{
protected:
    HWND OpenPage()
    {
        page_.lParam = reinterpret_cast<LPARAM>(&device_);
        return CreateDialogParamW(Process().module, MAKEINTRESOURCEW(IDD_INFORMATION), sheet.sheet,
                                  &DevicePageProc, reinterpret_cast<LPARAM>(&page_));
    }
    static void ExpectPictures(HWND window, const char* when)
    {
        for (const auto& [id, width, height] :
             {std::array{1062, 116, 23}, {1063, 180, 38}, {1066, 128, 64}}) {
            BITMAP picture{};
            GetObjectW(Picture(GetDlgItem(window, id)), sizeof picture, &picture);
            EXPECT_TRUE(picture.bmWidth == width && picture.bmHeight == height) << when << id;
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
    EXPECT_EQ("", Missing({"UI:  INIT device\r\n"}));
    DestroyWindow(window);
}

TEST_F(InformationPages, KeepTheirPicturesWhileOthersComeAndGo)
{
    const auto mainPage = [&] {
        sheet.Open(kMain);
        DestroyWindow(sheet.Page(kMain)); // the slots of the process are released
    };
    for (int round = 0; round < 2; ++round) {
        const HWND first = OpenPage(), second = OpenPage();
        ExpectPictures(first, "a second page opened ");
        mainPage();
        ExpectPictures(first, "a main page ended ");
        ExpectPictures(second, "a main page ended ");
        const HWND third = OpenPage();
        DestroyWindow(second);
        ExpectPictures(first, "the second page ended ");
        DestroyWindow(first);
        ExpectPictures(third, "the first page ended ");
        DestroyWindow(third);
        if (round == 0) mainPage();
    }
    const int before = UseOfProcess().gdiObjects;
    mainPage();
    EXPECT_EQ(before - 3, UseOfProcess().gdiObjects);
}

} // namespace
} // namespace tintwerk
