#include "tests/host/program_fixture.h"

namespace tintwerk {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class PrintJob : public testing::Test
{
protected:
    ProgramResult Print(const std::vector<std::string>& more)
    {
        std::vector<std::string> arguments{"print",   "--ppd",        Sample("tintwerk-x12.ppd"),
                                           "--store", folder_.Text(), "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTintwerk(arguments);
    }

    TemporaryFolder folder_;
};

TEST_F(PrintJob, GoesThroughTheEventsThatTheDriverWants)
{
    const ProgramResult result = Print({"--job", "42"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, AllOf(HasSubstr("query filter: the driver wants the events 5, 13"),
                                  HasSubstr("event 1, device context is about to be made: not sent"),
                                  HasSubstr("event 5, document is about to start: handled"),
                                  HasSubstr("event 13, document has started as job 42: handled")));
}

TEST_F(PrintJob, WarnsOnceWhenAPreviewIsWantedOfflineOnly)
{
    const struct
    {
        std::vector<std::string> options;
        bool warns;
    } cases[] = {
        {{}, false},
        {{"--preview"}, false},
        {{"--offline"}, false},
        {{"--preview", "--offline"}, true},
        {{"--preview", "--offline", "--no-document-name"}, true},
        {{"--preview", "--offline", "--document", "Test print for default settings"}, false},
    };
    for (const auto& row : cases) {
        const ProgramResult result = Print(row.options);
        const auto warning = HasSubstr("The printer seems to be offline.");
        if (row.warns)
            EXPECT_THAT(result.out, warning);
        else
            EXPECT_THAT(result.out, Not(warning));
    }
    EXPECT_THAT(Print({"--preview", "--offline", "--language", "de"}).out,
                HasSubstr("Der Drucker scheint offline zu sein."));
}

TEST_F(PrintJob, StartsTheRegisteredServerInItsFolder)
{
    const ProgramResult result = Print({"--probe-server"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("tintwerk-print-server -job"));
}

} // namespace tintwerk
