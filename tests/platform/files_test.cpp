// Files by 8-bit paths with backslashes, and pictures in them: what opens, what is written, what is refused.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/file_lock.h"
#include "platform/owners.h"
#include "platform/whole_file.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

using FileHandle = Owned<HANDLE, [](HANDLE file) { CloseHandle(file); }, HANDLE{}>;

HANDLE Open(const std::string& path, DWORD access, DWORD disposition)
{
    return CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

TEST(Files, EndWhereTheyWereCut)
{
    const TempFile text("cut", "0123456789");
    char buffer[4];
    DWORD count = 0;
    {
        const FileHandle file(Open(text.path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS));
        EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
        EXPECT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &count, nullptr));
        EXPECT_TRUE(SetEndOfFile(file.Get()));
        EXPECT_TRUE(ReadFile(file.Get(), buffer, 1, &count, nullptr)) << "the end is no error";
        EXPECT_EQ(0u, count);
    }
    EXPECT_EQ("0123", text.Content());
    const FileHandle reader(Open(text.path, GENERIC_READ, OPEN_EXISTING));
    EXPECT_FALSE(WriteFile(reader.Get(), "y", 1, &count, nullptr));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
}

TEST(Files, SayWhyTheyDoNotOpen)
{
    const std::string folder = TempFile("").path;
    const auto error = [](const std::string& path, DWORD access, DWORD disposition) {
        EXPECT_EQ(INVALID_HANDLE_VALUE, Open(path, access, disposition));
        return GetLastError();
    };
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, error(folder + "b.txt", GENERIC_READ, OPEN_EXISTING));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, error(folder + "\\c.txt", GENERIC_READ, OPEN_EXISTING));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, error(folder + "\\c.txt", GENERIC_WRITE, CREATE_ALWAYS));
}

TEST(Files, AreLockedForOneAtATime)
{
    const std::filesystem::path file = TempFile("lock").path;
    {
        FileLock first, second, third;
        EXPECT_EQ(FileLock::Outcome::Taken, first.Take(file, "first", 0));
        EXPECT_EQ(FileLock::Outcome::Held, second.Take(file, "second", 30));
        std::string holder;
        EXPECT_TRUE(ReadWhole(file, holder));
        EXPECT_EQ("first", holder);
        for (const auto& nowhere : {file / "below", file.parent_path()})
            EXPECT_EQ(FileLock::Outcome::Impossible, third.Take(nowhere, "third", 0)) << nowhere;
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    FileLock again;
    EXPECT_EQ(FileLock::Outcome::Taken, again.Take(file, "again", 0));
}

// A picture of 3 by 2 pixels with 4 bits each.
std::string SmallPicture()
{
    BITMAPFILEHEADER file{0x4D42, 0, 0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + 16 * 4};
    BITMAPINFOHEADER header{sizeof header, 3, 2, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&header), sizeof header);
    return bytes + std::string(16 * 4, 0) + std::string("\x01\x20\0\0\x23\0\0\0", 8);
}

TEST(Pictures, ComeWholeOrNotAtAll)
{
    const std::string whole = SmallPicture();
    const std::pair<std::string, bool> cases[] = {
        {whole, true}, {"", false}, {whole.substr(0, 10), false}, {"XX" + whole.substr(2), false}};
    for (const auto& [bytes, loads] : cases) {
        const TempFile file("picture.bmp", bytes);
        const BitmapHandle picture(static_cast<HBITMAP>(LoadImageA(
            nullptr, file.path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
        BITMAP size{};
        EXPECT_EQ(loads, GetObjectW(picture.Get(), sizeof size, &size) != 0) << bytes.size();
        EXPECT_EQ(loads ? 3 : 0, size.bmWidth);
        EXPECT_EQ(loads ? 2 : 0, size.bmHeight);
    }
}

} // namespace
} // namespace tintwerk
