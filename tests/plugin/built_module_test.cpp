// The DLL as it was built for Windows: what it offers, what it needs, how it is protected, what it carries.
// And the same DLL loaded as the core driver loads it.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "platform/coredriver.h"
#include "platform/owners.h"
#include "platform/pe_image.h"
#include "platform/plugin_module.h"
#include "src/plugin/class_factory.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

class BuiltModule : public testing::Test
{
protected:
    void SetUp() override
    {
        bytes = ReadWholeFile(TINTWERK_WINDOWS_MODULE);
        if (bytes.empty()) GTEST_SKIP() << TINTWERK_WINDOWS_MODULE " is not built";
        image = PeImage::Open(bytes);
        ASSERT_TRUE(image);
    }

    std::vector<BYTE> bytes;
    std::optional<PeImage> image;
};

TEST_F(BuiltModule, ExportsItsTwoEntryPoints)
{
    std::vector<std::string> names = image->ExportedNames();
    std::ranges::sort(names);
    EXPECT_EQ((std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject"}), names);
}

TEST_F(BuiltModule, NeedsNothingButTheSystem)
{
    const std::set<std::string> system{"ADVAPI32.dll", "COMCTL32.dll", "GDI32.dll",   "KERNEL32.dll",
                                       "msvcrt.dll",   "ole32.dll",    "SHELL32.dll", "USER32.dll",
                                       "VERSION.dll",  "WINSPOOL.DRV"};
    const std::vector<std::string> libraries = image->ImportedLibraries();
    EXPECT_FALSE(libraries.empty());
    for (const std::string& library : libraries)
        EXPECT_TRUE(std::ranges::any_of(system, [&](const std::string& known) {
            return lstrcmpiA(known.c_str(), library.c_str()) == 0;
        })) << library;
}

TEST_F(BuiltModule, IsLoadedAnywhereAndRunsNoData)
{
    constexpr WORD kHighEntropy = 0x20, kDynamicBase = 0x40, kNoExecute = 0x100;
    EXPECT_EQ(kHighEntropy | kDynamicBase | kNoExecute,
              image->DllCharacteristics() & (kHighEntropy | kDynamicBase | kNoExecute));
}

TEST_F(BuiltModule, CarriesVersionAndManifest)
{
    const PeImage::Bytes manifest = image->Resource(24, 2);
    const std::string text(manifest.begin(), manifest.end());
    EXPECT_NE(std::string::npos, text.find("Microsoft.Windows.Common-Controls"));
    EXPECT_TRUE(image->Resource(24, 3).empty());

    std::basic_string<WCHAR> path;
    for (const char c : std::string(TINTWERK_WINDOWS_MODULE))
        path += static_cast<WCHAR>(c == '/' ? '\\' : c);
    DWORD ignored = 0;
    std::vector<BYTE> version(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(version.size()), version.data()));
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(version.data(), TEXT("\\"), &value, &length));
    EXPECT_EQ(0x00050000u, static_cast<const VS_FIXEDFILEINFO*>(value)->dwFileVersionMS);
    ASSERT_TRUE(
        VerQueryValueW(version.data(), TEXT("\\StringFileInfo\\040904b0\\FileVersion"), &value, &length));
    EXPECT_EQ(std::basic_string<WCHAR>(TEXT("5.0.0.0")), static_cast<const WCHAR*>(value));
}

TEST_F(BuiltModule, IsReadWithinItsBytesHoweverItIsDamaged)
{
    const std::vector<BYTE> whole = bytes;
    unsigned random = 1;
    for (int round = 0; round < 300; ++round) {
        bytes = whole;
        for (int i = 0; i < 40; ++i) {
            random = random * 1664525 + 1013904223;
            // Headers and directories are near the beginning of the file and of its sections.
            bytes[(random >> 8) % (round % 2 ? 1024 : bytes.size())] = static_cast<BYTE>(random >> 24);
        }
        bytes.resize(round % 3 ? bytes.size() : (random >> 8) % bytes.size());
        if (const auto damaged = PeImage::Open(bytes)) {
            damaged->ExportedNames();
            damaged->ImportedLibraries();
            EXPECT_LE(damaged->Resource(16, 1).size(), bytes.size());
        }
    }
}

TEST(LoadedModule, MakesThePluginObject)
{
    DebugLines lines;
    {
        PluginModule module;
        ASSERT_TRUE(module) << GetLastError();
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(S_OK, module.GetClassObject(kPluginClassId, IID_IClassFactory,
                                              reinterpret_cast<void**>(factory.Receive())));
        ComPtr<IPrintOemUI2> plugin;
        ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IPrintOemUI2,
                                                reinterpret_cast<void**>(plugin.Receive())));
        DWORD signature = 0, needed = 0;
        EXPECT_EQ(S_OK, plugin->GetInfo(OEMGI_GETSIGNATURE, &signature, sizeof signature, &needed));
        EXPECT_EQ(0x48414C56u, signature);
        EXPECT_EQ(S_FALSE, module.CanUnloadNow());
        plugin.Reset();
        EXPECT_EQ(S_OK, module.CanUnloadNow());
        EXPECT_NE(nullptr, GetModuleHandleW(TEXT("PSTWUI.DLL")));
    }
    EXPECT_EQ(nullptr, GetModuleHandleW(TEXT("PSTWUI.DLL")));
    EXPECT_TRUE(lines.Contains(TEXT("UI:  Process attach.\r\n")));
    EXPECT_TRUE(lines.Contains(TEXT("UI:  IOemUI::GetInfo(1) entry.\r\r\n")));
    EXPECT_TRUE(lines.Contains(TEXT("UI:  Process detach.\r\n")));
}

} // namespace
} // namespace tintwerk
