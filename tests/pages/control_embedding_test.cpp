// A page as it comes up: every control found, marked and set from what was read when the sheet opened.
#include "src/pages/control_embedding.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "src/bindings/cartridge_codes.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/number_fields.h"
#include "src/pages/page_controls.h"
#include "src/pages/slider_controls.h"
#include "tests/pages/page_test.h"
#include "tests/support/temp_file.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Embedding = PageTest;

TEST_F(Embedding, BindsTheControlsOfEveryTableRow)
{
    for (int position = 0; position < kPageKinds; ++position)
        sheet.Open(position);
    const SheetContext& context = sheet.context;
    for (int row = 0; row < kPopups; ++row) {
        ASSERT_TRUE(context.popups.windows[row]) << row;
        EXPECT_EQ(2009, GetWindowLongPtrW(context.popups.windows[row], GWLP_USERDATA)) << row;
    }
    for (const ControlBinding& slider : kSliderTable) {
        const HWND window = context.sliders.windows[&slider - kSliderTable.data()];
        ASSERT_TRUE(window) << slider.keyword;
        EXPECT_EQ(slider.minimum, SendMessageW(window, TBM_GETRANGEMIN, 0, 0)) << slider.keyword;
        EXPECT_EQ(slider.maximum, SendMessageW(window, TBM_GETRANGEMAX, 0, 0)) << slider.keyword;
        EXPECT_EQ(slider.labelId != 0, !TextOf(GetDlgItem(GetParent(window), slider.labelId)).empty())
            << slider.keyword;
        EXPECT_TRUE(IsBoundSlider(context, window));
    }
    for (int row = 0; row < kNumberFieldRows; ++row) {
        EXPECT_EQ(2012, GetWindowLongPtrW(context.numberFields.edits[row], GWLP_USERDATA));
        EXPECT_EQ(2012, GetWindowLongPtrW(context.numberFields.spins[row], GWLP_USERDATA));
        EXPECT_EQ(context.numberFields.values[row],
                  SendMessageW(context.numberFields.spins[row], UDM_GETPOS32, 0, 0));
    }
    for (int row = kCheckPreview; row < kCheckBoxRows; ++row)
        EXPECT_EQ(2011, GetWindowLongPtrW(context.checkBoxes.windows[row], GWLP_USERDATA)) << row;
    EXPECT_EQ(TEXT("45.5"), TextOf(context.numberFields.edits[0]));
    EXPECT_EQ("", Missing({"UI:  ---- INIT POPUP ----\n", "UI:  --- found #0: controlid=1075\n",
                           "UI:  FillPopUp #0 - id = 1075\n", "no Ghostscript available\n",
                           "UI:  Init popuplists - pageidx = 16\n"}));
    EXPECT_EQ(sheet.sheet, context.owner);
    EXPECT_EQ(sheet.Page(kMain), context.pages[kMain]);
    EXPECT_EQ(sheet.Page(kConsumption), GetParent(context.pages[kConsumption])) << "the pane";
}

TEST_F(Embedding, ShowsBorderlessPrintingAsThePpdHasIt)
{
    const std::tuple<const char*, bool, bool, Text> cases[] = {
        {"A4", false, true, TEXT("[A4]")},
        {"A4Borderless", true, true, TEXT("[A4]")},
        {"Letter", false, false, TEXT("[Letter]")},
        {"PhotoBorderless", true, false, TEXT("[PhotoBorderless]")}};
    for (const auto& [pageSize, checked, enabled, shownSize] : cases) {
        OpenSheet other;
        other.core.features["PageSize"].selected = pageSize;
        other.Open(kMain);
        EXPECT_EQ(checked, Checked(other.Control(kMain, 1123))) << pageSize;
        EXPECT_EQ(enabled, Enabled(other.Control(kMain, 1123))) << pageSize;
        EXPECT_EQ(shownSize, other.Chosen(kMain, 1022));
        for (const int expansion : {1217, 1227, 1228, 1229})
            EXPECT_EQ(checked, Shown(other.Control(kMain, expansion))) << pageSize << expansion;
    }
}

TEST_F(Embedding, LeavesOutTheCartridgePopupOfASingleCartridge)
{
    for (const char* cartridges : {"Standard Special", "Standard", ""}) {
        OpenSheet other;
        other.core.Offer("halvCartridgeType", cartridges, "Standard");
        other.Open(kMain);
        const bool choice = other.core.features["halvCartridgeType"].options.size() > 1;
        EXPECT_EQ(choice, Shown(other.Control(kMain, 1075))) << cartridges;
        EXPECT_EQ(choice, Shown(other.Control(kMain, 1115))) << cartridges;
        const RECT quality = ClientRectInParent(other.Control(kMain, 1072));
        const RECT media = ClientRectInParent(other.Control(kMain, 1073));
        EXPECT_EQ(!choice, quality.right == media.right) << cartridges;
        EXPECT_EQ(media.bottom - media.top, quality.bottom - quality.top) << cartridges;
        EXPECT_EQ(media.left, quality.left) << cartridges;
    }
}

TEST_F(Embedding, LeavesOutThePreviewThatAPrinterLacks)
{
    for (const char* selected : {"0", ""}) {
        OpenSheet other;
        other.core.features["halvPreview"].selected = selected;
        other.Open(kMain);
        for (const int id : {12346, 1235})
            EXPECT_EQ(*selected != 0, Shown(other.Control(kMain, id))) << id;
    }
}

TEST_F(Embedding, FindsAPostScriptInterpreterOnItsTwoPaths)
{
    static const char* existing;
    static decltype(&CreateFileA) original;
    original = ReplaceFunction(
        "CreateFileA",
        +[](LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
            DWORD flags, HANDLE pattern) WINAPI -> HANDLE {
            if (std::strcmp(path, existing) == 0) path = TINTWERK_SOURCE_DIR "/README.md";
            return original(path, access, share, security, disposition, flags, pattern);
        });
    for (const char* path : {"", "\\usr\\share\\tintwerk\\gs\\bin\\gs", "\\usr\\local\\bin\\gs"}) {
        existing = path;
        OpenSheet other;
        other.Open(kMain);
        EXPECT_EQ(*path == 0, trace.Contains(TEXT("no Ghostscript available\n"))) << path;
        trace.Take();
    }
    RestoreFunction("CreateFileA");
}

TEST_F(Embedding, ShowsTheCartridgesThatThePpdKnows)
{
    sheet.core.features["halvScreenmode"].selected = "b"; // on, with multi-black
    sheet.Read();
    lstrcpyW(sheet.context.options->cartridgeColors, TEXT("BK,G,C,??"));
    sheet.Open(kScreenPrinting);
    const std::tuple<int, int, int, bool, bool, bool, Text> cases[] = {
        // box, icon, name; whether it is shown, checked, has a picture
        {1240, 1261, 1286, true, true, true, TEXT("BK")},
        {1241, 1262, 1275, true, false, true, TEXT("G")},
        {1242, 1263, 1276, false, false, false, TEXT("")}, // uses up "C"
        {1243, 1264, 1277, true, true, false, TEXT("??")},
        {1245, 1265, 1278, false, false, false, TEXT("")}};
    for (const auto& [box, icon, name, shown, checked, picture, code] : cases) {
        for (const int id : {box, icon, name}) {
            EXPECT_EQ(shown, Shown(sheet.Control(kScreenPrinting, id))) << id;
            EXPECT_TRUE(Enabled(sheet.Control(kScreenPrinting, id))) << id;
        }
        EXPECT_EQ(checked, Checked(sheet.Control(kScreenPrinting, box))) << box;
        EXPECT_EQ(picture, Picture(sheet.Control(kScreenPrinting, icon)) != nullptr) << icon;
        EXPECT_EQ(code, TextOf(sheet.Control(kScreenPrinting, name))) << name;
        EXPECT_EQ((shown ? TEXT("  ") : TEXT("")) + code, TextOf(sheet.Control(kScreenPrinting, box))) << box;
    }
}

TEST(Cartridges, HaveCodesUsedUpOnePerSlotTheLastOneForTheRestAndPictures)
{
    const std::pair<const WCHAR*, std::vector<Text>> cases[] = {
        {TEXT("BK,C,M"), {TEXT("BK"), TEXT("C"), TEXT("M"), TEXT("M"), TEXT("M")}},
        {TEXT("BK,,M"), {TEXT("BK"), TEXT(""), TEXT("M"), TEXT("M")}},
        {TEXT("BK,C,"), {TEXT("BK"), TEXT("C"), TEXT("C")}},
        {TEXT(","), {TEXT(""), TEXT("")}},
        {TEXT(""), {TEXT(""), TEXT("")}}};
    for (const auto& [list, expected] : cases) {
        CartridgeCodes codes(list);
        for (const Text& code : expected)
            EXPECT_EQ(code, codes.Next());
    }
    std::string pictures;
    for (const CartridgeColor& color : kCartridgeColorTable)
        pictures +=
            std::string(color.code.begin(), color.code.end()) + ' ' + std::to_string(color.picture) + ' ';
    EXPECT_EQ("R 239 G 235 BLU 241 W 242 BK 176 C 174 M 175 Y 184 C2 174 M2 175 Y2 184 G 234 G2 236 G3 236 "
              "O 232 E 242 CR 242 BL2 241 ",
              pictures);
}

TEST_F(Embedding, KeepsScreenPrintingAndColoursApart)
{
    const std::tuple<const char*, bool, bool, bool> cases[] = {{"off", false, false, true},
                                                               {"a", true, false, true},
                                                               {"b", true, true, true},
                                                               {"c", true, false, false}}; // "App specified"
    for (const auto& [mode, on, multiBlack, parameters] : cases) {
        OpenSheet other;
        other.core.features["halvScreenmode"].selected = mode;
        for (const auto& [position, control] :
             {std::pair{kColors, 1111}, {kCorrection, 1296}, {kInkControl, 1401}}) {
            other.Open(position);
            EXPECT_EQ(!on, Enabled(other.Control(position, control))) << mode << control;
        }
        other.Open(kScreenPrinting);
        EXPECT_EQ(on, Checked(other.Control(kScreenPrinting, 1118))) << mode;
        EXPECT_TRUE(Enabled(other.Control(kScreenPrinting, 1118))) << mode;
        EXPECT_EQ(on, Enabled(other.Control(kScreenPrinting, 1257))) << mode;
        EXPECT_EQ(multiBlack, Checked(other.Control(kScreenPrinting, 1239))) << mode;
        EXPECT_EQ(multiBlack, Enabled(other.Control(kScreenPrinting, 1240))) << mode;
        for (const int parameter : {1146, 1274, 1292, 1244, 1250, 1293, 1251, 1252})
            EXPECT_EQ(parameters, Shown(other.Control(kScreenPrinting, parameter))) << mode << parameter;
    }
}

TEST_F(Embedding, FindsTheNumbersOfTheTotals)
{
    sheet.Open(kConsumption);
    for (const auto& [slot, id] : {std::pair{8, 3127}, {9, 3128}, {10, 3119}, {11, 3129}})
        EXPECT_EQ(GetDlgItem(sheet.context.pages[kConsumption], id),
                  sheet.context.consumption.totals.numbers[slot])
            << id;
    EXPECT_EQ("", Missing({"UI:  \n!!!MyEmbedControls!!! - idx=8 - window=", "GetControlByID : win=",
                           "UI:  Inkdata-File not found:\n"}));
}

TEST_F(Embedding, ToleratesPagesWithoutTheirControls)
{
    for (int position = 0; position < kPageKinds; ++position) {
        const HWND page = sheet.Open(position, 106); // the information page has none of them
        ASSERT_TRUE(page);
        for (const int event : {1022, 1072, 1073, 1075, 1111, 1118, 1123, 1239, 1257, 1273, 12342})
            sheet.Command(position, event, CBN_SELENDOK);
        sheet.Notify(position, 1223, TCN_SELCHANGE);
        sheet.Notify(position, 0, PSN_APPLY);
        DestroyWindow(page);
    }
    for (int position = 0; position < kPageKinds; ++position) {
        for (const WORD dialog : kTemplates) {
            sheet.Open(position, dialog); // controls of other classes under the same ids
            DestroyWindow(sheet.Page(position));
        }
    }
}

TEST_F(Embedding, BindsAnewWhenAPageIsOpenedAgain)
{
    const HWND first = sheet.Open(kMain);
    const HWND slider = sheet.Control(kMain, 1232);
    const HWND second = sheet.Open(kMain);
    DestroyWindow(first);
    EXPECT_FALSE(IsWindow(slider));
    EXPECT_EQ(second, sheet.context.pages[kMain]) << "the second page keeps its windows";
    EXPECT_EQ(sheet.Control(kMain, 1232), sheet.context.sliders.windows[kSliderBrightness]);
    DestroyWindow(second);
    for (int row = 0; row < kPopups; ++row)
        EXPECT_FALSE(sheet.context.popups.windows[row]) << row;
    EXPECT_FALSE(sheet.context.sliders.windows[kSliderBrightness]);
    EXPECT_FALSE(sheet.context.checkBoxes.borderless);
    EXPECT_FALSE(sheet.context.pages[kMain]);
    sheet.Open(kMain);
    EXPECT_EQ(TEXT("50%"), TextOf(sheet.Control(kMain, 1093)));
}

TEST_F(Embedding, GivesBackEverythingThatItsPagesTook)
{
    sheet.core.features["halvScreenmode"].selected = "b";
    sheet.Read();
    lstrcpyW(sheet.context.options->cartridgeColors, TEXT("BK,C,M,Y"));
    const auto open = [this] {
        for (int position = 0; position < kPageKinds; ++position)
            sheet.Open(position);
        for (const HWND page : sheet.pages)
            DestroyWindow(page);
    };
    open();
    constexpr int kTimes = 4;
    const int forgotten = kTimes * kTemplatePictures * ForgottenByAStatic(Process().module);
    const ProcessUse before = UseOfProcess();
    HeapWatch heap;
    for (int time = 0; time < kTimes; ++time)
        open();
    EXPECT_EQ(0, heap.LiveBlocks());
    const ProcessUse after = UseOfProcess();
    EXPECT_EQ(before.windows, after.windows);
    EXPECT_EQ(before.gdiObjects + forgotten, after.gdiObjects);
    EXPECT_EQ(before.userObjects, after.userObjects);
}

} // namespace
} // namespace tintwerk
