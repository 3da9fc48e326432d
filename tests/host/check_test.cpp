// tintwerk check: every fault that an author may put into the sample is told once, at its line, with its
// code; what is right is passed over in silence.
#include "tests/host/program_fixture.h"

#include <algorithm>
#include <map>
#include <set>

#include "host/cli/check_rules.h"
#include "host/ppd/ppd_reader.h"

namespace tintwerk {

namespace {

constexpr char kHead[] = "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: "
                         "\"1.0\"\n*LanguageVersion: English\n"
                         "*LanguageEncoding: ISOLatin1\n*PCFileName: \"TEST.PPD\"\n*Manufacturer: "
                         "\"Test\"\n*Product: \"(Test)\"\n"
                         "*PSVersion: \"(3010) 0\"\n*ModelName: \"Test\"\n*ShortNickName: "
                         "\"Test\"\n*NickName: \"Test\"\n"; // 12 lines

std::string TextOfSample(const std::string& name)
{
    return ContentOf(Sample(name));
}

std::string Feature(const std::string& keyword, const std::vector<std::string>& options)
{
    std::string text = "*OpenUI *" + keyword + ": PickOne\n*Default" + keyword + ": " + options[0] + "\n";
    for (const std::string& option : options)
        text += "*" + keyword + " " + option + ": \"\"\n";
    return text + "*CloseUI: *" + keyword + "\n";
}

// "line code feature: text" of what is told; without the texts "line code".
std::vector<std::string> Told(const std::string& text, const std::set<std::string_view>& ignored,
                              bool withTexts)
{
    PpdReadOptions options;
    options.toCheck = true;
    const PpdResult read = ReadPpdText(text, "test.ppd", options);
    if (!read) return {std::to_string(read.error.line) + " unreadable"};
    std::vector<std::string> told;
    for (const Finding& finding : PpdCheck(*read.ppd, RuleChoice().set()).Run()) {
        if (ignored.contains(finding.rule->code)) continue;
        told.push_back(std::to_string(finding.line) + " " + std::string(finding.rule->code));
        if (withTexts) told.back() += " " + finding.feature + ": " + finding.text;
    }
    return told;
}

std::string LineAt(const std::string& text, std::size_t at)
{
    return std::to_string(1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

constexpr char kManual[] = "*InputSlot Manual/Manual Feed: \"<</InputSlot(Manual)>>setpagedevice\"";
constexpr char kClose[] = "*CloseUI: *InputSlot";
const std::string kLong(300, '0');

// A line of the sample, what stands in its place, and what is told where: `at` begins the line, else it is
// the one that was replaced. "+" before the replacement keeps the line and puts it behind; "~" puts it in the
// place of a word wherever that stands.
const struct Fault
{
    const char* code;
    std::string line, put;
    const char* at = nullptr;
} kFaults[] = {
    // clang-format off
    {"first-line", "*PPD-Adobe: \"4.3\"", "*% the X12\n*PPD-Adobe: \"4.3\"", "*PPD-Adobe"},
    {"first-line", "*PPD-Adobe: \"4.3\"", "*FormatVersion: \"4.3\"\n*PPD-Adobe: \"4.3\""},
    {"byte-order-mark", "*PPD-Adobe: \"4.3\"", "\xEF\xBB\xBF*PPD-Adobe: \"4.3\""},
    {"unreadable", "*PPD-Adobe: \"4.3\"", "*PPDAdobe: \"4.3\""},
    {"unreadable", "*FreeVM: \"67108864\"", "*Include: \"missing.ppd\""},
    {"stray-line", "*TTRasterizer: Type42", "TTRasterizer: Type42"},
    {"closing-quote", "*PageSize A3/A3: \"<</PageSize[842 1191]/ImagingBBox null>>setpagedevice\"",
     "*PageSize A3/A3: \"<</PageSize[842 1191]/ImagingBBox null>>setpagedevice"},
    {"closing-quote", "*FreeVM: \"67108864\"", "*FreeVM: \"67108864"},
    {"colon", "*ColorDevice: True", "*ColorDevice True"},
    {"colon", "*DefaultOutputBin: Basket", "*DefaultOutputBin Basket", "*DefaultOutputBin"},
    {"colon", kClose, "+*UIConstraints *InputSlot Roll1 *Duplex None", nullptr},
    {"keyword-misspelt", "*NonUIOrderDependency: 10 AnySetup *CustomPageSize", "*NonUIOrderDependancy: 10 AnySetup *CustomPageSize"},
    {"line-length", "*FreeVM: \"67108864\"", "*FreeVM: \"" + kLong + "\""},
    {"required-missing", "*FileVersion: \"5.0\"", "", "*PPD-Adobe"},
    {"required-missing", "*ModelName: \"Tintwerk X12\"", "*ModelName: \"\""},
    {"required-missing", "*PCFileName: \"TWX12.PPD\"", "*PCFileName: \"\""},
    {"required-missing", "*FormatVersion: \"4.3\"", "*FormatVersion:"},
    {"encoding-missing", "*LanguageEncoding: ISOLatin1", "", "*PPD-Adobe"},
    {"encoding-unknown", "*LanguageEncoding: ISOLatin1", "*LanguageEncoding: ISOLatin77"},
    {"value-quotes", "*NickName: \"Tintwerk X12 0012\"", "*NickName: Tintwerk X12 0012"},
    {"value-quotes", "*Product: \"(Tintwerk X12)\"", "*Product: Tintwerk X12"},
    {"value-quotes", "*PaperDimension A2/A2: \"1191 1684\"", "*PaperDimension A2/A2: 1191 1684"},
    {"value-quotes", "*ImageableArea A2/A2: \"9 9 1182 1675\"", "*ImageableArea A2/A2: 9 9 1182 1675"},
    {"value-unknown", "*ColorDevice: True", "*ColorDevice: Yes"},
    {"value-unknown", "*LanguageLevel: \"3\"", "*LanguageLevel: \"three\""},
    {"file-name", "*PCFileName: \"TWX12.PPD\"", "*PCFileName: \"TINTWERK-X12.PPD\""},
    {"product-form", "*Product: \"(Tintwerk X12)\"", "*Product: \"Tintwerk X12\""},
    {"short-name", "*ShortNickName: \"Tintwerk X12 0012\"", "*ShortNickName: \"Tintwerk X12 with twelve inks 0012\""},
    {"keyword-twice", "*NickName: \"Tintwerk X12 0012\"", "+*NickName: \"Tintwerk X13 0013\"", "*NickName: \"Tintwerk X13"},
    {"keyword-twice", "*FreeVM: \"67108864\"", "+*FreeVM: \"1\"", "*FreeVM: \"1\""},
    {"keyword-twice", "*ParamCustomPageSize Width: 1 points 144 1728", "+*ParamCustomPageSize Width: 1 points 144 999", "*ParamCustomPageSize Width: 1 points 144 999"},
    {"keyword-twice", "*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]/ImagingBBox null>>setpagedevice\"", "+*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]/ImagingBBox 1>>setpagedevice\"", "*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]/ImagingBBox 1"},
    {"keyword-twice", "*DefaultMediaType: Gloss6", "+*DefaultMediaType: Plain0", "*DefaultMediaType: Plain0"},
    {"keyword-twice", "*PaperDimension A2/A2: \"1191 1684\"", "+*PaperDimension A2/A2: \"1191 1700\"", "*PaperDimension A2/A2: \"1191 1700"},
    {"keyword-twice", "*OrderDependency: 17 AnySetup *OutputBin", "+*OrderDependency: 18 AnySetup *OutputBin", nullptr},
    {"feature-not-closed", kClose, "", "*OpenUI *OutputBin"},
    {"feature-closed-as", kClose, "*CloseUI: *InputSlots"},
    {"feature-not-open", kClose, "+*CloseUI: *Gloss", "*CloseUI: *Gloss"},
    {"feature-twice", kClose, "+*OpenUI *InputSlot: PickOne\n*CloseUI: *InputSlot", "*OpenUI *InputSlot: PickOne"},
    {"feature-type", "*OpenUI *InputSlot/Paper Source: PickOne", "*OpenUI *InputSlot/Paper Source: PickAny"},
    {"group-not-closed", "*CloseGroup: Adjustment", "", "*OpenGroup: Adjustment"},
    {"group-closed-as", "*CloseGroup: Color", "*CloseGroup: Colour"},
    {"group-not-open", "*CloseGroup: Color", "+*CloseGroup: Color", nullptr},
    {"no-options", kClose, "+*OpenUI *Empty: PickOne\n*DefaultEmpty: A\n*CloseUI: *Empty", "*OpenUI *Empty"},
    {"boolean-options", kClose, "+*OpenUI *Gloss: Boolean\n*DefaultGloss: True\n*Gloss True: \"\"\n*CloseUI: *Gloss", "*OpenUI *Gloss"},
    {"option-twice", kManual, std::string("+") + kManual, nullptr},
    {"option-form", kManual, "+*InputSlot Extra/Extra \"\"", "*InputSlot Extra"},
    {"option-lost", kManual, "*InputSlots Manual/Manual Feed: \"\""},
    {"option-quotes", kManual, "*InputSlot Manual/Manual Feed: <</InputSlot(Manual)>>setpagedevice"},
    {"symbol-unknown", kManual, "*InputSlot Manual/Manual Feed: ^Manual"},
    {"code-balance", kManual, "*InputSlot Manual/Manual Feed: \"<</InputSlot(Manual>>setpagedevice\""},
    {"code-balance", kManual, "*InputSlot Manual/Manual Feed: \"<</InputSlot(Manual)setpagedevice\""},
    {"code-balance", kManual, "*InputSlot Manual/Manual Feed: \"<</InputSlot(Manual)>>setpagedevice}\""},
    {"code-balance", kManual, "*InputSlot Manual/Manual Feed: \"<</InputSlot(Manual)>setpagedevice\""},
    {"code-balance", kManual, "*InputSlot Manual/Manual Feed: \"</InputSlot(Manual)>>setpagedevice\""},
    {"default-missing", "*DefaultOutputBin: Basket", "", "*OpenUI *OutputBin"},
    {"default-lost", "*DefaultOutputBin: Basket", "*DefaultOutputbin: Basket"},
    {"default-no-option", "*DefaultOutputBin: Basket", "*DefaultOutputBin: Unknown"},
    {"default-unknown", "*DefaultOutputBin: Basket", "*DefaultOutputBin: Baskets"},
    {"constraint-form", kClose, "+*UIConstraints: InputSlot Roll1 *Duplex", "*UIConstraints: InputSlot"},
    {"constraint-unknown", kClose, "+*UIConstraints: *InputSlot Roll3 *Duplex DuplexTumble", "*UIConstraints: *InputSlot Roll3"},
    {"constraint-self", kClose, "+*UIConstraints: *InputSlot Roll1 *InputSlot Roll2", "*UIConstraints: *InputSlot Roll1 *InputSlot"},
    {"order-number", "*OrderDependency: 17 AnySetup *OutputBin", "*OrderDependency: first AnySetup *OutputBin"},
    {"order-section", "*OrderDependency: 17 AnySetup *OutputBin", "*OrderDependency: 17 AnySetups *OutputBin"},
    {"order-feature", "*OrderDependency: 17 AnySetup *OutputBin", "*OrderDependency: 17 AnySetup *OutputBins"},
    {"encoding-bytes", kManual, "*InputSlot Manual/Manual \x81 Feed: \"\""},
    {"text-length", kManual, "*InputSlot Manual/" + kLong.substr(0, 81) + ": \"\""},
    {"keyword-length", kManual, "+*InputSlot Manual" + kLong.substr(0, 40) + "/Long: \"\"", "*InputSlot Manual0"},
    {"keyword-form", kManual, "+*InputSlot Manual 2/Second: \"\"", "*InputSlot Manual 2"},
    {"hex", kManual, "*InputSlot Manual/Man<fg>ual: \"\""},
    {"text-twice", kManual, "*InputSlot Manual/Roll 1: \"\""},
    {"translation-unknown", kManual, "+*de.Translation InputSlots/Zufuhr: \"\"", "*de."},
    {"translation-unknown", kManual, "+*de.InputSlot Roll3/Rolle 3: \"\"", "*de."},
    {"translation-unknown", kManual, "+*de.Trays Roll1/Rolle 1: \"\"", "*de."},
    {"page-region-default", "*DefaultPageRegion: A4", "*DefaultPageRegion: A3", "*OpenUI *PageRegion"},
    {"size-not-in-all", "*PaperDimension A2/A2: \"1191 1684\"", "", "*PageSize A2/"},
    {"size-not-in-all", "*ImageableArea A2/A2: \"9 9 1182 1675\"", "", "*PageSize A2/"},
    {"size-unknown", "*ImageableArea A2/A2: \"9 9 1182 1675\"", "+*ImageableArea A7/A7: \"9 9 200 288\"", "*ImageableArea A7"},
    {"size-numbers", "*PaperDimension A2/A2: \"1191 1684\"", "*PaperDimension A2/A2: \"1191\""},
    {"size-numbers", "*ImageableArea A2/A2: \"9 9 1182 1675\"", "*ImageableArea A2/A2: \"1182 9 9 1675\""},
    {"size-name", "*PaperDimension A2/A2: \"1191 1684\"", "*PaperDimension A2/A2: \"1191 1784\""},
    {"area-outside", "*ImageableArea A2/A2: \"9 9 1182 1675\"", "*ImageableArea A2/A2: \"9 9 1182 1695\""},
    {"custom-size", "*ParamCustomPageSize Width: 1 points 144 1728", "*ParamCustomPageSize Width: 1 points 1728 144"},
    {"custom-size", "*ParamCustomPageSize Width: 1 points 144 1728", "", "*CustomPageSize"},
    {"feature-misspelt", "halvBrightness", "~halvBrightnes", "*OpenUI *halvBrightnes"},
    {"feature-misspelt", "halvBrightness", "~halvbrightness", "*OpenUI *halvbrightness"},
    {"feature-misspelt", "halvBrightness", "~HalvBrightness", "*OpenUI *HalvBrightness"},
    {"custom-size", "*ParamCustomPageSize Width: 1 points 144 1728", "*ParamCustomPageSize Width: 1 mm 144 1728"},
    {"custom-size", "*CustomPageSize True", "~*CustomPageSize Treu", "*ParamCustomPageSize Width"},
    {"feature-misspelt", "halvContrast", "~havlContrast", "*OpenUI *havlContrast"},
    {"feature-misspelt", "halvBrightness", "~halvBrigthness", "*OpenUI *halvBrigthness"},
    {"page-size-missing", "PageSize", "~PageForm", "*PPD-Adobe"},
    {"page-region-missing", "PageRegion", "~PageArea", "*OpenUI *PageSize"},
    {"slider-number", "*DefaulthalvGamut: 0", "+*halvGamut much/A lot: \"\"", "*halvGamut much"},
    {"slider-value", "*DefaulthalvGamut: 0", "+*halvGamut 55/A lot: \"\"", "*halvGamut 55"},
    {"slider-gap", "*halvGamut 40/180 percent: \"<</halvGamut 40>>setpagedevice\"", "", "*OpenUI *halvGamut"},
    {"slider-text", "*halvGamut 40/180 percent: \"<</halvGamut 40>>setpagedevice\"", "*halvGamut 40/170 %: \"\""},
    {"field-number", "*DefaulthalvScreenLPI2: 10", "+*halvScreenLPI2 half: \"\"", "*halvScreenLPI2 half"},
    {"field-gap", "*halvScreenLPI2 2: \"<</halvScreenLPI2 2>>setpagedevice\"", "", "*OpenUI *halvScreenLPI/"},
    {"box-number", "*DefaulthalvPreview: 0", "+*halvPreview maybe: \"\"", "*halvPreview maybe"},
    {"box-gap", "*halvPreview 1/On: \"<</halvPreview 1>>setpagedevice\"", "", "*OpenUI *halvPreview"},
    {"popup-text", kManual, "*InputSlot Manual/" + std::string(600, 'x') + ": \"\""},
    {"too-long", kManual, "+*InputSlot Manual" + kLong + "/Long: \"\"", "*InputSlot Manual0"},
    {"defaults-conflict", "*DefaulthalvCartridgeType: PhotoBlack", "*DefaulthalvCartridgeType: FilmBlack", nullptr},
    // clang-format on
};

// Some faults break two rules: a text of 600 characters is longer than a popup takes, and than the format
// allows.
const std::multimap<std::string_view, std::string> kAlso{{"line-length", "text-length"},
                                                         {"popup-text", "text-length"},
                                                         {"popup-text", "line-length"},
                                                         {"too-long", "keyword-length"},
                                                         {"too-long", "line-length"}};

// The sample with a fault; `at` becomes the place where that begins.
std::string With(const Fault& fault, std::string text, std::size_t& at)
{
    const bool behind = fault.put.starts_with('+'), everywhere = fault.put.starts_with('~');
    const std::string put = fault.put.substr(behind || everywhere ? 1 : 0);
    if (everywhere) {
        for (at = text.find(fault.line); at != text.npos; at = text.find(fault.line, at + put.size()))
            text.replace(at, fault.line.size(), put);
        return text;
    }
    at = ("\n" + text).find("\n" + fault.line + "\n");
    EXPECT_NE(at, text.npos) << fault.line;
    if (behind) return text.insert(at += fault.line.size() + 1, put + "\n");
    return text.replace(at, fault.line.size() + (put.empty() ? 1 : 0), put);
}

} // namespace

TEST(PpdCheck, TellsEveryFaultOnceAtItsLineWithItsCode)
{
    const std::string sample = TextOfSample("tintwerk-x12.ppd");
    const std::set<std::string_view> notes{"advanced-lists", "borderless-alone", "feature-missing"};
    ASSERT_THAT(Told(sample, notes, false), testing::IsEmpty());
    EXPECT_THAT(Told(sample + "*UIConstraints: *InputSlot Roll1 *CustomPageSize\n", notes, false),
                testing::IsEmpty())
        << "a size of the user's own is not every size";
    EXPECT_THAT(
        Told(kHead + std::string("*OpenUI *PageSize: PickOne\n*CloseUI: *PageSize\n*CustomPageSize True: "
                                 "\"\"\n*ParamCustomPageSize Width: 1 points 1 2\n"),
             notes, false),
        testing::ElementsAre("13 no-options"));
    std::string many = sample;
    for (int i = 0; i < 600; ++i)
        many += "*UIConstraints: *InputSlot Roll1 *InputSlot Roll2\n";
    EXPECT_EQ(Told(many, notes, false).size(), 600u) << "none is left out";
    for (const Fault& fault : kFaults) {
        std::size_t at = 0;
        const std::string text = With(fault, sample, at);
        if (fault.at) at = ("\n" + text).find(std::string("\n") + fault.at);
        std::vector<std::string> expected{LineAt(text, at) + " " + fault.code};
        for (auto [also, end] = kAlso.equal_range(fault.code); also != end; ++also)
            expected.push_back(LineAt(text, at) + " " + also->second);
        EXPECT_THAT(Told(text, notes, false), testing::UnorderedElementsAreArray(expected))
            << fault.line << " -> " << fault.put;
    }
}

TEST(PpdCheck, TellsWhatThePagesCannotStandFor)
{
    std::vector<std::string> many;
    for (int i = 0; i < 80; ++i)
        many.push_back("Size" + std::to_string(i));
    std::vector<std::string> more = many;
    more.push_back("Size80");
    const std::string cartridges =
        Feature("halvScreenCartridge0", {"0", "1"}) + Feature("halvScreenCartridge2", {"0", "1"});
    const std::string features =
        Feature("MediaType", {"Plain", "Photo"}) + Feature("InputSlot", {"Roll", "Tray"}) +
        Feature("halvCartridgeType", {"Matte", "Film"}) + Feature("Resolution", {"300dpi", "600dpi"});
    const auto forbids = [](const char* a, const char* b) {
        return std::string("*UIConstraints: *") + a + " *" + b + "\n";
    };
    const std::string apart =
        forbids("InputSlot Tray", "Resolution 300dpi") + forbids("Resolution 600dpi", "MediaType Photo");
    std::string advanced;
    for (int i = 0; i < 63; ++i)
        advanced += Feature("halvDTF" + std::to_string(i), {"On"});
    std::string longest;
    for (int i = 0; i < 60; ++i)
        longest += Feature(std::string(36, 'x') + std::to_string(1000 + i), {"On"});
    const struct
    {
        const char* word;
        std::string body;
        std::vector<const char*> findings;
    } cases[] = {
        {"a full popup", Feature("MediaType", many), {}},
        {"more than a popup takes",
         Feature("MediaType", more),
         {"95 popup-full MediaType: the popup offers 80 options; those from Size80 on cannot be chosen, and "
          "one that is selected becomes Size0 when the page is applied"}},
        {"steps are doubled above the middle",
         Feature("halvScreenInksaturation",
                 {"200", "100", "110", "120", "130", "140", "150", "160", "170", "180", "190",
                  "220", "240", "260", "280", "300", "320", "340", "360", "380", "400"}),
         {}},
        {"one cartridge",
         Feature("halvCartridgeType", {"Matte"}),
         {"13 popup-hidden halvCartridgeType: one option only: its popup is hidden"}},
        {"words for numbers of a check box", Feature("halvPreview", {"p-off", "p-on", "0", "1"}), {}},
        {"three screen modes",
         Feature("halvScreenmode", {"off", "a", "b"}),
         {"13 screen-modes halvScreenmode: 3 options; 7 are written: off, and each of three halftones "
          "without and with multi-black"}},
        {"a twin alone",
         Feature("PageSize", {"A4", "a4Borderless", "PhotoBorderless", "CustomBorderless"}),
         {"17 borderless-alone PageSize: PhotoBorderless is the borderless twin of no size: it stands in the "
          "list by itself, with the borderless box checked and disabled"}},
        {"no colours",
         Feature("halvCartridgeColors", {"Colors"}),
         {"13 cartridge-colors halvCartridgeColors: the option CartridgeColors, whose text lists the "
          "colours, "
          "is missing"}},
        {"colours that do not fit",
         cartridges + Feature("halvCartridgeColors", {"CartridgeColors/C,Pink"}),
         {"25 cartridge-code halvCartridgeColors: the colour code \"Pink\" has no picture",
          "25 cartridge-count halvCartridgeColors: 2 colour codes for 3 cartridges: the last code is "
          "repeated"}},
        {"a cartridge without media",
         features + forbids("halvCartridgeType Film", "MediaType Plain") +
             forbids("MediaType Photo", "halvCartridgeType Film"),
         {"26 popup-empty halvCartridgeType: halvCartridgeType=Film forbids every option of MediaType: its "
          "popup is left empty"}},
        {"media are left out for a cartridge only",
         features + forbids("InputSlot Tray", "MediaType Plain") +
             forbids("InputSlot Tray", "MediaType Photo"),
         {}},
        {"a slot without resolution",
         features + forbids("InputSlot Tray", "Resolution"),
         {"21 popup-empty InputSlot: InputSlot=Tray forbids every option of Resolution: its popup is left "
          "empty"}},
        {"two that leave no resolution together",
         features + apart,
         {"21 popup-empty-pair InputSlot: MediaType=Photo and InputSlot=Tray together forbid every option of "
          "Resolution: its popup is left empty"}},
        {"two that exclude each other", features + apart + forbids("MediaType Photo", "InputSlot Tray"), {}},
        {"one resolution is left", features + forbids("InputSlot Tray", "Resolution 300dpi"), {}},
        {"media modes",
         Feature("MediaType", {"Plain1", "Chart2"}) + Feature("halvIntent", {"none_0", "photo_3"}) +
             Feature("halvColorModel", {"CMYK", "Gray"}),
         {"15 popup-empty MediaType: Plain1 and 1 more media type: no option of halvIntent goes with this "
          "media mode; its popup is left empty",
          "16 popup-empty MediaType: Chart2: a profile without colour data takes RGB or CMYKproof, which "
          "halvColorModel lacks; its popup is left empty"}},
        {"a full advanced page",
         advanced,
         {"261 advanced-full halvDTF62: the advanced page is full (64 features and groups, or 16384 bytes of "
          "texts); it leaves out halvDTF62"}},
        {"too long for the core driver's list",
         longest,
         {"1 advanced-none : there is no advanced page: the features' keywords have more than 2048 "
          "characters together"}},
    };
    for (const auto& row : cases)
        EXPECT_THAT(Told(kHead + row.body,
                         {"feature-missing", "advanced-lists", "page-size-missing", "page-region-missing",
                          "size-not-in-all"},
                         true),
                    testing::ElementsAreArray(row.findings))
            << row.word;
}

TEST(PpdCheck, AFoldersFilesAreToldInTheirOrder)
{
    const TemporaryFolder folder;
    std::string expected;
    for (int i = 1000; i < 1200; ++i) {
        const std::string file = folder.Text() + "/f" + std::to_string(i) + ".PPD";
        std::ofstream(file, std::ios::binary)
            << kHead << "*OpenUI *Gloss: PickOne\n*Gloss High: \"\"\n*CloseUI: *Gloss\n";
        expected += file + ":13: warning: Gloss: no \"*DefaultGloss\"; the first option \"High\" is taken "
                           "[default-missing]\n";
    }
    std::ofstream(folder.Text() + "/readme.txt") << "no PPD";
    const std::string told = RunTintwerk({"check", "--ignore=page-size-missing", folder.Text()}).out;
    const std::size_t summary = told.rfind("200 files: 0 errors, 200 warnings, ");
    EXPECT_EQ(told.substr(0, summary), expected);
}

TEST(PpdCheck, EveryRuleIsListedOnceAndHasItsSentence)
{
    const std::string rules = RunTintwerk({"check", "--rules"}).out;
    const std::string page = TextOfSample("../docs/check.md");
    std::set<std::string> codes;
    for (const Rule& rule : Rules()) {
        const std::string code(rule.code), severity(TextOf(rule.severity));
        EXPECT_TRUE(codes.insert(code).second) << code;
        EXPECT_THAT(rules, testing::HasSubstr(code + " "));
        EXPECT_THAT(rules, testing::HasSubstr(" " + std::string(rule.sentence) + "\n"));
        EXPECT_THAT(page, testing::HasSubstr("| `" + code + "` | " + severity + " | "));
    }
}

} // namespace tintwerk
