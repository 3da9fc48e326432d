// Bitmaps from files.
#include <gtest/gtest.h>

#include <string>

#include "platform/owners.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

// A picture of 3 by 2 pixels with 4 bits each.
std::string SmallPicture()
{
    BITMAPFILEHEADER file{0x4D42, 0, 0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + 16 * 4};
    BITMAPINFOHEADER header{sizeof header, 3, 2, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&header), sizeof header);
    return bytes + std::string(16 * 4, 0) + std::string("\x01\x20\0\0\x23\0\0\0", 8);
}

TEST(Pictures, ComeWholeOrNotAtAll)
{
    const std::string whole = SmallPicture();
    const struct
    {
        std::string bytes;
        bool loads;
    } cases[] = {{whole, true}, {"", false}, {whole.substr(0, 10), false}, {"XX" + whole.substr(2), false}};
    for (const auto& row : cases) {
        const TempFile file("picture.bmp", row.bytes);
        const BitmapHandle picture(static_cast<HBITMAP>(LoadImageA(
            nullptr, file.path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
        ASSERT_EQ(static_cast<bool>(picture), row.loads) << row.bytes.size();
        BITMAP size{};
        EXPECT_EQ(GetObjectW(picture.Get(), sizeof size, &size) != 0, row.loads);
        EXPECT_EQ(size.bmWidth, row.loads ? 3 : 0);
        EXPECT_EQ(size.bmHeight, row.loads ? 2 : 0);
    }
    EXPECT_EQ(LoadImageA(nullptr, "no such file.bmp", IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE), nullptr);
}

TEST(Brushes, AreRefusedOnceTheyAreDeleted)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 0));
    const HGDIOBJ before = SelectObject(dc, brush);
    EXPECT_EQ(SelectObject(dc, before), static_cast<HGDIOBJ>(brush));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(brush));
    EXPECT_EQ(SelectObject(dc, brush), nullptr);
    DeleteDC(dc);
}

} // namespace
} // namespace tintwerk
