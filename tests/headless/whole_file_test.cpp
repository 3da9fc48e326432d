// Files whose names are bytes in no encoding, as only this platform has them.
#include "platform/whole_file.h"

#include <gtest/gtest.h>

namespace tintwerk {
namespace {

TEST(WholeFile, MayHaveANameOfAnyBytes)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwerk-\xE4\xFF";
    std::filesystem::create_directory(folder);
    const std::filesystem::path fresh = folder / "\xC3.new", file = folder / "\xC3";
    std::string text;
    EXPECT_TRUE(WriteWhole(fresh, "selections"));
    EXPECT_TRUE(PutInPlace(fresh, file));
    EXPECT_TRUE(ReadWhole(file, text));
    EXPECT_EQ("selections", text);
    EXPECT_FALSE(std::filesystem::exists(fresh));
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace tintwerk
