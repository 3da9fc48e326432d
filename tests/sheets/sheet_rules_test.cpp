// The pure rules of the document sheet: GUI modes, logo names, ink file paths.
#include <gtest/gtest.h>

#include "src/sheets/gui_features.h"
#include "src/sheets/printer_identity.h"
#include "tests/sheets/scripted_core.h"

namespace tintwerk {
namespace {

TEST(SheetRules, ReadGuiModesAndLogoNames)
{
    const std::pair<const char*, int> cases[] = {{"oem3", 3},  {"oem12", 12}, {"oem0", 0},    {"oem", 7},
                                                 {"", 7},      {"OEM3", 7},   {"oe3", 7},     {"oem129", 12},
                                                 {"oema", 49}, {"oem1x", 82}, {"standard", 7}};
    for (const auto& [option, mode] : cases)
        EXPECT_EQ(mode, GuiModeOf(option, 7)) << option;

    char fileName[kLogoFileNameBytes];
    CopyLogoFileName(fileName, "logos-acme-2.bmp");
    EXPECT_STREQ("logos\\acme-2.bmp", fileName) << "the first dash is a separator";
    CopyLogoFileName(fileName, std::string(255, 'x').append("-.bmp").c_str());
    EXPECT_EQ(std::string(255, 'x'), fileName);
}

TEST(SheetRules, AppendTheInkFileWhileThereIsRoom)
{
    const struct
    {
        std::size_t directory;
        int number;
        std::string suffix;
    } cases[] = {{0, 7, "\\ink\\printer0007.ink"},
                 {491, 9999, "\\ink\\printer9999.ink"},
                 {492, 7, ""},
                 {511, 7, ""},
                 {491, -123, "\\ink\\printer-0123.in"}};
    for (const auto& row : cases) {
        char path[kInkFilePathBytes] = {};
        const std::string directory(row.directory, 'd');
        lstrcpyA(path, directory.c_str());
        AppendInkFile(path, row.number);
        EXPECT_EQ(directory + row.suffix, path) << row.directory << " " << row.number;
    }
}

} // namespace
} // namespace tintwerk
