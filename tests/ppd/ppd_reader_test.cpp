// Reading PPDs: what a file says, what is wrong with it and where, encodings, line endings, included files.
#include "host/ppd/ppd_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

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

std::string Repeated(const std::string& text, int times)
{
    std::string repeated;
    while (times-- > 0)
        repeated += text;
    return repeated;
}

constexpr char kOneFeature[] =
    "*OpenUI *Gloss/Gloss: PickOne\n*DefaultGloss: High\n*Gloss Low/Low Gloss: \"0\"\n"
    "*Gloss High: \"1\"\n*CloseUI: *Gloss\n";

TEST(PpdReader, TellsOneClearErrorWithItsLine)
{
    const std::string magic = "*PPD-Adobe: \"4.3\"\n";
    struct
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
        {magic +
             "*OpenUI *PageSize: PickOne\n*PageSize A4: \"\n<<>> setpagedevice\n*End\n*CloseUI: *PageSize\n",
         "x.ppd:3: the closing quote of the value that begins here is missing before the next statement"},
        {magic + "*NickName: \"Tintwerk\n*ModelName Tintwerk\n",
         "x.ppd:2: the closing quote of the value that begins here is missing before the next statement"},
        {magic + "*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n*CloseUI: *PageRegion\n",
         "x.ppd:4: \"*CloseUI: *PageSize\" expected, not \"*CloseUI: *PageRegion\""},
        {magic + "*OpenUI: PickOne\n", "x.ppd:2: the keyword of a feature expected after \"*OpenUI\""},
        {magic + "*Include: \"../other.ppd\"\n",
         "x.ppd:2: the name of a file in the PPD's folder expected, not \"../other.ppd\""},
        {magic + Repeated("*OpenGroup: A\n", 33), "x.ppd:34: groups stand in one another more than 32 deep"},
        {magic + "*Include: \"other.ppd\"\n", "x.ppd:2: the included file \"other.ppd\" cannot be read"},
    };
    for (const auto& row : cases) {
        const PpdResult result = ReadPpdText(row.text, "x.ppd");
        EXPECT_FALSE(result) << row.error;
        EXPECT_EQ(row.error, result.error.Full());
    }
}

TEST(PpdReader, PutsUpWithFeaturesThatAreNotClosed)
{
    struct
    {
        const char* text;
        const char* message;
    } cases[] = {
        {"*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n*OpenUI *InputSlot: PickOne\n*InputSlot Roll: "
         "\"\"\n"
         "*CloseUI: *InputSlot\n",
         "x.ppd:4: \"*CloseUI: *PageSize\" expected before \"*OpenUI *InputSlot\""},
        {"*JCLOpenUI *JCLMode: Boolean\n*JCLMode True: \"\"\n*OpenUI *InputSlot: PickOne\n*InputSlot Roll: "
         "\"\"\n"
         "*CloseUI: *InputSlot\n",
         "x.ppd:4: \"*JCLCloseUI: *JCLMode\" expected before \"*OpenUI *InputSlot\""},
        {"*OpenGroup: Paper\n*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n*CloseGroup: Paper\n*OpenUI "
         "*InputSlot: "
         "PickOne\n*InputSlot Roll: \"\"\n*CloseUI: *InputSlot\n",
         "x.ppd:5: \"*CloseUI: *PageSize\" expected before \"*CloseGroup: Paper\""},
        {"*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n\n\n",
         "x.ppd:3: \"*CloseUI: *PageSize\" expected before the end of the file"},
    };
    for (const auto& row : cases) {
        const PpdResult lenient = Read(row.text);
        ASSERT_TRUE(lenient) << row.message;
        EXPECT_THAT(Warnings(lenient), ElementsAre(row.message));
        EXPECT_EQ(1u, lenient.ppd->Features()[0].options.size());
    }
}

TEST(PpdReader, WarnsOfWhatItPassesOver)
{
    const std::string feature = kOneFeature;
    struct
    {
        std::string text;
        const char* warning;
    } cases[] = {
        {"Gloss High\n" + feature,
         "x.ppd:2: \"*\" expected at the start of \"Gloss High\"; the line is passed over"},
        {feature + "*CloseUI: *Gloss\n", "x.ppd:7: \"*CloseUI: *Gloss\" without its \"*OpenUI\""},
        {feature + "*OpenUI *Gloss: PickOne\n*Gloss Mid: \"\"\n*CloseUI: *Gloss\n",
         "x.ppd:7: \"*OpenUI *Gloss\" a second time; its options are added to the first"},
        {feature + "*Gloss Low: \"2\"\n", "x.ppd:7: \"*Gloss Low\" a second time; the first one counts"},
        {feature + "*OpenUI *Empty: PickOne\n*CloseUI: *Empty\n",
         "x.ppd:7: \"*Empty\" has no options; it is left out"},
        {feature + "*OpenUI *A: PickAny\n*A B: \"\"\n*CloseUI: *A\n",
         "x.ppd:7: \"PickOne\", \"PickMany\" or \"Boolean\" expected, not \"PickAny\"; taken as \"PickOne\""},
        {feature + "*OpenUI *A: PickOne\n*DefaultA: C\n*A B: \"\"\n*CloseUI: *A\n",
         "x.ppd:8: the default \"C\" is no option of \"*A\"; the first option \"B\" is taken"},
        {feature + "*UIConstraints: *Gloss High *Media\n*UIConstraints: *Media *Gloss High\n",
         "x.ppd:7: \"*Media\" is not defined in the file; constraints that name it are passed over"},
        {feature + "*UIConstraints: Gloss High\n", "x.ppd:7: two features with their options expected after "
                                                   "\"*UIConstraints:\"; the constraint is passed over"},
        {feature + "*CloseGroup: Paper\n", "x.ppd:7: \"*CloseGroup: Paper\" without its \"*OpenGroup\""},
    };
    for (const auto& row : cases) {
        const PpdResult result = Read(row.text);
        ASSERT_TRUE(result) << row.warning;
        EXPECT_THAT(Warnings(result), ElementsAre(row.warning));
        EXPECT_EQ("High", result.ppd->Features()[0].options[1].keyword);
    }
}

constexpr char kAllParts[] = R"PPD(*LanguageEncoding: ISOLatin1
*NickName: "Tintwerk X12"
*Product: "(X12)"
*ColorDevice: True
*LanguageLevel: "3"
*SymbolValue ^Long: "a code
of two lines"
*SymbolEnd
*OpenGroup: InstallableOptions/Installed
*OpenUI *Tray2/Second Tray: Boolean
*DefaultTray2: False
*Tray2 True/Yes: ""
*Tray2 False/No: ""
*CloseUI: *Tray2
*CloseGroup: InstallableOptions
*OpenGroup: Paper/Paper
*OpenSubGroup: Feed
*OpenUI *ManualFeed/Manual Feed: Boolean
*OrderDependency: 20.5 AnySetup *ManualFeed
*DefaultManualFeed: False
*ManualFeed True/On: "
  << /ManualFeed true >>
  setpagedevice"
*End
*ManualFeed False: ^Long
*?ManualFeed: "(unknown) ="
*CloseUI: *ManualFeed
*CloseSubGroup: Feed
*CloseGroup: Paper
*JCLOpenUI *JCLMode/Mode: PickMany
*JCLMode A: "@PJL SET MODE=A<0A>"
*JCLCloseUI: *JCLMode
)PPD";

TEST(PpdReader, ReadsFeaturesWithAllTheirParts)
{
    const PpdResult result = Read(kAllParts);
    ASSERT_TRUE(result) << result.error.Full();
    EXPECT_THAT(Warnings(result), IsEmpty());
    EXPECT_EQ("Tintwerk X12", result.ppd->PrinterName());
    EXPECT_EQ("X12", result.ppd->About().product);
    EXPECT_THAT(Keywords(*result.ppd),
                ElementsAre("Tray2 True", "Tray2 False", "ManualFeed True", "ManualFeed False", "JCLMode A"));
    const PpdFeature& tray = *result.ppd->Find("Tray2");
    EXPECT_EQ("Second Tray", tray.text);
    EXPECT_TRUE(tray.installable);
    EXPECT_EQ(1u, tray.defaultOption);
    const PpdFeature& feed = *result.ppd->Find("ManualFeed");
    EXPECT_EQ("Feed", feed.group);
    EXPECT_FALSE(feed.installable);
    EXPECT_EQ(20.5, feed.order);
    EXPECT_EQ("AnySetup", feed.section);
    EXPECT_EQ("\n  << /ManualFeed true >>\n  setpagedevice", feed.options[0].value);
    EXPECT_EQ("a code\nof two lines", feed.options[1].value);
    EXPECT_EQ("False", feed.options[1].text) << "an option without a translation shows its keyword";
    EXPECT_EQ(PpdFeatureType::PickMany, result.ppd->Find("JCLMode")->type);
    EXPECT_TRUE(result.ppd->Find("JCLMode")->jcl);
    EXPECT_EQ("@PJL SET MODE=A\n", result.ppd->Find("JCLMode")->options[0].value);
    EXPECT_EQ(nullptr, result.ppd->Find("*Tray2"));
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
    const bool hasShiftJis = MultiByteToWideChar(932, 0, "A", 1, nullptr, 0) == 1; // the platform's code page
    struct
    {
        const char* encoding;
        const char* raw;
        const char* text;
    } cases[] = {
        {"ISOLatin1", "Gr<f6df>e",
         "Gr\xC3\xB6\xC3\x9F"
         "e"},
        {"ISOLatin1", "Gr<F6 DF>e",
         "Gr\xC3\xB6\xC3\x9F"
         "e"},
        {"ISOLatin1",
         "Gr\xF6\xDF"
         "e",
         "Gr\xC3\xB6\xC3\x9F"
         "e"},
        {"ISOLatin1", "5<80>", "5\xE2\x82\xAC"},
        {"ISOLatin2", "<b3>", "\xC5\x82"},
        {"ISOLatin5", "<fd>", "\xC4\xB1"},
        {"WindowsANSI", "<93>x<94>", "\xE2\x80\x9Cx\xE2\x80\x9D"},
        {"MacStandard", "<8a>", "\xC3\xA4"},
        {"UTF-8", "<c3bc>", "\xC3\xBC"},
        {"UTF-8", "\xC3\xBC", "\xC3\xBC"},
        {"UTF-8", "<fc>", "\xC3\xBC"}, // not UTF-8 after all
        {"None", "<c3bc>", "\xC3\xBC"},
        {"None", "<fc>", "\xC3\xBC"},
        {"JIS83-RKSJ", "<8ea9>", hasShiftJis ? "\xE8\x87\xAA" : "A"}, // cannot be decoded: the keyword
        {"JIS83-RKSJ", "<8e>", "A"},
        {"JIS83-RKSJ", "Plain", "Plain"},
        {"ISOLatin1", "2<2F>3<3A>", "2/3:"},
        {"ISOLatin1", "a < b <xyz> <f>", "a < b <xyz> <f>"},
        {"ISOLatin1", "  ends  ", "ends"},
        {"ISOLatin1", "", "A"},
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
    const std::string text = std::string(kOneFeature) +
                             "*cupsLanguages: \"de de_AT fr\"\n*de.Translation Gloss/Glanz: \"\"\n"
                             "*de.Gloss High/Hoch: \"\"\n*de_AT.Gloss High/Sehr hoch: \"\"\n"
                             "*fr.Gloss High/Haut: \"\"\n*de.Other High/X: \"\"\n";
    struct
    {
        const char* language;
        const char* feature;
        const char* option;
    } cases[] = {{"", "Gloss", "High"},
                 {"de", "Glanz", "Hoch"},
                 {"de_AT", "Glanz", "Sehr hoch"},
                 {"it", "Gloss", "High"}};
    for (const auto& row : cases) {
        PpdReadOptions options;
        options.language = row.language;
        const PpdResult result = Read(text, options);
        ASSERT_TRUE(result);
        EXPECT_EQ(row.feature, result.ppd->Features()[0].text) << row.language;
        EXPECT_EQ(row.option, result.ppd->Features()[0].options[1].text) << row.language;
        EXPECT_EQ("Low Gloss", result.ppd->Features()[0].options[0].text);
    }
}

TEST(PpdReader, ReadsConstraintsOfAllForms)
{
    const std::string features =
        "*OpenUI *A: PickOne\n*A None: \"\"\n*A A1: \"\"\n*A A2: \"\"\n*CloseUI: *A\n"
        "*OpenUI *B: PickOne\n*B None: \"\"\n*B B1: \"\"\n*CloseUI: *B\n"
        "*OpenUI *PageSize: PickOne\n*PageSize A4: \"\"\n*CloseUI: *PageSize\n*CustomPageSize True: \"\"\n";
    struct
    {
        const char* text;
        std::vector<std::size_t> expected; // feature and option, twice
    } cases[] = {
        {"*UIConstraints: *A *B", {0, kNoOption, 1, kNoOption}},
        {"*UIConstraints: *A A1 *B", {0, 1, 1, kNoOption}},
        {"*UIConstraints: *A\t*B  B1", {0, kNoOption, 1, 1}},
        {"*UIConstraints: *B B1 *A A2", {1, 1, 0, 2}},
        {"*UIConstraints: \"*B B1 *A A2\"", {1, 1, 0, 2}},
        {"*NonUIConstraints: *CustomPageSize True *B B1", {2, 1, 1, 1}},
        {"*UIConstraints: *B B1 *CustomPageSize", {1, 1, 2, 1}},
        {"*NonUIConstraints: *Unknown *B B1", {}},
        {"*UIConstraints: *A A1 *A A2", {}},
    };
    for (const auto& row : cases) {
        const PpdResult result = Read(features + row.text + "\n");
        ASSERT_TRUE(result);
        EXPECT_THAT(Warnings(result), IsEmpty()) << row.text;
        std::vector<std::size_t> read;
        for (const PpdConstraint& one : result.ppd->Constraints())
            read.insert(read.end(), {one.feature1, one.option1, one.feature2, one.option2});
        EXPECT_EQ(row.expected, read) << row.text;
    }
}

TEST(PpdReader, MeasuresPageSizesInThousandthsOfAMillimetre)
{
    const PpdResult result = Read(
        "*OpenUI *PageSize: PickOne\n*PageSize A4/DIN A4: \"\"\n*PageSize Letter: \"\"\n*CloseUI: *PageSize\n"
        "*ImageableArea A4: \"9 18 586 833\"\n*PaperDimension A4/DIN A4: \"595.28 841.89\"\n"
        "*PaperDimension Letter: \"612 792\"\n*PaperDimension Unknown: \"1 1\"\n"
        "*CustomPageSize True: \"code\"\n*ParamCustomPageSize Width: 1 points 72 1440\n*MaxMediaHeight: "
        "\"7200\"\n");
    ASSERT_TRUE(result);
    ASSERT_EQ(2u, result.ppd->Forms().size());
    const PpdForm& a4 = result.ppd->Forms()[0];
    EXPECT_EQ("DIN A4", a4.text);
    EXPECT_EQ(210002, a4.width);
    EXPECT_EQ(297000, a4.height);
    EXPECT_EQ(3175, a4.left);
    EXPECT_EQ(6350, a4.bottom);
    EXPECT_EQ(215900, result.ppd->Forms()[1].width);
    EXPECT_EQ(279400, result.ppd->Forms()[1].height);
    EXPECT_THAT(Keywords(*result.ppd),
                ElementsAre("PageSize A4", "PageSize Letter", "PageSize CustomPageSize"));
    EXPECT_EQ(25400, result.ppd->CustomSize()->minWidth);
    EXPECT_EQ(508000, result.ppd->CustomSize()->maxWidth);
    EXPECT_EQ(2540000, result.ppd->CustomSize()->maxHeight);
}

TEST(PpdReader, IncludesFilesOfItsFolderWithoutLoops)
{
    std::map<std::string, std::string> files{
        {"gloss.ppd", kOneFeature},
        {"bad.ppd", "*% first\n*OpenUI: x\n"},
        {"self.ppd", "*Include: \"self.ppd\"\n"},
        {"a.ppd", "*Include: \"b.ppd\"\n"},
        {"b.ppd", "\n*Include: \"a.ppd\"\n"},
    };
    for (int i = 0; i < 20; ++i)
        files["deep" + std::to_string(i)] = "*Include: \"deep" + std::to_string(i + 1) + "\"\n";
    for (int i = 0; i < 200; ++i)
        files["fan.ppd"] += "*Include: \"leaf.ppd\"\n";
    files["leaf.ppd"] = "*% nothing\n";
    const PpdIncluder includer = [&files](const std::string& name) -> std::optional<std::string> {
        const auto file = files.find(name);
        return file == files.end() ? std::nullopt : std::optional(file->second);
    };
    const auto read = [&](const std::string& name) {
        return ReadPpdText("*PPD-Adobe: \"4.3\"\n*Include: \"" + name + "\"\n*Include: \"gloss.ppd\"\n",
                           "dir/x.ppd", {}, includer);
    };
    const PpdResult overridden =
        ReadPpdText("*PPD-Adobe: \"4.3\"\n*DefaultGloss: Low\n*Include: \"gloss.ppd\"\n*DefaultGloss: High\n",
                    "x.ppd", {}, includer);
    ASSERT_TRUE(overridden) << overridden.error.Full();
    EXPECT_EQ("Low",
              overridden.ppd->Features()[0].options[overridden.ppd->Features()[0].defaultOption].keyword)
        << "the first statement counts, so that a file can override what it includes";
    const PpdResult twice = read("gloss.ppd");
    ASSERT_TRUE(twice) << twice.error.Full();
    EXPECT_THAT(Keywords(*twice.ppd), ElementsAre("Gloss Low", "Gloss High"));
    EXPECT_EQ("dir/gloss.ppd:1: \"*OpenUI *Gloss\" a second time; its options are added to the first",
              Warnings(twice).front());

    EXPECT_EQ("dir/bad.ppd:2: the keyword of a feature expected after \"*OpenUI\"",
              read("bad.ppd").error.Full());
    EXPECT_EQ("dir/self.ppd:1: \"self.ppd\" includes itself", read("self.ppd").error.Full());
    EXPECT_EQ("dir/b.ppd:2: \"a.ppd\" includes itself", read("a.ppd").error.Full());
    EXPECT_EQ("dir/deep6:1: files include one another more than 8 deep", read("deep0").error.Full());
    EXPECT_EQ("dir/fan.ppd:99: more than 100 files are included", read("fan.ppd").error.Full());
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

TEST(PpdReader, SurvivesEveryCutOfAFile)
{
    const PpdResult whole = ReadPpd(TINTWERK_SOURCE_DIR "/samples/tintwerk-lite.ppd");
    ASSERT_TRUE(whole) << whole.error.Full();
    std::string text = "*PPD-Adobe: \"4.3\"\r*X <41>: ^Y\r\n*Include: \"n\"\n";
    text += std::string(kOneFeature) +
            "*de.Gloss High/H<c3>: \"\"\n*UIConstraints: *Gloss *Gloss\n*OpenGroup: A\n*CloseGroup: A\n";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const PpdResult result = ReadPpdText(text.substr(0, length), "x.ppd");
        EXPECT_NE(static_cast<bool>(result), !result.error.text.empty()) << length;
    }
    EXPECT_EQ("no/such.ppd: the file cannot be read: there is no such file",
              ReadPpd("no/such.ppd").error.Full());
}

// The printers of our own must be faultless and fit what the driver's pages can take.
TEST(Samples, AreReadWithoutAWord)
{
    struct
    {
        const char* file;
        const char* name;
        std::size_t features;
    } cases[] = {{"tintwerk-x12.ppd", "Tintwerk X12 0012", 70},
                 {"tintwerk-s8.ppd", "Tintwerk S8 0008", 50},
                 {"tintwerk-lite.ppd", "Tintwerk Lite 0004", 12}};
    for (const auto& row : cases) {
        const PpdResult result = ReadPpd(std::string(TINTWERK_SOURCE_DIR "/samples/") + row.file);
        ASSERT_TRUE(result) << result.error.Full();
        EXPECT_THAT(Warnings(result), IsEmpty());
        EXPECT_EQ(row.name, result.ppd->PrinterName());
        EXPECT_GE(result.ppd->Features().size(), row.features) << row.file;
        std::size_t listSize = 1;
        for (const PpdFeature& feature : result.ppd->Features())
            listSize += feature.keyword.size() + 1;
        EXPECT_LE(listSize + sizeof "%Orientation" + sizeof "%PageOrder" + sizeof "%PagePerSheet", 2048u)
            << row.file;
    }
}

} // namespace
} // namespace tintwerk
