// Programs of this system, started by command lines as Windows knows them.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "platform/pe_image.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

class ProcessesTest : public testing::Test
{
protected:
    ProcessesTest()
        : directory(testing::TempDir() + "tintwerk processes " + std::to_string(GetCurrentProcessId()))
    {
        mkdir(directory.c_str(), 0777);
        mkdir((directory + "/my bin").c_str(), 0777);
        std::FILE* const script = std::fopen((directory + "/my bin/server").c_str(), "wb");
        std::fputs(
            "#!/bin/sh\npwd > out.tmp\nfor a in \"$@\"; do echo \"<$a>\" >> out.tmp; done\nmv out.tmp out\n",
            script);
        std::fclose(script);
        chmod((directory + "/my bin/server").c_str(), 0755);
    }
    ~ProcessesTest() override
    {
        for (const char* name : {"/my bin/server", "/out"})
            unlink((directory + name).c_str());
        rmdir((directory + "/my bin").c_str());
        rmdir(directory.c_str());
    }

    bool Start(std::string commandLine)
    {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION information{};
        if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                            directory.c_str(), &startup, &information))
            return false;
        EXPECT_TRUE(CloseHandle(information.hThread));
        EXPECT_TRUE(CloseHandle(information.hProcess));
        EXPECT_FALSE(CloseHandle(information.hProcess));
        return true;
    }

    // What the server wrote, waiting for it.
    std::string Output() const
    {
        for (int i = 0; i < 200; ++i, Sleep(10)) {
            const std::vector<BYTE> bytes = ReadWholeFile((directory + "/out").c_str());
            if (!bytes.empty()) return {bytes.begin(), bytes.end()};
        }
        return "nothing";
    }

    std::string directory;
};

TEST_F(ProcessesTest, RunDetachedInTheirDirectory)
{
    ASSERT_TRUE(Start(directory + "\\my bin\\server -q \"two words\"  x")) << GetLastError();
    EXPECT_EQ(directory + "\n<-q>\n<two words>\n<x>\n", Output());
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG)); // no child, so no zombie
}

TEST_F(ProcessesTest, SayWhyTheyDoNotStart)
{
    EXPECT_FALSE(Start("C:\\no\\such.exe -q"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, GetLastError());
    EXPECT_FALSE(Start("\"unfinished"));
    EXPECT_FALSE(Start(""));
    chmod((directory + "/my bin/server").c_str(), 0644);
    EXPECT_FALSE(Start(directory + "\\my bin\\server"));
}

} // namespace
} // namespace tintwerk
