// The DLL as it was built for Windows: what it offers, what it needs, how it is protected, what it carries.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "platform/pe_image.h"
#include "platform/whole_file.h"
#include "src/config/module_versions.h"

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

TEST_F(BuiltModule, NeedsNothingButTheSystemAndRunsNoData)
{
    std::vector<std::string> names = image->ExportedNames();
    std::ranges::sort(names);
    EXPECT_EQ((std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject"}), names);

    const std::set<std::string> system{"advapi32.dll", "comctl32.dll", "gdi32.dll",   "kernel32.dll",
                                       "msvcrt.dll",   "ole32.dll",    "shell32.dll", "user32.dll",
                                       "version.dll",  "winspool.drv"};
    EXPECT_FALSE(image->ImportedLibraries().empty());
    for (std::string library : image->ImportedLibraries()) {
        std::ranges::transform(library, library.begin(),
                               [](char c) { return static_cast<char>(std::tolower(c)); });
        EXPECT_TRUE(system.contains(library)) << library;
    }
    constexpr WORD kHighEntropy = 0x20, kDynamicBase = 0x40, kNoExecute = 0x100;
    EXPECT_EQ(kHighEntropy | kDynamicBase | kNoExecute,
              image->DllCharacteristics() & (kHighEntropy | kDynamicBase | kNoExecute));
}

TEST_F(BuiltModule, CarriesVersionAndManifest)
{
    const PeImage::Bytes manifest = image->Resource(24, 2);
    EXPECT_NE(std::string::npos,
              std::string(manifest.begin(), manifest.end()).find("Microsoft.Windows.Common-Controls"));
    EXPECT_TRUE(image->Resource(24, 3).empty());
    const std::string module = TINTWERK_WINDOWS_MODULE;
    WCHAR version[32];
    GetFileVersionText(std::basic_string<WCHAR>(module.begin(), module.end()).c_str(), version);
    EXPECT_EQ(std::basic_string<WCHAR>(TEXT("5.0.0.0")), version);
}

TEST_F(BuiltModule, IsReadWithinItsBytesHoweverItIsDamaged)
{
    std::minstd_rand random;
    for (int round = 0; round < 300; ++round) {
        std::vector<BYTE> damaged = bytes;
        // Headers and directories are near the beginning of the file and of its sections.
        for (int i = 0; i < 40; ++i)
            damaged[random() % (round % 2 ? 1024 : damaged.size())] = static_cast<BYTE>(random());
        if (round % 3 == 0) damaged.resize(random() % damaged.size());
        if (const auto read = PeImage::Open(damaged)) {
            read->ExportedNames();
            read->ImportedLibraries();
            EXPECT_LE(read->Resource(16, 1).size(), damaged.size());
        }
    }
}

} // namespace
} // namespace tintwerk
