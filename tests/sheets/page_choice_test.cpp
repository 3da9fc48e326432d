// The pure rules of the document sheet: GUI modes, logo names, printer numbers, ink file paths.
#include <gtest/gtest.h>

#include "src/sheets/gui_features.h"
#include "src/sheets/printer_identity.h"
#include "tests/sheets/scripted_core.h"

namespace tintwerk {
namespace {

TEST(GuiMode, IsOneOrTwoCharactersBehindOem)
{
    const struct
    {
        const char* option;
        int mode;
    } cases[] = {{"oem3", 3}, {"oem12", 12},  {"oem0", 0},  {"oem", 7},    {"", 7},        {"OEM3", 7},
                 {"oe3", 7},  {"oem129", 12}, {"oema", 49}, {"oem1x", 82}, {"standard", 7}};
    for (const auto& row : cases)
        EXPECT_EQ(row.mode, GuiModeOf(row.option, 7)) << row.option;
}

TEST(LogoFileName, TurnsTheFirstDashIntoASeparatorAndEndsAt255)
{
    char fileName[kLogoFileNameBytes];
    CopyLogoFileName(fileName, "logos-acme-2.bmp");
    EXPECT_STREQ("logos\\acme-2.bmp", fileName);
    CopyLogoFileName(fileName, std::string(255, 'x').append("-.bmp").c_str());
    EXPECT_EQ(std::string(255, 'x'), fileName);
    CopyLogoFileName(fileName, std::string(254, 'x').append("-.bmp").c_str());
    EXPECT_EQ(std::string(254, 'x') + "\\", fileName);
}

TEST(PrinterNumber, IsReadLikeADecimalConversion)
{
    const struct
    {
        const char* text;
        int count, value;
    } cases[] = {{"0042", 1, 42},   {"2345", 1, 2345},
                 {"-123", 1, -123}, {"  +7", 1, 7},
                 {"\t\n 9", 1, 9},  {"12ab", 1, 12},
                 {"a1b2", 0, -1},   {"- 12", 0, -1},
                 {"    ", 0, -1},   {"--12", 0, -1},
                 {"", 0, -1},       {"  -1", 1, -1},
                 {"9 99", 1, 9},    {"\xB2\xB2\xB2\xB2", 0, -1}};
    for (const auto& row : cases) {
        const ScannedNumber number = ScanNumber(Wide(row.text));
        EXPECT_EQ(row.count, number.count) << row.text;
        EXPECT_EQ(row.value, number.value) << row.text;
    }
}

TEST(InkFileName, IsAppendedWhileThereIsRoom)
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
                 {100, -123, "\\ink\\printer-0123.ink"},
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
