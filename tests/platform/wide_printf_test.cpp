// The wide printf dialect, held against the system's runtime: every expected text is what that runtime
// writes.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr WCHAR kUntouched = 0x7E7E;

struct Result
{
    int returned;
    Text text; // up to the terminator, or all that was written when there is none
    bool terminated;
};

Result Format(std::size_t size, const WCHAR* format, ...)
{
    WCHAR buffer[512];
    std::fill(std::begin(buffer), std::end(buffer), kUntouched);
    va_list arguments;
    va_start(arguments, format);
    const int returned = _vsnwprintf(buffer, size, format, arguments);
    va_end(arguments);
    Text text;
    for (const WCHAR c : buffer) {
        if (c == kUntouched || c == 0) return {returned, text, c == 0};
        text += c;
    }
    return {returned, text, false};
}

template <typename... Arguments>
void Expect(const WCHAR* expected, const WCHAR* format, Arguments... arguments)
{
    const Result result = Format(500, format, arguments...);
    EXPECT_EQ(Text(expected), result.text);
    EXPECT_EQ(lstrlenW(expected), result.returned) << testing::PrintToString(Text(format));
}

TEST(WidePrintf, TakesWideAndNarrowTexts)
{
    Expect(TEXT("w|n|l|h|ws|hS|lS"), TEXT("%s|%S|%ls|%hs|%ws|%hS|%lS"), TEXT("w"), "n", TEXT("l"), "h",
           TEXT("ws"), "hS", TEXT("lS"));
    Expect(TEXT("w|n"), TEXT("%#s|%#S"), TEXT("w"), "n");
    Expect(TEXT("       abc|abc       |ab|        ab|ab        |"),
           TEXT("%10s|%-10s|%.2s|%10.2s|%-10.2S|"), TEXT("abc"), TEXT("abc"), TEXT("abc"), TEXT("abc"), "abc");
    Expect(TEXT("0000000abc|000ab|0000x"), TEXT("%010s|%05S|%05c"), TEXT("abc"), "ab", 'x');
    Expect(TEXT("\u00fc\u0080\u00e4|\u00c3\u00bc"), TEXT("%S|%.2S"), "\xfc\x80\xe4", "\xc3\xbc\xe4");
    Expect(TEXT("\u263a|A|\u263a|B|    x|y    |z"), TEXT("%c|%C|%lc|%hc|%5c|%-5c|%wc"), 0x263a, 0x41, 0x263a,
           0x42, 'x', 'y', 'z');
}

TEST(WidePrintf, ShowsNullTextsAsAWord)
{
    const WCHAR* const wide = nullptr;
    const char* const narrow = nullptr;
    Expect(TEXT("(null)|(null)|(nu|    (null)|(null)|(null)|(null)  |"),
           TEXT("%s|%S|%.3s|%10S|%hs|%ls|%-8s|"), wide, narrow, wide, narrow, narrow, wide, wide);
}

TEST(WidePrintf, WritesIntegers)
{
    Expect(TEXT("-5|6|7|ab|AB"), TEXT("%d|%i|%u|%x|%X"), -5, 6, 7u, 0xabu, 0xabu);
    Expect(TEXT("0xff|0XFF|0|0|0x10|5"), TEXT("%#x|%#X|%#x|%#X|%#lx|%#d"), 255, 255, 0, 0, 16u, 5);
    Expect(TEXT("    1|1    |00001|+1| 1|   +1|+1   | 0001|+0001"),
           TEXT("%5d|%-5d|%05d|%+d|% d|%+5d|%-+5d|% 05d|%+05d"), 1, 1, 1, 1, 1, 1, 1, 1, 1);
    Expect(TEXT("007|  007|00007|007  ||7|+007|0007|-007"),
           TEXT("%.3d|%5.3d|%05.3d|%-5.3d|%.0d|%.0d|%+.3d|%.04d|%.3d"), 7, 7, 7, 7, 0, 7, 7, 7, -7);
    Expect(TEXT("000000ab|0x00ab|  0x00ab|0x0000ab|0xab    |"), TEXT("%08.3x|%#.4x|%#8.4x|%#08x|%-#8x|"),
           0xab, 0xab, 0xab, 0xab, 0xab);
    Expect(TEXT("-5|4294967291|4464|-4464"), TEXT("%ld|%lu|%hu|%hd"), -5, 4294967291u, 70000, -70000);
    Expect(TEXT("-5000000000|5000000000|abcdef0123"), TEXT("%lld|%llu|%llx"), -5000000000ll, 5000000000ull,
           0xabcdef0123ull);
    Expect(TEXT("-2147483648|-9223372036854775808"), TEXT("%d|%lld"), static_cast<int>(0x80000000),
           static_cast<long long>(0x8000000000000000));
}

TEST(WidePrintf, WritesPointersWithSixteenDigits)
{
    void* const pointer = reinterpret_cast<void*>(0x1234ABCD);
    Expect(TEXT("000000001234ABCD|    000000001234ABCD|000000001234ABCD    |0000000000000000"),
           TEXT("%p|%20p|%-20p|%p"), pointer, pointer, pointer, static_cast<void*>(nullptr));
}

TEST(WidePrintf, PassesOverWhatItDoesNotKnow)
{
    Expect(TEXT("%|y|k|y|!|aq"), TEXT("%%|%y|%k|%5y|%!|%ls%q"), TEXT("a"));
    Expect(TEXT("100"), TEXT("100%"));
    Expect(TEXT(""), TEXT("%5"));
    Expect(TEXT(""), TEXT("%l"));
}

TEST(WidePrintf, LeavesAFullBufferUnterminated)
{
    const struct
    {
        std::size_t size;
        const WCHAR* argument;
        int returned;
        const WCHAR* text;
        bool terminated;
    } cases[] = {
        {5, TEXT("abcd"), 4, TEXT("abcd"), true},      {5, TEXT("abcde"), 5, TEXT("abcde"), false},
        {5, TEXT("abcdef"), -1, TEXT("abcde"), false}, {1, TEXT(""), 0, TEXT(""), true},
        {1, TEXT("ab"), -1, TEXT("a"), false},         {0, TEXT("a"), -1, TEXT(""), false},
    };
    for (const auto& row : cases) {
        const Result result = Format(row.size, TEXT("%s"), row.argument);
        EXPECT_EQ(row.returned, result.returned) << row.size;
        EXPECT_EQ(Text(row.text), result.text) << row.size;
        EXPECT_EQ(row.terminated, result.terminated) << row.size;
    }
    // A conversion is cut in its middle.
    EXPECT_EQ(TEXT("ab   "), Format(5, TEXT("ab%10d"), 1).text);
    EXPECT_EQ(4, _snwprintf(nullptr, 0, TEXT("abc%d"), 5));
}

TEST(WidePrintf, OfTheWindowManagerEndsAt1024)
{
    WCHAR buffer[1100];
    EXPECT_EQ(28, wsprintfW(buffer, TEXT("%s|%S|%d|%#x|%ls|%hs|%c|%5d|%05d"), TEXT("w"), "n", 5, 255,
                            TEXT("l"), "h", 'c', 5, 5));
    EXPECT_EQ(TEXT("w|n|5|0xff|l|h|c|    5|00005"), Text(buffer));
}

} // namespace
} // namespace tintwerk
