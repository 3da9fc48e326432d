// What the pages do at once when the user touches a control.
#include "src/pages/page_events.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "src/bindings/sliders.h"
#include "src/features/constraints.h"
#include "src/features/popup_filling.h"
#include "tests/pages/page_test.h"
#include "tests/support/message_boxes.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

using PageEvents = PageTest;

TEST_F(PageEvents, TheBorderlessBoxFollowsThePageSize)
{
    sheet.Open(kMain);
    // The item of the popup, which hides A4's twin; what the box is then, -1: as it was.
    const std::tuple<const char*, int, bool, bool, int> cases[] = {{"borderless only", 2, true, false, 1},
                                                                   {"with a twin", 0, true, true, -1},
                                                                   {"without a twin", 1, true, false, 0},
                                                                   {"custom", 3, false, true, 0}};
    const HWND box = sheet.Control(kMain, 1123);
    for (const bool before : {false, true}) {
        for (const auto& [size, item, shown, enabled, then] : cases) {
            SendMessageW(box, BM_SETCHECK, before, 0);
            trace.Take();
            sheet.Choose(kMain, 1022, item);
            const bool checked = then < 0 ? before : then != 0;
            EXPECT_EQ(shown, Shown(box)) << size;
            EXPECT_EQ(enabled, Enabled(box)) << size;
            EXPECT_EQ(checked, Checked(box)) << size;
            for (const int expansion : {1217, 1227, 1228, 1229})
                EXPECT_EQ(checked, Shown(sheet.Control(kMain, expansion))) << size << expansion;
            EXPECT_EQ("", Missing({"Change in PageSize: BLOption=" + std::to_string(enabled) +
                                   ", BLFormat=" + std::to_string(checked) + " Ctrl="}));
            EXPECT_FALSE(sheet.context.pageSizes.borderless) << "waits for the apply";
        }
    }
    EXPECT_EQ(0, sheet.core.Count("SetOptions"));
    for (const bool borderless : {true, false}) {
        sheet.Check(kMain, 1123, borderless);
        EXPECT_EQ(borderless, sheet.context.pageSizes.borderless);
        EXPECT_EQ(borderless, Shown(sheet.Control(kMain, 1217)));
    }
}

TEST_F(PageEvents, ThePageSizeShowsItsFormInWholeMillimetres)
{
    static SIZEL formSize; // 0: the spooler has no such form
    static Text asked;
    ReplaceFunction(
        "GetFormW",
        +[](HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
             WINAPI -> BOOL {
            EXPECT_TRUE(printer == reinterpret_cast<HANDLE>(0x4711) && level == 1 && size == 1024);
            asked = name;
            *needed = 2000;
            if (formSize.cx == 0) return FALSE;
            *reinterpret_cast<FORM_INFO_1W*>(buffer) = {0, const_cast<LPWSTR>(TEXT("A4 form")), formSize, {}};
            return TRUE;
        });
    sheet.core.features["PageSize"].names = {{"Letter", Text(127, 'f')}, {"PhotoBorderless", Text(128, 'f')}};
    sheet.context.core.printer = reinterpret_cast<HANDLE>(0x4711);
    sheet.Open(kMain);
    const std::pair<SIZEL, std::string> cases[] = {{{210000, 297000}, "(210 x 297 mm)"},
                                                   {{215900, 279400}, "(216 x 279 mm)"},
                                                   {{499, 500}, "(0 x 1 mm)"},
                                                   {{2147483647, -1600}, "(2147484 x -1 mm)"}};
    for (const auto& [size, text] : cases) {
        formSize = size;
        trace.Take();
        sheet.Choose(kMain, 1022, 0);
        EXPECT_EQ(Text(text.begin(), text.end()), TextOf(sheet.Control(kMain, 1224)));
        EXPECT_EQ("", Missing({"ComboBox PageSize - Selection = [A4]\n",
                               "ComboBox PageSize - GetForm result = 1\n", "Form:A4 form " + text + "\n\n"}));
    }
    formSize = {};
    const std::pair<int, size_t> names[] = {{0, 4}, {1, 127}, {2, 0}, {-1, 0}}; // 128 characters are too many
    for (const auto& [item, length] : names) {
        asked.clear();
        sheet.Choose(kMain, 1022, item);
        EXPECT_EQ(length, asked.size()) << item;
        EXPECT_EQ(TEXT("(2147484 x -1 mm)"), TextOf(sheet.Control(kMain, 1224))) << "stays";
    }
    EXPECT_EQ("", Missing({"ComboBox PageSize - GetForm result = 0\n",
                           "** GetForm failed - cbNeeded = 2000 (1024)\n"}));
    RestoreFunction("GetFormW");
}

TEST_F(PageEvents, ChoicesThatDecideOthersAreWrittenAtOnce)
{
    sheet.Open(kMain);
    sheet.Open(kColors);
    const std::tuple<int, int, int, const char*, const char*, PopupRow> cases[] = {
        {kMain, 1072, 0, "Resolution", "360", kPopupResolution},
        {kMain, 1073, 0, "MediaType", "Plain_0", kPopupMediaType},
        {kMain, 1075, 1, "halvCartridgeType", "Special", kPopupCartridge},
        {kColors, 1111, 1, "halvIntent", "photo_0", kPopupIntent}};
    for (const auto& [position, popup, item, feature, option, row] : cases) {
        sheet.core.calls.clear();
        sheet.Choose(position, popup, item);
        EXPECT_EQ(option, sheet.core.features[feature].selected);
        EXPECT_EQ(1, sheet.core.Count("SetOptions")) << feature;
        EXPECT_EQ(2, sheet.core.Count("EnumConstrainedOptions")) << "media types and resolutions are checked";
        EXPECT_STREQ(
            option,
            FindSelected(PopupList(sheet.context, row), sheet.context.popups.selections[row])->keyword);
    }
}

TEST_F(PageEvents, ANewMediaTypeRefillsThePopupsOfAnOpenColourPage)
{
    sheet.Open(kMain);
    sheet.Choose(kMain, 1073, 0); // without colours page
    sheet.Open(kColors);
    EXPECT_EQ(2, SendMessageW(sheet.Control(kColors, 1111), CB_GETCOUNT, 0, 0))
        << "the intent of mode 3 is left out";
    sheet.Choose(kMain, 1073, 1);
    EXPECT_EQ(3, SendMessageW(sheet.Control(kColors, 1111), CB_GETCOUNT, 0, 0));
}

TEST_F(PageEvents, WarnAboutAnIncompleteProfileOncePerChoice)
{
    MessageBoxes boxes;
    sheet.Open(kMain);
    // An incomplete profile, another popup, chosen again, a complete profile.
    for (const auto& [popup, item, warnings] :
         {std::tuple{1073, 2, 1u}, {1072, 0, 1u}, {1073, 2, 2u}, {1073, 1, 2u}}) {
        sheet.Choose(kMain, popup, item);
        ASSERT_EQ(warnings, boxes.shown.size());
    }
    EXPECT_EQ(sheet.sheet, boxes.shown[0].owner);
    EXPECT_EQ(TEXT("Attention:"), boxes.shown[0].caption);
    EXPECT_EQ(TEXT("You have chosen an incomplete media profile without color data! This profile should only "
                   "be used for printing color charts!"),
              boxes.shown[0].text);
    EXPECT_EQ(static_cast<UINT>(MB_OK | MB_ICONWARNING | MB_SYSTEMMODAL), boxes.shown[0].type);
}

TEST_F(PageEvents, ColourModelHalftoneAndColourGammaDecideAboutOtherControls)
{
    sheet.core.features["halvScreenmode"].selected = "a";
    sheet.Open(kColors);
    sheet.Open(kScreenPrinting);
    for (const int item : {1, 0, 2}) {
        sheet.Choose(kColors, 1273, item);
        EXPECT_EQ(item + 1, sheet.context.popups.selections[kPopupColorModel]);
        EXPECT_EQ(item == 0, Shown(sheet.Control(kColors, 1113))) << item;
        EXPECT_EQ(item != 0, Shown(sheet.Control(kColors, 1112))) << item;
        const std::string model = std::array{"RGB", "CMYK", "CMYKproof"}[static_cast<size_t>(item)];
        EXPECT_EQ("", Missing({"colmode=" + std::to_string(item + 1) + "\n", "colmodename=" + model + "\n",
                               model.substr(0, item ? 4 : 3) + "-Mode - " + model + "\n"}));
        sheet.Choose(kScreenPrinting, 1257, item);
        EXPECT_EQ(item == 0, Shown(sheet.Control(kScreenPrinting, 1244))) << item;
        EXPECT_EQ(item == 0, Shown(sheet.Control(kScreenPrinting, 1274))) << item;
    }
    // A box that no template has yet.
    const HWND page = sheet.Open(kCorrection);
    sheet.context.checkBoxes.windows[kCheckColorGamma] =
        CreateWindowExW(0, WC_BUTTONW, TEXT(""), WS_CHILD | BS_AUTOCHECKBOX, 0, 0, 9, 9, page,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(12342)), nullptr, nullptr);
    for (const bool check : {false, true}) {
        sheet.Check(kCorrection, 12342, check);
        EXPECT_EQ(check, Enabled(sheet.context.sliders.windows[kSliderAdjustK]));
    }
}

TEST_F(PageEvents, ScreenPrintingTakesTheColourPagesAway)
{
    for (int position = 0; position < kPageKinds; ++position)
        sheet.Open(position);
    sheet.sheetPages = {
        nullptr, nullptr, sheet.Page(kColors), sheet.Page(kCorrection), nullptr, sheet.Page(kInkControl)};
    SetFocus(sheet.Control(kScreenPrinting, 1118));
    for (const bool on : {true, false, true}) {
        sheet.Check(kScreenPrinting, 1118, on);
        EXPECT_EQ(sheet.Control(kScreenPrinting, 1118), GetFocus()) << "the keyboard stays there";
        EXPECT_EQ(on, Current().checkBoxes[kCheckScreenPrinting] != 0);
        EXPECT_EQ(!on, Enabled(sheet.Control(kColors, 1111)));
        EXPECT_EQ(!on, Enabled(sheet.Control(kCorrection, 1172)));
        EXPECT_EQ(!on, Enabled(sheet.Control(kInkControl, 1401)));
        EXPECT_TRUE(Enabled(sheet.Control(kMain, 1073)));
        EXPECT_TRUE(Enabled(sheet.Control(kScreenPrinting, 1118))) << "the way back";
        EXPECT_EQ(on, Enabled(sheet.Control(kScreenPrinting, 1257)));
        EXPECT_FALSE(Enabled(sheet.Control(kScreenPrinting, 1240))) << "cartridges wait for multi-black";
    }
    for (const bool multiBlack : {true, false}) {
        sheet.Check(kScreenPrinting, 1239, multiBlack);
        for (const int cartridge : {1240, 1241, 1261, 1286})
            EXPECT_EQ(multiBlack, Enabled(sheet.Control(kScreenPrinting, cartridge))) << cartridge;
        EXPECT_TRUE(Enabled(sheet.Control(kScreenPrinting, 1243))) << "nothing changes behind a missing one";
    }
}

TEST_F(PageEvents, WhatMediaAndColourModelRuleOutStaysOffWhateverScreenPrintingDoes)
{
    sheet.core.features["MediaType"].selected = "Plain_0";
    sheet.core.features["halvColorModel"].selected = "CMYK";
    for (int position = 0; position < kPageKinds; ++position)
        sheet.Open(position);
    sheet.sheetPages = {
        nullptr, nullptr, sheet.Page(kColors), sheet.Page(kCorrection), nullptr, sheet.Page(kInkControl)};
    EXPECT_FALSE(Shown(sheet.Control(kColors, 1113)));
    EXPECT_TRUE(Shown(sheet.Control(kColors, 1112)));
    for (const char* const when : {"opened", "after screen printing"}) {
        for (const int slider : {1499, 1400, 1498})
            EXPECT_FALSE(Enabled(sheet.Control(kInkControl, slider))) << when << slider;
        sheet.Check(kScreenPrinting, 1118, true);
        sheet.Check(kScreenPrinting, 1118, false);
    }
}

TEST_F(PageEvents, SimulatingTheNextJobLeavesTheScreenPrintingModeAlone)
{
    sheet.Open(kColors);
    sheet.sheetPages[2] = sheet.Page(kColors);
    sheet.Open(kConsumption);
    for (const bool simulate : {true, false}) { // a box of the same number
        sheet.Check(kConsumption, 1118, simulate);
        EXPECT_EQ(0, Current().checkBoxes[kCheckScreenPrinting]);
        EXPECT_TRUE(Enabled(sheet.Control(kColors, 1111)));
    }
}

TEST_F(PageEvents, ControlsFollowTheMediaMode)
{
    for (int position = 0; position < kPageKinds; ++position)
        sheet.Open(position);
    SheetContext& context = sheet.context;
    const auto enabled = [&](int row) { return Enabled(context.sliders.windows[row]); };
    for (int mode = 0; mode <= 9; ++mode) {
        SCOPED_TRACE(mode);
        const std::string media = "Media_" + std::to_string(mode);
        context.options->lists[kPopupMediaType][1].keyword = media.c_str(); // the selected one
        UpdateMediaModeControls(context, 0);
        EXPECT_EQ(mode >= 4, enabled(kSliderUcr));
        EXPECT_EQ(mode >= 5, enabled(kSliderBrightC));
        EXPECT_EQ(mode >= 6, enabled(kSliderBrightM));
        for (int row = 0; row < kSliderBorderlessExpand; ++row)
            EXPECT_TRUE(enabled(row) == (mode != 2) || (row >= kSliderUcr && row <= kSliderBrightM)) << row;
        EXPECT_TRUE(enabled(kSliderBorderlessExpand));
        const std::set<int> untouched{kPopupMediaType, kPopupPageSize, kPopupInputSlot, kPopupOutputBin,
                                      kPopupColorModel};
        for (int row = 0; row < kPopupHalftone; ++row)
            EXPECT_EQ(mode != 2 || untouched.contains(row), Enabled(context.popups.windows[row])) << row;
        for (const int id : {1201, 1211, 1206, 1192, 1403, 1226, 1400}) // the bright magenta column
            EXPECT_EQ(mode != 5, Shown(sheet.Control(kInkControl, id))) << id;
        EXPECT_EQ(mode != 5, Shown(context.inkControl.brightCyanIcon));
        EXPECT_EQ(mode == 5, Shown(context.inkControl.photoIcon));
        EXPECT_EQ(mode == 5 ? TEXT("Bright Inks\nUsage") : TEXT("Bright Cyan\nUsage"),
                  TextOf(context.inkControl.brightCyanLabel));
    }
}

TEST_F(PageEvents, PagesComeUpWhateverTheCoreDriverAnswers)
{
    const FakeCore::Answer answers[] = {{S_OK, ""},
                                        {S_OK, std::string(1, '\0')},
                                        {S_OK, std::string("A4\0Letter", 9)},
                                        {S_OK, std::string(20'000, 'x'), 0xFFFFFFFF},
                                        {S_OK, List({"A4", "Letter"}), 3},
                                        {S_FALSE, List({"A4"})},
                                        {E_OUTOFMEMORY, "", 1},
                                        {E_OUTOFMEMORY, List(std::vector<std::string>(10'000, "option"))}};
    for (const char* method :
         {"EnumOptions", "GetOptions", "GetOptionAttribute", "EnumConstrainedOptions", "WhyConstrained"})
        for (const FakeCore::Answer& answer : answers) {
            OpenSheet other;
            other.core.answers["EnumConstrainedOptions"] = {S_OK, List({"Plain_0", "360"})};
            other.core.answers[method] = answer;
            other.Open(kMain);
            other.Open(kColors);
            other.Choose(kMain, 1073, 0);
            EXPECT_TRUE(Shown(other.Control(kMain, 1073))) << method << answer.bytes.size();
        }
}

TEST_F(PageEvents, ResetButtonZeroesTheCounters)
{
    MessageBoxes boxes;
    const TempFile file("events.ink", "LastInk_K=200\n");
    lstrcpyA(sheet.context.inkFilePath, file.path.c_str());
    sheet.Open(kConsumption);
    for (const auto& [answer, shown] : {std::pair{IDCANCEL, TEXT("2")}, {IDOK, TEXT("0")}}) {
        boxes.answer = answer;
        sheet.Command(kConsumption, 1214, BN_CLICKED);
        EXPECT_EQ(shown, TextOf(GetDlgItem(sheet.context.pages[kConsumption], 3111)));
    }
    EXPECT_EQ("[Tintwerk_Ink_Info]\r\n[Last]\r\nLastInk_K=0\r\n", file.Content());
}

} // namespace
} // namespace tintwerk
