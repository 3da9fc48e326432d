// The wide printf dialect, held against the system's runtime: every expected text is what that runtime
// writes.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

int Format(WCHAR* buffer, std::size_t size, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int returned = _vsnwprintf(buffer, size, format, arguments);
    va_end(arguments);
    return returned;
}

template <typename... Arguments> Text Of(const WCHAR* format, Arguments... arguments)
{
    WCHAR buffer[512];
    const int returned = Format(buffer, 512, format, arguments...);
    EXPECT_EQ(lstrlenW(buffer), returned);
    return buffer;
}

TEST(WidePrintf, WritesTextsNumbersAndPointers)
{
    const WCHAR* const wide = nullptr;
    const char* const narrow = nullptr;
    EXPECT_EQ(TEXT("w|n|l|w|n"), Of(TEXT("%s|%S|%ls|%#s|%#S"), TEXT("w"), "n", TEXT("l"), TEXT("w"), "n"));
    EXPECT_EQ(TEXT("ab|ab||abc"),
              Of(TEXT("%.2s|%.2S|%.0s|%.9s"), TEXT("abc"), "abc", TEXT("abc"), TEXT("abc")));
    EXPECT_EQ(TEXT("\u00fc\u0080\u00e4|\u00c3\u00bc"), Of(TEXT("%S|%.2S"), "\xfc\x80\xe4", "\xc3\xbc\xe4"));
    EXPECT_EQ(TEXT("(null)|(null)|(nu"), Of(TEXT("%s|%S|%.3s"), wide, narrow, wide));
    EXPECT_EQ(TEXT("-5|0|+1|-1|5|-2147483648"),
              Of(TEXT("%d|%d|%+d|%+d|%#d|%d"), -5, 0, 1, -1, 5, static_cast<int>(0x80000000)));
    EXPECT_EQ(TEXT("ab|0xff|0|0x10"), Of(TEXT("%x|%#x|%#x|%#lx"), 0xabu, 255u, 0u, 16ul));
    EXPECT_EQ(TEXT("000000001234ABCD|0000000000000000"),
              Of(TEXT("%p|%p"), reinterpret_cast<void*>(0x1234ABCD), static_cast<void*>(nullptr)));
    EXPECT_EQ(TEXT("%|y|!|aq"), Of(TEXT("%%|%y|%!|%ls%q"), TEXT("a")));
}

} // namespace
} // namespace tintwerk
