// Conversions between 8-bit and 16-bit texts and the lookup of texts that the code carries in English.
#include "src/i18n/texts.h"

#include <gtest/gtest.h>

#include <string>

#include "src/i18n/string_table.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

TEST(Texts, ConvertFromUtf8)
{
    EXPECT_EQ(Text(TEXT("Gr\u00FCn")), CopyWideFromUtf8("Gr\xC3\xBCn").get());
    EXPECT_EQ(Text(TEXT("\U0001F5A8")), CopyWideFromUtf8("\xF0\x9F\x96\xA8").get());
    EXPECT_EQ(Text(), CopyWideFromUtf8(nullptr).get());
    EXPECT_EQ(Text(), CopyWideFromUtf8("cut \xC3").get());
    EXPECT_EQ(Text(), CopyWideFromUtf8("Gr\xFCn").get());
}

TEST(Texts, FormatInThePortableNotation)
{
    EXPECT_EQ(Text(TEXT("wide and narrow")),
              CopyFormattedString(TEXT("%@ and %s"), TEXT("wide"), "narrow").get());
    EXPECT_EQ(Text(TEXT("8bit, 16bit, 8bit")),
              CopyFormattedString(TEXT("%s, %@, %s"), "8bit", TEXT("16bit"), "8bit").get());
    EXPECT_EQ(Text(TEXT("-7 100%")), CopyFormattedString(TEXT("%d %d%%"), -7, 100).get());
    EXPECT_EQ(Text(), CopyFormattedString(TEXT("")).get());
    EXPECT_EQ(Text(), CopyFormattedString(nullptr).get());
    const std::string text(5000, 'y');
    EXPECT_EQ(Text(5000, 'y'), CopyFormattedString(TEXT("%s"), text.c_str()).get());
}

class LocalizedText : public testing::Test
{
protected:
    LocalizedText() { InitStringTable("de"); }
    ~LocalizedText() override { UseStringTable(nullptr); }

    Text Of(const Text& english)
    {
        trace.Take();
        return CFCopyLocalizedString(english.c_str(), TEXT("comment")).get();
    }

    DebugLines trace;
};

TEST_F(LocalizedText, IsFoundByItsEnglishWording)
{
    EXPECT_EQ(TEXT("Schwarz:"), Of(TEXT("Black")));
    EXPECT_EQ(
        (std::vector<Text>{TEXT("CFCopyLocalizedString: Black\n"), TEXT("defaultstring found #0: Schwarz:\n"),
                           TEXT("Translation = Schwarz:\n")}),
        trace.Take());
    EXPECT_EQ(TEXT("Gr\u00FCn:"), Of(TEXT("Green")));
    EXPECT_EQ(TEXT("Anteil helle\nTinten"), Of(TEXT("Bright Inks\nUsage")));
}

TEST_F(LocalizedText, ComesBackUnchangedWhenItIsUnknown)
{
    struct
    {
        const char* what;
        Text text;
        bool looked;
    } const cases[] = {
        {"not in the table", TEXT("Colour"), true},
        {"255 characters", Text(255, 'x'), true},
        {"256 characters", Text(256, 'x'), false},
        {"a character beyond ASCII", TEXT("Gr\u00FCn"), true},
        {"a character beyond ISO 8859-1", TEXT("5 \u20AC"), false},
        {"half a surrogate pair", Text(1, static_cast<WCHAR>(0xD83D)), false},
        {"empty", {}, true},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(row.text, Of(row.text)) << row.what;
        EXPECT_EQ(!row.looked, trace.Contains(TEXT("Error creating cstring\n"))) << row.what;
    }
    EXPECT_EQ(Text(), CFCopyLocalizedString(nullptr, nullptr).get());
}

} // namespace
} // namespace tintwerk
