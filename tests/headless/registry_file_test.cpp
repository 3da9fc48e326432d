// The text file that keeps the registry on Linux, and files in odd places or with names in no encoding.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/file_lock.h"
#include "platform/owners.h"
#include "platform/whole_file.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

class RegistryFileTest : public testing::Test
{
protected:
    ~RegistryFileTest() override { unsetenv("TINTWERK_REGISTRY"); }

    void UseFile(const char* content)
    {
        file.Write(content);
        setenv("TINTWERK_REGISTRY", file.path.c_str(), 1);
    }

    std::string Value(const char* name, DWORD* type = nullptr)
    {
        RegistryKey key;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Halvaro\\Tintwerk", 0, KEY_READ, key.Receive()) !=
            ERROR_SUCCESS)
            return "no key";
        char buffer[64] = {};
        DWORD size = sizeof buffer;
        if (RegQueryValueExA(key.Get(), name, nullptr, type, reinterpret_cast<BYTE*>(buffer), &size) !=
            ERROR_SUCCESS)
            return "no value";
        return {buffer, size};
    }

    TempFile file{testing::UnitTest::GetInstance()
                      ->current_test_info()
                      ->name()}; // a registry that is the same file is read once
};

TEST_F(RegistryFileTest, GivesValuesOfEveryKind)
{
    UseFile(
        "# a comment\r\n[SOFTWARE\\Halvaro\\Tintwerk]\r\nConfigDir=/etc/a=b\nInstallDir:expand=%X%\n"
        "Number:dword=0x0102\nBytes:hex=41 00 FF\nRaw:hex1=41 42\nnothing\n=\n[HKEY_CURRENT_USER\\Other]\n"
        "ConfigDir=wrong\n");
    const struct
    {
        const char* name;
        std::string bytes;
        DWORD type;
    } cases[] = {
        {"configdir", std::string("/etc/a=b\0", 9), REG_SZ},
        {"InstallDir", std::string("%X%\0", 4), REG_EXPAND_SZ},
        {"Number", std::string("\2\1\0\0", 4), REG_DWORD},
        {"Bytes", std::string("A\0\xFF", 3), REG_BINARY},
        {"Raw", "AB", REG_SZ},
        {"nothing", "no value", 99},
    };
    for (const auto& row : cases) {
        DWORD type = 99;
        EXPECT_EQ(row.bytes, Value(row.name, &type)) << row.name;
        EXPECT_EQ(row.type, type) << row.name;
    }
}

TEST_F(RegistryFileTest, KeepsWhatIsWritten)
{
    UseFile("[SOFTWARE\\Halvaro\\Tintwerk]\nOld=1\n[HKEY_LOCAL_MACHINE]\nTop=2\n[HKEY_LOCAL_MACHINERY]\n");
    RegistryKey key;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Halvaro\\Tintwerk\\Deep", 0,
                                             nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr));
    RegSetValueExA(key.Get(), "New", 0, REG_SZ, reinterpret_cast<const BYTE*>("two\nlines"), 10);
    RegSetValueExA(key.Get(), "Plain", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>("text"), 5);
    EXPECT_EQ("[HKEY_LOCAL_MACHINE]\nTop=2\n\n[HKEY_LOCAL_MACHINERY]\n\n"
              "[SOFTWARE]\n\n[SOFTWARE\\Halvaro]\n\n[SOFTWARE\\Halvaro\\Tintwerk]\nOld=1\n\n"
              "[SOFTWARE\\Halvaro\\Tintwerk\\Deep]\n"
              "New:hex1=74 77 6F 0A 6C 69 6E 65 73 00 \nPlain:expand=text\n\n",
              file.Content());
    // Another registry forgets this one; coming back reads it again.
    unsetenv("TINTWERK_REGISTRY");
    EXPECT_EQ("no key", Value("Old"));
    setenv("TINTWERK_REGISTRY", file.path.c_str(), 1);
    EXPECT_EQ(std::string("1\0", 2), Value("Old"));
}

TEST(FileLock, HoldsWithoutRoomForTheHoldersName)
{
    const std::filesystem::path file = TempFile("full").path;
    std::filesystem::create_symlink("/dev/full", file);
    FileLock first, second;
    EXPECT_EQ(FileLock::Outcome::Taken, first.Take(file, "first", 1000)); // the device is everybody's
    EXPECT_EQ(FileLock::Outcome::Held, second.Take(file, "second", 0));
}

TEST(WholeFile, MayHaveANameOfAnyBytes)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwerk-\xE4\xFF";
    std::filesystem::create_directory(folder);
    const std::filesystem::path fresh = folder / "\xC3.new", file = folder / "\xC3";
    std::string text;
    EXPECT_TRUE(WriteWhole(fresh, "selections"));
    EXPECT_TRUE(PutInPlace(fresh, file));
    EXPECT_TRUE(ReadWhole(file, text));
    EXPECT_EQ("selections", text);
    EXPECT_FALSE(std::filesystem::exists(fresh));
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tintwerk
