// What a popup shows and which option its choice writes; the size under the page size popup.
#include "src/features/popup_filling.h"

#include "platform/function_hook.h"
#include "src/features/control_access.h"
#include "tests/features/feature_test.h"

namespace tintwerk {
namespace {

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

// The spooler's forms in these tests: any name, of the size set here.
SIZEL formSize;
DWORD formError;
WideString formAsked;
BOOL WINAPI AnswerForm(HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    EXPECT_EQ(reinterpret_cast<HANDLE>(0x4711), printer);
    EXPECT_EQ(1u, level);
    EXPECT_EQ(1024u, size);
    formAsked = name;
    *needed = 2000;
    if (formError || size < sizeof(FORM_INFO_1W)) return FALSE;
    auto& form = *reinterpret_cast<FORM_INFO_1W*>(buffer);
    form = {};
    form.pName = const_cast<LPWSTR>(TEXT("A4 form"));
    form.Size = formSize;
    return TRUE;
}

TEST_F(PopupTest, ShowsTheSizeOfTheFormInWholeMillimetres)
{
    const HWND label = Child(TEXT("STATIC"), 0, 1224);
    context.pages[0] = page;
    context.core.printer = reinterpret_cast<HANDLE>(0x4711);
    const HWND combo = Combo(kPopupPageSize);
    Fill(kPopupPageSize, "A4", 1);
    Name(kPopupPageSize);
    FillPopUp(combo, PopupList(context, kPopupPageSize), nullptr, 1);

    ReplaceFunction("GetFormW", &AnswerForm);
    // clang-format off
    const struct { SIZEL size; const char* text; } cases[] = {
        {{210000, 297000}, "(210 x 297 mm)"}, {{215900, 279400}, "(216 x 279 mm)"},
        {{499, 500}, "(0 x 1 mm)"}, {{2147483647, -1600}, "(2147484 x -1 mm)"},
    };
    // clang-format on
    formError = 0;
    for (const auto& row : cases) {
        formSize = row.size;
        ShowFormSize(context);
        EXPECT_EQ(row.text, Narrow(TextOf(label)));
        EXPECT_EQ(
            "", Missing({"ComboBox PageSize - Selection = [A4]\n", "ComboBox PageSize - GetForm result = 1\n",
                         "Form:A4 form " + std::string(row.text) + "\n\n"}));
    }
    EXPECT_EQ(TEXT("[A4]"), formAsked);

    formError = 1;
    ShowFormSize(context);
    EXPECT_EQ(TEXT("(2147484 x -1 mm)"), TextOf(label));
    EXPECT_EQ("", Missing({"ComboBox PageSize - GetForm result = 0\n",
                           "** GetForm failed - cbNeeded = 2000 (1024)\n"}));

    // Nothing is asked without an item, with a name of 128 characters, or without the label.
    const std::pair<int, std::size_t> names[] = {{127, 127}, {-1, 0}, {128, 0}, {1, 0}};
    for (const auto& [length, asked] : names) {
        formAsked.clear();
        if (length == 1) context.pages[0] = nullptr;
        const WideString name(static_cast<std::size_t>(std::abs(length)), 'f');
        const LRESULT item = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(length < 0 ? -1 : item), 0);
        ShowFormSize(context);
        EXPECT_EQ(asked, formAsked.size()) << length;
    }
    RestoreFunction("GetFormW");
}

} // namespace
} // namespace tintwerk
