// Bitmaps from resources and .bmp files: uncompressed, 1, 4, 8, 24 and 32 bits a pixel. A picture that is not
// whole is refused; of one that is, only the size is kept.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

#include "platform/headless/drawing.h"
#include "platform/headless/wide.h"
#include "platform/whole_file.h"

namespace tintwerk::headless {

namespace {

using Bytes = std::span<const BYTE>;

constexpr LONG kLargestSide = 16384;

template <typename Record> bool Read(Bytes bytes, Record& record)
{
    if (bytes.size() < sizeof record) return false;
    std::memcpy(&record, bytes.data(), sizeof record);
    return true;
}

// rows is where the pixels begin, 0 where they follow the colours.
HBITMAP BitmapOf(Bytes bytes, std::size_t rows, int width, int height)
{
    BITMAPINFOHEADER header{};
    if (!Read(bytes, header) || header.biSize < sizeof header || header.biCompression != BI_RGB)
        return nullptr;
    const SIZE size{header.biWidth, std::abs(std::max(header.biHeight, -kLargestSide - 1))};
    if (size.cx <= 0 || size.cx > kLargestSide || size.cy == 0 || size.cy > kLargestSide) return nullptr;
    const WORD depth = header.biBitCount;
    if (depth != 1 && depth != 4 && depth != 8 && depth != 24 && depth != 32) return nullptr;
    const std::size_t most = depth <= 8 ? std::size_t{1} << depth : 256;
    std::size_t colors = header.biClrUsed;
    if (colors > most) return nullptr;
    if (colors == 0 && depth <= 8) colors = most;
    if (rows == 0) rows = header.biSize + 4 * colors;
    const std::size_t stride = (static_cast<std::size_t>(size.cx) * depth + 31) / 32 * 4;
    if (rows > bytes.size() || stride * static_cast<std::size_t>(size.cy) > bytes.size() - rows)
        return nullptr;
    return EnterBitmap({width > 0 ? width : size.cx, height > 0 ? height : size.cy});
}

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HANDLE WINAPI LoadImageW(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags)
{
    if (kind != IMAGE_BITMAP || !name || (flags & LR_LOADFROMFILE)) return nullptr;
    const HRSRC resource = FindResourceW(module, name, RT_BITMAP);
    if (!resource) return nullptr;
    const auto* const data = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    return BitmapOf({data, SizeofResource(module, resource)}, 0, width, height);
}

HANDLE WINAPI LoadImageA(HINSTANCE, LPCSTR name, UINT kind, int width, int height, UINT flags)
{
    if (kind != IMAGE_BITMAP || !name || !(flags & LR_LOADFROMFILE)) return nullptr;
    const std::vector<BYTE> content = tintwerk::ReadWholeFile(NativePath(name).c_str());
    BITMAPFILEHEADER header{};
    if (!Read(content, header)) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    if (header.bfType != 0x4D42 || header.bfOffBits <= sizeof header) return nullptr;
    return BitmapOf(Bytes(content).subspan(sizeof header), header.bfOffBits - sizeof header, width, height);
}
