#include "platform/snapshot.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <vector>

#include <wincodec.h>

#include "platform/owners.h"

namespace tintwerk {

namespace {

using Pixels = std::vector<std::uint32_t>;

struct CloseDc
{
    void operator()(HDC dc) const { DeleteDC(dc); }
};

// The window's pixels, top row first.
std::string CopyPixels(HWND window, int width, int height, Pixels& pixels)
{
    const HDC source = GetWindowDC(window);
    if (!source) return "the window cannot be read";
    const std::unique_ptr<std::remove_pointer_t<HDC>, CloseDc> memory(CreateCompatibleDC(source));
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const BitmapHandle bitmap(CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    std::string problem;
    if (memory && bitmap) {
        const SelectedObject selected(memory.get(), bitmap.Get());
        if (!BitBlt(memory.get(), 0, 0, width, height, source, 0, 0, SRCCOPY))
            problem = "the window cannot be copied";
        GdiFlush();
        const auto* first = static_cast<const std::uint32_t*>(bits);
        pixels.assign(first, first + static_cast<std::size_t>(width) * height);
    } else {
        problem = "there is no memory for the picture";
    }
    ReleaseDC(window, source);
    return problem;
}

bool IsOneColour(std::span<const std::uint32_t> pixels)
{
    return std::ranges::all_of(pixels,
                               [&](std::uint32_t pixel) { return ((pixel ^ pixels[0]) & 0xFFFFFF) == 0; });
}

// Where the desktop draws the frame, the window itself has none: only its inside makes a picture.
void CutForeignFrame(HWND window, const RECT& place, int& width, int& height, Pixels& pixels)
{
    RECT inside{};
    GetClientRect(window, &inside);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
    OffsetRect(&inside, -place.left, -place.top);
    if (inside.top <= 0 || inside.left < 0 || inside.right > width || inside.bottom > height) return;
    if (!IsOneColour(std::span(pixels).first(static_cast<std::size_t>(inside.top) * width))) return;
    Pixels cut;
    for (LONG row = inside.top; row < inside.bottom; ++row) {
        const auto first = pixels.begin() + static_cast<std::ptrdiff_t>(row) * width;
        cut.insert(cut.end(), first + inside.left, first + inside.right);
    }
    pixels = std::move(cut);
    width = static_cast<int>(inside.right - inside.left);
    height = static_cast<int>(inside.bottom - inside.top);
}

HRESULT WritePng(const std::filesystem::path& file, int width, int height, Pixels& pixels)
{
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    HRESULT result = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IWICImagingFactory, reinterpret_cast<void**>(factory.Receive()));
    if (SUCCEEDED(result)) result = factory->CreateStream(stream.Receive());
    if (SUCCEEDED(result)) result = stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE);
    if (SUCCEEDED(result))
        result = factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Receive());
    if (SUCCEEDED(result)) result = encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache);
    if (SUCCEEDED(result)) result = encoder->CreateNewFrame(frame.Receive(), nullptr);
    if (SUCCEEDED(result)) result = frame->Initialize(nullptr);
    if (SUCCEEDED(result)) result = frame->SetSize(width, height);
    WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGR;
    if (SUCCEEDED(result)) result = frame->SetPixelFormat(&format);
    // An encoder that has no room for an unused byte takes the colours packed.
    std::vector<BYTE> rows;
    const bool packed = !IsEqualGUID(format, GUID_WICPixelFormat32bppBGR) &&
                        !IsEqualGUID(format, GUID_WICPixelFormat32bppBGRA);
    const UINT bytes = packed ? 3 : 4;
    for (const std::uint32_t pixel : pixels) {
        for (UINT i = 0; i < bytes; ++i)
            rows.push_back(i == 3 ? 0xFF : static_cast<BYTE>(pixel >> 8 * i));
    }
    if (SUCCEEDED(result))
        result = frame->WritePixels(height, width * bytes, static_cast<UINT>(rows.size()), rows.data());
    if (SUCCEEDED(result)) result = frame->Commit();
    if (SUCCEEDED(result)) result = encoder->Commit();
    return result;
}

} // namespace

bool CanTakePictures()
{
    return true;
}

std::string SaveWindowPicture(HWND window, const std::filesystem::path& file)
{
    RECT place{};
    if (!IsWindowVisible(window) || !GetWindowRect(window, &place)) return "no window is open";
    int width = static_cast<int>(place.right - place.left);
    int height = static_cast<int>(place.bottom - place.top);
    if (width <= 0 || height <= 0) return "the window has no size";

    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    Pixels pixels;
    if (const std::string problem = CopyPixels(window, width, height, pixels); !problem.empty())
        return problem;
    CutForeignFrame(window, place, width, height, pixels);
    if (IsOneColour(pixels)) return "the window shows nothing but one colour";

    const HRESULT initialized = CoInitialize(nullptr);
    const HRESULT result = WritePng(file, width, height, pixels);
    if (SUCCEEDED(initialized)) CoUninitialize();
    if (SUCCEEDED(result)) return {};
    char text[64];
    std::snprintf(text, sizeof text, "the picture cannot be written (error %#lx)",
                  static_cast<unsigned long>(result));
    return text;
}

} // namespace tintwerk
