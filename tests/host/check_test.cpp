#include "tests/host/program_fixture.h"

#include <fstream>

#include "host/cli/check_rules.h"
#include "host/ppd/ppd_reader.h"

namespace tintwerk {

namespace {

constexpr char kHead[] = "*PPD-Adobe: \"4.3\"\n*ModelName: \"Test\"\n*NickName: \"Test\"\n";

std::string Feature(const std::string& keyword, const std::vector<std::string>& options)
{
    std::string text = "*OpenUI *" + keyword + ": PickOne\n*Default" + keyword + ": " + options[0] + "\n";
    for (const std::string& option : options)
        text += "*" + keyword + " " + option + ": \"\"\n";
    return text + "*CloseUI: *" + keyword + "\n";
}

std::vector<std::string> Steps(int from, int to, int step)
{
    std::vector<std::string> options{"0"};
    for (int value = from; value <= to; value += step) {
        if (value != 0) options.push_back(std::to_string(value));
    }
    return options;
}

// "line severity feature: text" of everything but notes.
std::vector<std::string> Findings(const std::string& body)
{
    const std::string text = kHead + body;
    const PpdResult read = ReadPpdText(text, "test.ppd");
    EXPECT_TRUE(read) << read.error.Full();
    std::vector<Finding> findings = CheckPpd(*read.ppd);
    LocateFindings(text, findings);
    std::vector<std::string> lines;
    for (const Finding& finding : findings) {
        if (finding.severity != Severity::Note)
            lines.push_back(std::to_string(finding.line) + " " + std::string(TextOf(finding.severity)) + " " +
                            finding.feature + ": " + finding.text);
    }
    return lines;
}

} // namespace

TEST(PpdCheck, TellsWhatTheControlsCannotStandFor)
{
    std::vector<std::string> odd = Steps(-50, 50, 5);
    odd.insert(odd.end(), {"7", "55", "bright"});
    const struct
    {
        const char* word;
        std::string body;
        std::vector<std::string> findings;
    } cases[] = {
        {"complete slider", Feature("halvBrightness", Steps(-50, 50, 5)), {}},
        {"doubled steps above the middle",
         Feature("halvScreenInksaturation",
                 {"200", "100", "110", "120", "130", "140", "150", "160", "170", "180", "190",
                  "220", "240", "260", "280", "300", "320", "340", "360", "380", "400"}),
         {}},
        {"values off the steps, past the end, and none",
         Feature("halvBrightness", odd),
         {"29 error halvBrightness: the option bright is no number; the slider cannot stand for it",
          "27 error halvBrightness: no slider position stands for 7 (PPD values -50 to 50 in steps of 5)",
          "28 error halvBrightness: no slider position stands for 55 (PPD values -50 to 50 in steps of 5)"}},
        {"gap",
         Feature("halvBorderlessExpand", {"0", "1", "2", "4"}),
         {"4 error halvBorderlessExpand: slider positions write options that are not there, which changes "
          "nothing: 3"}},
        {"check box without its off",
         Feature("halvPreview", {"1"}),
         {"4 error halvPreview: the check box writes 0, which is no option"}},
        {"on and off by suffix", Feature("halvPreview", {"p-off", "p-on", "0", "1"}), {}},
        {"screen modes",
         Feature("halvScreenmode", {"off", "a", "b"}),
         {"4 error halvScreenmode: 3 options; 7 are written: off, and each of three halftones without and "
          "with multi-black"}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Findings(row.body), row.findings) << row.word;
}

TEST(PpdCheck, CountsOptionsAndLengths)
{
    std::vector<std::string> many;
    for (int i = 0; i < 81; ++i)
        many.push_back("Size" + std::to_string(i));
    EXPECT_EQ(
        Findings(Feature("MediaType", many)),
        std::vector<std::string>{
            "86 error MediaType: the popup offers 80 options; those from Size80 on cannot be chosen, and one "
            "that is selected becomes Size0 when the page is applied"});
    many.pop_back();
    EXPECT_EQ(Findings(Feature("MediaType", many)), std::vector<std::string>{});
    const std::string longest(255, 'x');
    EXPECT_EQ(Findings(Feature("Foo", {longest})), std::vector<std::string>{});
    EXPECT_EQ(Findings(Feature("Foo", {longest + "x"})).size(), 1u);
}

TEST(PpdCheck, PairsBorderlessSizesAndColours)
{
    EXPECT_EQ(Findings(Feature("PageSize", {"A4", "a4Borderless", "PhotoBorderless", "CustomBorderless"})),
              std::vector<std::string>{
                  "8 warning PageSize: PhotoBorderless is the borderless twin of no size: it stands in the "
                  "list by itself, with the borderless box checked and disabled"});
    const std::string cartridges =
        Feature("halvScreenCartridge0", {"0", "1"}) + Feature("halvScreenCartridge2", {"0", "1"});
    EXPECT_EQ(
        Findings(cartridges + Feature("halvCartridgeColors", {"CartridgeColors/C,Pink"})),
        (std::vector<std::string>{
            "16 warning halvCartridgeColors: the colour code \"Pink\" has no picture",
            "16 warning halvCartridgeColors: 2 colour codes for 3 cartridges: the last code is repeated"}));
}

TEST(PpdCheck, FindsSelectionsThatEmptyAPopup)
{
    const auto forbids = [](const char* a, const char* b) {
        return std::string("*UIConstraints: *") + a + " *" + b + "\n";
    };
    const std::string features =
        Feature("MediaType", {"Plain", "Photo"}) + Feature("InputSlot", {"Roll", "Tray"}) +
        Feature("halvCartridgeType", {"Matte", "Film"}) + Feature("Resolution", {"300dpi", "600dpi"});
    const struct
    {
        const char* word;
        std::string body;
        std::vector<std::string> findings;
    } cases[] = {
        {"a cartridge without media",
         forbids("halvCartridgeType Film", "MediaType Plain") +
             forbids("MediaType Photo", "halvCartridgeType Film"),
         {"17 error halvCartridgeType: halvCartridgeType=Film forbids every option of MediaType: its popup "
          "is left "
          "empty"}},
        {"media are left out for a cartridge only",
         forbids("InputSlot Tray", "MediaType Plain") + forbids("InputSlot Tray", "MediaType Photo"),
         {}},
        {"a slot without resolution",
         forbids("InputSlot Tray", "Resolution"),
         {"12 error InputSlot: InputSlot=Tray forbids every option of Resolution: its popup is left empty"}},
        {"two that leave no resolution together",
         forbids("InputSlot Tray", "Resolution 300dpi") + forbids("Resolution 600dpi", "MediaType Photo"),
         {"12 warning InputSlot: MediaType=Photo and InputSlot=Tray together forbid every option of "
          "Resolution: its "
          "popup is left empty"}},
        {"two that exclude each other",
         forbids("InputSlot Tray", "Resolution 300dpi") + forbids("Resolution 600dpi", "MediaType Photo") +
             forbids("MediaType Photo", "InputSlot Tray"),
         {}},
        {"one resolution is left", forbids("InputSlot Tray", "Resolution 300dpi"), {}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Findings(features + row.body), row.findings) << row.word;

    EXPECT_EQ(
        Findings(Feature("MediaType", {"Plain1", "Chart2"}) + Feature("halvIntent", {"none_0", "photo_3"}) +
                 Feature("halvColorModel", {"CMYK", "Gray"})),
        (std::vector<std::string>{
            "6 error MediaType: Plain1 and 1 more media types: no option of halvIntent goes with this media "
            "mode; its popup is left empty",
            "7 error MediaType: Chart2: a profile without colour data takes RGB or CMYKproof, which "
            "halvColorModel lacks; its popup is left empty"}));
}

TEST(PpdCheck, TellsWhatTheAdvancedPageLeavesOut)
{
    std::string body;
    for (int i = 0; i < 63; ++i)
        body += Feature("halvDTF" + std::to_string(i), {"On"});
    const std::vector<std::string> full = Findings(body);
    ASSERT_EQ(full.size(), 1u);
    EXPECT_EQ(full[0],
              "252 error halvDTF62: the advanced page is full (64 features and groups, or 16384 bytes of "
              "texts); it leaves out: halvDTF62");
    for (const char letter : {'u', 'v', 'w', 'x', 'y', 'z'})
        body += Feature(std::string(254, letter), {"On"});
    EXPECT_EQ(Findings(body),
              std::vector<std::string>{"0 error : there is no advanced page: the features' keywords have "
                                       "more than 2048 characters together"});
}

TEST(PpdCheck, TheExitStatusIsForScripts)
{
    const TemporaryFolder folder;
    const std::string ppd = folder.Text() + "/a.ppd";
    std::ofstream(ppd) << kHead << Feature("PageSize", {"PhotoBorderless"});
    EXPECT_EQ(RunTintwerk({"check", ppd}).status, 0);
    EXPECT_EQ(RunTintwerk({"check", "--strict", folder.Text()}).status, 1);
    std::ofstream(folder.Text() + "/b.ppd") << "no PPD";
    const ProgramResult both = RunTintwerk({"check", folder.Text()});
    EXPECT_EQ(both.status, 1);
    EXPECT_THAT(both.out, testing::HasSubstr("b.ppd:1: error: "));
    EXPECT_THAT(both.out, testing::HasSubstr("2 files: 1 errors, "));
}

TEST(PpdCheck, TriesThePagesOfEachFile)
{
    const TemporaryFolder folder;
    const std::string config = Sample("config");
    for (const char* sample : {"tintwerk-x12.ppd", "tintwerk-s8.ppd", "tintwerk-lite.ppd"}) {
        const ProgramResult result =
            RunTintwerk({"check", "--pages", "--config-dir", config, Sample(sample)});
        EXPECT_EQ(result.status, 0) << result.out;
        EXPECT_EQ(result.err, "");
    }
    std::vector<std::string> sizes;
    for (int i = 0; i < 82; ++i)
        sizes.push_back("Size" + std::to_string(i));
    const std::string ppd = folder.Text() + "/long.ppd";
    std::ofstream(ppd) << kHead << Feature("PageSize", sizes);
    const ProgramResult lost = RunTintwerk({"check", "--pages", "--config-dir", config, ppd});
    EXPECT_EQ(lost.status, 1);
    EXPECT_THAT(lost.out, testing::HasSubstr("long.ppd:87: error: PageSize: applying the pages without a "
                                             "change turns Size81 into Size0"));
}

} // namespace tintwerk
