#include "tests/host/program_fixture.h"

#include <fstream>
#include <iterator>

#include "host/sheet/script.h"

namespace tintwerk {

TEST(ScriptSteps, TakeTheirFeatureAndValueApart)
{
    const struct
    {
        const char *option, *value;
        StepKind kind;
        const char *subject, *stepValue;
    } cases[] = {
        {"set", "halvBrightness=2", StepKind::Set, "halvBrightness", "2"},
        {"set", "halvBrightness=-10", StepKind::Set, "halvBrightness", "-10"},
        {"set", "halvScreenLPI=45.5", StepKind::Set, "halvScreenLPI", "45.5"},
        {"choose", "*MediaType=Photo", StepKind::Choose, "MediaType", "Photo"},
        {"choose", "PageSize=a=b", StepKind::Choose, "PageSize", "a=b"},
        {"choose", "halvBrightness=-45", StepKind::Choose, "halvBrightness", "-45"},
        {"choose", "halvScreenInksaturation=220", StepKind::Choose, "halvScreenInksaturation", "220"},
        {"choose", "halvScreenLPI=44", StepKind::Choose, "halvScreenLPI", "44"},
        {"choose", "halvScreenLPI2=19", StepKind::Choose, "halvScreenLPI2", "19"},
        {"choose", "halvPreview=1", StepKind::Choose, "halvPreview", "1"},
        {"check", "halvPreview", StepKind::Check, "halvPreview", "on"},
        {"check", "halvPreview=off", StepKind::Check, "halvPreview", "off"},
        {"press", "Reset counters", StepKind::Press, "Reset counters", ""},
        {"page", "colors", StepKind::Page, "colors", ""},
        {"apply", "", StepKind::Apply, "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.value);
        const auto parsed = ParseStep(row.option, row.value);
        const Step* const step = std::get_if<Step>(&parsed);
        ASSERT_TRUE(step) << std::get<std::string>(parsed);
        EXPECT_EQ(step->kind, row.kind);
        EXPECT_EQ(step->subject, row.subject);
        EXPECT_EQ(step->value, row.stepValue);
    }
}

TEST(ScriptSteps, AreRefusedBeforeAnyWindowOpens)
{
    const struct
    {
        const char *option, *value, *reason;
    } cases[] = {
        {"set", "halvBrightness=40",
         "--set halvBrightness=40: the slider runs from -10 to 10 (PPD values -50 to 50 in steps of 5)"},
        {"set", "halvBrightness=-11",
         "--set halvBrightness=-11: the slider runs from -10 to 10 (PPD values -50 to 50 in steps of 5)"},
        {"set", "halvRefLight=",
         "--set halvRefLight=: the slider runs from 0 to 6 (PPD values 50 to 80 in steps of 5)"},
        {"set", "halvScreenInksaturation=1.5",
         "--set halvScreenInksaturation=1.5: the slider runs from -10 to 10 (PPD values 100 to 400 in steps "
         "of 10, above "
         "the middle of 20)"},
        {"set", "halvScreenAngle=180.1", "--set halvScreenAngle=180.1: the number field takes 0.0 to 180.0"},
        {"set", "halvScreenLPI=nan", "--set halvScreenLPI=nan: the number field takes 10.0 to 150.0"},
        {"set", "PageSize=1",
         "--set PageSize=1: no slider or number field stands for this feature (--choose selects options, "
         "--check works "
         "check boxes)"},
        {"set", "halvBrightness", "--set halvBrightness: \"Feature=Value\" expected"},
        {"choose", "=A4", "--choose =A4: \"Feature=Value\" expected"},
        {"choose", "halvBrightness=12",
         "--choose halvBrightness=12: the PPD values run from -50 to 50; the nearest are 10 and 15"},
        {"choose", "halvBrightness=51",
         "--choose halvBrightness=51: the PPD values run from -50 to 50; the nearest is 50"},
        {"choose", "halvScreenInksaturation=210",
         "--choose halvScreenInksaturation=210: the PPD values run from 100 to 400; the nearest are 200 and "
         "220"},
        {"choose", "halvScreenLPI=45",
         "--choose halvScreenLPI=45: the PPD values run from 10 to 150; the nearest are 44 and 46"},
        {"choose", "halvScreenLPI2=20",
         "--choose halvScreenLPI2=20: the PPD values run from 0 to 19; the nearest is 19"},
        {"choose", "halvPreview=2", "--choose halvPreview=2: a check box has the PPD values 0 and 1"},
        {"check", "PageSize", "--check PageSize: no check box stands for this feature"},
        {"check", "halvPreview=yes", "--check halvPreview=yes: a check box is \"on\" or \"off\""},
        {"page", "colours",
         "--page colours: the pages are main, layout, colors, correction, consumption, ink, screen, "
         "advanced, information"},
        {"tour", "", "--tour: its value is missing"},
    };
    for (const auto& row : cases) {
        const auto parsed = ParseStep(row.option, row.value);
        ASSERT_TRUE(std::holds_alternative<std::string>(parsed)) << row.value;
        EXPECT_EQ(std::get<std::string>(parsed), row.reason);
    }
}

TEST(ScriptSteps, LeaveOtherOptionsAlone)
{
    const auto parsed = ParseStep("ppd", "x.ppd");
    ASSERT_TRUE(std::holds_alternative<std::string>(parsed));
    EXPECT_TRUE(std::get<std::string>(parsed).empty());
}

TEST(ScriptFiles, HoldTheWordsOfTheCommandLine)
{
    std::vector<Step> steps;
    EXPECT_EQ(ParseScript("# a comment\n\n--set halvBrightness=2\r\n  press Reset counters\nok", "a", steps),
              "");
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].source, "--set halvBrightness=2");
    EXPECT_EQ(steps[1].subject, "Reset counters");
    EXPECT_EQ(steps[2].place, "a:5: ");
    EXPECT_EQ(ParseScript("ok\nset halvBrightness=99\n", "a", steps).substr(0, 29),
              "a:2: --set halvBrightness=99:");
    EXPECT_EQ(ParseScript("--ppd x.ppd", "a", steps), "a:1: \"ppd\" is no step");
}

// The controls' own notifications are recorded: it is the same for a hand. Visited pages fix settings that
// they show, and steps follow each other without a pause.
TEST(Recorded, ASessionGivesTheSameSelectionsAgain)
{
    const TemporaryFolder folder;
    const auto stored = [&](const std::string& store) {
        std::ifstream in(folder.Text() + store + "/Tintwerk X12 0012.selections", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    const auto run = [&](const std::string& store, std::vector<std::string> more) {
        more.insert(more.begin(), {"preferences", "--ppd", Sample("tintwerk-x12.ppd"), "--pace", "1",
                                   "--store", folder.Text() + store});
        const ProgramResult result = RunTintwerk(more);
        EXPECT_EQ(result.status, 0) << result.err;
    };
    const std::string script = folder.Text() + "/recorded", header = "# Tintwerk X12 0012, ";
    run("/first", {"--record", script,
                   "--choose", "OptionRoll2=False",
                   "--set",    "halvBrightness=2",
                   "--choose", "PageSize=A3",
                   "--check",  "noppd_Borderless",
                   "--check",  "halvPreview",
                   "--page",   "colors", // and away again
                   "--page",   "correction",
                   "--set",    "halvAdjustK=-3",
                   "--page",   "layout",
                   "--choose", "Orientation=Landscape",
                   "--choose", "PagePerSheet=4",
                   "--apply",  "--apply",
                   "--page",   "consumption",
                   "--press",  "Reset counters",
                   "--press",  "1118",
                   "--check",  "noppd_Screenprinting_",
                   "--set",    "halvScreenLPI=51.5",
                   "--choose", "halvSettingCutter=Job",
                   "--ok"});
    std::ifstream in(script);
    std::string line, recorded;
    std::getline(in, line);
    EXPECT_TRUE(line.starts_with(header)) << line;
    while (std::getline(in, line))
        recorded += line + "\n";
    EXPECT_EQ(recorded, "--choose OptionRoll2=False\n--set halvBrightness=2\n--choose PageSize=A3\n"
                        "--check noppd_Borderless=on\n--check halvPreview=on\n--page colors\n"
                        "--page correction\n--set halvAdjustK=-3\n--page layout\n"
                        "--choose %Orientation=Landscape\n--choose %PagePerSheet=4\n--apply\n--apply\n"
                        "--page consumption\n--press 1214\n--press 1118\n--page screen\n"
                        "--check noppd_Screenprinting_=on\n--set halvScreenLPI=51.5\n--page advanced\n"
                        "--choose halvSettingCutter=Job\n--ok\n");
    run("/second", {"--script", script});
    EXPECT_EQ(stored("/second"), stored("/first"));
    EXPECT_NE(stored("/first"), "");
}

} // namespace tintwerk
