// The installation package as the system reads it: the script through its own setup functions, in the folder
// that the install step lays out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "host/ppd/ppd_reader.h"
#include "host/ppd/wide_text.h"
#include "platform/win32.h"
#include "src/config/registry_values.h"

#include <setupapi.h>

namespace tintwerk {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

const std::filesystem::path kPackage = TINTWERK_PACKAGE;

std::string FullPath(const char* name)
{
    return (kPackage / name).make_preferred().string();
}

class InstallationScript : public testing::Test
{
protected:
    using Line = std::vector<std::string>; // the key, then the fields

    InstallationScript()
    {
        UINT line = 0;
        inf_ = SetupOpenInfFileA(FullPath("tintwerk.inf").c_str(), nullptr, INF_STYLE_WIN4, &line);
        EXPECT_NE(inf_, INVALID_HANDLE_VALUE) << "line " << line << ", error " << GetLastError();
    }
    ~InstallationScript() override { SetupCloseInfFile(inf_); }

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
            Line line;
            for (DWORD field = 0; field <= SetupGetFieldCount(&at); ++field)
                line.push_back(Field(at, field));
            lines.push_back(line);
        } while (SetupFindNextLine(&at, &at));
        return lines;
    }

    // The fields behind a key of a section.
    Line Values(const std::string& section, const std::string& key)
    {
        INFCONTEXT at;
        Line values;
        if (!SetupFindFirstLineA(inf_, section.c_str(), key.c_str(), &at)) {
            ADD_FAILURE() << "[" << section << "] has no " << key;
            return {""};
        }
        for (DWORD field = 1; field <= SetupGetFieldCount(&at); ++field)
            values.push_back(Field(at, field));
        return values;
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
    static std::string Field(INFCONTEXT& at, DWORD field)
    {
        char text[MAX_PATH] = {};
        SetupGetStringFieldA(&at, field, text, sizeof text, nullptr);
        return text;
    }

    HINF inf_;
};

TEST_F(InstallationScript, IsOfAPrinterDriverFor64BitWindows)
{
    EXPECT_EQ(Values("Version", "Signature")[0], "$Windows NT$");
    EXPECT_EQ(Values("Version", "Class")[0], "Printer");
    EXPECT_EQ(Values("Version", "Provider")[0], "Halvaro") << "the text behind %Provider%";
    EXPECT_THAT(Values("Manufacturer", "Halvaro"), Contains("NTamd64"));
}

TEST_F(InstallationScript, InstallsEveryModelFromFilesThatThePackageHas)
{
    const Line manufacturer = Values("Manufacturer", "Halvaro");
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
    }
    EXPECT_EQ(Values("DestinationDirs", "DefaultDestDir")[0], "66000") << "the printer driver directory";
}

TEST(Package, ItsConfigurationFilesSayWhatTheDriverReads)
{
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
    }
    EXPECT_TRUE(std::filesystem::exists(kPackage / "config/ink/printer0012.ink"));
}

} // namespace
} // namespace tintwerk
