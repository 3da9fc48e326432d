// Reading PPDs: what a file says, what is wrong with it and where, encodings, line endings, included files.
#include "host/ppd/ppd_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "host/ppd/ppd_text.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PpdResult Read(const std::string& text, const PpdReadOptions& options = {})
{
    return ReadPpdText("*PPD-Adobe: \"4.3\"\n" + text, "x.ppd", options);
}

// "PageSize A4" for every option of every feature, in order.
std::vector<std::string> Keywords(const Ppd& ppd)
{
    std::vector<std::string> keywords;
    for (const PpdFeature& feature : ppd.Features()) {
        for (const PpdOption& option : feature.options)
            keywords.push_back(std::string(feature.keyword) + " " + std::string(option.keyword));
    }
    return keywords;
}

std::vector<std::string> Warnings(const PpdResult& result)
{
    std::vector<std::string> lines;
    for (const PpdMessage& warning : result.ppd->Warnings())
        lines.push_back(warning.Full());
    return lines;
}

constexpr char kOneFeature[] =
    "*OpenUI *Gloss/Gloss: PickOne\n*DefaultGloss: High\n*Gloss Low/Low Gloss: \"0\"\n"
    "*Gloss High: \"1\"\n*CloseUI: *Gloss\n";

TEST(PpdReader, KnowsAPpdByItsFirstLine)
{
    const struct
    {
        std::string text;
        const char* error;
    } cases[] = {
        {"", "x.ppd:1: \"*PPD-Adobe: \"4.3\"\" expected; the file is empty"},
        {"%!PS-Adobe-3.0\n", "x.ppd:1: \"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD"},
        {"\n*% a comment\n*NickName: \"X\"\n",
         "x.ppd:3: \"*PPD-Adobe: \"4.3\"\" expected as the first line of a PPD, not \"*NickName\""},
        {std::string("*PPD-Adobe: \"4.3\"\n*A\0: 1\n", 25),
         "x.ppd: holds zero bytes; a PPD is a text of 8-bit characters"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(row.error, ReadPpdText(row.text, "x.ppd").error.Full());
}

TEST(PpdReader, TellsWhatIsWrongWithItsLine)
{
    std::string groups;
    for (int i = 0; i < 33; ++i)
        groups += "*OpenGroup: A\n";
    const struct
    {
        bool isRead;      // what is merely sloppy is passed over
        std::string text; // from line 7 on
        const char* message;
    } cases[] = {
        {false, "*OpenUI *A: PickOne\n*A B: \"\n<<>> setpagedevice\n*End\n*CloseUI: *A\n",
         "x.ppd:8: the closing quote of the value that begins here is missing before the next statement"},
        {false, "*OpenUI *A: PickOne\n*A B: \"\"\n*CloseUI: *PageRegion\n",
         "x.ppd:9: \"*CloseUI: *A\" expected, not \"*CloseUI: *PageRegion\""},
        {false, "*OpenUI: PickOne\n", "x.ppd:7: the keyword of a feature expected after \"*OpenUI\""},
        {false, "*Include: \"../other.ppd\"\n",
         "x.ppd:7: the name of a file in the PPD's folder expected, not \"../other.ppd\""},
        {false, groups, "x.ppd:39: groups stand in one another more than 32 deep"},
        {false, "*Include: \"other.ppd\"\n", "x.ppd:7: the included file \"other.ppd\" cannot be read"},
        {true, "*JCLOpenUI *A: Boolean\n*A True: \"\"\n*OpenUI *C: PickOne\n*C D: \"\"\n*CloseUI: *C\n",
         "x.ppd:9: \"*JCLCloseUI: *A\" expected before \"*OpenUI *C\""},
        {true, "*OpenGroup: Paper\n*OpenUI *A: PickOne\n*A B: \"\"\n*CloseGroup: Paper\n",
         "x.ppd:10: \"*CloseUI: *A\" expected before \"*CloseGroup: Paper\""},
        {true, "*OpenUI *A: PickOne\n*A B: \"\"\n\n\n",
         "x.ppd:8: \"*CloseUI: *A\" expected before the end of the file"},
        {true, "*OpenUI *Gloss: PickOne\n*Gloss Mid: \"\"\n*CloseUI: *Gloss\n",
         "x.ppd:7: \"*OpenUI *Gloss\" a second time; its options are added to the first"},
        {true, "*Gloss Low: \"2\"\n", "x.ppd:7: \"*Gloss Low\" a second time; the first one counts"},
        {true, "*OpenUI *A: PickOne\n*CloseUI: *A\n*OpenUI *B: PickOne\n*B C: \"\"\n*CloseUI: *B\n",
         "x.ppd:7: \"*A\" has no options; it is left out"},
        {true, "*OpenUI *A: PickOne\n*DefaultA: C\n*A B: \"\"\n*CloseUI: *A\n",
         "x.ppd:8: the default \"C\" is no option of \"*A\"; the first option \"B\" is taken"},
        {true, "*UIConstraints: *Gloss High *Media\n*UIConstraints: *Media *Gloss High\n",
         "x.ppd:7: \"*Media\" is not defined in the file; constraints that name it are passed over"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.message);
        const PpdResult result = Read(kOneFeature + row.text);
        ASSERT_EQ(static_cast<bool>(result), row.isRead);
        if (!result) {
            EXPECT_EQ(row.message, result.error.Full());
            continue;
        }
        EXPECT_THAT(Warnings(result), ElementsAre(row.message));
        EXPECT_EQ("1", result.ppd->Features()[0].options[1].value);
        const PpdFeature& last = result.ppd->Features().back();
        EXPECT_EQ(&last, result.ppd->Find(last.keyword));
    }
}

// What else is read of a feature tintwerk features tells.
TEST(PpdReader, ReadsCodes)
{
    const PpdResult result =
        Read("*SymbolValue ^Long: \"a code\nof two lines\"\n*SymbolEnd\n"
             "*OpenUI *Feed: Boolean\n*Feed True/On: \"\n  << /Feed true >>\n  run\"\n*End\n"
             "*Feed False: ^Long\n*SymbolValue Long: \"none\"\n*Feed Unknown: \"Long\"\n*?Feed: \"(unknown) "
             "=\"\n*CloseUI: *Feed\n"
             "*JCLOpenUI *Mode: PickOne\n*Mode A: \"@PJL SET MODE=A<0A>\"\n"
             "*JCLCloseUI: *Mode\n");
    ASSERT_TRUE(result) << result.error.Full();
    EXPECT_THAT(Warnings(result), IsEmpty());
    EXPECT_EQ("\n  << /Feed true >>\n  run", result.ppd->Find("Feed")->options[0].value);
    EXPECT_EQ("a code\nof two lines", result.ppd->Find("Feed")->options[1].value);
    EXPECT_EQ("Long", result.ppd->Find("Feed")->options[2].value);
    EXPECT_EQ("@PJL SET MODE=A\n", result.ppd->Find("Mode")->options[0].value);
    EXPECT_EQ(nullptr, result.ppd->Find("*Feed"));
}

TEST(PpdReader, ReadsAllLineEndingsAlike)
{
    const std::string text = std::string("*PPD-Adobe: \"4.3\"\n\n*% comment\n") + kOneFeature +
                             "*OpenUI *A: PickOne\n*A B: \"two\nlines\"\n*End\n*CloseUI: *A\nstray";
    for (const std::string ending : {"\n", "\r", "\r\n"}) {
        std::string ended;
        for (const char c : text)
            ended += c == '\n' ? ending : std::string(1, c);
        const PpdResult result = ReadPpdText(ended, "x.ppd");
        ASSERT_TRUE(result) << result.error.Full();
        EXPECT_THAT(Keywords(*result.ppd), ElementsAre("Gloss Low", "Gloss High", "A B"));
        EXPECT_EQ("High", result.ppd->Features()[0].options[result.ppd->Features()[0].defaultOption].keyword);
        EXPECT_THAT(
            Warnings(result),
            ElementsAre("x.ppd:14: \"*\" expected at the start of \"stray\"; the line is passed over"));
    }
}

TEST(PpdReader, DecodesTranslationsFromTheFilesEncoding)
{
    const struct
    {
        const char *encoding, *raw, *text;
    } cases[] = {
        {"ISOLatin1", "<F6 df> z", "\xC3\xB6\xC3\x9F z"},
        {"ISOLatin1", "\xF6\xDFz", "\xC3\xB6\xC3\x9Fz"},
        {"ISOLatin1", "5<80>", "5\xE2\x82\xAC"},
        {"ISOLatin1", "2<2F>3<3A>", "2/3:"},
        {"ISOLatin1", "a < b <xyz> <f>", "a < b <xyz> <f>"},
        {"ISOLatin1", "  ends  ", "ends"},
        {"ISOLatin1", "", "A"},
        {"ISOLatin2", "<b3>", "\xC5\x82"},
        {"ISOLatin5", "<fd>", "\xC4\xB1"},
        {"WindowsANSI", "<93>x<94>", "\xE2\x80\x9Cx\xE2\x80\x9D"},
        {"MacStandard", "<8a>", "\xC3\xA4"},
        {"UTF-8", "<c3bc>", "\xC3\xBC"},
        {"UTF-8", "<fc>", "\xC3\xBC"}, // not UTF-8 after all
        {"None", "<c3bc>", "\xC3\xBC"},
        {"None", "<fc>", "\xC3\xBC"},
        {"JIS83-RKSJ", "<8ea9>", "\xE8\x87\xAA"},
        {"JIS83-RKSJ", "<8e>", "A"}, // cannot be decoded: the keyword
        {"MacJapanese", "<8ea9>", "\xE8\x87\xAA"},
        {"ShiftJIS", "<8ea9>", "\xE8\x87\xAA"},
        {"GB2312-80", "<d7d4>", "\xE8\x87\xAA"},
        {"GBK", "<d7d4>", "\xE8\x87\xAA"},
        {"BIG5", "<a6db>", "\xE8\x87\xAA"},
        {"KSC5601-1992", "<c0da>", "\xEC\x9E\x90"},
        {"EUC-JP", "<bcab>", "\xE8\x87\xAA"},
    };
    for (const auto& row : cases) {
        const PpdResult result = Read(std::string("*OpenUI *F: PickOne\n*F A/") + row.raw +
                                      ": \"\"\n*CloseUI: *F\n*LanguageEncoding: " + row.encoding + "\n");
        ASSERT_TRUE(result);
        EXPECT_EQ(row.text, result.ppd->Features()[0].options[0].text) << row.encoding << " " << row.raw;
    }
}

TEST(PpdReader, TakesTheTranslationsOfALanguage)
{
    const std::string text =
        std::string(kOneFeature) +
        "*cupsLanguages: \"de de_AT fr\"\n*de.Translation Gloss/Glanz: \"\"\n"
        "*de.Gloss High/Hoch: \"\"\n*de.Gloss High/Dick: \"\"\n*de_AT.Gloss High/Sehr hoch: \"\"\n"
        "*fr.Gloss High/Haut: \"\"\n*de.Other High/X: \"\"\n";
    const std::pair<const char*, const char*> cases[] = {{"", "Gloss, Low Gloss, High"},
                                                         {"de", "Glanz, Low Gloss, Hoch"},
                                                         {"de_AT", "Glanz, Low Gloss, Sehr hoch"},
                                                         {"it", "Gloss, Low Gloss, High"}};
    for (const auto& [language, texts] : cases) {
        PpdReadOptions options;
        options.language = language;
        const PpdResult result = Read(text, options);
        ASSERT_TRUE(result);
        const PpdFeature& gloss = result.ppd->Features()[0];
        EXPECT_EQ(texts, std::string(gloss.text) + ", " + Joined(gloss.options, &PpdOption::text));
    }
}

TEST(PpdReader, IncludesFilesOfItsFolderWithoutLoops)
{
    std::map<std::string, std::string> files{
        {"gloss.ppd", kOneFeature},
        {"bad.ppd", "*% first\n*OpenUI: x\n"},
        {"self.ppd", "*Include: \"self.ppd\"\n"},
        {"a.ppd", "*Include: \"b.ppd\"\n"},
        {"b.ppd", "\n*Include: \"a.ppd\"\n"},
        {"leaf.ppd", "*% nothing\n"},
    };
    for (int i = 0; i < 20; ++i)
        files["deep" + std::to_string(i)] = "*Include: \"deep" + std::to_string(i + 1) + "\"\n";
    for (int i = 0; i < 200; ++i)
        files["fan.ppd"] += "*Include: \"leaf.ppd\"\n";
    const auto read = [&](const std::string& name) {
        const std::string include = "*Include: \"" + name + "\"\n";
        return ReadPpdText("*PPD-Adobe: \"4.3\"\n" + include + "*DefaultGloss: Low\n" + include, "dir/x.ppd",
                           {}, [&](const std::string& file) {
                               const auto found = files.find(file);
                               return found == files.end() ? std::nullopt : std::optional(found->second);
                           });
    };
    const PpdResult twice = read("<gloss.ppd>");
    ASSERT_TRUE(twice) << twice.error.Full();
    EXPECT_THAT(Keywords(*twice.ppd), ElementsAre("Gloss Low", "Gloss High"));
    EXPECT_EQ("dir/gloss.ppd:1: \"*OpenUI *Gloss\" a second time; its options are added to the first",
              Warnings(twice).front());
    const std::pair<const char*, const char*> errors[] = {
        {"<gloss.ppd", "dir/x.ppd:2: the included file \"<gloss.ppd\" cannot be read"},
        {"bad.ppd", "dir/bad.ppd:2: the keyword of a feature expected after \"*OpenUI\""},
        {"self.ppd", "dir/self.ppd:1: \"self.ppd\" includes itself"},
        {"a.ppd", "dir/b.ppd:2: \"a.ppd\" includes itself"},
        {"deep0", "dir/deep6:1: files include one another more than 8 deep"},
        {"fan.ppd", "dir/fan.ppd:99: more than 100 files are included"},
    };
    for (const auto& [name, error] : errors)
        EXPECT_EQ(error, read(name).error.Full());
    // The first statement counts, so that a file can override what it includes.
    const PpdResult overridden =
        ReadPpdText("*PPD-Adobe: \"4.3\"\n*DefaultGloss: Low\n*Include: \"gloss.ppd\"\n", "x.ppd", {},
                    [&](const std::string& name) { return std::optional(files[name]); });
    EXPECT_EQ(0u, overridden.ppd->Features()[0].defaultOption);
}

TEST(PpdReader, UnpacksWhatGzipPacked)
{
    const std::string packed(
        "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xd3\x0a\x08\x70\xd1\x75\x4c\xc9\x4f\x4a\xb5\x52"
        "\x50\x32\xd1\x33\x56\xe2\xd2\xf2\xcb\x4c\xce\xf6\x4b\xcc\x05\x09\x04\x24\x26\x67\xa7\xa6"
        "\x28\x71\x01\x00\x24\x25\x28\xe3\x26\x00\x00\x00",
        56);
    const PpdResult whole = ReadPpdText(packed, "x.ppd.gz");
    const PpdResult cut = ReadPpdText(packed.substr(0, packed.size() - 9), "x.ppd.gz");
    if (whole) {
        EXPECT_EQ("Packed", whole.ppd->PrinterName());
        EXPECT_EQ("packed, but damaged or cut off", cut.error.text);
    } else { // a build without zlib
        EXPECT_EQ("packed; this build does not unpack: gunzip first", whole.error.text);
    }
}

} // namespace
} // namespace tintwerk
