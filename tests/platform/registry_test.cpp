// Keys and values: sizes, types, texts without terminators, what is not there.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/owners.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

constexpr char kPath[] = "SOFTWARE\\Halvaro\\Platform test";

class RegistryTest : public testing::Test
{
protected:
    RegistryTest()
    {
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kPath);
        EXPECT_EQ(ERROR_SUCCESS,
                  RegCreateKeyExA(HKEY_LOCAL_MACHINE, kPath, 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                                  nullptr, key.Receive(), nullptr));
    }
    ~RegistryTest() override
    {
        key.Reset();
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kPath);
    }

    LSTATUS Set(const char* name, DWORD type, const void* data, DWORD size)
    {
        return RegSetValueExA(key.Get(), name, 0, type, static_cast<const BYTE*>(data), size);
    }

    RegistryKey key;
};

TEST_F(RegistryTest, ReportsSizesWithTheTerminator)
{
    ASSERT_EQ(ERROR_SUCCESS, Set("Text", REG_SZ, "abc", 4));
    const struct
    {
        DWORD room;
        LSTATUS status;
    } cases[] = {{0, ERROR_MORE_DATA}, {3, ERROR_MORE_DATA}, {4, ERROR_SUCCESS}, {256, ERROR_SUCCESS}};
    for (const auto& row : cases) {
        char buffer[256] = "~~~~~~~";
        DWORD size = row.room, type = 99;
        EXPECT_EQ(row.status,
                  RegQueryValueExA(key.Get(), "tEXT", nullptr, &type, reinterpret_cast<BYTE*>(buffer), &size))
            << row.room;
        EXPECT_EQ(4u, size) << row.room;
        EXPECT_EQ(DWORD{REG_SZ}, type) << row.room;
        if (row.status == ERROR_SUCCESS) {
            EXPECT_STREQ("abc", buffer);
        }
    }
    DWORD size = 1;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key.Get(), "Text", nullptr, nullptr, nullptr, &size));
    EXPECT_EQ(4u, size);
}

TEST_F(RegistryTest, SaysWhatIsNotThere)
{
    RegistryKey other;
    DWORD size = 0;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Halvaro\\Nothing here", 0,
                                                  KEY_READ | KEY_WOW64_64KEY, other.Receive()));
    EXPECT_EQ(nullptr, other.Get());
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key.Get(), "Nothing", nullptr, nullptr, nullptr, &size));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteValueA(key.Get(), "Nothing"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteTreeA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Halvaro\\Nothing here"));

    ASSERT_EQ(ERROR_SUCCESS, Set("Text", REG_SZ, "abc", 4));
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "software\\halvaro\\PLATFORM TEST", 0,
                                           KEY_READ | KEY_WOW64_64KEY, other.Receive()));
    EXPECT_EQ(ERROR_ACCESS_DENIED,
              RegSetValueExA(other.Get(), "Text", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteValueA(key.Get(), "Text"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(other.Get(), "Text", nullptr, nullptr, nullptr, &size));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeA(HKEY_LOCAL_MACHINE, kPath));
    EXPECT_NE(ERROR_SUCCESS, RegQueryValueExA(other.Get(), "Text", nullptr, nullptr, nullptr, &size));
}

} // namespace
} // namespace tintwerk
