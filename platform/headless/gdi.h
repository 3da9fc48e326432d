// Drawing: 32-bit pixel surfaces behind device contexts, brushes, pens, fonts (by name only), bitmaps from
// resources and files. Declarations carry the platform's names and values; gdi.cpp and load_image.cpp hold
// the behaviour.
#pragma once

#include "platform/headless/types.h"

DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HPALETTE);

// clang-format off
// Stock objects.
constexpr int WHITE_BRUSH = 0, LTGRAY_BRUSH = 1, GRAY_BRUSH = 2, DKGRAY_BRUSH = 3, BLACK_BRUSH = 4,
    NULL_BRUSH = 5, WHITE_PEN = 6, BLACK_PEN = 7, NULL_PEN = 8, SYSTEM_FONT = 13, DEFAULT_GUI_FONT = 17;

// Pens, raster operations, pixel layouts.
constexpr int PS_SOLID = 0, PS_NULL = 5, DIB_RGB_COLORS = 0;
constexpr DWORD SRCCOPY = 0xCC0020, BLACKNESS = 0x42, WHITENESS = 0xFF0062;
constexpr LONG BI_RGB = 0;

// Device capabilities.
constexpr int LOGPIXELSX = 88, LOGPIXELSY = 90, BITSPIXEL = 12, HORZRES = 8, VERTRES = 10;

// Object kinds.
constexpr int OBJ_PEN = 1, OBJ_BRUSH = 2, OBJ_DC = 3, OBJ_FONT = 6, OBJ_BITMAP = 7, OBJ_MEMDC = 10;

// Background and alignment.
constexpr int TRANSPARENT = 1, OPAQUE = 2;

// Fonts.
constexpr int FW_NORMAL = 400, FW_BOLD = 700, DEFAULT_CHARSET = 1;

// Colours that mean failure.
constexpr UINT CLR_INVALID = 0xFFFFFFFF;

// Pictures from files and resources.
constexpr int IMAGE_BITMAP = 0, IMAGE_ICON = 1, IMAGE_CURSOR = 2, LR_DEFAULTCOLOR = 0, LR_LOADFROMFILE = 0x10,
    LR_LOADTRANSPARENT = 0x20, LR_DEFAULTSIZE = 0x40, LR_LOADMAP3DCOLORS = 0x1000,
    LR_CREATEDIBSECTION = 0x2000, LR_SHARED = 0x8000;

// Counted objects.
constexpr int GR_GDIOBJECTS = 0, GR_USEROBJECTS = 1;
// clang-format on

struct RGBQUAD
{
    BYTE rgbBlue, rgbGreen, rgbRed, rgbReserved;
};
struct BITMAPINFOHEADER
{
    DWORD biSize;
    LONG biWidth;
    LONG biHeight; // negative: the first row is the top one
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
struct BITMAPINFO
{
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};
#pragma pack(push, 2)
struct BITMAPFILEHEADER
{
    WORD bfType;
    DWORD bfSize;
    WORD bfReserved1;
    WORD bfReserved2;
    DWORD bfOffBits;
};
#pragma pack(pop)
struct BITMAP
{
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};
struct DIBSECTION
{
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    HANDLE dshSection;
    DWORD dsOffset;
};
struct LOGBRUSH
{
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
};
constexpr int LF_FACESIZE = 32;
struct LOGFONTW
{
    LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
    BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet, lfOutPrecision, lfClipPrecision, lfQuality,
        lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};

HDC WINAPI CreateCompatibleDC(HDC dc);
BOOL WINAPI DeleteDC(HDC dc);
HDC WINAPI GetDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC dc);
int WINAPI GetDeviceCaps(HDC dc, int index);

HBITMAP WINAPI CreateCompatibleBitmap(HDC dc, int width, int height);
HBITMAP WINAPI CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                DWORD offset);
int WINAPI GetDIBits(HDC dc, HBITMAP bitmap, UINT start, UINT lines, LPVOID bits, BITMAPINFO* info,
                     UINT usage);
HBRUSH WINAPI CreateSolidBrush(COLORREF color);
HPEN WINAPI CreatePen(int style, int width, COLORREF color);
HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font);
HGDIOBJ WINAPI GetStockObject(int index);
HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);
HGDIOBJ WINAPI GetCurrentObject(HDC dc, UINT kind);
DWORD WINAPI GetObjectType(HGDIOBJ object);
int WINAPI GetObjectW(HGDIOBJ object, int size, LPVOID buffer);
// What is selected somewhere goes when it is selected nowhere any more; stock objects stay and count as
// deleted.
BOOL WINAPI DeleteObject(HGDIOBJ object);

BOOL WINAPI RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height);
BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom);
int WINAPI FillRect(HDC dc, const RECT* rectangle, HBRUSH brush);
COLORREF WINAPI GetPixel(HDC dc, int x, int y);
COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color);
BOOL WINAPI BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                   DWORD operation);
COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);
COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
int WINAPI SetBkMode(HDC dc, int mode);
// Text is not painted; its extent is that of the dialog font's average character.
BOOL WINAPI GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size);

// Bitmaps only: a resource of the module, or a .bmp file with LR_LOADFROMFILE.
HANDLE WINAPI LoadImageW(HINSTANCE module, LPCWSTR name, UINT kind, int width, int height, UINT flags);
HANDLE WINAPI LoadImageA(HINSTANCE module, LPCSTR name, UINT kind, int width, int height, UINT flags);
HBITMAP WINAPI LoadBitmapW(HINSTANCE module, LPCWSTR name);

// How many drawing objects (GR_GDIOBJECTS) or windows (GR_USEROBJECTS) this process holds.
DWORD WINAPI GetGuiResources(HANDLE process, DWORD kind);
