// The platform's scalar types, handles and small records, with the sizes that they have on 64-bit Windows. Text is 16-bit:
// WCHAR is char16_t, and literals are written TEXT("...").
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

using CHAR = char;
using WCHAR = char16_t;
using BYTE = std::uint8_t;
using UCHAR = std::uint8_t;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using SHORT = std::int16_t;
using INT = int;
using UINT = unsigned int;
using BOOL = int;
using BOOLEAN = std::uint8_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using FLONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using DWORD64 = std::uint64_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using HRESULT = std::int32_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using ATOM = WORD;
using COLORREF = DWORD;
using LANGID = WORD;
using LCID = DWORD;

#define VOID void
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using PSTR = CHAR*;
using LPSTR = CHAR*;
using PCSTR = const CHAR*;
using LPCSTR = const CHAR*;
using PWSTR = WCHAR*;
using LPWSTR = WCHAR*;
using PCWSTR = const WCHAR*;
using LPCWSTR = const WCHAR*;
using LPTSTR = WCHAR*;
using LPCTSTR = const WCHAR*;
using PBYTE = BYTE*;
using LPBYTE = BYTE*;
using PINT = INT*;
using LPINT = INT*;
using PUINT = UINT*;
using PWORD = WORD*;
using LPWORD = WORD*;
using PLONG = LONG*;
using PULONG = ULONG*;
using PDWORD = DWORD*;
using LPDWORD = DWORD*;
using LPBOOL = BOOL*;

// Handles are opaque and of distinct types, so that mixing them up does not compile.
using HANDLE = void*;
using LPHANDLE = HANDLE*;
// NOLINTBEGIN(bugprone-macro-parentheses): a type's name
#define DECLARE_HANDLE(name)                                                                                           \
    struct name##__;                                                                                                   \
    using name = name##__*
// NOLINTEND(bugprone-macro-parentheses)
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HINSTANCE);
using HMODULE = HINSTANCE;
DECLARE_HANDLE(HRSRC);
DECLARE_HANDLE(HKEY);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HIMAGELIST);
DECLARE_HANDLE(HHOOK);
using HCURSOR = HICON;
using HGLOBAL = HANDLE;
using HLOCAL = HANDLE;
using HGDIOBJ = void*;
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HFONT);
using FARPROC = INT_PTR (*)();

// Calling conventions mean nothing on a platform with one of them.
#define WINAPI
#define APIENTRY
#define CALLBACK
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define CONST const
#define EXTERN_C extern "C"
#define STDAPI extern "C" HRESULT STDAPICALLTYPE
#define TEXT(text) u##text

#define TRUE 1
#define FALSE 0
#define MAX_PATH 260
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

#define LOWORD(value) (static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xffff))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16) & 0xffff))
#define LOBYTE(value) (static_cast<BYTE>(static_cast<DWORD_PTR>(value) & 0xff))
#define HIBYTE(value) (static_cast<BYTE>((static_cast<DWORD_PTR>(value) >> 8) & 0xff))
#define MAKELONG(low, high)                                                                                            \
    (static_cast<LONG>(static_cast<DWORD>(static_cast<WORD>(low)) | (static_cast<DWORD>(static_cast<WORD>(high)) << 16)))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKEINTRESOURCEW(number) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(number))))
#define MAKEINTRESOURCE MAKEINTRESOURCEW
#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)
#define RGB(r, g, b)                                                                                                   \
    (static_cast<COLORREF>(static_cast<BYTE>(r) | (static_cast<WORD>(static_cast<BYTE>(g)) << 8) |                       \
                           (static_cast<DWORD>(static_cast<BYTE>(b)) << 16)))
#define GetRValue(rgb) (LOBYTE(rgb))
#define GetGValue(rgb) (LOBYTE(static_cast<WORD>(rgb) >> 8))
#define GetBValue(rgb) (LOBYTE((rgb) >> 16))

struct POINT
{
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;
struct SIZE
{
    LONG cx;
    LONG cy;
};
struct SIZEL
{
    LONG cx;
    LONG cy;
};
struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using PRECT = RECT*;
using LPCRECT = const RECT*;
struct RECTL
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
struct POINTL
{
    LONG x;
    LONG y;
};
struct FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
struct SYSTEMTIME
{
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

struct GUID
{
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
    bool operator==(const GUID&) const = default;
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
inline bool IsEqualGUID(REFGUID a, REFGUID b) { return a == b; }
inline bool IsEqualIID(REFIID a, REFIID b) { return a == b; }
inline bool IsEqualCLSID(REFCLSID a, REFCLSID b) { return a == b; }

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }
