// The pages that are generated from option items: what is listed, what each item holds field for field, and
// what applying them writes.
#include "tests/sheets/sheet_fixture.h"

#include "src/features/feature_access.h"

namespace tintwerk {
namespace {

std::vector<ScriptedFeature> LayoutFeatures(const char* pages = "1")
{
    return {{"%Orientation", {"Portrait", "Landscape", "RotatedLandscape"}, "Landscape"},
            {"%PageOrder", {"FrontToBack", "BackToFront"}, "FrontToBack"},
            {"Duplex", {"None", "DuplexNoTumble", "DuplexTumble"}, "DuplexTumble"},
            {"%PagePerSheet", {"1", "2", "4", "6", "9", "16", "Booklet"}, pages}};
}

class OptionPages : public SheetTest
{
protected:
    OptionPages() { core.features = LayoutFeatures(); }

    void Open()
    {
        sheet.emplace(&core, core.object);
        trace.Take();
        ASSERT_EQ(1, sheet->Open());
    }
    const COMPROPSHEETUI& Page(const char* name) { return sheet->Find(name)->items; }
    std::span<OPTITEM> Items(const char* name) { return {Page(name).pOptItem, Page(name).cOptItem}; }

    // The advanced page as text: "+Group" for a header, "Name(first|second)=selection" for a feature.
    std::vector<std::string> Advanced()
    {
        Open();
        std::vector<std::string> items;
        if (!sheet->Find("advanced")) return items;
        for (const OPTITEM& item : Items("advanced"))
            items.push_back(item.pOptType ? Feature(item) : "+" + Narrow(item.pName));
        return items;
    }
    static std::string Feature(const OPTITEM& item)
    {
        std::string text = Narrow(item.pName) + "(";
        for (int i = 0; i < item.pOptType->Count; ++i)
            text += (i ? "|" : "") + Narrow(item.pOptType->pOptParam[i].pData);
        return text + ")=" + std::to_string(item.Sel);
    }
    static std::string Narrow(const WCHAR* text)
    {
        std::string narrow;
        for (; *text; ++text)
            narrow += static_cast<char>(*text);
        return narrow;
    }

    LONG Apply(const char* name, WORD reason = CPSUICB_REASON_APPLYNOW)
    {
        core.written.clear();
        trace.Take();
        CPSUICBPARAM parameters{};
        parameters.cbSize = sizeof(parameters);
        parameters.Reason = reason;
        parameters.UserData = Page(name).UserData;
        return Page(name).pfnCallBack(&parameters);
    }

    std::optional<TestSheet> sheet;
};

TEST_F(OptionPages, RegistersBothPages)
{
    core.features.push_back({"halvSettingA", {"1"}, "1"});
    Open();
    const struct
    {
        const char* page;
        UINT_PTR dialog;
        int items;
        const WCHAR *caller, *itemName;
    } cases[] = {{"layout", 1, 4, TEXT("Loomspire Driver"), TEXT("Optname")},
                 {"advanced", 4, 3, TEXT("Tintwerk Driver"), TEXT("Proofer")}};
    for (const auto& row : cases) {
        COMPROPSHEETUI page = Page(row.page);
        EXPECT_EQ(sizeof(COMPROPSHEETUI), page.cbSize);
        EXPECT_EQ(CPSUIF_UPDATE_PERMISSION, page.Flags);
        EXPECT_EQ(Process().module, page.hInstCaller);
        EXPECT_EQ(Text(row.caller), page.pCallerName);
        EXPECT_EQ(sheet->info.UserData, page.UserData);
        EXPECT_EQ(Text(TEXT("CPSUISam.hlp")), page.pHelpFile);
        EXPECT_EQ(row.dialog, reinterpret_cast<UINT_PTR>(page.pDlgPage));
        EXPECT_EQ(row.items, page.cOptItem);
        EXPECT_EQ(0, page.cDlgPage);
        EXPECT_EQ(64062u, page.IconID);
        EXPECT_EQ(Text(row.itemName), page.pOptItemName);
        EXPECT_EQ(0x100, page.CallerVersion);
        EXPECT_EQ(0x100, page.OptItemVersion);
    }
    EXPECT_EQ(Page("layout").pOptItem, sheet->Context().optionItems.layoutItems);
    EXPECT_EQ(Page("advanced").pOptItem, sheet->Context().optionItems.advancedItems);
    EXPECT_EQ(static_cast<LONG_PTR>(100 + sheet->added.size()), sheet->Record().lastPageHandle);
}

TEST_F(OptionPages, BuildsTheLayoutItemsFieldForField)
{
    Open();
    const auto pointer = [](UINT_PTR number) { return reinterpret_cast<LPTSTR>(number); };
    const struct
    {
        UINT_PTR name;
        LONG selected;
        BYTE publicId, type;
        std::vector<std::pair<UINT_PTR, UINT_PTR>> options; // text and icon
    } cases[] = {
        {64738, 1, 1, 1, {{64753, 64022}, {64754, 64023}, {64755, 64024}}},
        {64855, 0, 17, 0, {{64856, 0}, {64857, 0}}},
        {64745, 2, 7, 1, {{64734, 64031}, {64771, 64033}, {64770, 64032}}},
        {64864,
         0,
         16,
         6,
         {{64865, 0}, {64866, 0}, {64867, 0}, {64868, 0}, {64869, 0}, {64870, 0}, {64873, 0}}},
    };
    const std::span<OPTITEM> items = Items("layout");
    ASSERT_EQ(std::size(cases), items.size());
    const OPTPARAM* next = reinterpret_cast<const OPTPARAM*>(items[0].pOptType + 4);
    for (std::size_t i = 0; i < items.size(); ++i) {
        OPTTYPE type{};
        type.cbSize = sizeof(OPTTYPE);
        type.Type = cases[i].type;
        type.Count = static_cast<WORD>(cases[i].options.size());
        type.pOptParam = const_cast<OPTPARAM*>(next);
        EXPECT_EQ(reinterpret_cast<const OPTTYPE*>(items.data() + 4) + i, items[i].pOptType);
        EXPECT_EQ(0, std::memcmp(&type, items[i].pOptType, sizeof(type))) << i;

        OPTITEM item{};
        item.cbSize = sizeof(OPTITEM);
        item.Level = 1;
        item.pName = pointer(cases[i].name);
        item.Sel = cases[i].selected;
        item.pOptType = items[i].pOptType;
        item.DMPubID = cases[i].publicId;
        EXPECT_EQ(0, std::memcmp(&item, &items[i], sizeof(item))) << i;

        for (const auto& [text, icon] : cases[i].options) {
            OPTPARAM param{};
            param.cbSize = sizeof(OPTPARAM);
            param.pData = pointer(text);
            param.IconID = icon;
            EXPECT_EQ(0, std::memcmp(&param, next++, sizeof(param))) << i << " " << text;
        }
    }
}

TEST_F(OptionPages, ShowsTheSelectedNumberOfPages)
{
    const std::pair<const char*, LONG> cases[] = {
        {"1", 0}, {"16", 5}, {"Booklet", 6}, {"25", 0}, {"booklet", 0}};
    for (const auto& [pages, selected] : cases) {
        core.features = LayoutFeatures(pages);
        Open();
        EXPECT_EQ(selected, Items("layout")[3].Sel) << pages;
    }
}

TEST_F(OptionPages, WritesTheLayoutInTheOrderOfTheTable)
{
    Open();
    EXPECT_EQ(CPSUICB_ACTION_NONE, Apply("layout"));
    EXPECT_EQ((std::vector<std::string>{"%Orientation=Landscape", "%PageOrder=FrontToBack",
                                        "Duplex=DuplexTumble", "%PagePerSheet=1"}),
              core.written);
    EXPECT_TRUE(trace.Contains(TEXT("*** set layoutitem '%Orientation' to 'Landscape' / item #1\n")));

    core.failures["SetOptions %PageOrder"] = E_FAIL;
    Apply("layout");
    EXPECT_EQ(4u, core.written.size());
}

TEST_F(OptionPages, WriteNothingBesideAnApply)
{
    Open();
    for (WORD reason = 0; reason <= 11; ++reason) {
        if (reason == CPSUICB_REASON_APPLYNOW) continue;
        EXPECT_EQ(CPSUICB_ACTION_NONE, Apply("layout", reason));
        EXPECT_TRUE(core.written.empty()) << reason;
    }
    EXPECT_EQ(CPSUICB_ACTION_NONE, Page("layout").pfnCallBack(nullptr));
}

TEST_F(OptionPages, WriteEachSelectionToItsOwnFeatureWhenOthersAreMissing)
{
    // Every subset of the four layout features.
    for (unsigned present = 0; present < 16; ++present) {
        core.features = LayoutFeatures("16");
        std::vector<std::string> expected;
        for (const char* last : {"RotatedLandscape", "BackToFront", "DuplexTumble", "Booklet"}) {
            ScriptedFeature& feature = core.features[expected.size()];
            if (!(present >> expected.size() & 1)) feature.selected.clear();
            expected.push_back(feature.selected.empty() ? "" : feature.keyword + "=" + last);
        }
        std::erase(expected, "");
        Open();
        ASSERT_EQ(expected.size(), Items("layout").size());
        for (OPTITEM& item : Items("layout"))
            item.Sel = item.pOptType->Count - 1;
        Apply("layout");
        EXPECT_EQ(expected, core.written) << present;
    }
}

TEST_F(OptionPages, BringSelectionsIntoTheRangeOfTheOptions)
{
    const std::pair<LONG, const char*> cases[] = {
        {7, "Duplex=DuplexTumble"},  {3, "Duplex=DuplexTumble"}, {2, "Duplex=DuplexTumble"},
        {-1, "Duplex=None"},         {INT32_MIN, "Duplex=None"}, {INT32_MAX, "Duplex=DuplexTumble"},
        {1, "Duplex=DuplexNoTumble"}};
    Open();
    for (const auto& [selected, written] : cases) {
        Items("layout")[2].Sel = selected;
        Apply("layout");
        EXPECT_EQ(written, core.written[2]) << selected;
    }
}

TEST_F(OptionPages, ListTheDriversOwnFeaturesInGroups)
{
    const struct
    {
        const char* name;
        std::vector<std::string> features;
        std::vector<std::string> items;
    } cases[] = {
        {"no special features",
         {"halvSettingA", "halvDuplexOdd", "halvSettingB"},
         {"+Printer Options", "halvSettingA(x|y)=1", "halvSettingB(x|y)=1", "+Advanced Settings"}},
        {"only special features, in their own order",
         {"halvDuplexAdjust", "halvMirror"},
         {"+Advanced Settings", "halvMirror(x|y)=1", "halvDuplexAdjust(x|y)=1"}},
        {"screen printing features that have no control",
         {"halvScreenmode", "halvScreenInksaturation", "halvScreenShape", "halvScreenCartridge",
          "halvScreenLPI", "halvScreenLPI2", "halvScreenLPI3", "halvScreenAngle", "halvScreenAngle2",
          "halvScreenCartridgeX", "halvScreenInksaturExtra", "halvScreenInksatura", "halvScreen"},
         {"+Advanced Settings", "halvScreenLPI3(x|y)=1", "halvScreenInksaturExtra(x|y)=1",
          "halvScreen(x|y)=1"}},
        {"the DTF group",
         {"halvDTFWhite", "halvSetting"},
         {"+Printer Options", "halvSetting(x|y)=1", "+Advanced Settings", "+Special Settings DTF Printing",
          "halvDTFWhite(x|y)=1"}},
        {"nothing of the driver's", {"PageSize", "halvsettingA", "XhalvDTF"}, {"+Advanced Settings"}},
    };
    for (const auto& row : cases) {
        core.features.clear();
        for (const std::string& feature : row.features)
            core.features.push_back({feature, {"x", "y"}, "y"});
        EXPECT_EQ(row.items, Advanced()) << row.name;
    }
}

TEST_F(OptionPages, HeadTheGroupsInTheSheetsLanguage)
{
    core.features = {
        {"halvLanguage", {"de"}, "de"}, {"halvSettingA", {"1"}, "1"}, {"halvDTFWhite", {"1"}, "1"}};
    EXPECT_EQ((std::vector<std::string>{"+Drucker Optionen", "halvSettingA(1)=0", "+Erweiterte Einstellungen",
                                        "+Sonderfunktionen DTF-Druck", "halvDTFWhite(1)=0"}),
              Advanced());
    const OPTITEM& header = Items("advanced")[0];
    EXPECT_EQ(0, header.Level);
    EXPECT_EQ(255, header.DMPubID);
    EXPECT_EQ(1, Items("advanced")[1].Level);
    EXPECT_EQ(0, Items("advanced")[1].DMPubID);
    EXPECT_EQ(TVOT_COMBOBOX, Items("advanced")[1].pOptType->Type);
}

TEST_F(OptionPages, ShowDisplayNamesOrKeywords)
{
    core.features = {
        {"halvSettingA", {"fast", "b\xFCro"}, "b\xFCro", {{"", TEXT("Speed")}, {"fast", TEXT("Very fast")}}},
        {"halvSettingB", {"+5", "-5"}, "+5", {{"+5", TEXT("")}}},
        {"halvSettingC", {}, "on"},
        {"halvSettingD", {"1", "2", "3"}, "unknown"},
        {"halvSettingE", {"1"}, ""}};
    EXPECT_EQ(
        (std::vector<std::string>{"+Printer Options", "Speed(Very fast|b\xFCro)=1", "halvSettingB(|-5)=0",
                                  "halvSettingC()=0", "halvSettingD(1|2|3)=0", "+Advanced Settings"}),
        Advanced());
    EXPECT_EQ(255, Items("advanced")[3].DMPubID); // a feature without options ends its own list
    EXPECT_EQ(nullptr, Items("advanced")[3].pOptType->pOptParam);
    Apply("advanced");
    EXPECT_EQ((std::vector<std::string>{"halvSettingA=b\xFCro", "halvSettingB=+5", "halvSettingD=1"}),
              core.written);
}

TEST_F(OptionPages, TakeADisplayNameOfAnyTypeAndLength)
{
    const auto units = [](const Text& text) {
        return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR));
    };
    const struct
    {
        const char* name;
        std::string bytes;
        DWORD reported; // 0: their number
        std::string shown;
    } cases[] = {{"no terminator", units(TEXT("abc")), 0, "abc"},
                 {"more than told", units(Text(TEXT("abcdef")) + WCHAR{}), 6, "abc"},
                 {"an odd size", units(TEXT("abc")) + "x", 0, "abc"},
                 {"a size past the buffer", units(Text(TEXT("ab")) + WCHAR{}), 0xFFFFFFFF, "ab"},
                 {"one byte", "x", 0, ""},
                 {"8-bit text", std::string("a\0b\0c\0\0\0", 8), 0, "abc"}};
    for (const auto& row : cases) {
        core.features = {{"halvSettingA", {"1"}, "1", {{"", TEXT("?")}, {"1", TEXT("?")}}}};
        core.replies["GetFeatureAttribute"] = core.replies["GetOptionAttribute"] = row.bytes;
        core.reportedSizes.clear();
        if (row.reported)
            core.reportedSizes = {{"GetFeatureAttribute", row.reported},
                                  {"GetOptionAttribute", row.reported}};
        EXPECT_EQ(row.shown + "(" + row.shown + ")=0", Advanced().at(1)) << row.name;
    }
}

TEST_F(OptionPages, LeaveOutFeaturesThatThePpdDoesNotHave)
{
    core.features = {{"halvAutorotateOnRoll", {"on", "off"}, "off"}, {"halvScreenA", {"1"}, "1"}};
    EXPECT_EQ((std::vector<std::string>{"+Advanced Settings", "halvAutorotateOnRoll(on|off)=1",
                                        "halvScreenA(1)=0"}),
              Advanced());
    EXPECT_EQ((std::vector<Text>{TEXT("######## optional items list #############\n"),
                                 TEXT("Special Feature: 'halvMirror'\n"),
                                 TEXT("Special Feature: 'halvAutorotateOnRoll'\n"),
                                 TEXT("Special Feature: 'halvDuplexadvanced'\n"),
                                 TEXT("Special Feature: 'halvDuplexAdjust'\n"),
                                 TEXT("######## optional items list ##########\n"),
                                 TEXT("Counted 6 features\n"),
                                 TEXT("DisplayName of Feature: 'halvMirror' - count=0\n"),
                                 TEXT("DELETING ppditem 1\n"),
                                 TEXT("DisplayName of Feature: 'halvAutorotateOnRoll' - count=0\n"),
                                 TEXT("DisplayName of Feature: 'halvDuplexadvanced' - count=0\n"),
                                 TEXT("DELETING ppditem 2\n"),
                                 TEXT("DisplayName of Feature: 'halvDuplexAdjust' - count=0\n"),
                                 TEXT("DELETING ppditem 2\n"),
                                 TEXT("DisplayName of Feature: 'halvScreenA' - count=0\n"),
                                 TEXT("Lastfeature = 3\n"),
                                 TEXT("skip: +Advanced Settings\n"),
                                 TEXT("skip: halvAutorotateOnRoll\n"),
                                 TEXT("skip: halvScreenA\n"),
                                 TEXT("First Displayname is Advanced Settings\n")}),
              LinesLike(trace.Lines(), {TEXT("#"), TEXT("Special"), TEXT("Counted"), TEXT("DisplayName"),
                                        TEXT("DELET"), TEXT("Lastf"), TEXT("skip"), TEXT("First")}));
    EXPECT_TRUE(
        trace.Contains(TEXT("***result getPPDOption of feature 'halvAutorotateOnRoll' = 'off' / 0\n")));
    EXPECT_TRUE(trace.Contains(TEXT("Selection is item #1\n")));
    EXPECT_TRUE(
        trace.Contains(TEXT("***result getPPDOption of feature '%Orientation' = '' / -2147467259\n")));
    Apply("advanced");
    EXPECT_EQ((std::vector<std::string>{"halvAutorotateOnRoll=off", "halvScreenA=1"}), core.written);
}

TEST_F(OptionPages, HandleAtMost64Strings)
{
    core.features.clear();
    for (int i = 0; i < 70; ++i)
        core.features.push_back({"halvSetting" + std::to_string(i), {"a"}, "a"});
    const std::vector<std::string> items = Advanced();
    EXPECT_EQ(64u, items.size());
    EXPECT_EQ("halvSetting62(a)=0", items.back());
}

TEST_F(OptionPages, ListNoMoreKeywordsThanTheirRoomAllows)
{
    // The driver's own list is full with features of one group; the header in front of them takes room too.
    core.features.clear();
    for (char last = 'a'; last < 'k'; ++last)
        core.features.push_back({"halvSetting" + std::string(190, 'k') + last, {"a"}, "a"});
    const std::vector<std::string> items = Advanced();
    EXPECT_EQ(11u, items.size());
    EXPECT_EQ(core.features.back().keyword + "(a)=0", items.back());
}

TEST_F(OptionPages, EndWhereTheWorkAreaEnds)
{
    // Each feature takes a little more than a third of the area; the sweep moves the end over all of its
    // parts.
    for (std::size_t size = 1500; size < 4000; size += 3) {
        core.features = {
            {"halvSettingA", {"x"}, "x", {{"", Text(size, 'a')}}},
            {"halvSettingB", {"x", std::string(size % 7 + 1, 'o')}, "x", {{"", Text(size, 'b')}}},
            {"halvSettingC", {"x", "y"}, "y", {{"", Text(size, 'c')}, {"x", TEXT("first")}}},
            {"halvSettingD", {"x"}, "x", {{"", Text(200, 'd')}}}};
        const std::vector<std::string> items = Advanced();
        ASSERT_LE(3u, items.size()) << size;
        const std::size_t features = items.size() - (items.back() == "+Advanced Settings" ? 2 : 1);
        Apply("advanced");
        const std::vector<std::string> all{"halvSettingA=x", "halvSettingB=x", "halvSettingC=y",
                                           "halvSettingD=x"};
        EXPECT_EQ(std::vector<std::string>(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(features)),
                  core.written)
            << size;
        if (size < 2500) {
            EXPECT_EQ(4u, features) << size;
        } else if (size > 2800) {
            EXPECT_EQ(2u, features) << size;
        }
    }
}

TEST_F(OptionPages, StopBeforeAFeatureThatFindsNoRoom)
{
    for (const char* call : {"GetFeatureAttribute halvSettingB", "EnumOptions halvSettingB"}) {
        core.features = {
            {"halvSettingA", {"1"}, "1"}, {"halvSettingB", {"1"}, "1"}, {"halvSettingC", {"1"}, "1"}};
        core.failures = {{call, E_OUTOFMEMORY}};
        EXPECT_EQ((std::vector<std::string>{"+Printer Options", "halvSettingA(1)=0"}), Advanced()) << call;
    }
    core.features[1].names = {{"1", TEXT("a name that does not fit")}};
    core.failures = {{"GetOptionAttribute halvSettingB", E_OUTOFMEMORY}};
    EXPECT_EQ("halvSettingB(1)=0", Advanced().at(2)); // its keyword stands for it
}

TEST_F(OptionPages, DoWithoutAnAdvancedPageWhenFeaturesCannotBeListed)
{
    core.failures = {{"EnumFeatures", E_FAIL}};
    Open();
    EXPECT_EQ(nullptr, sheet->Find("advanced"));
    EXPECT_EQ(4u, Items("layout").size());
}

} // namespace
} // namespace tintwerk
