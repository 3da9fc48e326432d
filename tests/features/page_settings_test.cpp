// Applying a page: the option selections that reach the core driver, in their order, from what the controls
// show.
#include "src/features/page_settings.h"

#include <algorithm>

#include "src/features/control_access.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

class PageSettingsTest : public FeatureTest
{
protected:
    // The selections that an apply sends.
    Strings Save(DWORD tabBits)
    {
        core.calls.clear();
        core.written.clear();
        trace.Take();
        EXPECT_EQ(0, SavePPDOptions(context, tabBits));
        EXPECT_EQ(core.written.size(), core.calls.size());
        return core.written;
    }
};

TEST_F(PageSettingsTest, RowsAreWrittenInTheOrderOfTheTables)
{
    Popup(kPopupMediaType, "Film Paper", 2);
    Popup(kPopupInputSlot, "Tray Roll", 1);
    Popup(kPopupIntent, "none_0 photo_1", 2); // of another page
    Slider(kSliderBrightness);
    SetLogicalPosition(context.sliders.windows[kSliderBrightness], -3);
    Slider(kSliderIntensity, TBS_VERT);
    SetLogicalPosition(context.sliders.windows[kSliderIntensity], 5);
    EXPECT_EQ(-5, SendMessageW(context.sliders.windows[kSliderIntensity], TBM_GETPOS, 0, 0))
        << "the top of a vertical one";
    Slider(kSliderGamut); // of another page
    CheckBox(kCheckPreview, true);
    CheckBox(kCheckColorGamma, true);
    CheckBox(kCheckCartridge0 + 2, false); // of another page, but open
    Current().checkBoxes[kCheckCartridge0] = 1;
    context.numberFields.values[0] = 455;
    core.Offer("MediaType", "Film Paper", "Film");

    EXPECT_EQ((Strings{"MediaType=Paper", "InputSlot=Tray", "halvBrightness=-15", "halvIntensity=50",
                       "halvPreview=1", "halvScreenCartridge2=0"}),
              Save(kMainPage));
    EXPECT_EQ("", Missing({"Setting PPDOptions for dlgpage bits 1\n", "SAVE PPD: PAGESIZE selection = 0\n",
                           "SetOption 'MediaType'='Paper' result = 0\n",
                           "Set PPD Feature '*MediaType' to 'Paper'\n",
                           "SetOption 'halvBrightness'='-15' result = -2147024809\n",
                           "SetOption 'halvScreenCartridge2'='0' result = -2147024809\n"}));
    EXPECT_EQ(1, Current().checkBoxes[kCheckColorGamma]);
    EXPECT_EQ(0, Current().checkBoxes[kCheckCartridge0 + 2]);
    EXPECT_EQ(1, Current().checkBoxes[kCheckCartridge0]) << "its page was never opened";
    EXPECT_EQ((Strings{"halvIntent=photo_1", "halvGamut=0", "halvPreview=1", "halvScreenCartridge2=0"}),
              Save(kColorPage));
}

TEST_F(PageSettingsTest, WhatThePageDoesNotHaveIsNotWritten)
{
    Fill(kPopupMediaType, "Film Paper", 2);
    Current().sliders[kSliderBrightness] = 10;
    Current().checkBoxes[kCheckScreenPrinting] = 1;
    EXPECT_EQ(Strings{}, Save(kMainPage));
    EXPECT_EQ(2, context.popups.selections[kPopupMediaType]);
    EXPECT_EQ(1, Current().checkBoxes[kCheckScreenPrinting]);

    // Popups without options and without a current item.
    Popup(kPopupMediaType, "", 1);
    Popup(kPopupResolution, "600dpi 1200dpi", 0);
    EXPECT_EQ(Strings{}, Save(kMainPage));
    EXPECT_EQ(0, context.popups.selections[kPopupResolution]);
}

TEST_F(PageSettingsTest, TheBorderlessBoxChoosesTheTwinOfTheShownSize)
{
    // clang-format off
    const struct { int shown; bool checked; DWORD tabBits; const char* written; } cases[] = {
        {1, true, kMainPage, "A4Borderless"}, {1, false, kMainPage, "A4"}, {3, true, kMainPage, "Photo"},
        {4, true, kMainPage, "PosterBorderless"}, {1, true, kMainPage | kColorPage, "A4"},
    };
    // clang-format on
    const int statuses[] = {2, 0, -1, -2};
    std::ranges::copy(statuses, context.pageSizes.statuses);
    context.checkBoxes.borderless = Child(TEXT("BUTTON"), BS_AUTOCHECKBOX, 1123);
    for (const auto& row : cases) {
        Popup(kPopupPageSize, "A4 A4Borderless Photo PosterBorderless", row.shown);
        SendMessageW(context.checkBoxes.borderless, BM_SETCHECK, row.checked ? BST_CHECKED : BST_UNCHECKED,
                     0);
        EXPECT_EQ(Strings{"PageSize=" + std::string(row.written)}, Save(row.tabBits)) << row.shown;
        EXPECT_EQ(row.shown, SelectedItemData(context.popups.windows[kPopupPageSize]))
            << "the popup keeps its item";
        if (&row != cases) continue;
        EXPECT_EQ(2, context.popups.selections[kPopupPageSize]);
        EXPECT_EQ("", Missing({"SAVE PPD: PAGESIZE selection = 1\n", "SAVE PPD: BORDERLESS is available\n",
                               "SAVE PPD: changed pagesize to selection #2\n"}));
    }
}

TEST_F(PageSettingsTest, TheScreenModeCombinesTwoBoxesAndTheHalftone)
{
    // clang-format off
    const struct { bool on, multiBlack; int halftone; const char* mode; } cases[] = {
        {false, true, 3, "m1"}, {true, false, 1, "m2"}, {true, true, 1, "m3"}, {true, false, 2, "m4"},
        {true, true, 2, "m5"}, {true, false, 3, "m6"}, {true, true, 3, "m7"}, {true, true, 0, nullptr},
        {false, false, 0, nullptr},
    };
    // clang-format on
    Fill(kPopupScreenMode, "m1 m2 m3 m4 m5 m6 m7", 1);
    context.numberFields.values[0] = 455;
    context.numberFields.values[1] = 375;
    for (const auto& row : cases) {
        Popup(kPopupHalftone, "", row.halftone);
        CheckBox(kCheckScreenPrinting, row.on);
        CheckBox(kCheckMultiBlack, row.multiBlack);
        Strings expected = {"halvScreenLPI2=15", "halvScreenLPI=44", "halvScreenAngle2=25",
                            "halvScreenAngle=35"};
        if (row.mode) expected.insert(expected.begin(), std::string("halvScreenmode=") + row.mode);
        EXPECT_EQ(expected, Save(kScreenPrintingPage)) << row.on << row.multiBlack << row.halftone;
        EXPECT_EQ("",
                  Missing({row.mode ? "Set PPD Feature '*halvScreenmode' to '" + std::string(row.mode) : "",
                           "Set PPD Number Feature 'halvScreenAngle' to '25' and '35'\n"}));
        EXPECT_EQ(row.on, Current().checkBoxes[kCheckScreenPrinting]);
        EXPECT_EQ(row.multiBlack, Current().checkBoxes[kCheckMultiBlack]);
    }
    Fill(kPopupScreenMode, "m1 m2", 1);
    Popup(kPopupHalftone, "", 3);
    CheckBox(kCheckScreenPrinting, true);
    EXPECT_EQ(4u, Save(kScreenPrintingPage).size()) << "a mode beyond the printer's list";
}

} // namespace
} // namespace tintwerk
