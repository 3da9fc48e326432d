// The pages that are generated from option items: what is listed, what each item holds, and what applying
// them writes.
#include "tests/sheets/sheet_fixture.h"

#include <tuple>

namespace tintwerk {
namespace {

FakeCore::FeatureList LayoutFeatures(const char* pages = "1")
{
    return {{"%Orientation", {"Portrait", "Landscape", "RotatedLandscape"}, "Landscape"},
            {"%PageOrder", {"FrontToBack", "BackToFront"}, "FrontToBack"},
            {"Duplex", {"None", "DuplexNoTumble", "DuplexTumble"}, "DuplexTumble"},
            {"%PagePerSheet", {"1", "2", "4", "6", "9", "16", "Booklet"}, pages}};
}

using Strings = std::vector<std::string>;

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

    // "+Group" for a header, "Name(first|second)=selection" for a feature; numbers of the common property
    // sheet UI's texts, and "/icon" where there is one.
    Strings Shown(const char* page)
    {
        Strings items;
        if (!sheet->Find(page)) return items;
        for (const OPTITEM& item : Items(page)) {
            EXPECT_EQ(sizeof(OPTITEM), item.cbSize);
            EXPECT_EQ(item.pOptType ? 1 : 0, item.Level);
            items.push_back(item.pOptType ? Feature(item) : "+" + Told(item.pName));
        }
        return items;
    }
    Strings Advanced()
    {
        Open();
        return Shown("advanced");
    }
    static std::string Feature(const OPTITEM& item)
    {
        std::string text = Told(item.pName) + "(";
        EXPECT_EQ(sizeof(OPTTYPE), item.pOptType->cbSize);
        for (int i = 0; i < item.pOptType->Count; ++i) {
            const OPTPARAM& option = item.pOptType->pOptParam[i];
            EXPECT_EQ(sizeof(OPTPARAM), option.cbSize);
            text += (i ? "|" : "") + Told(option.pData);
            if (option.IconID) text += "/" + std::to_string(option.IconID);
        }
        return text + ")=" + std::to_string(item.Sel);
    }
    static std::string Told(const WCHAR* text)
    {
        if (IS_INTRESOURCE(text)) return std::to_string(reinterpret_cast<UINT_PTR>(text));
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
    const std::tuple<const char*, UINT_PTR, int, Text, Text> cases[] = {
        {"layout", 1, 4, TEXT("Loomspire Driver"), TEXT("Optname")},
        {"advanced", 4, 3, TEXT("Tintwerk Driver"), TEXT("Proofer")}};
    for (const auto& [name, dialog, items, caller, itemName] : cases) {
        const COMPROPSHEETUI& page = Page(name);
        EXPECT_EQ(sizeof(COMPROPSHEETUI), page.cbSize);
        EXPECT_EQ(CPSUIF_UPDATE_PERMISSION, page.Flags);
        EXPECT_EQ(Process().module, page.hInstCaller);
        EXPECT_EQ(caller, page.pCallerName);
        EXPECT_EQ(sheet->info.UserData, page.UserData);
        EXPECT_EQ(Text(TEXT("CPSUISam.hlp")), page.pHelpFile);
        EXPECT_EQ(dialog, reinterpret_cast<UINT_PTR>(page.pDlgPage));
        EXPECT_EQ(items, page.cOptItem);
        EXPECT_EQ(64062u, page.IconID);
        EXPECT_EQ(itemName, page.pOptItemName);
        EXPECT_EQ(0x100, page.CallerVersion);
        EXPECT_EQ(0x100, page.OptItemVersion);
    }
    EXPECT_EQ(static_cast<LONG_PTR>(100 + sheet->added.size()), sheet->Record().lastPageHandle);
}

TEST_F(OptionPages, ShowTheLayoutWithTheTextsOfTheCommonUi)
{
    Open();
    EXPECT_EQ((Strings{"64738(64753/64022|64754/64023|64755/64024)=1", "64855(64856|64857)=0",
                       "64745(64734/64031|64771/64033|64770/64032)=2",
                       "64864(64865|64866|64867|64868|64869|64870|64873)=0"}),
              Shown("layout"));
    const std::pair<int, int> kinds[] = {{1, 1}, {0, 17}, {1, 7}, {6, 16}}; // type and public number
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        EXPECT_EQ(kinds[i].first, Items("layout")[i].pOptType->Type);
        EXPECT_EQ(kinds[i].second, Items("layout")[i].DMPubID);
    }
    const std::pair<const char*, LONG> cases[] = {{"16", 5}, {"Booklet", 6}, {"25", 0}, {"booklet", 0}};
    for (const auto& [pages, selected] : cases) {
        core.features = LayoutFeatures(pages);
        Open();
        EXPECT_EQ(selected, Items("layout")[3].Sel) << pages;
    }
}

TEST_F(OptionPages, WriteEachSelectionToItsOwnFeatureWhenOthersAreMissing)
{
    // Every subset of the four layout features; what an item stands at is brought into the range of its
    // options.
    for (unsigned present = 0; present < 16; ++present) {
        core.features = LayoutFeatures("16");
        Strings first, last;
        for (std::size_t i = 0; i < 4; ++i) {
            FakeCore::Feature& feature = core.features[i];
            if (!(present >> i & 1)) {
                feature.selected.clear();
                continue;
            }
            first.push_back(feature.keyword + "=" + feature.options.front());
            last.push_back(feature.keyword + "=" + feature.options.back());
        }
        Open();
        ASSERT_EQ(last.size(), Items("layout").size());
        for (const LONG beyond : {0, 1, INT32_MAX, -1, INT32_MIN}) {
            for (OPTITEM& item : Items("layout"))
                item.Sel = beyond < 0 ? beyond : std::max<LONG>(beyond, item.pOptType->Count - 1 + beyond);
            EXPECT_EQ(CPSUICB_ACTION_NONE, Apply("layout"));
            EXPECT_EQ(beyond < 0 ? first : last, core.written) << present << " " << beyond;
        }
    }
    core.answers["SetOptions %PageOrder"] = {E_FAIL, ""};
    Items("layout")[0].Sel = 1;
    Apply("layout");
    EXPECT_EQ(4u, core.written.size()) << "what is refused does not stop the rest";
    EXPECT_TRUE(trace.Contains(TEXT("*** set layoutitem '%Orientation' to 'Landscape' / item #1\n")));
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

TEST_F(OptionPages, ListTheDriversOwnFeaturesInGroups)
{
    const std::pair<Strings, Strings> cases[] = {
        {{"halvSettingA", "halvDuplexOdd", "halvSettingB"},
         {"+Printer Options", "halvSettingA(x|y)=1", "halvSettingB(x|y)=1", "+Advanced Settings"}},
        {{"halvDuplexAdjust", "halvMirror"},
         {"+Advanced Settings", "halvMirror(x|y)=1", "halvDuplexAdjust(x|y)=1"}},
        {{"halvScreenmode", "halvScreenInksaturation", "halvScreenShape", "halvScreenCartridge",
          "halvScreenLPI", "halvScreenLPI2", "halvScreenLPI3", "halvScreenAngle", "halvScreenAngle2",
          "halvScreenCartridgeX", "halvScreenInksaturExtra", "halvScreenInksatura", "halvScreen"},
         {"+Advanced Settings", "halvScreenLPI3(x|y)=1", "halvScreenInksaturExtra(x|y)=1",
          "halvScreen(x|y)=1"}},
        {{"halvDTFWhite", "halvSetting"},
         {"+Printer Options", "halvSetting(x|y)=1", "+Advanced Settings", "+Special Settings DTF Printing",
          "halvDTFWhite(x|y)=1"}},
        {{"PageSize", "halvsettingA", "XhalvDTF"}, {"+Advanced Settings"}},
        {{"halvLanguage", "halvSettingA", "halvDTFWhite"},
         {"+Drucker Optionen", "halvSettingA(x|y)=1", "+Erweiterte Einstellungen",
          "+Sonderfunktionen DTF-Druck", "halvDTFWhite(x|y)=1"}},
    };
    for (const auto& [features, items] : cases) {
        core.features.clear();
        for (const std::string& feature : features)
            core.features.push_back({feature, {"x", "y"}, "y"});
        if (features[0] == "halvLanguage") core.features[0].options[0] = "de";
        EXPECT_EQ(items, Advanced()) << features[0];
    }
    EXPECT_EQ(255, Items("advanced")[0].DMPubID);
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
    EXPECT_EQ((Strings{"+Printer Options", "Speed(Very fast|b\xFCro)=1", "halvSettingB(|-5)=0",
                       "halvSettingC()=0", "halvSettingD(1|2|3)=0", "+Advanced Settings"}),
              Advanced());
    EXPECT_EQ(255, Items("advanced")[3].DMPubID); // a feature without options ends its own list
    EXPECT_EQ(nullptr, Items("advanced")[3].pOptType->pOptParam);
    Apply("advanced");
    EXPECT_EQ((Strings{"halvSettingA=b\xFCro", "halvSettingB=+5", "halvSettingD=1"}), core.written);
}

TEST_F(OptionPages, TakeADisplayNameOfAnyTypeAndLength)
{
    const auto units = [](const Text& text) {
        return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR));
    };
    const std::tuple<const char*, std::string, std::optional<DWORD>, std::string> cases[] = {
        {"no terminator", units(TEXT("abc")), {}, "abc"},
        {"more than told", units(Text(TEXT("abcdef")) + WCHAR{}), 6, "abc"},
        {"an odd size", units(TEXT("abc")) + "x", {}, "abc"},
        {"a size past the buffer", units(Text(TEXT("ab")) + WCHAR{}), 0xFFFFFFFF, "ab"},
        {"one byte", "x", {}, ""},
        {"8-bit text", std::string("a\0b\0c\0\0\0", 8), {}, "abc"}};
    core.features = {{"halvSettingA", {"1"}, "1"}};
    for (const auto& [name, bytes, reported, shown] : cases) {
        core.answers["GetFeatureAttribute"] = core.answers["GetOptionAttribute"] = {S_OK, bytes, reported};
        EXPECT_EQ(shown + "(" + shown + ")=0", Advanced().at(1)) << name;
    }
}

TEST_F(OptionPages, LeaveOutFeaturesThatThePpdDoesNotHave)
{
    core.features = {{"halvAutorotateOnRoll", {"on", "off"}, "off"}, {"halvDTFA", {"1"}, "1"}};
    EXPECT_EQ((Strings{"+Advanced Settings", "halvAutorotateOnRoll(on|off)=1",
                       "+Special Settings DTF Printing", "halvDTFA(1)=0"}),
              Advanced());
    EXPECT_EQ("",
              MissingLine(trace.Lines(),
                          {"***result getPPDOption of feature '%Orientation' = '' / -2147467259\n",
                           "######## optional items list #############\n", "Special Feature: 'halvMirror'\n",
                           "######## optional items list ##########\n", "Counted 7 features\n",
                           "DisplayName of Feature: 'halvMirror' - count=0\n", "DELETING ppditem 1\n",
                           "DisplayName of Feature: 'halvAutorotateOnRoll' - count=0\n",
                           "DisplayName of Feature: 'halvDuplexadvanced' - count=0\n", "DELETING ppditem 2\n",
                           "DisplayName of Feature: 'halvDTFA' - count=0\n", "Lastfeature = 4\n",
                           "skip: +Advanced Settings\n", "skip: halvAutorotateOnRoll\n",
                           "First Displayname is Advanced Settings\n",
                           "***result getPPDOption of feature 'halvAutorotateOnRoll' = 'off' / 0\n",
                           "Selection is item #1\n"}));
    Apply("advanced");
    EXPECT_EQ((Strings{"halvAutorotateOnRoll=off", "halvDTFA=1"}), core.written);
}

TEST_F(OptionPages, ListNoMoreThanTheirRoomAllows)
{
    core.features.clear();
    for (int i = 0; i < 70; ++i)
        core.features.push_back({"halvSetting" + std::to_string(i), {"a"}, "a"});
    EXPECT_EQ(64u, Advanced().size());
    EXPECT_EQ("halvSetting62(a)=0", Shown("advanced").back());

    // The driver's own list is full with features of one group; the header in front of them takes room too.
    core.features.clear();
    for (char last = 'a'; last < 'k'; ++last)
        core.features.push_back({"halvSetting" + std::string(190, 'k') + last, {"a"}, "a"});
    EXPECT_EQ(11u, Advanced().size());
    EXPECT_EQ(core.features.back().keyword + "(a)=0", Shown("advanced").back());
}

TEST_F(OptionPages, EndWhereTheWorkAreaEnds)
{
    // Each feature takes a little more than a third of the area; the sweep moves the end over all of its
    // parts. A name of no bytes finds no room either where nothing is left for its end.
    const Strings all{"halvSettingA=x", "halvSettingB=x", "halvSettingC=y", "halvSettingD=x"};
    for (const bool noBytes : {false, true}) {
        if (noBytes) core.answers["GetOptionAttribute"] = {};
        for (std::size_t size = 1500; size < 4000; size += 3) {
            core.features = {
                {"halvSettingA", {"x"}, "x", {{"", Text(size + (noBytes ? 9 : 0), 'a')}}},
                {"halvSettingB", {"x", std::string(size % 7 + 1, 'o')}, "x", {{"", Text(size, 'b')}}},
                {"halvSettingC", {"x", "y"}, "y", {{"", Text(size, 'c')}, {"x", TEXT("first")}}},
                {"halvSettingD", {"x"}, "x", {{"", Text(200, 'd')}}}};
            const Strings items = Advanced();
            ASSERT_LE(3u, items.size()) << size;
            EXPECT_EQ("+Printer Options", items[0]) << size;
            const std::size_t features = items.size() - (items.back() == "+Advanced Settings" ? 2 : 1);
            Apply("advanced");
            EXPECT_EQ(Strings(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(features)), core.written)
                << size;
            EXPECT_TRUE(features == 4 || size >= 2500) << size;
            EXPECT_TRUE(features == 2 || size <= 2800) << size;
        }
    }
}

TEST_F(OptionPages, StopBeforeAFeatureThatFindsNoRoom)
{
    for (const char* call : {"GetFeatureAttribute halvSettingB", "EnumOptions halvSettingB"}) {
        core.features = {
            {"halvSettingA", {"1"}, "1"}, {"halvSettingB", {"1"}, "1"}, {"halvSettingC", {"1"}, "1"}};
        core.answers = {{call, {E_OUTOFMEMORY, ""}}};
        EXPECT_EQ((Strings{"+Printer Options", "halvSettingA(1)=0"}), Advanced()) << call;
    }
    core.features[1].names = {{"1", TEXT("a name that does not fit")}};
    core.answers = {{"GetOptionAttribute halvSettingB", {E_OUTOFMEMORY, ""}}};
    EXPECT_EQ("halvSettingB(1)=0", Advanced().at(2)); // its keyword stands for it

    core.features = LayoutFeatures();
    core.answers = {{"EnumFeatures", {E_FAIL, ""}}};
    EXPECT_EQ(Strings{}, Advanced()) << "no advanced page at all";
    EXPECT_EQ(4u, Items("layout").size());
}

} // namespace
} // namespace tintwerk
