// The option lists of a sheet: which questions are asked, what enters a list, and what a core driver that
// misbehaves can do to it.
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
    core.answers.clear();
    ASSERT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(std::string(127, 'C'), Narrow(table->cartridgeColors)) << "stays without an answer";
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

TEST_F(OptionListTest, ListsThatLieAreReadWithinTheirBytes)
{
    std::string tenThousand;
    for (int i = 0; i < 10000; ++i)
        tenThousand += "option" + std::to_string(i) + '\0';
    // clang-format off
    const struct { const char* what; FakeCore::Answer answer; size_t size; } cases[] = {
        {"no closing zero", {S_OK, std::string("A4\0Letter\0", 10)}, 2},
        {"last option cut off", {S_OK, std::string("A4\0Letter", 9)}, 1},
        {"size larger than the buffer", {S_OK, std::string(4096, 'x'), 0xFFFFFFFF}, 0},
        {"size smaller than the list", {S_OK, List({"A4", "Letter"}), 3}, 1},
        {"one zero byte", {S_OK, std::string(1, '\0')}, 0}, {"nothing", {S_OK, ""}, 0},
        {"10,000 options that fail twice", {E_OUTOFMEMORY, tenThousand}, 0},
        {"no memory for nothing", {E_OUTOFMEMORY, "", 1}, 0},
        {"another success", {S_FALSE, List({"A4"})}, 0}, {"a failure", {E_UNEXPECTED, List({"A4"})}, 0},
    };
    // clang-format on
    for (const auto& row : cases) {
        *table = {};
        core.answers["EnumOptions PageSize"] = row.answer;
        EXPECT_EQ(S_OK, getPPDComboOptions(context)) << row.what;
        EXPECT_EQ(row.size, Keywords(kPopupPageSize).size()) << row.what;
        EXPECT_EQ(1, Selection(kPopupPageSize)) << row.what;
    }
    core.answers.clear();
    core.calls.clear();
    std::ranges::replace(tenThousand, '\0', ' ');
    core.Offer("PageSize", tenThousand, "option79");
    EXPECT_EQ(S_OK, getPPDComboOptions(context));
    EXPECT_EQ(80u, Keywords(kPopupPageSize).size());
    EXPECT_EQ(80, Selection(kPopupPageSize));
    EXPECT_EQ(80, core.Count("GetOptionAttribute PageSize")) << "no name is asked for beyond the list";
}

} // namespace
} // namespace tintwerk
