// Files by 8-bit paths with backslashes: what opens, what is written, what is refused.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/file_lock.h"
#include "platform/owners.h"
#include "platform/whole_file.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

using FileHandle = Owned<HANDLE, [](HANDLE file) { CloseHandle(file); }, HANDLE{}>;

class FilesTest : public testing::Test
{
protected:
    FilesTest()
    {
        char temporary[MAX_PATH];
        EXPECT_LT(GetTempPathA(MAX_PATH, temporary), DWORD{MAX_PATH});
        directory = std::string(temporary) + "tintwerk files " + std::to_string(GetCurrentProcessId());
        CreateDirectoryA(directory.c_str(), nullptr);
    }
    ~FilesTest() override
    {
        DeleteFileA(Path("a.txt").c_str());
        EXPECT_TRUE(RemoveDirectoryA(directory.c_str()));
    }

    std::string Path(const char* name) const { return directory + '\\' + name; }

    // INVALID_HANDLE_VALUE and last error on failure.
    HANDLE Open(const char* name, DWORD access, DWORD disposition) const
    {
        return CreateFileA(Path(name).c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    void Write(const std::string& text) const
    {
        FileHandle file(Open("a.txt", GENERIC_WRITE, CREATE_ALWAYS));
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
        EXPECT_EQ(text.size(), written);
    }

    std::string Content() const
    {
        FileHandle file(Open("a.txt", GENERIC_READ, OPEN_EXISTING));
        char buffer[100];
        DWORD read = 0;
        EXPECT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &read, nullptr));
        return {buffer, read};
    }

    std::string directory;
};

TEST_F(FilesTest, EndWhereTheyWereCut)
{
    Write("0123456789");
    {
        FileHandle file(Open("a.txt", GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS));
        EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
        char buffer[4];
        DWORD read = 0;
        EXPECT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &read, nullptr));
        EXPECT_TRUE(SetEndOfFile(file.Get()));
    }
    EXPECT_EQ("0123", Content());
}

TEST_F(FilesTest, SayWhyTheyDoNotOpen)
{
    Write("x");
    const struct
    {
        const char* what;
        const char* name;
        DWORD access;
        DWORD disposition;
        DWORD error;
    } cases[] = {
        {"no such file", "b.txt", GENERIC_READ, OPEN_EXISTING, ERROR_FILE_NOT_FOUND},
        {"no such directory", "b\\c.txt", GENERIC_READ, OPEN_EXISTING, ERROR_PATH_NOT_FOUND},
        {"no directory to write in", "b\\c.txt", GENERIC_WRITE, CREATE_ALWAYS, ERROR_PATH_NOT_FOUND},
        {"a directory", "", GENERIC_READ, OPEN_EXISTING, 0},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(INVALID_HANDLE_VALUE, Open(row.name, row.access, row.disposition)) << row.what;
        if (row.error) {
            EXPECT_EQ(row.error, GetLastError()) << row.what;
        }
    }
    EXPECT_EQ(DWORD{INVALID_FILE_ATTRIBUTES}, GetFileAttributesA(Path("b.txt").c_str()));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, GetLastError());
    EXPECT_FALSE(CreateDirectoryA(directory.c_str(), nullptr));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
    EXPECT_FALSE(CloseHandle(nullptr));
}

TEST_F(FilesTest, TellWhatWasReadOrWritten)
{
    Write("x");
    DWORD count = 99;
    FileHandle reader(Open("a.txt", GENERIC_READ, OPEN_EXISTING));
    EXPECT_FALSE(WriteFile(reader.Get(), "y", 1, &count, nullptr));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
    char byte = 0;
    EXPECT_TRUE(ReadFile(reader.Get(), &byte, 1, &count, nullptr));
    EXPECT_TRUE(ReadFile(reader.Get(), &byte, 1, &count, nullptr)); // the end is no error
    EXPECT_EQ(0u, count);
}

TEST_F(FilesTest, AreLockedForOneAtATime)
{
    const std::filesystem::path file = std::filesystem::path(directory) / "a.lock";
    {
        FileLock first, second, third;
        EXPECT_EQ(FileLock::Outcome::Taken, first.Take(file, "first", 0));
        EXPECT_EQ(FileLock::Outcome::Held, second.Take(file, "second", 30));
        std::string holder;
        EXPECT_TRUE(ReadWhole(file, holder));
        EXPECT_EQ("first", holder);
        EXPECT_EQ(FileLock::Outcome::Impossible, third.Take(file / "below", "third", 0));
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    FileLock again;
    EXPECT_EQ(FileLock::Outcome::Taken, again.Take(file, "again", 0));
}

} // namespace
} // namespace tintwerk
