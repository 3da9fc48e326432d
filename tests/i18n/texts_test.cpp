// Texts in both languages: found by key and by English wording, with markup, and when there is nothing to
// find; conversions between 8 and 16 bits; the labels of a page.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "src/bindings/advanced_features.h"
#include "src/i18n/page_translation.h"
#include "src/i18n/string_table.h"
#include "src/i18n/texts.h"
#include "src/ink/ink_channels.h"
#include "src/records/page_kinds.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = DebugLines::Text;

class StringTableTest : public testing::Test
{
protected:
    StringTableTest() { UseStringTable(nullptr); } // whatever sheet was open before
    ~StringTableTest() override { UseStringTable(nullptr); }

    DebugLines trace;
};

TEST_F(StringTableTest, FindsTheFirstRowInTheLanguageOfTheSheet)
{
    const struct
    {
        const char* language; // null: before the first sheet
        const char* text;
        int byEnglish;
        int row; // -1: not found
        std::string found;
    } cases[] = {
        {nullptr, "label_nb_main", 0, -1, "label_nb_main"},
        {"de", "Black", 1, 0, "Schwarz:"},
        {"de", "label_scale_norm*9", 0, 43, "norm"},
        {"en", "label_scale_norm*9", 0, 43, "default"},
        {"en", "label_scale_norm", 0, -1, "label_scale_norm"},
        {"de", "black", 1, -1, "black"},
        {"de", "", 1, -1, ""},
        {"DE", "Total:", 1, 25, "Total:"},
        {"de", "label_sp_angle", 0, 97, "Winkel"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.found);
        if (row.language) InitStringTable(row.language);
        EXPECT_EQ(row.found, FindDefaultString(row.text, row.byEnglish).Get());
        const std::string where = row.row < 0 ? "not found" : "found #" + std::to_string(row.row);
        const std::string line = "defaultstring " + where + ": " + row.found + "\n";
        EXPECT_EQ(std::vector<Text>{Text(line.begin(), line.end())}, trace.Take());
    }
    EXPECT_STREQ("String-Error", FindDefaultString(nullptr, 1).Get());
    EXPECT_EQ(std::vector<Text>{TEXT("defaultstring not found: \n")}, trace.Take());
}

TEST_F(StringTableTest, HasTheTextsThatTablesCarryInEnglish)
{
    InitStringTable("de");
    for (const InkChannel& channel : kInkChannelTable)
        FindDefaultString(channel.name, 1);
    for (const AdvancedGroup& group : kAdvancedGroups)
        FindDefaultString(group.title, 1);
    for (const Text& line : trace.Lines())
        EXPECT_TRUE(line.starts_with(TEXT("defaultstring found"))) << std::string(line.begin(), line.end());
}

TEST_F(StringTableTest, ShowsTheQueryWhereATranslationIsMissing)
{
    static constexpr StringRow kRows[] = {{"key", "English", nullptr}};
    static constexpr StringTable kGerman{kRows, true};
    UseStringTable(&kGerman);
    EXPECT_STREQ("key", FindDefaultString("key", 0).Get());
    EXPECT_EQ(std::vector<Text>{TEXT("translation not found for key\n")}, trace.Take());
}

TEST_F(StringTableTest, TurnsLineBreaksOfMarkupIntoMarkup)
{
    const std::string opening = "<", x248(248, 'x'), x240(240, 'x');
    const std::string full = opening + x248; // 249 characters
    const struct
    {
        const char* what;
        std::string text;
        std::string shown;
    } cases[] = {
        {"no markup stays as it is", "one\n\ntwo", "one\n\ntwo"},
        {"one break", "<b>one</b>\ntwo", "<b>one</b><br />two"},
        {"an empty line adds no break", "<i>\n\nx", "<i><br />x"},
        {"the 250th is cut", full + "x", full},
        {"a cut line keeps its break, and the next adds nothing", full + "x\ny\nz", full + "<br />"},
        {"the second line is cut to what is left", opening + x240 + "\n123456789",
         opening + x240 + "<br />12"},
    };
    for (const auto& row : cases) {
        const StringRow rows[] = {{"key", row.text.c_str(), ""}, {"later", "<b>\n", ""}};
        const StringTable table{rows, false};
        UseStringTable(&table);
        const FoundText found = FindDefaultString("key", 0), later = FindDefaultString("later", 0);
        EXPECT_EQ(row.shown, found.Get()) << row.what;
        EXPECT_STREQ("<b><br />", later.Get());
    }
}

TEST_F(StringTableTest, IsSearchedForTheEnglishTextsOfTheCode)
{
    InitStringTable("de");
    const struct
    {
        const char* what;
        Text english;
        Text shown;
        bool looked;
    } cases[] = {
        {"in the table", TEXT("Green"), TEXT("Gr\u00FCn:"), true},
        {"two lines", TEXT("Bright Inks\nUsage"), TEXT("Anteil helle\nTinten"), true},
        {"not in the table", TEXT("Colour"), TEXT("Colour"), true},
        {"255 characters", Text(255, 'x'), Text(255, 'x'), true},
        {"256 characters", Text(256, 'x'), Text(256, 'x'), false},
        {"a character beyond ASCII", TEXT("Gr\u00FCn"), TEXT("Gr\u00FCn"), true},
        {"a character beyond ISO 8859-1", TEXT("5 \u20AC"), TEXT("5 \u20AC"), false},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(row.shown, CFCopyLocalizedString(row.english.c_str(), TEXT("comment")).get()) << row.what;
        EXPECT_EQ(!row.looked, trace.Contains(TEXT("Error creating cstring\n"))) << row.what;
        trace.Take();
    }
    EXPECT_EQ(Text(), CFCopyLocalizedString(nullptr, nullptr).get());
    trace.Take();
    CFCopyLocalizedString(TEXT("Black"), nullptr);
    EXPECT_EQ(
        (std::vector<Text>{TEXT("CFCopyLocalizedString: Black\n"), TEXT("defaultstring found #0: Schwarz:\n"),
                           TEXT("Translation = Schwarz:\n")}),
        trace.Take());
}

TEST(Texts, AreConvertedAndFormattedInThePortableNotation)
{
    EXPECT_EQ(Text(TEXT("Gr\u00FCn \U0001F5A8")), CopyWideFromUtf8("Gr\xC3\xBCn \xF0\x9F\x96\xA8").get());
    for (const char* none : {"", "cut \xC3", "Gr\xFCn"})
        EXPECT_EQ(Text(), CopyWideFromUtf8(none).get());
    EXPECT_EQ(Text(), CopyWideFromUtf8(nullptr).get());

    EXPECT_EQ(Text(TEXT("8bit, 16bit, 8bit: -7 100%")),
              CopyFormattedString(TEXT("%s, %@, %s: %d %d%%"), "8bit", TEXT("16bit"), "8bit", -7, 100).get());
    EXPECT_EQ(Text(), CopyFormattedString(nullptr).get());
    const std::string text(5000, 'y');
    EXPECT_EQ(Text(5000, 'y'), CopyFormattedString(TEXT("%s"), text.c_str()).get());
}

// A page with one control, which shows "template" until it is translated.
class PageTranslation : public StringTableTest
{
protected:
    Text Shown(DWORD pageBits, int control)
    {
        const auto window = [](DWORD style, HWND parent, int id) {
            return CreateWindowExW(0, TEXT("Static"), TEXT("template"), style, 0, 0, 300, 200, parent,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                   GetModuleHandleW(nullptr), nullptr);
        };
        const HWND page = window(WS_POPUP, nullptr, 0);
        window(WS_CHILD, page, control);
        trace.Take();
        TranslateDialogPage(pageBits, page);
        WCHAR text[512] = {};
        GetDlgItemTextW(page, control, text, 512);
        DestroyWindow(page);
        return text;
    }
};

TEST_F(PageTranslation, ChoosesThePageByTheLowestBit)
{
    const struct
    {
        DWORD bits;
        const WCHAR* line;
        const WCHAR* control1159; // the paper frame of the main page, the shadows of the colour page
    } cases[] = {{0, TEXT("DLGPAGE is 8\n"), TEXT("template")},
                 {3, TEXT("DLGPAGE is 0\n"), TEXT("Paper")},
                 {2, TEXT("DLGPAGE is 1\n"), TEXT("Shadows:")},
                 {128, TEXT("DLGPAGE is 7\n"), TEXT("template")},
                 {0xFFFFFF00, TEXT("DLGPAGE is 8\n"), TEXT("template")}};
    InitStringTable("en");
    for (const auto& row : cases) {
        EXPECT_EQ(row.control1159, Shown(row.bits, 1159)) << row.bits;
        EXPECT_TRUE(trace.Contains(row.line)) << row.bits;
    }
    EXPECT_EQ(TEXT("Reset counters"), Shown(kConsumptionPage, 1214)); // the page's other two are missing
    EXPECT_EQ((std::vector<Text>{TEXT("----- TRANSLAGE DLGPAGE dlgidx is 8\n"), TEXT("DLGPAGE is 3\n"),
                                 TEXT("defaultstring found #70: Reset counters\n"),
                                 TEXT("{\"wlabel_consume_reset\",\"Reset counters\"},\n")}),
              trace.Lines());
}

TEST_F(PageTranslation, CleansAndCutsTheTexts)
{
    const std::string a254(254, 'a');
    const struct
    {
        const char* what;
        std::string text;
        Text shown;
    } cases[] = {
        {"plain line breaks stay", "Black Level\n(UCR)", TEXT("Black Level\n(UCR)")},
        {"markup goes, with the breaks that it turned into markup", "<b>one\ntwo</b> x", TEXT("onetwo x")},
        {"a lone < stays", "a > b < c", TEXT("a > b < c")},
        {"255 bytes stay, the rest goes", a254 + "bc", Text(254, 'a') + TEXT("b")},
        {"and with it half a character", a254 + "\xC3\xBC", Text(254, 'a')},
    };
    for (const auto& row : cases) {
        const StringRow rows[] = {{"wlabel_consume_reset", row.text.c_str(), ""}};
        const StringTable table{rows, false};
        UseStringTable(&table);
        EXPECT_EQ(row.shown, Shown(kConsumptionPage, 1214)) << row.what;
    }
}

} // namespace
} // namespace tintwerk
