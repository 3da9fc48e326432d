// Programs of this system, started by command lines as Windows knows them.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <string>

#include "platform/whole_file.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

namespace fs = std::filesystem;

TEST(Processes, RunDetachedInTheirDirectory)
{
    const std::string directory =
        fs::temp_directory_path() / ("tintwerk processes " + std::to_string(GetCurrentProcessId()));
    const fs::path server = directory + "/my bin/server";
    fs::create_directories(server.parent_path());
    WriteWhole(
        server,
        "#!/bin/sh\npwd > out.tmp\nfor a in \"$@\"; do echo \"<$a>\" >> out.tmp; done\nmv out.tmp out\n");
    const auto start = [&](std::string commandLine) {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        return CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                              directory.c_str(), &startup, &process) &&
               CloseHandle(process.hThread) && CloseHandle(process.hProcess) &&
               !CloseHandle(process.hProcess);
    };
    EXPECT_FALSE(start(directory + "\\my bin\\server")) << "no program";
    fs::permissions(server, fs::perms::owner_all);
    ASSERT_TRUE(start(directory + "\\my bin\\server -q \"two words\"  x")) << GetLastError();
    std::string output;
    for (int i = 0; i < 200 && output.empty(); ++i, Sleep(10))
        ReadWhole(directory + "/out", output);
    EXPECT_EQ(directory + "\n<-q>\n<two words>\n<x>\n", output);
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG)) << "no child, so no zombie";
    for (const char* commandLine : {"\"unfinished", "", "C:\\no\\such.exe -q"})
        EXPECT_FALSE(start(commandLine)) << commandLine;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, GetLastError());
    fs::remove_all(directory);
}

} // namespace
} // namespace tintwerk
