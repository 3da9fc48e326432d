// What constraints, media modes, intents and colour models leave to choose from, and the controls that follow
// them.
#include "src/features/constraints.h"

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
}

} // namespace
} // namespace tintwerk
