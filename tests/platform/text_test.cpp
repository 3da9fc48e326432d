// Conversions between code pages and 16 bits, copies and comparisons: returned counts, error codes, short
// buffers.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr DWORD kUntouched = 777;
constexpr UINT kLatin1 = 28591;

struct Converted
{
    int returned;
    DWORD error;
    Text wide;
    std::string narrow;
    BOOL usedDefault;
};

// length counts bytes, -1 takes the terminator; room counts units, 0 only measures.
Converted ToWide(UINT codePage, DWORD flags, const char* text, int length, int room)
{
    WCHAR buffer[64] = {};
    SetLastError(kUntouched);
    const int returned = MultiByteToWideChar(codePage, flags, text, length, room ? buffer : nullptr, room);
    const DWORD error = GetLastError();
    return {returned, error, buffer, "", FALSE};
}

Converted ToNarrow(UINT codePage, DWORD flags, const WCHAR* text, int length, int room,
                   const char* unmapped = nullptr)
{
    char buffer[64] = {};
    BOOL used = 2;
    SetLastError(kUntouched);
    const int returned =
        WideCharToMultiByte(codePage, flags, text, length, room ? buffer : nullptr, room, unmapped, &used);
    const DWORD error = GetLastError();
    return {returned, error, Text(), buffer, used};
}

TEST(Utf8, BecomesWide)
{
    const struct
    {
        const char* text;
        const WCHAR* wide;
        bool valid;
    } cases[] = {
        // clang-format off
        {"abc",                     TEXT("abc"),                  true},
        {"gr\xc3\xbcn",             TEXT("gr\u00fcn"),            true},
        {"\xe2\x82\xac",            TEXT("\u20ac"),               true},
        {"\xf0\x9f\x98\x80",        TEXT("\U0001F600"),           true},
        {"\xf4\x8f\xbf\xbf",        TEXT("\U0010FFFF"),           true},
        {"\xff",                    TEXT("\ufffd"),               false},
        {"a\xc3z",                  TEXT("a\ufffdz"),             false},
        {"a\xc3",                   TEXT("a\ufffd"),              false},
        {"\xe2\x82z",               TEXT("\ufffdz"),              false},
        {"\xe2\x82",                TEXT("\ufffd"),               false},
        {"\xf0\x9f\x98z",           TEXT("\ufffdz"),              false},
        {"\xc0\x80",                TEXT("\ufffd\ufffd"),         false}, // too long
        {"\xe0\x80\x80",            TEXT("\ufffd\ufffd"),         false},
        {"\xed\xa0\x80",            TEXT("\ufffd\ufffd"),         false}, // half of a pair
        {"\xed\x9f\xbf",            TEXT("\ud7ff"),               true},
        {"\xee\x80\x80",            TEXT("\ue000"),               true},
        {"\xf0\x80\x80\x80z",       TEXT("\ufffd\ufffd\ufffdz"),  false},
        {"\xf4\x90\x80\x80",        TEXT("\ufffd\ufffd\ufffd"),   false}, // beyond the last character
        {"\x80\x80",                TEXT("\ufffd\ufffd"),         false},
        {"\xf5\x80\x80\x80",        TEXT("\ufffd\ufffd\ufffd\ufffd"), false},
        // clang-format on
    };
    for (const auto& row : cases) {
        const Converted lenient = ToWide(CP_UTF8, 0, row.text, -1, 60);
        EXPECT_EQ(Text(row.wide), lenient.wide) << row.text;
        EXPECT_EQ(lstrlenW(row.wide) + 1, lenient.returned) << row.text;
        EXPECT_EQ(lenient.returned, ToWide(CP_UTF8, 0, row.text, -1, 0).returned) << row.text;
        const Converted strict = ToWide(CP_UTF8, MB_ERR_INVALID_CHARS, row.text, -1, 60);
        EXPECT_EQ(row.valid ? lenient.returned : 0, strict.returned) << row.text;
        EXPECT_EQ(row.valid ? kUntouched : DWORD{ERROR_NO_UNICODE_TRANSLATION}, strict.error) << row.text;
    }
}

TEST(MultiByteToWide, AnswersOddArguments)
{
    const struct
    {
        const char* what;
        Converted result;
        int returned;
        DWORD error;
        const WCHAR* wide;
    } cases[] = {
        {"exact room", ToWide(CP_UTF8, 0, "abc", 3, 3), 3, kUntouched, TEXT("abc")},
        {"no room for the terminator", ToWide(CP_UTF8, 0, "abc", -1, 3), 0, ERROR_INSUFFICIENT_BUFFER,
         TEXT("abc")},
        {"no bytes", ToWide(CP_UTF8, 0, "abc", 0, 3), 0, ERROR_INVALID_PARAMETER, TEXT("")},
        {"no text", ToWide(CP_UTF8, 0, nullptr, 3, 3), 0, ERROR_INVALID_PARAMETER, TEXT("")},
        {"unknown flag", ToWide(CP_UTF8, 0x10, "abc", -1, 9), 0, ERROR_INVALID_FLAGS, TEXT("")},
        {"unknown code page", ToWide(12345, 0, "abc", -1, 9), 0, ERROR_INVALID_PARAMETER, TEXT("")},
        {"short and invalid", ToWide(CP_UTF8, MB_ERR_INVALID_CHARS, "ab\xff", -1, 2), 0,
         ERROR_INSUFFICIENT_BUFFER, TEXT("ab")},
        {"ISO 8859-1", ToWide(kLatin1, 0, "a\xfc\x80", -1, 9), 4, kUntouched, TEXT("a\u00fc\u0080")},
        {"ISO 8859-1, short", ToWide(kLatin1, 0, "abc", -1, 2), 0, ERROR_INSUFFICIENT_BUFFER, TEXT("ab")},
        {"system code page", ToWide(CP_ACP, 0, "\xfc\x80\x81\x9f", -1, 9), 5, kUntouched,
         TEXT("\u00fc\u20ac\u0081\u0178")},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(row.returned, row.result.returned) << row.what;
        EXPECT_EQ(row.error, row.result.error) << row.what;
        EXPECT_EQ(Text(row.wide), row.result.wide) << row.what;
    }
}

TEST(WideToMultiByte, ReplacesWhatTheCodePageLacks)
{
    const WCHAR loneHigh[] = {0xD83D, 'z', 0}, loneLow[] = {0xDE00, 'z', 0};
    const struct
    {
        const char* what;
        Converted result;
        const char* narrow;
        BOOL usedDefault;
        DWORD error;
    } cases[] = {
        // clang-format off
        {"umlaut, UTF-8",            ToNarrow(CP_UTF8, 0, TEXT("gr\u00fcn"), -1, 60),         "gr\xc3\xbcn",      FALSE, kUntouched},
        {"pair, UTF-8",              ToNarrow(CP_UTF8, 0, TEXT("\U0001F600"), -1, 60),        "\xf0\x9f\x98\x80", FALSE, kUntouched},
        {"half a pair, UTF-8",       ToNarrow(CP_UTF8, 0, loneHigh, -1, 60),                  "\xef\xbf\xbdz",    TRUE,  kUntouched},
        {"other half, UTF-8",        ToNarrow(CP_UTF8, 0, loneLow, -1, 60),                   "\xef\xbf\xbdz",    TRUE,  kUntouched},
        {"umlaut, Latin",            ToNarrow(kLatin1, 0, TEXT("gr\u00fcn\u0080"), -1, 60),   "gr\xfcn\x80",      FALSE, kUntouched},
        {"smiley, Latin",            ToNarrow(kLatin1, 0, TEXT("a\u263ab"), -1, 60),          "a?b",              TRUE,  kUntouched},
        {"smiley, own character",    ToNarrow(kLatin1, 0, TEXT("a\u263ab"), -1, 60, "#"),     "a#b",              TRUE,  kUntouched},
        {"pair, Latin",              ToNarrow(kLatin1, 0, TEXT("\U0001F600"), -1, 60),        "??",               TRUE,  kUntouched},
        {"euro, Latin",              ToNarrow(kLatin1, 0, TEXT("\u20ac"), -1, 60),            "?",                TRUE,  kUntouched},
        {"euro, system",             ToNarrow(CP_ACP, 0, TEXT("\u20ac\u2019"), -1, 60),       "\x80\x92",         FALSE, kUntouched},
        {"control, system",          ToNarrow(CP_ACP, 0, TEXT("\u0080\u0081"), -1, 60),       "?\x81",            TRUE,  kUntouched},
        {"best fit, Latin",          ToNarrow(kLatin1, 0, TEXT("\u0141\u00f3d\u017a \u2019\u2013"), -1, 60), "L\xf3" "dz '-", FALSE, kUntouched},
        {"best fit refused",         ToNarrow(kLatin1, WC_NO_BEST_FIT_CHARS, TEXT("\u0141"), -1, 60),        "?", TRUE, kUntouched},
        {"short, Latin",             ToNarrow(kLatin1, 0, TEXT("\u263abc"), -1, 2),           "?b",               TRUE,  ERROR_INSUFFICIENT_BUFFER},
        {"short, UTF-8",             ToNarrow(CP_UTF8, 0, TEXT("ab\u20ac"), -1, 4),           "ab",               FALSE, ERROR_INSUFFICIENT_BUFFER},
        {"measured",                 ToNarrow(CP_UTF8, 0, TEXT("a\u20ac"), -1, 0),            "",                 FALSE, kUntouched},
        // clang-format on
    };
    for (const auto& row : cases) {
        EXPECT_STREQ(row.narrow, row.result.narrow.c_str()) << row.what;
        EXPECT_EQ(row.usedDefault, row.result.usedDefault) << row.what;
        EXPECT_EQ(row.error, row.result.error) << row.what;
        EXPECT_EQ(row.error != kUntouched, row.result.returned == 0) << row.what;
    }
    EXPECT_EQ(5, ToNarrow(CP_UTF8, 0, TEXT("a\u20ac"), -1, 0).returned);
    EXPECT_EQ(3, ToNarrow(CP_UTF8, 0, TEXT("abc"), 3, 3).returned);
    EXPECT_EQ(ERROR_INVALID_PARAMETER, ToNarrow(CP_UTF8, 0, TEXT("abc"), 0, 3).error);
    EXPECT_EQ(ERROR_NO_UNICODE_TRANSLATION, ToNarrow(CP_UTF8, WC_ERR_INVALID_CHARS, loneHigh, -1, 60).error);
}

TEST(Comparison, OrdersTextsAsAUserWould)
{
    const struct
    {
        const WCHAR* a;
        const WCHAR* b;
        int order;
        int orderIgnoringCase;
        int ordinal;
        int ordinalIgnoringCase;
    } cases[] = {
        // clang-format off
        {TEXT("a"),       TEXT("B"),       -1, -1, CSTR_GREATER_THAN, CSTR_LESS_THAN},
        {TEXT("a"),       TEXT("A"),       -1,  0, CSTR_GREATER_THAN, CSTR_EQUAL},
        {TEXT("a"),       TEXT("ab"),      -1, -1, CSTR_LESS_THAN,    CSTR_LESS_THAN},
        {TEXT("\u00e4"),  TEXT("\u00c4"),  -1,  0, CSTR_GREATER_THAN, CSTR_EQUAL},
        {TEXT("\u00ff"),  TEXT("\u0178"),  -1,  0, CSTR_LESS_THAN,    CSTR_EQUAL},
        {TEXT("\u03b1"),  TEXT("\u0391"),  -1,  0, CSTR_GREATER_THAN, CSTR_EQUAL},
        {TEXT("\u00d7"),  TEXT("\u00f7"),  -1, -1, CSTR_LESS_THAN,    CSTR_LESS_THAN},
        {TEXT("a_"),      TEXT("ab"),      -1, -1, CSTR_LESS_THAN,    CSTR_GREATER_THAN},
        {TEXT("1"),       TEXT("a"),       -1, -1, CSTR_LESS_THAN,    CSTR_LESS_THAN},
        {TEXT("Z"),       TEXT("["),        1,  1, CSTR_LESS_THAN,    CSTR_LESS_THAN},
        {TEXT(""),        TEXT(""),         0,  0, CSTR_EQUAL,        CSTR_EQUAL},
        // clang-format on
    };
    for (const auto& row : cases) {
        const std::string where =
            testing::PrintToString(Text(row.a)) + " " + testing::PrintToString(Text(row.b));
        EXPECT_EQ(row.order, lstrcmpW(row.a, row.b)) << where;
        EXPECT_EQ(-row.order, lstrcmpW(row.b, row.a)) << where;
        EXPECT_EQ(row.orderIgnoringCase, lstrcmpiW(row.a, row.b)) << where;
        EXPECT_EQ(row.ordinal, CompareStringOrdinal(row.a, -1, row.b, -1, FALSE)) << where;
        EXPECT_EQ(row.ordinalIgnoringCase, CompareStringOrdinal(row.a, -1, row.b, -1, TRUE)) << where;
    }
    EXPECT_EQ(-1, lstrcmpW(nullptr, TEXT("a")));
    EXPECT_EQ(0, lstrcmpiA(nullptr, nullptr));
    EXPECT_EQ(0, lstrcmpiA("PstwUI.dll", "PSTWUI.DLL"));
}

TEST(Copies, EndInsideTheBuffer)
{
    for (const int size : {1, 2, 3, 5, 9}) {
        WCHAR buffer[10];
        std::fill(std::begin(buffer), std::end(buffer), WCHAR{'~'});
        EXPECT_EQ(buffer, lstrcpynW(buffer, TEXT("abcd"), size));
        EXPECT_EQ(Text(TEXT("abcd")).substr(0, static_cast<size_t>(size - 1)), Text(buffer)) << size;
        EXPECT_EQ('~', buffer[9]);
    }
    char untouched[] = "~~";
    EXPECT_EQ(nullptr, lstrcpynA(untouched, nullptr, 2));
    EXPECT_EQ(0, lstrlenW(nullptr));
}

TEST(MulDivision, RoundsHalfAwayFromZero)
{
    EXPECT_EQ(8, MulDiv(5, 3, 2));
    EXPECT_EQ(-8, MulDiv(-5, 3, 2));
    EXPECT_EQ(-3, MulDiv(5, 1, -2));
    EXPECT_EQ(2, MulDiv(7, 1, 3));
    EXPECT_EQ(-1, MulDiv(1, 1, 0));
    EXPECT_EQ(-1, MulDiv(2000000000, 2000000000, 1));
}

} // namespace
} // namespace tintwerk
