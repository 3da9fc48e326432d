// The installation package as the system reads it: the script through its own setup functions, in the folder
// that the install step lays out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "host/ppd/ppd_reader.h"
#include "host/ppd/wide_text.h"
#include "platform/pe_image.h"
#include "platform/whole_file.h"
#include "platform/win32.h"
#include "src/config/registry_values.h"

#include <setupapi.h>

namespace tintwerk {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::filesystem::path kPackage = TINTWERK_PACKAGE;

std::string FullPath(const char* name)
{
    return (kPackage / name).make_preferred().string();
}

// A value of the DLL's version resource; null when there is none.
const void* VersionValue(const std::string& path)
{
    static std::vector<BYTE> version;
    const std::string module = FullPath("PSTWUI.DLL");
    DWORD ignored = 0;
    version.resize(GetFileVersionInfoSizeA(module.c_str(), &ignored));
    void* value = nullptr;
    UINT length = 0;
    const bool found =
        GetFileVersionInfoA(module.c_str(), 0, static_cast<DWORD>(version.size()), version.data()) &&
        VerQueryValueA(version.data(), path.c_str(), &value, &length) && length > 0;
    return found ? value : nullptr;
}

std::string VersionText(const std::string& name)
{
    const auto* const text = static_cast<const char*>(VersionValue("\\StringFileInfo\\040904b0\\" + name));
    return text ? text : "no " + name;
}

class InstallationScript : public testing::Test
{
protected:
    using Line = std::vector<std::string>; // the key, then the fields

    void SetUp() override
    {
        UINT line = 0;
        inf_ = SetupOpenInfFileA(FullPath("tintwerk.inf").c_str(), nullptr, INF_STYLE_WIN4, &line);
        ASSERT_NE(inf_, INVALID_HANDLE_VALUE) << "line " << line << ", error " << GetLastError();
    }
    void TearDown() override
    {
        if (inf_ != INVALID_HANDLE_VALUE) SetupCloseInfFile(inf_);
    }

    // A section that is not there counts as a fault of the test's own.
    std::vector<Line> Section(const std::string& name)
    {
        std::vector<Line> lines;
        INFCONTEXT at;
        if (!SetupFindFirstLineA(inf_, name.c_str(), nullptr, &at)) {
            ADD_FAILURE() << "the section [" << name << "] is missing or empty";
            return lines;
        }
        do {
            Line& line = lines.emplace_back();
            for (DWORD field = 0; field <= SetupGetFieldCount(&at); ++field) {
                char text[MAX_PATH] = {};
                SetupGetStringFieldA(&at, field, text, sizeof text, nullptr);
                line.emplace_back(text);
            }
        } while (SetupFindNextLine(&at, &at));
        return lines;
    }

    // The fields behind a key of a section.
    Line Values(const std::string& section, const std::string& key)
    {
        for (const Line& line : Section(section))
            if (line[0] == key) return {line.begin() + 1, line.end()};
        ADD_FAILURE() << "[" << section << "] has no " << key;
        return {""};
    }

    // Every file that an install section copies, named itself or through a file list.
    Line CopiedFiles(const std::string& installSection)
    {
        Line files;
        for (const std::string& item : Values(installSection, "CopyFiles")) {
            if (item.starts_with("@")) {
                files.push_back(item.substr(1));
                continue;
            }
            for (const Line& line : Section(item))
                files.push_back(line[1]);
        }
        return files;
    }

private:
    HINF inf_ = INVALID_HANDLE_VALUE;
};

TEST_F(InstallationScript, IsOfAPrinterDriverFor64BitWindows)
{
    EXPECT_EQ("Printer", Values("Version", "Class")[0]);
    EXPECT_EQ("Halvaro", Values("Version", "Provider")[0]); // the text behind %Provider%
    EXPECT_EQ("1", Values("Version", "PnpLockdown")[0]);
    EXPECT_EQ("2", Values("Version", "DriverIsolation")[0]);
    EXPECT_EQ("TRUE", Values("PrinterPackageInstallation.amd64", "PackageAware")[0]);
    EXPECT_EQ("{D20EA372-DD35-4950-9ED8-A6335AFE79F1}",
              Values("PrinterPackageInstallation.amd64", "CoreDriverDependencies")[0]);
    EXPECT_EQ("66000", Values("DestinationDirs", "DefaultDestDir")[0]); // the printer driver directory
    EXPECT_EQ(VersionText("FileVersion"), Values("Version", "DriverVer")[1]);
}

TEST_F(InstallationScript, InstallsEveryModelFromFilesThatThePackageHas)
{
    const Line manufacturer = Values("Manufacturer", "Halvaro");
    EXPECT_THAT(manufacturer[1], StartsWith("NTamd64"));
    for (const Line& model : Section(manufacturer[0] + "." + manufacturer[1])) {
        const std::string& install = model[1];
        const Line copied = CopiedFiles(install);
        for (const std::string& file : copied) {
            EXPECT_TRUE(std::filesystem::exists(kPackage / file)) << file;
            const std::string disk = Values("SourceDisksFiles", file)[0];
            EXPECT_THAT(Values("SourceDisksNames.amd64", disk), Not(IsEmpty())) << file;
        }
        const std::string ppd = Values(install, "DataFile")[0];
        EXPECT_THAT(copied, Contains(ppd));
        EXPECT_THAT(copied, Contains("PSTWUI.DLL"));
        // The core driver finds the plug-in through the file of the PPD's base name.
        EXPECT_THAT(copied, Contains(std::filesystem::path(ppd).stem().string() + ".ini"));
        const PpdResult read = ReadPpd(kPackage / ppd);
        ASSERT_TRUE(read) << read.error.Full();
        EXPECT_EQ(model[0], read.ppd->PrinterName()) << "its last four characters are the printer's number";

        EXPECT_EQ("{D20EA372-DD35-4950-9ED8-A6335AFE79F1},PSCRIPT.OEM,PSCRIPT_DATA",
                  Values(install, "CoreDriverSections")[0]);
        // Maker and model without the printer's number, cut at 20 characters, and a checksum.
        std::string named = "Halvaro" + model[0].substr(0, model[0].size() - 5);
        std::ranges::replace(named, ' ', '_');
        named = named.substr(0, 20);
        EXPECT_THAT(model[2], AllOf(StartsWith("USBPRINT\\" + named), SizeIs(9 + named.size() + 4)));
        EXPECT_EQ(model[2].substr(9), model[3]);
    }
}

TEST(Package, ItsConfigurationFilesSayWhatTheDriverReads)
{
    const std::vector<BYTE> configuration = ReadWholeFile(FullPath("tintwerk-x12.ini").c_str());
    EXPECT_EQ('#', configuration[0]) << "how the core driver's comments begin";
    char plugin[MAX_PATH] = {};
    GetPrivateProfileStringA("OEMFiles", "OEMConfigFile1", "", plugin, sizeof plugin,
                             FullPath("tintwerk-x12.ini").c_str());
    EXPECT_STREQ(plugin, "PSTWUI.DLL");

    const std::string key = std::string("HKEY_LOCAL_MACHINE\\") + kRegistryKey;
    for (const char* name : {"\"ConfigDir\"", "\"InstallDir\"", "\"PrintServerCmd\""}) {
        char value[MAX_PATH] = {};
        GetPrivateProfileStringA(key.c_str(), name, "", value, sizeof value,
                                 FullPath("tintwerk.reg").c_str());
        EXPECT_STRNE(value, "") << name;
        EXPECT_EQ(nullptr, std::strchr(value, ' '))
            << name << ": the print server's command line has no quotes";
    }
    EXPECT_TRUE(std::filesystem::exists(kPackage / "config/ink/printer0012.ink"));
}

TEST(Package, ListsTheHashesOfItsFiles)
{
    const std::vector<BYTE> bytes = ReadWholeFile(FullPath("SHA256SUMS").c_str());
    const std::string hashes(bytes.begin(), bytes.end());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kPackage)) {
        const std::string name = entry.path().lexically_relative(kPackage).generic_string();
        if (entry.is_directory() || name == "SHA256SUMS") continue;
        EXPECT_THAT(hashes, HasSubstr("  " + name + "\n"));
    }
    EXPECT_THAT(hashes, HasSubstr("  symbols/PSTWUI."));
    EXPECT_TRUE(std::filesystem::exists(kPackage.string() + ".zip"));
}

TEST(ShippedModule, TellsThatItIsAPrinterDriver)
{
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(VersionValue("\\"));
    ASSERT_TRUE(fixed);
    EXPECT_EQ(0x3fu, fixed->dwFileFlagsMask);
    EXPECT_EQ(static_cast<DWORD>(VFT_DRV), fixed->dwFileType);
    EXPECT_EQ(static_cast<DWORD>(VFT2_DRV_PRINTER), fixed->dwFileSubtype);
    EXPECT_THAT(VersionText("LegalCopyright"), HasSubstr(VersionText("CompanyName")));
}

// The second one was linked later and in another folder.
TEST(ShippedModule, IsSmallLeadsToItsSymbolsAndIsTheSameHoweverOftenItIsLinked)
{
    const std::vector<BYTE> bytes = ReadWholeFile(FullPath("PSTWUI.DLL").c_str());
    EXPECT_LE(bytes.size(), 204800u);
    ASSERT_GT(bytes.size(), sizeof(IMAGE_DOS_HEADER));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(bytes.data());
    const auto& header =
        reinterpret_cast<const IMAGE_NT_HEADERS64*>(bytes.data() + dos->e_lfanew)->OptionalHeader;
    EXPECT_EQ(IMAGE_SUBSYSTEM_WINDOWS_GUI, header.Subsystem);
    EXPECT_EQ(601, 100 * header.MajorSubsystemVersion + header.MinorSubsystemVersion);
#ifndef _MSC_VER
    EXPECT_EQ(601, 100 * header.MajorOperatingSystemVersion + header.MinorOperatingSystemVersion);
    EXPECT_TRUE(std::filesystem::exists(kPackage / "symbols/PSTWUI.DLL.debug"));
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_THAT(text, HasSubstr("PSTWUI.DLL.debug"));
    EXPECT_THAT(text, HasSubstr("stack smashing detected")); // a guarded stack tells before it ends the process
#endif
    EXPECT_TRUE(bytes == ReadWholeFile(TINTWERK_LINKED_AGAIN));
}

} // namespace
} // namespace tintwerk
