// What a popup shows, which option its choice writes, and what constraints, media, intents and colour models
// leave to choose from.
#include "src/features/constraints.h"

#include "src/features/control_access.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

class ConstraintsTest : public FeatureTest
{
protected:
    // Selection numbers of the items that a popup offers now.
    std::vector<int> Offered(int row)
    {
        std::vector<int> offered;
        const HWND combo = context.popups.windows[row];
        for (LRESULT i = 0; i < SendMessageW(combo, CB_GETCOUNT, 0, 0); ++i)
            offered.push_back(
                static_cast<int>(SendMessageW(combo, CB_GETITEMDATA, static_cast<WPARAM>(i), 0)));
        return offered;
    }
};

TEST_F(ConstraintsTest, ForbiddenResolutionsDisappearAndTheSelectionMovesOn)
{
    // clang-format off
    const struct { int selected; Strings forbidden; std::vector<int> offered; int selection; } cases[] = {
        {2, {}, {1, 2, 3, 4}, 2}, {2, {"b"}, {1, 3, 4}, 3}, {2, {"c", "b"}, {1, 4}, 4},
        {3, {"c", "d"}, {1, 2}, 2}, {4, {"d"}, {1, 2, 3}, 3}, {1, {"a", "b", "c", "d"}, {}, 0},
        {1, {"d", "B", "bb"}, {1, 2, 3}, 1}, {0, {"d"}, {1, 2, 3}, 0},
    };
    // clang-format on
    for (const auto& row : cases) {
        Popup(kPopupResolution, "a b c d", row.selected);
        core.answers["EnumConstrainedOptions Resolution"] = {S_OK, List(row.forbidden)};
        CheckConstraints(context, kPopupResolution);
        EXPECT_EQ(row.offered, Offered(kPopupResolution)) << row.selected;
        EXPECT_EQ(row.selection, context.popups.selections[kPopupResolution]) << row.selected;
    }
    EXPECT_EQ(0, core.Count("WhyConstrained"));
}

TEST_F(ConstraintsTest, OnlyTheCartridgeForbidsAMediaType)
{
    Popup(kPopupMediaType, "Film Paper Cloth Foil", 2);
    core.answers["EnumConstrainedOptions MediaType"] = {S_OK, List({"Paper", "Cloth", "Foil"})};
    core.answers["WhyConstrained MediaType Paper"] = {
        S_OK, List({"Resolution", "1200dpi", "halvCartridgeType", "cmyk"})};
    core.answers["WhyConstrained MediaType Cloth"] = {
        S_OK, List({"Resolution", "1200dpi", "InputSlot", "halvCartridgeType"})};
    CheckConstraints(context, kPopupMediaType);
    EXPECT_EQ((std::vector<int>{1, 3, 4}), Offered(kPopupMediaType));
    EXPECT_EQ(3, context.popups.selections[kPopupMediaType]);
    EXPECT_EQ((Strings{"EnumConstrainedOptions MediaType 8192", "WhyConstrained MediaType Paper 1024",
                       "WhyConstrained MediaType Cloth 1024", "WhyConstrained MediaType Foil 1024"}),
              core.calls);
    EXPECT_EQ("", Missing({"check win contraints\n", "Mediatype constrained by Feature: 'Resolution'\n",
                           "Mediatype constrained by Feature: 'halvCartridgeType'\n"}));
}

TEST_F(ConstraintsTest, ARefusedQuestionOrAMissingPopupLeavesEverythingAsItIs)
{
    Popup(kPopupMediaType, "Film Paper", 2);
    core.answers["WhyConstrained"] = {S_OK, List({"halvCartridgeType", "cmyk"})};
    for (const FakeCore::Answer& answer : {FakeCore::Answer{E_OUTOFMEMORY, List({"Paper"})},
                                           {S_OK, std::string("Film\0Paper", 10)}, // of no end
                                           {S_OK, ""}}) {
        core.answers["EnumConstrainedOptions"] = answer;
        CheckConstraints(context, kPopupMediaType);
        EXPECT_EQ(2, context.popups.selections[kPopupMediaType]);
        Popup(kPopupMediaType, "Film Paper", 2);
    }
    Fill(kPopupResolution, "a b", 2);
    core.answers["EnumConstrainedOptions"] = {S_OK, List({"b", "Paper"})};
    CheckConstraints(context, kPopupResolution);
    EXPECT_EQ(2, context.popups.selections[kPopupResolution]);
    context.core.helper = nullptr;
    CheckConstraints(context, kPopupMediaType);
    EXPECT_EQ((std::vector<int>{1, 2}), Offered(kPopupMediaType));
}

TEST_F(ConstraintsTest, IntentsAndColourModelsFollowTheMedia)
{
    const std::string intents = "none_0 photo_1 art_3 proof_4 special";
    const std::string models = "RGB CMYKproof CMYK RGBphoto";
    // clang-format off
    const struct { const char* what; int row; const char* media; std::string intents, models; int intent, model;
                   std::vector<int> offered; int selection; } cases[] = {
        {"all intents", kPopupIntent, "Photo_9", intents, models, 4, 1, {1, 2, 3, 4, 5}, 4},
        {"a higher mode than the media's", kPopupIntent, "Photo_3", intents, models, 4, 1, {1, 2, 3, 5}, 3},
        {"no mode", kPopupIntent, "Plain", intents, models, 3, 1, {1, 5}, 1},
        {"none before it", kPopupIntent, "Plain", "a_3 b_2 c d", models, 1, 1, {3, 4}, 3},
        {"two models only", kPopupIntent, "Photo_9", intents, "RGB CMYK", 1, 1, {2, 3, 4, 5}, 2},
        {"nothing", kPopupIntent, "Plain", "a_3 b_2", models, 2, 1, {}, 1},
        {"no options", kPopupIntent, "Plain", "", models, 0, 1, {}, 0},
        {"all models", kPopupColorModel, "Photo_3", intents, models, 2, 3, {1, 2, 3, 4}, 3},
        {"no colour data", kPopupColorModel, "Chart_2", intents, models, 2, 3, {1, 2}, 2},
        {"no colour management", kPopupColorModel, "Photo_3", intents, models, 1, 4, {1, 2}, 2},
        {"models in another order", kPopupColorModel, "Chart_2", intents, "CMYK CMYKproofs RGB", 2, 1, {3}, 3},
        {"no model", kPopupColorModel, "Chart_2", intents, "CMYK Grey rgb", 2, 3, {}, 1},
    };
    // clang-format on
    for (const auto& row : cases) {
        Fill(kPopupMediaType, row.media, 0);
        Popup(kPopupIntent, row.intents, row.intent);
        Popup(kPopupColorModel, row.models, row.model);
        checkAvailabilityforMenus(context, row.row);
        EXPECT_EQ(row.offered, Offered(row.row)) << row.what;
        EXPECT_EQ(row.selection, context.popups.selections[row.row]) << row.what;
        EXPECT_EQ(1, context.popups.selections[kPopupMediaType]) << row.what;
    }
    Popup(kPopupIntent, "none_0 a_3 b_1", 2);
    checkAvailabilityforMenus(context, kPopupIntent);
    EXPECT_EQ("", Missing({"checkAvailabilityforMenus: item=kPOP_MEDIATYPE, selection=1\n",
                           "got MediaMode: 2 - Chart_2\n", "Availabilitycheck - Mediamode = 2\n",
                           "SetItemEnabled: 1/3\n", "SetItemEnabled: 3/3\n",
                           "UI:  \nFILLPOPUP - active= 1 / ''\n"}));
    // A selection past the end goes to the popup as it is; only what is kept is the first then.
    for (const auto& [options, line] : {std::pair{"a_3 b_3 c_3", "UI:  \nFILLPOPUP - active= 4 / ''\n"},
                                        {"", "UI:  \nFILLPOPUP - active= 0 / ''\n"}}) {
        Popup(kPopupIntent, options, 2);
        checkAvailabilityforMenus(context, kPopupIntent);
        EXPECT_EQ("", Missing({line, "UI:  FillPOPUP -> activeidx = 1\n"}));
    }
}

class PopupTest : public FeatureTest
{
protected:
    // Gives every option of a row the display name that the fake core driver would give it.
    void Name(int row)
    {
        static std::vector<std::unique_ptr<WideString>> kept;
        OptionEntry* const list = table->lists[static_cast<size_t>(row)].data();
        for (int i = 0; i < CountOptions(list); ++i) {
            kept.push_back(std::make_unique<WideString>(FakeCore::NameOf(list[i].keyword)));
            list[i].displayName = kept.back()->c_str();
        }
    }
};

TEST_F(PopupTest, ShowsTheVisibleOptionsAndTheSelectedOne)
{
    // clang-format off
    const struct { std::string options; std::vector<int> visibility; int selection; Strings items; } cases[] = {
        {"a b c d", {}, 1, {"[a]=1*", "[b]=2", "[c]=3", "[d]=4"}},
        {"a b c d", {1, 1, 0, 1}, 4, {"[a]=1", "[b]=2", "[d]=4*"}},
        {"a b c d", {1, 1, 0, 1}, 3, {"[a]=1", "[b]=2*", "[d]=4"}},
        {"a b c d", {0, 1, 1, 1}, 1, {"[b]=2", "[c]=3", "[d]=4"}},
        {"a b c d", {-3, -1, 2, 0}, 3, {"[a]=1", "[b]=2", "[c]=3*"}}, {"a b", {}, 0, {"[a]=1*", "[b]=2"}},
        {"a b", {}, 3, {"[a]=1*", "[b]=2"}}, {"a b", {}, -1, {"[a]=1*", "[b]=2"}},
        {"*a b *c d", {}, 4, {"[b]=2", "[d]=4*"}}, {"*a b", {}, 1, {"[b]=2"}}, {"a b", {0, 0}, 2, {}},
        {"", {}, 1, {}},
    };
    // clang-format on
    const HWND combo = Combo(kPopupMediaType);
    for (const auto& row : cases) {
        Fill(kPopupMediaType, row.options, row.selection);
        Name(kPopupMediaType);
        FillPopUp(combo, table->lists[kPopupMediaType].data(),
                  row.visibility.empty() ? nullptr : row.visibility.data(), row.selection);
        EXPECT_EQ(row.items, Items(combo)) << row.options << " " << row.selection;
    }
    Fill(kPopupMediaType, "a b *c d", 2);
    Name(kPopupMediaType);
    table->lists[kPopupMediaType][3].displayName = nullptr;
    const int visibility[] = {0, 1, 1, 1};
    trace.Take();
    FillPopUp(combo, table->lists[kPopupMediaType].data(), visibility, 2);
    EXPECT_EQ((Strings{"[b]=2*", "=4"}), Items(combo));
    EXPECT_EQ(
        "",
        Missing({"UI:  \nFILLPOPUP - active= 2 / '[b]'\n", "UI:  --- INVISIBLE --- '[a]'\n",
                 "UI:  Fillpopup - setactive item to #0\n", "UI:  Adding to PopUpButton: '[b]' itemname:b\n",
                 "UI:  Fillpopup - setactive item to #1\n", "UI:  Adding to PopUpButton: '' itemname:d\n",
                 "UI:  Fillpopup - setactive item to #2\n", "UI:  FillPOPUP -> activeidx = 1\n"}));
}

TEST_F(PopupTest, HoldsAtMost80Options)
{
    std::string options;
    for (int i = 0; i < 80; ++i)
        options += "o ";
    std::fill_n(context.pageSizes.statuses, kMaxOptions, -1);
    const HWND combo = Popup(kPopupPageSize, options, 80);
    EXPECT_EQ(80, SendMessageW(combo, CB_GETCOUNT, 0, 0));
    EXPECT_EQ(80, SelectedItemData(combo));
    EXPECT_EQ((Strings{"Tintwerk=1*", "App specified (Postscript)=2", "Off=3"}),
              Items(Popup(kPopupHalftone, "", 4)));
}

TEST_F(PopupTest, AChoiceWritesTheOptionThatTheItemCarries)
{
    const HWND combo = Popup(kPopupMediaType, "*Film Paper Cloth", 2);
    EXPECT_TRUE(SetPopupOption(context, kPopupMediaType));
    EXPECT_EQ(2, context.popups.selections[kPopupMediaType]);
    EXPECT_EQ("", Missing({"UI:  Option '*MediaType' selection is 'Paper'\r\n",
                           "UI:  Selection is entry #2'\r\n", "SetOption 'MediaType'='Paper' result"}));
    SendMessageW(combo, CB_SETITEMDATA, 1, 4);
    for (const int item : {-1, 1}) { // no current item, an item beyond the list
        Select(kPopupMediaType, item);
        EXPECT_FALSE(SetPopupOption(context, kPopupMediaType));
        EXPECT_EQ(item < 0 ? 0 : 4, context.popups.selections[kPopupMediaType]);
    }
    EXPECT_EQ("", Missing({"No PPD Options for feature available\n"}));
    EXPECT_FALSE(SetPopupOption(context, kPopupCartridge)) << "no window";
    EXPECT_EQ(Strings{"MediaType=Paper"}, core.written);
}

} // namespace
} // namespace tintwerk
