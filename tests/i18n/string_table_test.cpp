// Lookups in the string table: by key and by English wording, in both languages, with markup, and when there
// is nothing to find.
#include "src/i18n/string_table.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/testing.h"

namespace tintwerk {
namespace {

class StringTableTest : public testing::Test
{
protected:
    ~StringTableTest() override { UseStringTable(nullptr); }

    DebugLines trace;
};

TEST_F(StringTableTest, FindsTheFirstRowInTheLanguageOfTheSheet)
{
    struct
    {
        const char* language;
        const char* text;
        int byEnglish;
        const char* found;
        const WCHAR* line;
    } const cases[] = {
        {"de", "Black", 1, "Schwarz:", TEXT("defaultstring found #0: Schwarz:\n")},
        {"de", "label_gr_black*1", 0, "Schwarz", TEXT("defaultstring found #68: Schwarz\n")},
        {"de", "label_scale_norm*9", 0, "norm", TEXT("defaultstring found #43: norm\n")},
        {"en", "label_scale_norm*9", 0, "default", TEXT("defaultstring found #43: default\n")},
        {"en", "label_scale_norm", 0, "label_scale_norm",
         TEXT("defaultstring not found: label_scale_norm\n")},
        {"de", "Black", 0, "Black", TEXT("defaultstring not found: Black\n")},
        {"de", "black", 1, "black", TEXT("defaultstring not found: black\n")},
        {"de", "", 1, "", TEXT("defaultstring not found: \n")},
        {"DE", "Total:", 1, "Total:", TEXT("defaultstring found #25: Total:\n")},
        {"de", "label_sp_angle", 0, "Winkel", TEXT("defaultstring found #97: Winkel\n")},
    };
    for (const auto& row : cases) {
        InitStringTable(row.language);
        trace.Take();
        EXPECT_STREQ(row.found, FindDefaultString(row.text, row.byEnglish).Get()) << row.language << row.text;
        EXPECT_EQ(std::vector<DebugLines::Text>{row.line}, trace.Take()) << row.language << row.text;
    }
}

TEST_F(StringTableTest, GivesAReadableTextForNoText)
{
    InitStringTable("en");
    EXPECT_STREQ("String-Error", FindDefaultString(nullptr, 0).Get());
    EXPECT_STREQ("String-Error", FindDefaultString(nullptr, 1).Get());
}

TEST_F(StringTableTest, ShowsTheQueryWhereATranslationIsMissing)
{
    static constexpr StringRow kRows[] = {{"key", "English", nullptr}};
    static constexpr StringTable kGerman{kRows, true}, kEnglish{kRows, false};
    UseStringTable(&kGerman);
    trace.Take();
    EXPECT_STREQ("key", FindDefaultString("key", 0).Get());
    EXPECT_TRUE(trace.Contains(TEXT("translation not found for key\n")));
    UseStringTable(&kEnglish);
    EXPECT_STREQ("English", FindDefaultString("key", 0).Get());
}

TEST_F(StringTableTest, FindsNothingBeforeTheFirstSheetAndNeedsNoMemory)
{
    EXPECT_STREQ("label_nb_main", FindDefaultString("label_nb_main", 0).Get());
    HeapWatch heap;
    InitStringTable("de");
    EXPECT_EQ(0, heap.Allocations());
    EXPECT_STREQ("Druck", FindDefaultString("label_nb_main", 0).Get());
}

TEST_F(StringTableTest, TurnsLineBreaksOfMarkupIntoMarkup)
{
    const std::string opening = "<", x248(248, 'x'), x240(240, 'x');
    const std::string full = opening + x248; // 249 characters
    struct
    {
        const char* what;
        std::string text;
        std::string shown;
    } const cases[] = {
        {"no markup stays as it is", "one\n\ntwo", "one\n\ntwo"},
        {"one break", "<b>one</b>\ntwo", "<b>one</b><br />two"},
        {"an empty line adds no break", "<i>\n\nx", "<i><br />x"},
        {"249 characters fit", full, full},
        {"the 250th is cut", full + "x", full},
        {"a cut line keeps its break", full + "x\ny", full + "<br />"},
        {"the second line is cut to what is left", opening + x240 + "\n123456789",
         opening + x240 + "<br />12"},
        {"a line that no longer fits adds nothing", full + "\ny\nz", full + "<br />"},
    };
    for (const auto& row : cases) {
        const StringRow rows[] = {{"key", row.text.c_str(), ""}};
        const StringTable table{rows, false};
        UseStringTable(&table);
        EXPECT_EQ(row.shown, FindDefaultString("key", 0).Get()) << row.what;
    }
}

TEST_F(StringTableTest, TranslatesForJobEventsWithoutTheRuntimeTable)
{
    EXPECT_STREQ("Achtung:", TranslateEnglishText("Attention:"));
    EXPECT_STREQ("Schwarz:", TranslateEnglishText("Black"));
    EXPECT_STREQ("nowhere", TranslateEnglishText("nowhere"));
}

TEST(Language, IsGermanWhenTheFirstOptionSaysSo)
{
    EXPECT_STREQ("de", LanguageOfFirstOption("de"));
    EXPECT_STREQ("de", LanguageOfFirstOption("deutsch"));
    for (const char* other : {"en", "", "d", "De", "nl_de"})
        EXPECT_STREQ("en", LanguageOfFirstOption(other)) << other;
    EXPECT_STREQ("en", LanguageOfFirstOption(nullptr));
}

} // namespace
} // namespace tintwerk
