// Bitmaps from resources and .bmp files: 1, 4, 8, 24 and 32 bits a pixel, uncompressed, into a 32-bit
// surface.
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/headless/gdi_objects.h"
#include "platform/headless/hookable.h"

namespace tintwerk::headless {

namespace {

struct Bytes
{
    const BYTE* data;
    std::size_t size;

    template <typename Value> bool Read(std::size_t offset, Value& value) const
    {
        if (offset > size || size - offset < sizeof value) return false;
        std::memcpy(&value, data + offset, sizeof value);
        return true;
    }
};

// A packed picture: header, colours, rows from bottom to top.
struct Picture
{
    BITMAPINFOHEADER header{};
    std::array<std::uint32_t, 256> colors{};
    std::size_t rows = 0; // offset of the first row
    std::size_t stride = 0;

    int Height() const { return header.biHeight < 0 ? -header.biHeight : header.biHeight; }
};

constexpr LONG kLargestSide = 16384;

bool ReadPicture(Bytes bytes, std::size_t rows, Picture& picture)
{
    BITMAPINFOHEADER& header = picture.header;
    if (!bytes.Read(0, header) || header.biSize < sizeof header || header.biCompression != BI_RGB)
        return false;
    if (header.biWidth <= 0 || header.biWidth > kLargestSide || header.biHeight == 0 ||
        header.biHeight > kLargestSide || header.biHeight < -kLargestSide)
        return false;
    const WORD depth = header.biBitCount;
    if (depth != 1 && depth != 4 && depth != 8 && depth != 24 && depth != 32) return false;
    std::size_t colors = header.biClrUsed;
    if (depth <= 8) {
        const std::size_t most = std::size_t{1} << depth;
        if (colors == 0 || colors > most) colors = most;
        for (std::size_t i = 0; i < colors; ++i) {
            if (!bytes.Read(header.biSize + 4 * i, picture.colors[i])) return false;
            picture.colors[i] &= 0xffffff;
        }
    } else if (colors > 256) {
        return false;
    }
    picture.rows = rows ? rows : header.biSize + 4 * colors;
    picture.stride = (static_cast<std::size_t>(header.biWidth) * depth + 31) / 32 * 4;
    return picture.rows <= bytes.size &&
           picture.stride * static_cast<std::size_t>(picture.Height()) <= bytes.size - picture.rows;
}

unsigned IndexAt(const BYTE* row, int x, WORD depth)
{
    const unsigned perByte = 8u / depth;
    const unsigned shift = 8u - depth * (static_cast<unsigned>(x) % perByte + 1);
    return row[static_cast<unsigned>(x) / perByte] >> shift & ((1u << depth) - 1);
}

std::uint32_t PixelAt(Bytes bytes, const Picture& picture, int x, int y)
{
    const int line = picture.header.biHeight > 0 ? picture.Height() - 1 - y : y;
    const BYTE* const row = bytes.data + picture.rows + static_cast<std::size_t>(line) * picture.stride;
    const WORD depth = picture.header.biBitCount;
    if (depth <= 8) return picture.colors[IndexAt(row, x, depth)];
    const BYTE* const pixel = row + x * (depth / 8);
    return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
}

// Greys of the classic look follow the system's colours, and the first pixel's colour becomes that of
// windows.
void MapColors(Bytes bytes, Picture& picture, UINT flags)
{
    if (picture.header.biBitCount > 8) return;
    if (flags & LR_LOADTRANSPARENT) {
        const int window = flags & LR_LOADMAP3DCOLORS ? COLOR_3DFACE : COLOR_WINDOW;
        const BYTE* const firstRow =
            bytes.data + picture.rows; // the one stored first, at the bottom of the picture
        picture.colors[IndexAt(firstRow, 0, picture.header.biBitCount)] = PixelOf(GetSysColor(window));
    }
    if (!(flags & LR_LOADMAP3DCOLORS)) return;
    for (std::uint32_t& color : picture.colors) {
        if (color == 0x808080)
            color = PixelOf(GetSysColor(COLOR_3DSHADOW));
        else if (color == 0xc0c0c0)
            color = PixelOf(GetSysColor(COLOR_3DFACE));
        else if (color == 0xdfdfdf)
            color = PixelOf(GetSysColor(COLOR_3DLIGHT));
    }
}

HBITMAP BitmapOf(Bytes bytes, std::size_t rows, int width, int height, UINT flags)
{
    Picture picture;
    if (!ReadPicture(bytes, rows, picture)) return nullptr;
    MapColors(bytes, picture, flags);
    if (width <= 0) width = picture.header.biWidth;
    if (height <= 0) height = picture.Height();
    if (width > kLargestSide || height > kLargestSide) return nullptr;
    auto surface = std::make_unique<Surface>(width, height);
    if (flags & LR_CREATEDIBSECTION) {
        surface->isDibSection = true;
        surface->bottomUp = true;
    }
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            surface->At(x, y) =
                PixelAt(bytes, picture, x * picture.header.biWidth / width, y * picture.Height() / height);
    }
    return EnterBitmap(std::move(surface));
}

HBITMAP BitmapFromFile(std::string path, int width, int height, UINT flags)
{
    for (char& unit : path) {
        if (unit == '\\') unit = '/';
    }
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (!file) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    std::string content;
    char block[4096];
    while (const std::size_t read = std::fread(block, 1, sizeof block, file))
        content.append(block, read);
    std::fclose(file);
    const Bytes bytes{reinterpret_cast<const BYTE*>(content.data()), content.size()};
    BITMAPFILEHEADER header{};
    if (!bytes.Read(0, header) || header.bfType != 0x4D42 || header.bfOffBits < sizeof header) return nullptr;
    const Bytes packed{bytes.data + sizeof header, bytes.size - sizeof header};
    return BitmapOf(packed, header.bfOffBits - sizeof header, width, height, flags);
}

HANDLE LoadWide(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags)
{
    if (kind != IMAGE_BITMAP || !name) return nullptr;
    if (flags & LR_LOADFROMFILE) {
        if (IS_INTRESOURCE(name)) return nullptr;
        const int bytes = WideCharToMultiByte(CP_UTF8, 0, name, -1, nullptr, 0, nullptr, nullptr);
        std::string path(static_cast<std::size_t>(bytes), 0);
        WideCharToMultiByte(CP_UTF8, 0, name, -1, path.data(), bytes, nullptr, nullptr);
        return BitmapFromFile(path.c_str(), width, height, flags);
    }
    const HRSRC resource = FindResourceW(module, name, RT_BITMAP);
    if (!resource) return nullptr;
    const auto* const data = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    return data ? BitmapOf({data, SizeofResource(module, resource)}, 0, width, height, flags) : nullptr;
}

HANDLE LoadNarrow(HINSTANCE module, LPCSTR name, UINT kind, int width, int height, UINT flags)
{
    if (IS_INTRESOURCE(name))
        return LoadWide(module, reinterpret_cast<LPCWSTR>(name), kind, width, height, flags);
    if (kind != IMAGE_BITMAP || !(flags & LR_LOADFROMFILE)) return nullptr;
    return BitmapFromFile(name, width, height, flags);
}

Hookable<LoadWide> loadImageW{"LoadImageW"};
Hookable<LoadNarrow> loadImageA{"LoadImageA"};

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HANDLE WINAPI LoadImageW(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags)
{
    return loadImageW(module, name, kind, width, height, flags);
}

HANDLE WINAPI LoadImageA(HINSTANCE module, LPCSTR name, UINT kind, int width, int height, UINT flags)
{
    return loadImageA(module, name, kind, width, height, flags);
}

HBITMAP WINAPI LoadBitmapW(HINSTANCE module, LPCWSTR name)
{
    return static_cast<HBITMAP>(LoadImageW(module, name, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
}
