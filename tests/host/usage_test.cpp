#include "tests/host/program_fixture.h"

#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace tintwerk {

namespace {

using OptionsOfCommands = std::map<std::string, std::set<std::string>>;

std::vector<std::string> Matches(const std::string& text, const char* pattern)
{
    std::vector<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back(at->str(1));
    return found;
}

OptionsOfCommands OptionsOfHelp()
{
    OptionsOfCommands options;
    for (const std::string& command : Matches(RunTintwerk({"--help"}).out, "\n  ([a-z]+) ")) {
        for (const std::string& option : Matches(RunTintwerk({command, "--help"}).out, "\n  --([a-z-]+)"))
            options[command].insert(option);
    }
    return options;
}

// Each part of the page is headed by the commands that it is about.
OptionsOfCommands OptionsOfManualPage()
{
    OptionsOfCommands options;
    std::vector<std::string> commands;
    std::ifstream page(TINTWERK_SOURCE_DIR "/packaging/tintwerk.1");
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with(".S"))
            commands =
                line.starts_with(".Ss") ? Matches(line, "([a-z]+)(?:,|$)") : std::vector<std::string>();
        for (const std::string& command : commands) {
            for (const std::string& option : Matches(line, "^\\.It Fl -([a-z-]+)"))
                options[command].insert(option);
        }
    }
    return options;
}

// The options stand in the branches of a case statement; those of every printer in a variable.
OptionsOfCommands OptionsOfCompletion()
{
    OptionsOfCommands options;
    std::vector<std::string> commands, printerOptions;
    std::ifstream script(TINTWERK_SOURCE_DIR "/packaging/tintwerk.bash");
    for (std::string line; std::getline(script, line) && line != "}";) {
        const std::vector<std::string> found = Matches(line, "--([a-z-]+)");
        if (line.find("printer=") != std::string::npos) printerOptions = found;
        if (const auto label = Matches(line, "^    ([a-z |]+)\\)"); !label.empty())
            commands = Matches(label[0], "([a-z]+)");
        for (const std::string& command : commands) {
            options[command].insert(found.begin(), found.end());
            if (line.find("$printer") != std::string::npos)
                options[command].insert(printerOptions.begin(), printerOptions.end());
        }
    }
    return options;
}

} // namespace

using testing::HasSubstr;

TEST(CommandLine, MistakesNameTheOptionAndWhatIsAccepted)
{
    const std::string ppd = Sample("tintwerk-x12.ppd");
    const struct
    {
        std::vector<std::string> arguments;
        int status;
        const char* text;
    } cases[] = {
        {{"preferance"}, 2, "tintwerk: preferance: no such command; did you mean preferences?"},
        {{"x"}, 2, "tintwerk: x: no such command; tintwerk --help"},
        {{}, 2, "Usage: tintwerk COMMAND"},
        {{"preferences"}, 2, "tintwerk: --ppd is missing"},
        {{"preferences", "--ppd"}, 2, "tintwerk: --ppd: its value is missing (FILE)"},
        {{"preferences", "--sett", "a=b"}, 2, "tintwerk: --sett: no such option; did you mean --set?"},
        {{"preferences", "--apply=1"}, 2, "tintwerk: --apply: takes no value"},
        {{"preferences", "-p"}, 2, "tintwerk: -p: options begin with two dashes"},
        {{"preferences", ppd}, 2, "options begin with two dashes (the PPD goes to --ppd)"},
        {{"preferences", "--ppd", ppd, "--set", "halvBrightness=40"}, 2, "the slider runs from -10 to 10"},
        {{"preferences", "--ppd", ppd, "--ok", "--page", "main"}, 2, "--page main: stands behind --ok"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--language", "fr"}, 2, "accepted are en, de"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--gui-mode", "100"}, 2, "from 0 to 99 is accepted"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--pace", "5ms"},
         2,
         "a whole number from 1 to 60000"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--windows-version", "7"},
         2,
         "\"major.minor\" expected"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--answer", "maybe"}, 2, "accepted are ok, cancel"},
        {{"preferences", "--ppd", "no-such.ppd", "--page", "main"}, 1, "no-such.ppd"},
        {{"preferences", "--ppd", ppd, "--page", "main", "--config-dir", "nowhere"},
         2,
         "there is no such folder"},
        {{"preferences", "--ppd", ppd, "--custom-size", "700x900mm"},
         2,
         "50.8 to 609.6 by 50.8 to 1828.8 mm"},
        {{"preferences", "--ppd", ppd, "--script", "no-such.steps"},
         1,
         "no-such.steps: the file cannot be read"},
        {{"diff", ppd}, 2, "two PPDs or two .selections files are expected"},
        {{"diff", ppd, "no-such.ppd"}, 2, "no-such.ppd"},
        {{"diff", ppd, "x.selections"}, 2, "two PPDs or two .selections files are expected"},
        {{"check"}, 2, "no PPD file is given"},
        {{"check", Sample("config")}, 1, "there is no .ppd file below this folder"},
        {{"features"}, 2, "no PPD file is given"},
        {{"features", "no-such.ppd"}, 1, "no-such.ppd"},
        {{"ink", "no-such.ink"}, 1, "no-such.ink: the file cannot be read"},
        {{"devmode", Sample("config")}, 1, "config: the file cannot be read"},
        {{"devmode", ppd}, 1, "holds no private DEVMODE part"},
        {{"print", "--ppd", ppd, "--job", "0"}, 2, "--job 0: a whole number from 1"},
    };
    for (const auto& row : cases) {
        const ProgramResult result = RunTintwerk(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.text;
        EXPECT_THAT(result.err, HasSubstr(row.text));
        EXPECT_EQ(result.out, "");
    }
}

TEST(CommandLine, EveryCommandExplainsItself)
{
    const ProgramResult overview = RunTintwerk({"--help"});
    EXPECT_EQ(overview.status, 0);
    for (const char* command :
         {"preferences", "properties", "print", "features", "ink", "devmode", "check", "diff"}) {
        EXPECT_THAT(overview.out, HasSubstr("\n  " + std::string(command) + " "));
        const ProgramResult help = RunTintwerk({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr("Usage: tintwerk " + std::string(command)));
    }
    EXPECT_THAT(RunTintwerk({"--version"}).out, testing::MatchesRegex("tintwerk .\\..\\..\n"));
}

TEST(CommandLine, ManualPageAndCompletionNameTheOptionsOfTheHelp)
{
    const OptionsOfCommands help = OptionsOfHelp();
    EXPECT_TRUE(help.contains("check"));
    EXPECT_EQ(OptionsOfManualPage(), help);
    EXPECT_EQ(OptionsOfCompletion(), help);
}

TEST(CommandLine, AMalformedPpdIsNamedWithItsLineAndOpensNothing)
{
    const TemporaryFolder folder;
    const std::string ppd = folder.Text() + "/broken.ppd";
    std::ofstream(ppd)
        << "*PPD-Adobe: \"4.3\"\n*OpenUI *PageSize/Size: PickOne\n*PageSize A4/A4: \"\"\n*CloseUI: *Duplex\n";
    const ProgramResult result =
        RunTintwerk({"preferences", "--ppd", ppd, "--page", "main", "--store", folder.Text()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("broken.ppd:4: "));
    EXPECT_EQ(result.out, "");
}

} // namespace tintwerk
