// How the platform's headers speak to a compiler of this system. Debian's libwine-dev brings them, made for 64-bit
// programs; compstui.h and winddiui.h are MinGW-w64's. They declare, and the .cpp files of this folder define what the
// plug-in and the host call. Included through platform/win32.h only.
#pragma once

#include <cstdarg>
#include <cstddef>

// Text is 16-bit: WCHAR is char16_t, and literals are written TEXT("...").
#define WINE_UNICODE_TEXT
#include <windef.h>

// Callbacks and methods keep to this system's calling convention; the headers mean that of Windows.
#undef __stdcall
#define __stdcall
#undef __cdecl
#define __cdecl

// MinGW's name.
#define WINBOOL BOOL

// The wide printf dialect of the system's runtime: "%s" is 16-bit and "%S" 8-bit text. They return the number of
// characters, -1 when the text does not fit (the buffer is then full and without terminator).
int _vsnwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments);
int _snwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, ...);
int _vscwprintf(const WCHAR* format, va_list arguments);

// What these headers lack.
constexpr DWORD GR_GDIOBJECTS = 0;
constexpr DWORD GR_USEROBJECTS = 1;
constexpr UINT MAXPROPPAGES = 100;
