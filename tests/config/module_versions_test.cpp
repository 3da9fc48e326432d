// The versions of the driver's modules, as the spooler and the modules' version resources tell them.
#include "src/config/module_versions.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/function_hook.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

// A driver with its files, and the file versions of modules by path.
struct TestDriver
{
    inline static Text path, dataFile, configFile, dependentFiles;
    inline static std::map<Text, Text> versions;
    inline static bool sizeOnly;

    TestDriver()
    {
        path = TEXT("C:\\drv\\core.dll");
        dataFile = TEXT("C:\\drv\\printer.ppd");
        configFile = TEXT("C:\\drv\\ui.dll");
        dependentFiles = Text(TEXT("C:\\drv\\pstwui.dll")) + WCHAR{} + TEXT("C:\\drv\\PSTWDRV.DLL") + WCHAR{};
        versions = {{path, TEXT("6.1.2")},
                    {configFile, TEXT("10.0.1.2 (build)")},
                    {TEXT("C:\\drv\\pstwui.dll"), TEXT("5.0.0.0")},
                    {TEXT("C:\\drv\\PSTWDRV.DLL"), TEXT("5.0.0.1")}};
        sizeOnly = false;
        ReplaceFunction("GetPrinterDriverW", static_cast<decltype(&GetPrinterDriverW)>(&Driver));
        ReplaceFunction("GetFileVersionInfoSizeW", static_cast<decltype(&GetFileVersionInfoSizeW)>(&Size));
        ReplaceFunction("GetFileVersionInfoW", static_cast<decltype(&GetFileVersionInfoW)>(&Load));
        ReplaceFunction("VerQueryValueW", static_cast<decltype(&VerQueryValueW)>(&Value));
    }
    ~TestDriver()
    {
        for (const char* name :
             {"GetPrinterDriverW", "GetFileVersionInfoSizeW", "GetFileVersionInfoW", "VerQueryValueW"})
            RestoreFunction(name);
    }

    static BOOL WINAPI Driver(HANDLE printer, LPWSTR environment, DWORD level, LPBYTE buffer, DWORD size,
                              LPDWORD needed)
    {
        *needed = 0;
        if (!printer || environment || level != 4) return FALSE;
        *needed = sizeof(DRIVER_INFO_4W);
        if (size < *needed || sizeOnly) return FALSE;
        auto* const driver = reinterpret_cast<DRIVER_INFO_4W*>(buffer);
        *driver = {};
        driver->pDriverPath = path.data();
        driver->pDataFile = dataFile.data();
        driver->pConfigFile = configFile.data();
        driver->pDependentFiles = dependentFiles.empty() ? nullptr : dependentFiles.data();
        return TRUE;
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
        if (Text(TEXT("\\VarFileInfo\\Translation")) == name) {
            *value = translation;
            *size = sizeof(translation);
            return TRUE;
        }
        if (Text(TEXT("\\StringFileInfo\\040904b0\\FileVersion")) != name) return FALSE;
        *value = const_cast<WCHAR*>(version.data());
        *size = static_cast<UINT>(version.empty() ? 0 : version.size() + 1);
        return TRUE;
    }
};

TEST(ModuleVersions, ComeFromTheDriversFiles)
{
    TestDriver driver;
    DriverVersions versions{};
    EXPECT_EQ(1, GetDriverVersions(&driver, &versions));
    EXPECT_STREQ("printer.ppd", versions.dataFileName);
    EXPECT_EQ(Text(TEXT("6.1.2")), versions.coreDriver);
    EXPECT_EQ(Text(TEXT("10.0.1.2")), versions.coreUi);
    EXPECT_EQ(Text(TEXT("5.0.0.0")), versions.plugin);
    EXPECT_EQ(Text(TEXT("5.0.0.1")), versions.renderingPlugin);
}

TEST(ModuleVersions, AreUnknownWithoutADriver)
{
    TestDriver driver;
    TestDriver::sizeOnly = true;
    for (const HANDLE printer : {HANDLE{}, static_cast<HANDLE>(&driver)}) {
        DriverVersions versions{};
        EXPECT_EQ(0, GetDriverVersions(printer, &versions));
        for (const WCHAR* version :
             {versions.coreUi, versions.coreDriver, versions.plugin, versions.renderingPlugin})
            EXPECT_EQ(Text(TEXT("unknown")), version);
        EXPECT_STREQ("", versions.dataFileName);
    }
}

TEST(ModuleVersions, TakeOurModulesByTheirWholeFileName)
{
    const std::pair<Text, Text> cases[] = {{TEXT(""), TEXT("unknown")},
                                           {TEXT("PSTWUI.DLL"), TEXT("unknown")},
                                           {TEXT("C:\\xPSTWUI.DLL"), TEXT("unknown")},
                                           {TEXT("\\PSTWUI.DLL"), TEXT("")}, // ours, without a version
                                           {TEXT("C:\\drv\\pstwui.dll"), TEXT("5.0.0.0")}};
    TestDriver driver;
    // A comparison in the user's language may tell "i" from "I": in Turkish it does.
    ReplaceFunction("lstrcmpiW", static_cast<decltype(&lstrcmpiW)>([](LPCWSTR, LPCWSTR) { return 1; }));
    for (const auto& [file, version] : cases) {
        TestDriver::dependentFiles = file.empty() ? file : file + WCHAR{};
        DriverVersions versions{};
        EXPECT_EQ(1, GetDriverVersions(&driver, &versions));
        EXPECT_EQ(version, versions.plugin);
        EXPECT_EQ(Text(TEXT("unknown")), versions.renderingPlugin);
    }
    RestoreFunction("lstrcmpiW");
}

TEST(ModuleVersions, KeepThePpdNameWhenItFits)
{
    const std::pair<Text, std::string> cases[] = {{TEXT("a.ppd"), "a.ppd"},
                                                  {TEXT("C:\\x\\"), ""},
                                                  {TEXT("C:\\gr\u00FCn.ppd"), "gr\xFCn.ppd"},
                                                  {Text(127, 'p'), std::string(127, 'p')},
                                                  {Text(128, 'p'), ""}};
    TestDriver driver;
    for (const auto& [path, name] : cases) {
        TestDriver::dataFile = path;
        DriverVersions versions{};
        GetDriverVersions(&driver, &versions);
        EXPECT_EQ(name, versions.dataFileName);
    }
}

TEST(ModuleVersions, AreShortenedToTheirNumbers)
{
    const std::pair<Text, Text> cases[] = {{TEXT("1.0.1.0"), TEXT("1.0.1.0")},
                                           {TEXT("5.0.123.3 (winbuild)"), TEXT("5.0.123.3")},
                                           {TEXT("1.2.3"), TEXT("1.2.3")},
                                           {TEXT("1.2.3 (x)"), TEXT("1.2.3 (x)")},
                                           {TEXT("1.2.3. 5 6"), TEXT("1.2.3. 5")},
                                           {TEXT("1.2.3."), TEXT("1.2.3.")},
                                           {TEXT(""), TEXT("")},
                                           {Text(40, '7'), Text(31, '7')}};
    TestDriver driver;
    for (const auto& [version, shown] : cases) {
        TestDriver::versions[TEXT("m")] = version;
        WCHAR text[32];
        GetFileVersionText(TEXT("m"), text);
        EXPECT_EQ(shown, text);
    }
    WCHAR text[32] = TEXT("?");
    GetFileVersionText(TEXT("no module"), text);
    EXPECT_EQ(Text(), text);
}

} // namespace
} // namespace tintwerk
