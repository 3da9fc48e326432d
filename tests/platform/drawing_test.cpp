// Pixels of the shapes that are painted, the life of drawing objects, and bitmaps from resources and files.
#include <gmock/gmock.h>

#include <cstdio>
#include <string>

#include "platform/owners.h"
#include "tests/support/temp_file.h"

namespace tintwerk {
namespace {

class Canvas : public testing::Test
{
protected:
    Canvas()
    {
        SelectObject(dc, bitmap);
        const RECT all{0, 0, 24, 10};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~Canvas() override
    {
        DeleteDC(dc);
        DeleteObject(bitmap);
    }
    static HBITMAP MakeBitmap(HDC dc)
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, 24, -10, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        return CreateDIBSection(dc, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    }
    std::string Row(int y) const
    {
        std::string row;
        for (int x = 0; x < 24; ++x) {
            const COLORREF color = GetPixel(dc, x, y);
            row += color == 0 ? '#' : color == RGB(255, 0, 0) ? 'r' : color == RGB(255, 255, 255) ? '.' : '?';
        }
        return row;
    }

    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = MakeBitmap(dc);
};

TEST_F(Canvas, RoundRectanglesHaveAnOutlineAndCutCorners)
{
    const BrushHandle red(CreateSolidBrush(RGB(255, 0, 0)));
    const SelectedObject selected(dc, red.Get());
    ASSERT_TRUE(RoundRect(dc, 0, 0, 24, 10, 6, 6));
    EXPECT_EQ(Row(0), "..####################..");
    EXPECT_EQ(Row(1), ".#rrrrrrrrrrrrrrrrrrrr#.");
    for (int y = 2; y < 8; ++y)
        EXPECT_EQ(Row(y), "#rrrrrrrrrrrrrrrrrrrrrr#");
    EXPECT_EQ(Row(8), Row(1));
    EXPECT_EQ(Row(9), Row(0));
}

TEST_F(Canvas, SmallShapesAreClippedAndFilled)
{
    const BrushHandle red(CreateSolidBrush(RGB(255, 0, 0)));
    {
        const SelectedObject selected(dc, red.Get());
        RoundRect(dc, 20, 2, 40, 8, 6, 6); // reaches beyond the surface
        Rectangle(dc, 0, 0, 4, 3);
    }
    EXPECT_EQ(Row(4), "....................#rrr");
    EXPECT_EQ(Row(0), "####....................");
    EXPECT_EQ(Row(1), "#rr#....................");
    const RECT strip{10, 4, 13, 6};
    EXPECT_NE(FillRect(dc, &strip, red.Get()), 0);
    EXPECT_EQ(Row(3), ".....................#rr");
    EXPECT_EQ(Row(5), "..........rrr.......#rrr");
    EXPECT_EQ(Row(6).substr(0, 20), "....................");
    EXPECT_EQ(GetPixel(dc, 24, 0), static_cast<COLORREF>(CLR_INVALID));
}

TEST_F(Canvas, DeletedObjectsStayWhileTheyAreSelected)
{
    const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 0));
    const HGDIOBJ before = SelectObject(dc, brush);
    EXPECT_TRUE(DeleteObject(brush));
    Rectangle(dc, 0, 0, 4, 3);
    EXPECT_EQ(Row(1).substr(0, 4), "#rr#");
    EXPECT_EQ(SelectObject(dc, before), static_cast<HGDIOBJ>(brush));
    EXPECT_FALSE(DeleteObject(brush));
    EXPECT_EQ(SelectObject(dc, brush), nullptr);
    EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));
    EXPECT_NE(GetObjectType(GetStockObject(WHITE_BRUSH)), 0u);
}

// A picture of 2 by 2 pixels with 4 bits each, bottom row first.
std::string SmallPicture()
{
    BITMAPFILEHEADER file{0x4D42, 0, 0, 0, sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER) + 16 * 4};
    BITMAPINFOHEADER header{sizeof header, 2, 2, 1, 4, BI_RGB, 0, 0, 0, 0, 0};
    RGBQUAD colors[16] = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}, {192, 192, 192, 0}};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&header), sizeof header);
    bytes.append(reinterpret_cast<const char*>(colors), sizeof colors);
    return bytes + std::string("\x01\0\0\0\x23\0\0\0", 8);
}

TEST(Pictures, ComeFromFiles)
{
    const TempFile file("picture.bmp", SmallPicture());
    const auto load = [](const char* path) {
        return BitmapHandle(static_cast<HBITMAP>(
            LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
    };
    const BitmapHandle picture = load(file.path.c_str());
    ASSERT_TRUE(picture);
    BITMAP size{};
    EXPECT_NE(GetObjectW(picture.Get(), sizeof size, &size), 0);
    EXPECT_EQ(size.bmWidth, 2);
    EXPECT_EQ(size.bmHeight, 2);
    const HDC dc = CreateCompatibleDC(nullptr);
    {
        const SelectedObject selected(dc, picture.Get());
        EXPECT_EQ(GetPixel(dc, 0, 0), RGB(0, 0, 255));
        EXPECT_EQ(GetPixel(dc, 1, 0), RGB(192, 192, 192));
        EXPECT_EQ(GetPixel(dc, 0, 1), RGB(255, 0, 0));
        EXPECT_EQ(GetPixel(dc, 1, 1), RGB(0, 255, 0));
    }
    DeleteDC(dc);
    EXPECT_FALSE(load((file.path + ".missing").c_str()));
    const std::string whole = SmallPicture();
    for (const std::size_t length : {std::size_t{0}, std::size_t{10}}) {
        const TempFile cut("cut.bmp", whole.substr(0, length));
        EXPECT_FALSE(load(cut.path.c_str())) << length;
    }
}

} // namespace
} // namespace tintwerk
