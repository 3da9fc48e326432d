// What a sheet knows after it was opened: which questions are asked, what enters the option lists and what a
// core driver that misbehaves can do to them; borderless page sizes, slider positions, check boxes, number
// fields.
#include "src/features/initial_read.h"

#include "src/bindings/number_fields.h"
#include "src/bindings/screen_modes.h"
#include "src/features/borderless_list.h"
#include "src/features/option_lists.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

class OptionListTest : public FeatureTest
{
protected:
    // The keywords of a row's list, in their order.
    Strings Keywords(int row) const
    {
        Strings keywords;
        const OptionEntry* const list = table->lists[static_cast<size_t>(row)].data();
        for (int i = 0; i < CountOptions(list); ++i)
            keywords.push_back(list[i].keyword);
        return keywords;
    }
    std::string Name(int row, size_t position) const
    {
        const WCHAR* const name = table->lists[static_cast<size_t>(row)][position].displayName;
        return name ? Narrow(name) : "(none)";
    }
    int Selection(int row) const { return context.popups.selections[row]; }
};

TEST_F(OptionListTest, AskForEachFeatureAndOptionOnce)
{
    core.Offer("InputSlot", "Tray1 *UseFormTrayTable Roll", "Roll");
    core.Offer("halvScreenmode", "s1 s2", "s1");
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(kPopupRows, core.Count("EnumOptions"));
    std::erase_if(core.calls, [](auto& call) { return call.starts_with("EnumOptions "); });
    EXPECT_EQ(
        (Strings{"GetOptions InputSlot|| 1024", "GetOptionAttribute InputSlot Tray1 DisplayName 1024",
                 "GetOptionAttribute InputSlot Roll DisplayName 1024", "GetOptions halvScreenmode|| 1024",
                 "GetOptionAttribute halvScreenmode s1 DisplayName 1024",
                 "GetOptionAttribute halvScreenmode s2 DisplayName 1024",
                 "GetOptionAttribute halvCartridgeColors CartridgeColors DisplayName 1024"}),
        core.calls);
    EXPECT_EQ("",
              Missing({"getPPDComboOptions\n", "getPPDComboOptionsLoop #0\n", "getPPDComboOptionsLoop2 #0\n",
                       "UI:  getComboPPDFeature for halvCartridgeType \r\n", "getPPDComboOptionsLoop3 #0\n",
                       "options not found!\n", "UI:  Counted 0 options\r\n", "point1\n",
                       "UI:  Option selection = '' (index 0)\n", "getPPDComboOptionsLoop3 #4\n",
                       "UI:  Counted 3 options\r\n", "UI:  Feature Option InputSlot is Roll\r\n",
                       "UI:  Option selection = 'Roll' (index 1)\n"}));
}

TEST_F(OptionListTest, HoldTheFirst80OptionsButNotTheFormTrayTable)
{
    std::string many;
    for (int i = 1; i <= 100; ++i)
        many += "o" + std::to_string(i) + " ";
    // clang-format off
    const struct { std::string feature; int row; std::string options, selected; size_t size; int selection; } cases[] = {
        {"InputSlot", kPopupInputSlot, "A *UseFormTrayTable B", "B", 2, 2},
        {"InputSlot", kPopupInputSlot, "*UseFormTrayTable A B", "A", 2, 1},
        {"InputSlot", kPopupInputSlot, "A B *UseFormTrayTable", "*UseFormTrayTable", 2, 1},
        {"InputSlot", kPopupInputSlot, "*UseFormTrayTable", "*UseFormTrayTable", 0, 1},
        {"InputSlot", kPopupInputSlot, "*UseFormTrayTable " + many, "o80", 80, 80},
        {"OutputBin", kPopupOutputBin, "A *UseFormTrayTable B", "B", 3, 3},
        {"PageSize", kPopupPageSize, many, "o80", 80, 80}, {"PageSize", kPopupPageSize, many, "o81", 80, 1},
        {"PageSize", kPopupPageSize, "A4 Letter A3", "A3", 3, 3},
        {"PageSize", kPopupPageSize, "A4 Letter", "a4", 2, 1}, {"PageSize", kPopupPageSize, "", "A4", 0, 1},
        {"PageSize", kPopupPageSize, std::string("A4 ").append(300, 'x'), std::string(300, 'x'), 2, 1},
        {"PageSize", kPopupPageSize, std::string("A4 ").append(255, 'x'), std::string(255, 'x'), 2, 2},
    };
    // clang-format on
    for (const auto& row : cases) {
        *table = {};
        core.Offer(row.feature, row.options, row.selected);
        ASSERT_EQ(S_OK, getPPDComboOptions(context));
        EXPECT_EQ(row.size, Keywords(row.row).size()) << row.options;
        EXPECT_EQ(row.selection, Selection(row.row)) << row.options;
        const Strings keywords = Keywords(row.row);
        EXPECT_EQ(row.row == kPopupOutputBin, std::ranges::count(keywords, "*UseFormTrayTable") > 0)
            << row.options;
    }
}

TEST_F(OptionListTest, ALongListIsReadAgainIntoABlockOfItsSize)
{
    std::string options;
    while (options.size() < 3 * 4096)
        options += std::string(299, 'a') + std::to_string(options.size() % 10) + " ";
    core.Offer("PageSize", options, "");
    const size_t bytes = List(Words(options)).size();
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(15, core.Count("EnumOptions"));
    EXPECT_EQ("EnumOptions PageSize " + std::to_string(bytes), core.calls[4]);
    EXPECT_EQ(Words(options), Keywords(kPopupPageSize));
    core.Offer("PageSize", std::string(4094, 'x'), ""); // 4096 bytes need one call only
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(15 + 14, core.Count("EnumOptions"));
    core.answers["EnumOptions PageSize"] = {S_OK, List({"A4", "Letter"}), 0}; // up to the closing zero
    *table = {};
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ((Strings{"A4", "Letter"}), Keywords(kPopupPageSize));
}

TEST_F(OptionListTest, DisplayNamesAreWholeHoweverManyBlocksTheyFill)
{
    std::string options;
    for (int i = 10; i < 90; ++i)
        options += std::to_string(i) + " ";
    core.Offer("MediaType", options, "");
    for (const std::string& option : Words(options))
        core.answers["GetOptionAttribute MediaType " + option] = {
            S_OK, FakeCore::BytesOf(WideString(511 - option.size(), 'n') +
                                    WideString(option.begin(), option.end()))};
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    for (size_t i = 0; i < 80; ++i)
        EXPECT_EQ(std::string(509, 'n') + std::to_string(10 + i), Name(kPopupMediaType, i));
    // Eight names of 512 units fill a block to the last unit.
    EXPECT_EQ(9, std::ranges::count(trace.Take(), WideString(TEXT("!!! need to allocate new memblock\n"))));
}

TEST_F(OptionListTest, NamesThatAreMissingForeignOrUnterminated)
{
    core.Offer("MediaType", "plain refused foreign open lying empty", "");
    core.answers["GetOptionAttribute MediaType refused"] = {E_OUTOFMEMORY, "", 9999};
    core.answers["GetOptionAttribute MediaType foreign"] = {S_OK, "eight", 0, kADT_ASCII};
    core.answers["GetOptionAttribute MediaType open"] = {S_OK, FakeCore::BytesOf(WideString(600, 'u')),
                                                         6 * sizeof(WCHAR)};
    core.answers["GetOptionAttribute MediaType lying"] = {S_OK, FakeCore::BytesOf(WideString(600, 'v')),
                                                          0xFFFFFFFF};
    core.answers["GetOptionAttribute MediaType empty"] = {S_OK, ""};
    core.answers["GetOptionAttribute halvCartridgeColors CartridgeColors"] = {S_OK, "12", 0, kADT_DWORD};
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    const Strings names = {"[plain]", "(none)", "ID fault", "uuuuuu", std::string(512, 'v'), ""};
    for (size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(names[i], Name(kPopupMediaType, i));
    EXPECT_EQ("?,?,?,?,?,?,?,?,?,?,?,?", Narrow(table->cartridgeColors));

    core.answers["GetOptionAttribute halvCartridgeColors CartridgeColors"] = {
        S_OK, FakeCore::BytesOf(WideString(200, 'C'))};
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(std::string(127, 'C'), Narrow(table->cartridgeColors));
}

TEST_F(OptionListTest, ScreenModesTurnIntoScreenPrintingHalftoneAndMultiBlack)
{
    // clang-format off
    const struct { int selection, on, halftone, multiBlack; } cases[] = {
        {1, 0, 1, 0}, {2, 1, 1, 0}, {3, 1, 1, 1}, {4, 1, 2, 0}, {5, 1, 2, 1}, {6, 1, 3, 0}, {7, 1, 3, 1},
        {8, 1, 4, 0}, {9, 1, 4, 1}, {10, 1, 1, 0},
    };
    // clang-format on
    for (const auto& row : cases) {
        core.Offer("halvScreenmode", "m1 m2 m3 m4 m5 m6 m7 m8 m9 m10", "m" + std::to_string(row.selection));
        ASSERT_EQ(S_OK, getPPDComboOptions(context));
        EXPECT_EQ(row.on, Current().checkBoxes[kCheckScreenPrinting]) << row.selection;
        EXPECT_EQ(row.halftone, Selection(kPopupHalftone)) << row.selection;
        EXPECT_EQ(row.multiBlack, Current().checkBoxes[kCheckMultiBlack]) << row.selection;
        if (row.selection < 10) {
            EXPECT_EQ(row.selection, EncodeScreenMode({row.on != 0, row.halftone, row.multiBlack != 0}));
        }
    }
}

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
        watch.Fail(2); // the first is a trace line, the second the block for names
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
