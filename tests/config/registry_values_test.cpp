// The installer's values in the registry: what is accepted, what counts as absent, and what is told about it.
#include "src/config/registry_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/function_hook.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

// The registry as a test describes it.
struct TestRegistry
{
    inline static LSTATUS opens;
    inline static DWORD type;
    inline static std::string value; // with or without its zero
    inline static std::string asked;
    inline static int openKeys;

    TestRegistry()
    {
        opens = ERROR_SUCCESS;
        type = REG_SZ;
        openKeys = 0;
        ReplaceFunction("RegOpenKeyExA", static_cast<decltype(&RegOpenKeyExA)>(&Open));
        ReplaceFunction("RegQueryValueExA", static_cast<decltype(&RegQueryValueExA)>(&Query));
        ReplaceFunction("RegCloseKey", static_cast<decltype(&RegCloseKey)>(&Close));
    }
    ~TestRegistry()
    {
        EXPECT_EQ(0, openKeys);
        for (const char* name : {"RegOpenKeyExA", "RegQueryValueExA", "RegCloseKey"})
            RestoreFunction(name);
    }

    static LSTATUS WINAPI Open(HKEY root, LPCSTR key, DWORD, REGSAM access, PHKEY opened)
    {
        EXPECT_EQ(HKEY_LOCAL_MACHINE, root);
        EXPECT_STREQ("SOFTWARE\\Halvaro\\Tintwerk", key);
        EXPECT_EQ(0x20119u, access);
        *opened = reinterpret_cast<HKEY>(0x5A5A);
        if (opens == ERROR_SUCCESS) ++openKeys;
        return opens;
    }
    static LSTATUS WINAPI Query(HKEY, LPCSTR name, LPDWORD, LPDWORD valueType, LPBYTE buffer, LPDWORD size)
    {
        asked = std::string(name) + " " + std::to_string(*size);
        const DWORD room = std::exchange(*size, static_cast<DWORD>(value.size()));
        *valueType = type;
        std::copy_n(value.begin(), std::min<std::size_t>(room, value.size()), buffer);
        return value.size() <= room ? ERROR_SUCCESS : ERROR_MORE_DATA;
    }
    static LSTATUS WINAPI Close(HKEY key)
    {
        EXPECT_EQ(reinterpret_cast<HKEY>(0x5A5A), key);
        --openKeys;
        return ERROR_SUCCESS;
    }
};

TEST(RegistryValues, AreTextsOfAtMost254Characters)
{
    const struct
    {
        const char* name;
        DWORD type;
        std::string value;
        bool found;
    } cases[] = {{"a directory", REG_SZ, std::string("C:\\conf\0", 8), true},
                 {"an empty text", REG_SZ, std::string(1, '\0'), true},
                 {"no bytes at all", REG_SZ, "", true},
                 {"no closing zero", REG_SZ, "C:\\conf", true},
                 {"254 characters", REG_SZ, std::string(254, 'x') + '\0', true},
                 {"255 characters", REG_SZ, std::string(255, 'x') + '\0', false},
                 {"300 characters", REG_SZ, std::string(300, 'x') + '\0', false},
                 {"an expandable text", REG_EXPAND_SZ, std::string("C:\\conf\0", 8), false}};
    TestRegistry registry;
    for (const auto& row : cases) {
        TestRegistry::type = row.type;
        TestRegistry::value = row.value;
        char buffer[kRegistryTextBytes];
        for (const auto& read :
             {+[](char* text) { return ReadRegistryString("ConfigDir", text); }, &ReadConfigDir}) {
            std::ranges::fill(buffer, '?');
            DebugLines lines;
            ASSERT_EQ(row.found ? 0 : 1, read(buffer)) << row.name;
            EXPECT_EQ(!row.found, lines.Contains(TEXT("reg value ConfigDir not found\n"))) << row.name;
            if (row.found) {
                EXPECT_STREQ(row.value.c_str(), buffer);
            }
        }
    }
}

TEST(RegistryValues, AreAskedForWithTheRoomOfTheirReader)
{
    TestRegistry registry;
    char buffer[kRegistryTextBytes];
    ReadRegistryString("InstallDir", buffer);
    EXPECT_EQ("InstallDir 256", TestRegistry::asked);
    ReadConfigDir(buffer);
    EXPECT_EQ("ConfigDir 255", TestRegistry::asked);
}

TEST(RegistryValues, AreAbsentWithoutTheKey)
{
    TestRegistry registry;
    TestRegistry::opens = ERROR_FILE_NOT_FOUND;
    DebugLines lines;
    char buffer[kRegistryTextBytes];
    EXPECT_EQ(1, ReadRegistryString("InstallDir", buffer));
    EXPECT_EQ(1, ReadConfigDir(buffer));
    EXPECT_EQ((std::vector<DebugLines::Text>{TEXT("reg key SOFTWARE\\Halvaro\\Tintwerk not found\n"),
                                             TEXT("reg key for OEM cofiguration path not found\n")}),
              lines.Lines());
}

} // namespace
} // namespace tintwerk
