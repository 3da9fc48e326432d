// What the plug-in reads of its installation: the values in the registry, what is accepted, what counts as
// absent and what is told about it; the versions of the driver's modules, as the spooler and their version
// resources tell them.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/function_hook.h"
#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "src/config/module_versions.h"
#include "src/config/registry_values.h"
#include "tests/sheets/scripted_core.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

TEST(RegistryValues, AreTextsOfAtMost254Characters)
{
    const struct
    {
        int (*read)(char* text);
        const WCHAR* withoutKey;
    } readers[] = {{[](char* text) { return ReadRegistryString("ConfigDir", text); },
                    TEXT("reg key SOFTWARE\\Halvaro\\Tintwerk not found\n")},
                   {&ReadConfigDir, TEXT("reg key for OEM cofiguration path not found\n")}};
    const struct
    {
        const char* name;
        DWORD type;
        std::string value;
        bool found;
    } cases[] = {{"a directory", REG_SZ, std::string("C:\\conf\0", 8), true},
                 {"no bytes at all", REG_SZ, "", true},
                 {"no closing zero", REG_SZ, "C:\\conf", true},
                 {"254 characters", REG_SZ, std::string(254, 'x') + '\0', true},
                 {"255 characters", REG_SZ, std::string(255, 'x') + '\0', false},
                 {"300 characters", REG_SZ, std::string(300, 'x') + '\0', false},
                 {"an expandable text", REG_EXPAND_SZ, std::string("C:\\conf\0", 8), false}};
    for (const auto& reader : readers) {
        char buffer[kRegistryTextBytes];
        DebugLines lines;
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryKey);
        EXPECT_EQ(1, reader.read(buffer));
        EXPECT_EQ(std::vector<Text>{reader.withoutKey}, lines.Take());

        RegistryKey key;
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Halvaro\\Tintwerk", 0, nullptr, 0,
                        KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, key.Receive(), nullptr);
        for (const auto& row : cases) {
            RegSetValueExA(key.Get(), "ConfigDir", 0, row.type,
                           reinterpret_cast<const BYTE*>(row.value.data()),
                           static_cast<DWORD>(row.value.size()));
            std::ranges::fill(buffer, '?');
            ASSERT_EQ(row.found ? 0 : 1, reader.read(buffer)) << row.name;
            EXPECT_EQ(!row.found, lines.Contains(TEXT("reg value ConfigDir not found\n"))) << row.name;
            EXPECT_TRUE(!row.found || std::string(row.value.c_str()) == buffer) << row.name;
            lines.Take();
        }
    }
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryKey);
}

// A printer whose driver has these files, and the file versions of modules by path.
class ModuleVersions : public testing::Test
{
protected:
    ModuleVersions()
    {
        versions = {{driver.driverPath, TEXT("6.1.2")},
                    {driver.configFile, TEXT("10.0.1.2 (build)")},
                    {TEXT("C:\\drv\\pstwui.dll"), TEXT("5.0.0.0")},
                    {TEXT("C:\\drv\\PSTWDRV.DLL"), TEXT("5.0.0.1")}};
        UseMemorySpooler();
        MemorySpooler::Printer known;
        known.name = known.driverName = driver.name;
        TheMemorySpooler().SetPrinter(known);
        OpenPrinterW(driver.name.data(), printer.Receive(), nullptr);
        ReplaceFunction("GetFileVersionInfoSizeW", &Size);
        ReplaceFunction("GetFileVersionInfoW", &Load);
        ReplaceFunction("VerQueryValueW", &Value);
    }
    ~ModuleVersions() override
    {
        for (const char* name : {"GetFileVersionInfoSizeW", "GetFileVersionInfoW", "VerQueryValueW"})
            RestoreFunction(name);
        printer.Reset();
        StopMemorySpooler();
    }

    static DWORD WINAPI Size(LPCWSTR file, LPDWORD)
    {
        return versions.contains(file) ? static_cast<DWORD>(sizeof(Text*)) : 0;
    }
    static BOOL WINAPI Load(LPCWSTR file, DWORD, DWORD, LPVOID resource)
    {
        *static_cast<const Text**>(resource) = &versions[file];
        return TRUE;
    }
    static BOOL WINAPI Value(LPCVOID resource, LPCWSTR name, LPVOID* value, PUINT size)
    {
        static WORD translation[] = {0x0409, 0x04B0, 0x0407, 0x04B0};
        const Text& version = **static_cast<const Text* const*>(resource);
        const bool isVersion = Text(TEXT("\\StringFileInfo\\040904b0\\FileVersion")) == name;
        *value = isVersion ? const_cast<WCHAR*>(version.data()) : static_cast<void*>(translation);
        *size = static_cast<UINT>(isVersion ? version.size() + !version.empty() : sizeof translation);
        return isVersion || Text(TEXT("\\VarFileInfo\\Translation")) == name;
    }

    // The PPD's name and the versions of core driver, core UI, plug-in and rendering plug-in.
    std::vector<Text> Told(int result = 1)
    {
        if (result == 1) TheMemorySpooler().SetDriver(driver);
        DriverVersions told{};
        EXPECT_EQ(result, GetDriverVersions(printer.Get(), &told));
        return {Wide(told.dataFileName), told.coreDriver, told.coreUi, told.plugin, told.renderingPlugin};
    }

    inline static std::map<Text, Text> versions;
    MemorySpooler::Driver driver{3,
                                 TEXT("D"),
                                 TEXT("C:\\drv\\core.dll"),
                                 TEXT("C:\\drv\\printer.ppd"),
                                 TEXT("C:\\drv\\ui.dll"),
                                 {TEXT("C:\\drv\\pstwui.dll"), TEXT("C:\\drv\\PSTWDRV.DLL")}};
    PrinterHandle printer;
};

TEST_F(ModuleVersions, ComeFromTheDriversFiles)
{
    const Text unknown = TEXT("unknown");
    EXPECT_EQ((std::vector<Text>{TEXT(""), unknown, unknown, unknown, unknown}), Told(0)); // no driver yet
    EXPECT_EQ((std::vector<Text>{TEXT("printer.ppd"), TEXT("6.1.2"), TEXT("10.0.1.2"), TEXT("5.0.0.0"),
                                 TEXT("5.0.0.1")}),
              Told());
}

TEST_F(ModuleVersions, AreThoseOfOurModulesShortenedToTheirNumbers)
{
    enum
    {
        PpdName,
        CoreDriver,
        Plugin = 3
    }; // what is told of
    const struct
    {
        int of;
        Text given; // the PPD's path, the core driver's version, the path of a dependent file
        Text told;
    } cases[] = {
        {PpdName, TEXT("a.ppd"), TEXT("a.ppd")},
        {PpdName, TEXT("C:\\x\\"), TEXT("")},
        {PpdName, TEXT("C:\\gr\u00FCn.ppd"), TEXT("gr\u00FCn.ppd")},
        {PpdName, TEXT("C:\\\u0100.ppd"), TEXT("?.ppd")}, // not "A"
        {PpdName, Text(127, 'p'), Text(127, 'p')},
        {PpdName, Text(128, 'p'), TEXT("")},
        {CoreDriver, TEXT("5.0.123.3 (winbuild)"), TEXT("5.0.123.3")},
        {CoreDriver, TEXT("1.2.3 (x)"), TEXT("1.2.3 (x)")},
        {CoreDriver, TEXT("1.2.3. 5 6"), TEXT("1.2.3. 5")},
        {CoreDriver, TEXT("1.2.3."), TEXT("1.2.3.")},
        {CoreDriver, TEXT(""), TEXT("")},
        {CoreDriver, Text(40, '7'), Text(31, '7')},
        {Plugin, TEXT(""), TEXT("unknown")},
        {Plugin, TEXT("PSTWUI.DLL"), TEXT("unknown")},
        {Plugin, TEXT("C:\\xPSTWUI.DLL"), TEXT("unknown")},
        {Plugin, TEXT("\\PSTWUI.DLL"), TEXT("")}, // ours, without a version
        {Plugin, TEXT("C:\\drv\\pstwui.dll"), TEXT("5.0.0.0")},
    };
    // A comparison in the user's language may tell "i" from "I": in Turkish it does.
    ReplaceFunction("lstrcmpiW", static_cast<decltype(&lstrcmpiW)>([](LPCWSTR, LPCWSTR) { return 1; }));
    for (const auto& row : cases) {
        if (row.of == PpdName) driver.dataFile = row.given;
        if (row.of == CoreDriver) versions[driver.driverPath] = row.given;
        if (row.of == Plugin) driver.dependentFiles.assign(row.given.empty() ? 0 : 1, row.given);
        EXPECT_EQ(row.told, Told()[static_cast<size_t>(row.of)]);
    }
    RestoreFunction("lstrcmpiW");
    EXPECT_EQ(TEXT("unknown"), Told()[4]);
}

} // namespace
} // namespace tintwerk
