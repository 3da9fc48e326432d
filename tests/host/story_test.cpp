// The program's main job through the real sheet: PPD to controls to selections and back.
#include "tests/host/program_fixture.h"

#include <fstream>
#include <iterator>

namespace tintwerk {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Story : public testing::Test
{
protected:
    ProgramResult Preferences(const std::vector<std::string>& more, const char* ppd = "tintwerk-x12.ppd")
    {
        std::vector<std::string> arguments{"preferences", "--ppd", Sample(ppd), "--store", folder_.Text()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTintwerk(arguments);
    }

    std::string StoredSelections() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            std::ifstream in(entry.path(), std::ios::binary);
            return std::string(std::istreambuf_iterator<char>(in), {});
        }
        return {};
    }

    TemporaryFolder folder_;
};

TEST_F(Story, BrightnessGoesToTheSheetAndBack)
{
    const ProgramResult first = Preferences(
        {"--show", "halvBrightness", "--set", "halvBrightness=2", "--apply", "--show", "halvBrightness"});
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_EQ(first.out, "  halvBrightness: slider at 0, label \"100%\"\n"
                         "  halvBrightness: slider at 2, label \"120%\"\n"
                         "  Apply pressed\n"
                         "  halvBrightness: slider at 2, label \"120%\"\n"
                         "halvBrightness: 0 -> 10\n"
                         "private DEVMODE: apply count 0 -> 1\n"
                         "selections kept in " +
                             folder_.Text() + "/Tintwerk X12 0012.selections\n");
    EXPECT_THAT(StoredSelections(), HasSubstr("\nhalvBrightness=10\n"));

    const ProgramResult again = Preferences({"--show", "halvBrightness", "--ok"});
    EXPECT_THAT(again.out,
                AllOf(HasSubstr("halvBrightness: slider at 2, label \"120%\""),
                      HasSubstr("every selection stayed as it was"), HasSubstr("apply count 1 -> 2")));
}

TEST_F(Story, CancelKeepsNothing)
{
    const ProgramResult result = Preferences({"--set", "halvBrightness=-10", "--cancel"});
    EXPECT_THAT(result.out, AllOf(HasSubstr("label \"50%\""), HasSubstr("nothing was applied")));
    EXPECT_EQ(StoredSelections(), "");
}

TEST_F(Story, WhatIsChangedBehindTheLastApplyIsNotKept)
{
    const ProgramResult result =
        Preferences({"--set", "halvBrightness=1", "--apply", "--set", "halvContrast=5", "--cancel"});
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("halvBrightness: 0 -> 5\n"), Not(HasSubstr("halvContrast: 0 ->"))));
    EXPECT_THAT(StoredSelections(), Not(HasSubstr("halvContrast=25")));
}

TEST_F(Story, SelectionsThatCannotBeKeptFailTheRun)
{
    const std::string noFolder = Sample("tintwerk-x12.ppd");
    const ProgramResult result = RunTintwerk(
        {"preferences", "--ppd", noFolder, "--store", noFolder, "--set", "halvBrightness=2", "--ok"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(".selections.new: cannot be written"));
}

TEST_F(Story, EveryKindOfControlWritesItsFeature)
{
    const struct
    {
        const char* word;
        std::vector<std::string> steps;
        const char* changed;
    } cases[] = {
        {"popup", {"--choose", "PageSize=A3"}, "PageSize: A4 -> A3\n"},
        {"check box", {"--check", "halvPreview"}, "halvPreview: 0 -> 1\n"},
        {"slider of a later page", {"--set", "halvTAC=-5"}, "halvTAC: 0 -> -50\n"},
        {"layout item, radio button",
         {"--choose", "Orientation=Landscape"},
         "%Orientation: Portrait -> Landscape\n"},
        {"layout item, list", {"--choose", "PagePerSheet=4"}, "%PagePerSheet: 1 -> 4\n"},
        {"advanced item", {"--choose", "halvMirror=1"}, "halvMirror: 0 -> 1\n"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.word);
        std::vector<std::string> steps = row.steps;
        steps.push_back("--ok");
        const ProgramResult result = Preferences(steps);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out, HasSubstr(row.changed));
    }
}

TEST_F(Story, AStepThatAUserCouldNotDoEndsTheRun)
{
    const struct
    {
        std::vector<std::string> steps;
        const char* reason;
    } cases[] = {
        {{"--choose", "PageSize=Napkin"},
         "--choose PageSize=Napkin: the popup does not offer Napkin now; it offers \"A4\""},
        {{"--choose", "Orientation=Upside"}, "--choose Orientation=Upside: the page does not offer Upside"},
        {{"--choose", "NoSuch=1"}, "no control of this sheet stands for NoSuch"},
        {{"--press", "Explode"}, "--press Explode: the page in front has no such button"},
        {{"--page", "information"}, "this sheet has no page \"information\" (it has main, layout, colors"},
        {{"--show", "NoSuch"}, "no control of this sheet stands for this feature"},
    };
    for (const auto& row : cases) {
        std::vector<std::string> steps = row.steps;
        steps.push_back("--ok");
        const ProgramResult result = Preferences(steps);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr(row.reason));
    }
    EXPECT_EQ(StoredSelections(), "");
}

TEST_F(Story, ASettingThatTheCoreDriverRefusesFailsTheRun)
{
    std::ifstream sample(Sample("tintwerk-x12.ppd"));
    std::string ppd;
    for (std::string line; std::getline(sample, line);)
        if (!line.starts_with("*halvBrightness 10/")) ppd += line + "\n";
    const std::string file = folder_.Text() + "/lacks.ppd";
    std::ofstream(file) << ppd;
    const ProgramResult result = RunTintwerk({"preferences", "--ppd", file, "--store", folder_.Text(),
                                              "--choose", "halvBrightness=10", "--apply"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("the core driver refused halvBrightness=10: "));

    const ProgramResult diff = RunTintwerk({"diff", Sample("tintwerk-x12.ppd"), file});
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(diff.out, "- halvBrightness 10: 120 percent\n");
    EXPECT_EQ(RunTintwerk({"diff", file, file}).status, 0);
    EXPECT_THAT(RunTintwerk({"diff", file, Sample("tintwerk-s8.ppd")}).out,
                AllOf(HasSubstr("- feature Duplex: Two-Sided\n"), Not(HasSubstr("- Duplex ")),
                      HasSubstr("- constraint: Duplex * / MediaType Film9\n"),
                      HasSubstr("  PageSize: text Page Size -> ")));
}

TEST_F(Story, WhatThePagesCannotChooseIsKeptBesideThem)
{
    const ProgramResult first =
        Preferences({"--choose", "OptionRoll2=False", "--choose", "PageSize=CustomPageSize", "--custom-size",
                     "20x60in", "--apply"});
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_THAT(StoredSelections(),
                AllOf(HasSubstr("OptionRoll2=False\n"), HasSubstr("CustomPageSize=20x60in\n")));
    EXPECT_THAT(Preferences({"--show", "PageSize"}).out, HasSubstr("label \"(508 x 1524 mm)\""));
}

TEST_F(Story, SelectionsThatMakeNoSenseEndTheRunAndStay)
{
    const std::string file = folder_.Text() + "/Tintwerk X12 0012.selections";
    std::ofstream(file, std::ios::binary) << "nonsense\n";
    const ProgramResult result = Preferences({"--set", "halvBrightness=2", "--ok"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(".selections:1: "));
    EXPECT_EQ(StoredSelections(), "nonsense\n");
}

TEST_F(Story, LanguageAndGuiModeCanBePretended)
{
    const ProgramResult german = Preferences({"--language", "de", "--json"});
    EXPECT_THAT(german.out, AllOf(HasSubstr("\"tab\": \"Druck\""), HasSubstr("\"tab\": \"Erweitert\""),
                                  HasSubstr("Ausrichtung")));
    const ProgramResult reduced = Preferences({"--gui-mode", "2", "--json"});
    EXPECT_THAT(reduced.out,
                AllOf(HasSubstr("\"name\": \"consumption\""), Not(HasSubstr("\"name\": \"colors\""))));
    const ProgramResult legacy = Preferences({"--windows-version", "6.0", "--json"});
    EXPECT_THAT(legacy.out, AllOf(HasSubstr("\"dialog\": 149"), Not(HasSubstr("\"name\": \"screen\""))));
}

TEST_F(Story, TheReportHoldsControlsChangesAndCalls)
{
    const ProgramResult result = Preferences({"--set", "halvBrightness=2", "--apply", "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(
        result.out,
        AllOf(HasSubstr("\"feature\": \"halvBrightness\",\n          \"enabled\": true,\n"
                        "          \"minimum\": -10,\n          \"maximum\": 10,\n          \"position\": 2"),
              HasSubstr("\"before\": \"0\",\n      \"after\": \"10\""),
              HasSubstr("SetOptions halvBrightness=10 -> 0x00000000")));
}

TEST_F(Story, ThePrinterPropertiesShowTheInformationPage)
{
    const ProgramResult result =
        RunTintwerk({"properties", "--ppd", Sample("tintwerk-x12.ppd"), "--store", folder_.Text(), "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, AllOf(HasSubstr("\"name\": \"information\""), HasSubstr("Version: 5.0.0.0")));
}

} // namespace tintwerk
