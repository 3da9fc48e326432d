// The selections file: readable, kept whole through crashes, forgiving about what it does not understand.
#include "host/core/selections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "host/ppd/wide_text.h"

namespace tintwerk {
namespace {

namespace fs = std::filesystem;

class SelectionsTest : public testing::Test
{
protected:
    SelectionsTest()
        : folder(fs::temp_directory_path() /
                 (std::string("tintwerk-") + testing::UnitTest::GetInstance()->current_test_info()->name())),
          file(folder / "printer.selections")
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~SelectionsTest() override { fs::remove_all(folder); }

    void Write(const fs::path& path, const std::string& text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }
    std::string Content(const fs::path& path)
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    fs::path folder;
    fs::path file;
};

TEST_F(SelectionsTest, ComeBackAsTheyWereSaved)
{
    Selections selections;
    selections.Set("PageSize", "A4");
    selections.Set("%Orientation", "Landscape");
    selections.Set("PageSize", "A3");
    const unsigned char bytes[] = {24, 0, 0, 0, 0x56, 0x4C, 0x41, 0x48};
    selections.SetPrivateDevmode(bytes, sizeof bytes);
    std::string error;
    ASSERT_TRUE(selections.Save(folder / "deeper" / "printer.selections", error)) << error;
    EXPECT_EQ("PageSize=A3\n%Orientation=Landscape\nPrivateDevmode=18000000564c4148\n",
              Content(folder / "deeper" / "printer.selections"));

    const Selections again = Selections::Load(folder / "deeper" / "printer.selections");
    EXPECT_EQ("A3", *again.Find("PageSize"));
    EXPECT_EQ("Landscape", *again.Find("%Orientation"));
    EXPECT_EQ(nullptr, again.Find("Duplex"));
    EXPECT_THAT(again.PrivateDevmode(), testing::ElementsAreArray(bytes));
    EXPECT_TRUE(again.Warnings().empty());
}

TEST_F(SelectionsTest, KeepWhatTheyDoNotUnderstand)
{
    Write(file, "# mine\r\nPageSize = A4\r\nnonsense\r\n\r\nGloss=High\nPrivateDevmode=12x4\nGloss=Low");
    Selections selections = Selections::Load(file);
    std::vector<std::string> warnings;
    for (const PpdMessage& warning : selections.Warnings())
        warnings.push_back(std::to_string(warning.line) + ": " + warning.text);
    EXPECT_THAT(warnings, testing::ElementsAre(
                              "3: \"Feature=Option\" expected, not \"nonsense\"",
                              "6: an even number of hexadecimal digits expected after \"PrivateDevmode=\"",
                              "7: \"Gloss\" a second time; the last one counts"));
    selections.Set("PageSize", "A3");
    std::string error;
    ASSERT_TRUE(selections.Save(file, error)) << error;
    EXPECT_EQ("# mine\nPageSize=A3\nnonsense\n\nGloss=Low\n", Content(file));
}

TEST_F(SelectionsTest, SurviveACrashWhileSaving)
{
    Write(file, "PageSize=A4\n");
    Write(folder / "printer.selections.new", "PageS"); // torn
    Selections selections = Selections::Load(file);
    EXPECT_EQ("A4", *selections.Find("PageSize"));
    selections.Set("PageSize", "A3");
    std::string error;
    ASSERT_TRUE(selections.Save(file, error)) << error;
    EXPECT_EQ("PageSize=A3\n", Content(file));
    EXPECT_FALSE(fs::exists(folder / "printer.selections.new"));
}

TEST_F(SelectionsTest, LeaveTheOldFileWhenSavingFails)
{
    Write(file, "PageSize=A4\n");
    fs::create_directories(folder / "printer.selections.new"); // nothing can be written under this name
    Selections selections = Selections::Load(file);
    selections.Set("PageSize", "A3");
    std::string error;
    EXPECT_FALSE(selections.Save(file, error));
    EXPECT_THAT(error, testing::HasSubstr("cannot be written"));
    EXPECT_EQ("PageSize=A4\n", Content(file));
}

TEST(SelectionsFile, ThatCannotBeReadIsNotTakenForAnEmptyOne)
{
    const fs::path folder = fs::temp_directory_path() / "tintwerk-unreadable.selections";
    fs::create_directories(folder);
    EXPECT_ANY_THROW(Selections::Load(folder));
    fs::remove(folder);
    EXPECT_EQ("", Selections::Load(folder).Text());
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

TEST(WideTexts, GoBothWays)
{
    EXPECT_EQ(WideString(TEXT("Gr\u00F6\u00DFe \u20AC \U0001F600")),
              WideFromUtf8("Gr\xC3\xB6\xC3\x9F"
                           "e \xE2\x82\xAC \xF0\x9F\x98\x80"));
    EXPECT_EQ("Gr\xC3\xB6\xC3\x9F"
              "e \xE2\x82\xAC \xF0\x9F\x98\x80",
              Utf8FromWide(TEXT("Gr\u00F6\u00DFe \u20AC \U0001F600")));
    EXPECT_EQ(WideString(TEXT("\uFFFDa\uFFFD")), WideFromUtf8("\xFF"
                                                              "a\xE2\x82"));
    const WCHAR lone[] = {0xD800, 'a', 0xDC00};
    EXPECT_EQ("\xEF\xBF\xBD"
              "a\xEF\xBF\xBD",
              Utf8FromWide({lone, 3}));
}

} // namespace
} // namespace tintwerk
