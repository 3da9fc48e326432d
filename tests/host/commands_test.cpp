// Conversations with tintwerk, told as they are typed and answered, and the options that its help, its manual
// page and its completion know. In commands.txt stand, one block behind the other,
//
//     $ WORDS       a command line with what it answers, errors last; "$1" or "$2" is its exit status
//     $ WORDS | /a  the same, of whose output only the values at these places of its JSON are told, or none
//     > FILE        what is written into a file
//     < FILE        what a file holds by now
//     % ...         a remark
//
// TINTWERK_WRITE_COMMANDS in the environment puts the answers of now in the place of the ones told.
#include "tests/host/program_fixture.h"

#include <cstdlib>
#include <iomanip>
#include <map>
#include <regex>
#include <set>
#include <span>

#include "host/cli/json.h"
#include "host/cli/product_registry.h"
#include "platform/owners.h"
#include "src/config/registry_values.h"
#include "src/records/process_values.h"

namespace tintwerk {
namespace {

namespace fs = std::filesystem;

// The samples in a folder of their own, which is the current one.
class Commands : public testing::Test
{
protected:
    Commands()
    {
        Process().configDirectory.Set({}); // where earlier sheets of this process kept their ink
        fs::copy(TINTWERK_SOURCE_DIR "/samples", folder_.Path(), fs::copy_options::recursive);
        fs::current_path(folder_.Path());
    }
    ~Commands() override
    {
        fs::current_path(before_);
        Process().configDirectory.Set({});
    }

    static std::string Run(const std::string& line, std::string& prompt)
    {
        std::vector<std::string> arguments, places;
        bool json = false;
        std::istringstream words(line);
        for (std::string word; words >> std::quoted(word);) {
            if (word == "|")
                json = true;
            else
                (json ? places : arguments).push_back(word);
        }
        const ProgramResult result = RunTintwerk(arguments);
        prompt = result.status ? "$" + std::to_string(result.status) : "$";
        std::string text = json ? "" : result.out;
        for (const std::string& place : places)
            text += Json::parse(result.out).value(Json::json_pointer(place), Json()).dump() + "\n";
        return text + result.err;
    }

    // What a block brings about, told as it is.
    static std::string Play(const std::string& first, const std::string& told)
    {
        const std::size_t blank = first.find(' ');
        std::string prompt = first.substr(0, blank), rest = first.substr(blank + 1), text = told;
        if (prompt[0] == '$')
            text = Run(rest, prompt);
        else if (prompt == "<")
            text = ContentOf(rest);
        else if (prompt == ">")
            std::ofstream(rest, std::ios::binary) << told;
        return prompt + " " + rest + "\n" + text;
    }

    const TemporaryFolder folder_;
    const fs::path before_ = fs::current_path();
};

TEST_F(Commands, AnswerAsTheyAlwaysDid)
{
    const char* const path = TINTWERK_SOURCE_DIR "/tests/host/commands.txt";
    std::istringstream in(ContentOf(path));
    std::vector<std::pair<std::string, std::string>> blocks; // first line, others
    for (std::string line; std::getline(in, line);) {
        if (std::regex_search(line, std::regex("^([<>%]|\\$[12]?) ")))
            blocks.emplace_back(line, "");
        else
            blocks.at(blocks.size() - 1).second += line + "\n";
    }
    EXPECT_LT(90u, blocks.size());
    std::string now;
    for (const auto& [first, told] : blocks) {
        const std::string block = Play(first, told);
        EXPECT_EQ(first + "\n" + told, block);
        now += block;
    }
    if (std::getenv("TINTWERK_WRITE_COMMANDS")) std::ofstream(path, std::ios::binary) << now;
}

// What it tells holds the program's own folder.
TEST_F(Commands, StartTheRegisteredPrintServerInItsFolder)
{
    EXPECT_THAT(RunTintwerk({"print", "--ppd", "tintwerk-x12.ppd", "--probe-server"}).out,
                testing::AllOf(testing::HasSubstr("\nprint server started: "),
                               testing::HasSubstr("tintwerk-print-server -job\n")));
}

TEST_F(Commands, LeaveTheRegistryAsItWas)
{
    const auto text = [](const char* name) {
        char now[kRegistryTextBytes] = "";
        ReadRegistryString(name, now);
        return std::string(now);
    };
    RegistryKey key;
    RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                    nullptr, key.Receive(), nullptr);
    const BYTE bytes[] = {1, 0, 2};
    RegSetValueExA(key.Get(), kInstallDirValue, 0, REG_BINARY, bytes, sizeof bytes);
    const std::string atFirst = text(kConfigDirValue);
    const ProductValue before(kConfigDirValue, "before"), server(kPrintServerValue, "server");
    const std::vector<std::string> runs[] = {{"preferences", "--config-dir", "config", "--json"},
                                             {"print", "--config-dir", "config", "--json"},
                                             {"print", "--install-dir", "other", "--probe-server"}};
    for (std::vector<std::string> run : runs) {
        run.insert(run.end(), {"--ppd", "tintwerk-lite.ppd"});
        EXPECT_EQ(0, RunTintwerk(run).status);
    }
    EXPECT_EQ("before", text(kConfigDirValue));
    EXPECT_EQ("server", text(kPrintServerValue));
    BYTE now[4];
    DWORD type = 0, size = sizeof now;
    RegQueryValueExA(key.Get(), kInstallDirValue, nullptr, &type, now, &size);
    EXPECT_EQ(DWORD{REG_BINARY}, type);
    EXPECT_THAT(std::span(now, size), testing::ElementsAreArray(bytes));

    std::optional<ProductValue> run(std::in_place, kInstallDirValue, "run");
    const ProductValue meanwhile(kInstallDirValue, "meanwhile"), again(kConfigDirValue, "again");
    run.reset();
    EXPECT_EQ("meanwhile", text(kInstallDirValue)) << "which is of another run";
    ProductValue::PutAllBack();
    EXPECT_EQ("run", text(kInstallDirValue));
    EXPECT_EQ(atFirst, text(kConfigDirValue));
    RegDeleteValueA(key.Get(), kInstallDirValue);
}

using OptionsOfCommands = std::map<std::string, std::set<std::string>>;

std::vector<std::string> Matches(const std::string& text, const char* pattern)
{
    std::vector<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back(at->str(1));
    return found;
}

// A line with a heading names the commands of the options that follow.
OptionsOfCommands Options(const std::string& text, const char* heading, const char* option)
{
    OptionsOfCommands options;
    std::vector<std::string> commands;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (const auto names = Matches(line, heading); !names.empty())
            commands = Matches(names[0], "([a-z]+)");
        for (const std::string& command : commands)
            for (const std::string& found : Matches(line, option))
                options[command].insert(found);
    }
    return options;
}

TEST(CommandLine, ManualPageAndCompletionNameTheOptionsOfTheHelp)
{
    std::string help;
    for (const std::string& command : Matches(RunTintwerk({"--help"}).out, "\n  ([a-z]+) "))
        help += RunTintwerk({command, "--help"}).out;
    const OptionsOfCommands options = Options(help, "^Usage: tintwerk ([a-z]+)", "^  --([a-z-]+)");
    EXPECT_EQ(8u, options.size());
    EXPECT_EQ(RunTintwerk({"check", "--help"}).out, RunTintwerk({"help", "check"}).out);
    EXPECT_THAT(RunTintwerk({}).err,
                testing::EndsWith("\nExit status: 0 all went well, 1 the run failed, 2 the "
                                  "command line makes no sense.\n"));
    EXPECT_EQ(options, Options(ContentOf(TINTWERK_SOURCE_DIR "/packaging/tintwerk.1"), "^\\.S[sh] (.*)",
                               "^\\.It Fl -([a-z-]+)"));
    // Its options stand in the branches of a case statement, those of every printer in a variable.
    std::string script = ContentOf(TINTWERK_SOURCE_DIR "/packaging/tintwerk.bash");
    script.erase(script.find("\n}"));
    const std::string printer = Matches(script, "printer='(.*)'").at(0);
    EXPECT_EQ(options, Options(std::regex_replace(script, std::regex("\\$printer"), printer),
                               "^    ([a-z |]+)\\)", "--([a-z-]+)"));
}

} // namespace
} // namespace tintwerk
