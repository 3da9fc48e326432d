// The selections file: readable, kept whole through crashes, forgiving about what it does not understand.
#include "host/core/selections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/host/program_fixture.h"

namespace tintwerk {
namespace {

namespace fs = std::filesystem;

TEST(SelectionsFile, IsReadableAndKeepsWhatIsNotUnderstood)
{
    Selections selections = Selections::FromText(
        "mine", "# mine\r\nPageSize = A4\r\nnonsense\r\n\r\nGloss=High\nPrivateDevmode=12x4\nGloss=Low");
    std::string warnings;
    for (const PpdMessage& warning : selections.Warnings())
        warnings += warning.Full() + "\n";
    EXPECT_EQ("mine:3: \"Feature=Option\" expected, not \"nonsense\"\n"
              "mine:6: an even number of hexadecimal digits expected after \"PrivateDevmode=\"\n"
              "mine:7: \"Gloss\" a second time; the last one counts\n",
              warnings);
    selections.Set("PageSize", "A3");
    const unsigned char bytes[] = {24, 0, 0, 0, 0x56, 0x4C, 0x41, 0x48};
    selections.SetPrivateDevmode(bytes, sizeof bytes);
    const std::string text = "# mine\nPageSize=A3\nnonsense\n\nGloss=Low\nPrivateDevmode=18000000564c4148\n";
    EXPECT_EQ(text, selections.Text());
    EXPECT_THAT(Selections::FromText("mine", text).PrivateDevmode(), testing::ElementsAreArray(bytes));
}

// A crash, or a disk that fails, leaves the old one or the new one.
TEST(SelectionsFile, IsReplacedAsAWhole)
{
    const TemporaryFolder folder;
    const fs::path file = folder.Path() / "deeper" / "printer.selections";
    fs::path fresh = file;
    fresh += ".new";
    std::string error;
    Selections selections = Selections::Load(file); // not there yet
    ASSERT_TRUE(selections.Save(file, error)) << error;
    std::ofstream(fresh) << "PageS";
    selections.Set("PageSize", "A3");
    ASSERT_TRUE(selections.Save(file, error)) << error;
    EXPECT_FALSE(fs::exists(fresh));

    fs::create_directories(fresh); // nothing can be written under this name
    selections.Set("PageSize", "A2");
    EXPECT_FALSE(selections.Save(file, error));
    EXPECT_THAT(error, testing::HasSubstr("cannot be written"));
    EXPECT_EQ("PageSize=A3\n", Selections::Load(file).Text());
    EXPECT_ANY_THROW(Selections::Load(fresh)) << "no empty one";
}

TEST(SelectionsFile, IsNamedAfterThePrinter)
{
    EXPECT_EQ("Tintwerk X12.selections", SelectionsFileName("Tintwerk X12"));
    for (const char* name : {"", ".", "..", "a/b", "a\\b", "a:b", "CON*", " x", "x.", "M\xC3\xBCnchen"}) {
        const std::string file = SelectionsFileName(name);
        EXPECT_EQ(std::string::npos, file.find_first_of("/\\:*?\"<>|")) << name;
        EXPECT_NE('.', file.front()) << name;
        EXPECT_NE(' ', file.front()) << name;
    }
    EXPECT_NE(SelectionsFileName("a/b"), SelectionsFileName("a:b")) << "each printer keeps its own file";
    EXPECT_LT(SelectionsFileName(std::string(5000, 'x')).size(), 120u);
}

} // namespace
} // namespace tintwerk
