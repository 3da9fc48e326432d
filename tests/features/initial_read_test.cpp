// What a sheet knows after it was opened: borderless page sizes, slider positions, check boxes, number
// fields.
#include "src/features/borderless_list.h"
#include "src/features/initial_read.h"

#include "src/bindings/number_fields.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

TEST_F(FeatureTest, NormalPageSizesArePairedWithTheirBorderlessTwins)
{
    const std::string longest(117, 'L'), tooLong(118, 'L');
    // clang-format off
    const struct { std::string sizes; int selected; std::vector<int> statuses; int shown, borderless; } cases[] = {
        {"A4 A4Borderless Letter borderlessLetter Custom.1x2", 1, {2, 0, 4, 0, -3}, 1, 0},
        {"A4 A4Borderless Letter borderlessLetter Custom.1x2", 2, {2, 0, 4, 0, -3}, 1, 1},
        {"A4 A4Borderless Letter borderlessLetter Custom.1x2", 4, {2, 0, 4, 0, -3}, 3, 1},
        {"A4 A4Borderless Letter borderlessLetter Custom.1x2", 5, {2, 0, 4, 0, -3}, 5, 0},
        {"PhotoBorderless A4", 1, {-2, -1}, 1, 1}, {"A4 a4BORDERLESS", 2, {2, 0}, 1, 1},
        {"a4BORDERLESS", 1, {-1}, 1, 0}, // not marked by its own name
        {"BORDERLESSA4 A4 A4Borderless", 2, {0, 1, -2}, 2, 0}, // the first of two twins
        {"Customized Custom custom", 1, {-3, -3, -1}, 1, 0},
        {"A4Borderlesss xA4Borderless A4", 3, {-2, -2, -1}, 3, 0},
        {"a4BORDERLESSBorderless a4BORDERLESS A4", 1, {0, 0, 2}, 1, 1}, // a twin of a twin
        {"A4 a4BORDERLESS a4BORDERLESSBorderless", 3, {2, 0, -2}, 3, 1},
        {longest + " " + longest + "Borderless", 2, {2, 0}, 1, 1},
        {tooLong + " " + tooLong + "Borderless", 1, {-1, -2}, 1, 0}, {"", 1, {0}, 1, 0},
        {"A4 A4Borderless", 3, {2, 0}, 3, 0},
    };
    // clang-format on
    for (const auto& row : cases) {
        context.pageSizes = {};
        context.pageSizes.borderless = !row.borderless;
        Fill(kPopupPageSize, row.sizes, row.selected);
        CreateBorderlessList(context);
        const int* const statuses = context.pageSizes.statuses;
        EXPECT_EQ(row.statuses, std::vector<int>(statuses, statuses + row.statuses.size())) << row.sizes;
        EXPECT_EQ(row.shown, context.popups.selections[kPopupPageSize]) << row.sizes;
        EXPECT_EQ(row.borderless, context.pageSizes.borderless) << row.sizes;
    }
    EXPECT_EQ("", Missing({"Borderless Format #0='A4' BL-Status=2\n", "Current selection is: 'A4'\n",
                           "Borderless Format #1='A4Borderless' BL-Status=0\n",
                           "Current selection is: 'A4Borderless'\n", "Current selection is: ''\n"}));
}

TEST_F(FeatureTest, TheInitialReadTurnsOptionsIntoPositionsStatesAndNumbers)
{
    core.features = {
        {"halvBrightness", {}, "10"},           {"halvContrast", {}, "-14"},
        {"halvScreenInksaturation", {}, "260"}, {"halvGamut", {}, "None"},
        {"halvUCR", {}, "2147483647"},          {"halvPreview", {}, "preview-on"},
        {"halvScreenCartridge0", {}, "0"},      {"halvScreenCartridge1", {}, "3"},
        {"halvScreenCartridge2", {}, "Maybe"},  {"halvScreenLPI", {}, "44"},
        {"halvScreenLPI2", {}, "15"},           {"halvScreenAngle", {}, "2147483647"},
    };
    Current().checkBoxes[kCheckColorGamma] = 1;
    ASSERT_EQ(S_OK, InitPPDSettings(context));

    const int* const positions = context.sliders.initialPositions;
    EXPECT_EQ(2, positions[kSliderBrightness]);
    EXPECT_EQ(-2, positions[kSliderContrast]) << "truncates toward zero";
    EXPECT_EQ(3, positions[kSliderScreenInksaturation]);
    EXPECT_EQ(0, positions[kSliderGamut]);
    EXPECT_EQ(214748364, positions[kSliderUcr]);
    EXPECT_EQ(-9, positions[kSliderRefLight]) << "its fallback of 3 lies below the base of 50";
    EXPECT_EQ(260, Current().sliders[kSliderScreenInksaturation]);
    const auto& boxes = Current().checkBoxes;
    EXPECT_EQ(1, boxes[kCheckColorGamma]) << "no feature of the PPD";
    EXPECT_EQ(1, boxes[kCheckPreview]);
    EXPECT_EQ(3, boxes[kCheckCartridge0 + 1]);
    EXPECT_EQ(kCheckBoxMissing, boxes[kCheckCartridge0 + 2]);
    EXPECT_EQ(kCheckBoxMissing, boxes[kCheckCartridge0 + 11]);
    EXPECT_EQ(455, context.numberFields.values[0]);
    EXPECT_EQ(2147483647, context.numberFields.values[1]);
}

TEST_F(FeatureTest, WithoutMemoryNothingIsReadAndWithoutACoreHelperWhatIsKnownStays)
{
    {
        HeapWatch watch;
        watch.FailAllocation(2); // the first is a trace line, the second the block for names
        EXPECT_EQ(E_OUTOFMEMORY, InitPPDSettings(context));
    }
    EXPECT_EQ(Strings{}, core.calls);
    context.core.helper = nullptr;
    Current().sliders[kSliderBrightness] = 15;
    Current().checkBoxes[kCheckScreenPrinting] = 1;
    context.numberFields.values[0] = 9;
    EXPECT_EQ(S_OK, InitPPDSettings(context));
    EXPECT_EQ(3, context.sliders.initialPositions[kSliderBrightness]);
    EXPECT_EQ(1, Current().checkBoxes[kCheckScreenPrinting]);
    EXPECT_EQ(0, context.numberFields.values[0]);
    EXPECT_EQ(1, context.popups.selections[kPopupPageSize]);
}

// What is written is what is read: every value of every number field, every position of every slider.
TEST_F(FeatureTest, EveryNumberFieldValueSurvivesItsTwoFeatures)
{
    for (const NumberFieldBinding& field : kNumberFieldTable)
        for (int value = field.minimum; value <= field.maximum; ++value) {
            const NumberParts parts = SplitNumber(field, value);
            ASSERT_EQ(value, JoinNumber(field, parts));
            ASSERT_EQ(0, parts.coarse % field.coarseStep) << value;
            ASSERT_TRUE(parts.rest >= 0 && parts.rest < field.coarseStep * field.divisor) << value;
        }
}

TEST_F(FeatureTest, EverySliderPositionSurvivesItsPpdValueAndIsShownAsPeopleKnowIt)
{
    std::string told; // at the two ends: what the PPD has, and what the label reads
    for (const ControlBinding& slider : kSliderTable) {
        for (int position = slider.minimum; position <= slider.maximum; ++position)
            ASSERT_EQ(position, PositionOf(slider, PpdValue(slider, position))) << slider.keyword;
        told += slider.keyword + 4 + std::string(" ") + std::to_string(slider.initialValue);
        for (const int end : {slider.minimum, slider.maximum}) {
            char label[16];
            std::snprintf(label, sizeof label, slider.format, DisplayValue(slider, end));
            told +=
                (end == slider.maximum ? ".." : ": ") + std::to_string(PpdValue(slider, end)) + "=" + label;
        }
        told += '\n';
    }
    EXPECT_EQ("Brightness 0: -50=50%..50=200%\nContrast 0: -50=50%..50=200%\nRefLight 3: 50=D50..80=D80\n"
              "Gamut 0: -50=50%..50=200%\nShadows 0: -50=50%..50=200%\nGreyToneA 0: -50=-50..50=+50\n"
              "GreyToneB 0: -50=-50..50=+50\nUCR 0: -50=0%..50=100%\nBrightC 0: -50=0%..50=100%\n"
              "BrightM 0: -50=0%..50=100%\nTAC 0: -50=200%..50=400%\nIntensity 0: -50=50%..50=200%\n"
              "InklimitK 0: -50=50%..50=200%\nInklimitC 0: -50=50%..50=200%\nInklimitM 0: -50=50%..50=200%\n"
              "InklimitY 0: -50=50%..50=200%\nAdjustK 0: -50=-50%..50=50%\nAdjustC 0: -50=-50%..50=50%\n"
              "AdjustM 0: -50=-50%..50=50%\nAdjustY 0: -50=-50%..50=50%\nBorderlessExpand 2: 0=0%..4=4%\n"
              "ScreenInksaturation 0: 100=100%..400=400%\n",
              told);
}

} // namespace
} // namespace tintwerk
