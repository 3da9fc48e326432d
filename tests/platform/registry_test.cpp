// Values: sizes, types, what is not there, what may not be written.
#include <gtest/gtest.h>

#include "platform/owners.h"

namespace tintwerk {
namespace {

constexpr char kPath[] = "SOFTWARE\\Halvaro\\Platform test";

TEST(Registry, TellsSizesWithTheTerminatorAndWhatIsNotThere)
{
    RegistryKey key, reader;
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kPath);
    ASSERT_EQ(ERROR_SUCCESS,
              RegCreateKeyExA(HKEY_LOCAL_MACHINE, kPath, 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                              nullptr, key.Receive(), nullptr));
    const auto* const text = reinterpret_cast<const BYTE*>("abc");
    ASSERT_EQ(ERROR_SUCCESS, RegSetValueExA(key.Get(), "Text", 0, REG_SZ, text, 4));
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "software\\halvaro\\PLATFORM TEST", 0,
                                           KEY_READ | KEY_WOW64_64KEY, reader.Receive()));
    const struct
    {
        const char* name;
        DWORD room;
        LSTATUS status;
        DWORD size;
    } cases[] = {{"Text", 0, ERROR_MORE_DATA, 4},
                 {"tEXT", 3, ERROR_MORE_DATA, 4},
                 {"Text", 4, ERROR_SUCCESS, 4},
                 {"Text", 256, ERROR_SUCCESS, 4},
                 {"Nothing", 256, ERROR_FILE_NOT_FOUND, 256}};
    for (const auto& row : cases) {
        BYTE buffer[256] = {};
        DWORD size = row.room, type = 99;
        EXPECT_EQ(row.status, RegQueryValueExA(reader.Get(), row.name, nullptr, &type, buffer, &size))
            << row.room;
        if (row.status == ERROR_FILE_NOT_FOUND) continue;
        EXPECT_EQ(row.size, size) << row.room;
        EXPECT_EQ(DWORD{REG_SZ}, type) << row.room;
        if (row.status == ERROR_SUCCESS) {
            EXPECT_STREQ("abc", reinterpret_cast<const char*>(buffer));
        }
    }
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegSetValueExA(reader.Get(), "Text", 0, REG_SZ, text, 4));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteValueA(key.Get(), "Nothing"));
    reader.Reset();
    key.Reset();
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kPath);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              RegOpenKeyExA(HKEY_LOCAL_MACHINE, kPath, 0, KEY_READ | KEY_WOW64_64KEY, reader.Receive()));
}

} // namespace
} // namespace tintwerk
