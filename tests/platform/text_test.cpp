// Conversions between code pages and 16 bits and comparisons: what comes, returned counts, error codes.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr DWORD kNone = 777;
constexpr UINT kLatin1 = 28591;

TEST(CodePages, BecomeWide)
{
    const struct
    {
        UINT page;
        std::string text;
        Text wide;
        bool valid = true;
    } cases[] = {
        // clang-format off
        {CP_UTF8, "abc",                  TEXT("abc")},
        {CP_UTF8, "gr\xc3\xbcn",          TEXT("gr\u00fcn")},
        {CP_UTF8, "\xe2\x82\xac",         TEXT("\u20ac")},
        {CP_UTF8, "\xf0\x9f\x98\x80",     TEXT("\U0001F600")},
        {CP_UTF8, "\xf4\x8f\xbf\xbf",     TEXT("\U0010FFFF")},
        {CP_UTF8, "\xff",                 TEXT("\ufffd"),             false},
        {CP_UTF8, "a\xc3z",               TEXT("a\ufffdz"),           false},
        {CP_UTF8, "\xe2\x82z",            TEXT("\ufffdz"),            false},
        {CP_UTF8, "\xe2\x82",             TEXT("\ufffd"),             false},
        {CP_UTF8, "\xf0\x9f\x98z",        TEXT("\ufffdz"),            false},
        {CP_UTF8, "\xc0\x80",             TEXT("\ufffd\ufffd"),       false}, // too long
        {CP_UTF8, "\xe0\x80\x80",         TEXT("\ufffd\ufffd"),       false},
        {CP_UTF8, "\xed\xa0\x80",         TEXT("\ufffd\ufffd"),       false}, // half of a pair
        {CP_UTF8, "\xed\x9f\xbf",         TEXT("\ud7ff")},
        {CP_UTF8, "\xee\x80\x80",         TEXT("\ue000")},
        {CP_UTF8, "\xf0\x80\x80\x80z",    TEXT("\ufffd\ufffd\ufffdz"), false},
        {CP_UTF8, "\xf4\x90\x80\x80",     TEXT("\ufffd\ufffd\ufffd"), false}, // beyond the last character
        {CP_UTF8, "\x80\x80",             TEXT("\ufffd\ufffd"),       false},
        {CP_UTF8, "\xf5\x80\x80\x80",     TEXT("\ufffd\ufffd\ufffd\ufffd"), false},
        {1252,    "\xfc\x80\x81\x9f",     TEXT("\u00fc\u20ac\u0081\u0178")},
        {28592,   "\xa3\xf3" "d\xbc\x80", TEXT("\u0141\u00f3d\u017a\u0080")},
        {28599,   "\xdd\xfd",             TEXT("\u0130\u0131")},
        {10000,   "\x8a\xd2",             TEXT("\u00e4\u201c")},
        {932,     "\x8e\xa9\x93\xae A\xb1", TEXT("\u81ea\u52d5 A\uff71")},
        {936,     "\xd7\xd4\xb6\xaf",     TEXT("\u81ea\u52a8")},
        {949,     "\xc0\xda\xb5\xbf",     TEXT("\uc790\ub3d9")},
        {950,     "\xa6\xdb\xb0\xca",     TEXT("\u81ea\u52d5")},
        {20932,   "\xbc\xab\xc6\xb0",     TEXT("\u81ea\u52d5")},
        // clang-format on
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::to_string(row.page) + " " + testing::PrintToString(row.text));
        const int bytes = static_cast<int>(row.text.size()), units = static_cast<int>(row.wide.size());
        Text wide(row.wide.size() + 1, TEXT('~'));
        EXPECT_EQ(units, MultiByteToWideChar(row.page, 0, row.text.data(), bytes, wide.data(), units));
        EXPECT_EQ(row.wide + TEXT('~'), wide);
        EXPECT_EQ(units, MultiByteToWideChar(row.page, 0, row.text.data(), bytes, nullptr, 0));
        EXPECT_EQ(units + 1, MultiByteToWideChar(row.page, 0, row.text.c_str(), -1, nullptr, 0))
            << "with its end";
        SetLastError(kNone);
        EXPECT_EQ(row.valid ? units : 0,
                  MultiByteToWideChar(row.page, MB_ERR_INVALID_CHARS, row.text.data(), bytes, nullptr, 0));
        EXPECT_EQ(row.valid ? kNone : DWORD{ERROR_NO_UNICODE_TRANSLATION}, GetLastError());
    }
}

TEST(CodePages, AreWrittenWithAMarkForWhatTheyLack)
{
    const struct
    {
        UINT page;
        Text wide;
        std::string narrow;
        BOOL replaced;
    } cases[] = {
        {CP_UTF8, TEXT("gr\u00fcn"), "gr\xc3\xbcn", FALSE},
        {CP_UTF8, TEXT("\u20ac\U0001F600"), "\xe2\x82\xac\xf0\x9f\x98\x80", FALSE},
        {CP_UTF8, {0xD83D, 'z'}, "\xef\xbf\xbdz", TRUE},
        {CP_UTF8, {0xDE00, 'z'}, "\xef\xbf\xbdz", TRUE},
        {kLatin1, TEXT("gr\u00fcn\u0080"), "gr\xfcn\x80", FALSE},
        {kLatin1, TEXT("a\u263ab"), "a?b", TRUE},
        {kLatin1, TEXT("\U0001F600"), "??", TRUE},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(testing::PrintToString(row.narrow));
        std::string narrow(row.narrow.size(), '~');
        BOOL replaced = 2;
        const int units = static_cast<int>(row.wide.size()), bytes = static_cast<int>(narrow.size());
        EXPECT_EQ(bytes, WideCharToMultiByte(row.page, 0, row.wide.data(), units, narrow.data(), bytes,
                                             nullptr, row.page == CP_UTF8 ? nullptr : &replaced));
        EXPECT_EQ(row.narrow, narrow);
        EXPECT_EQ(row.page == CP_UTF8 ? 2 : row.replaced, replaced);
        EXPECT_EQ(bytes,
                  WideCharToMultiByte(row.page, 0, row.wide.data(), units, nullptr, 0, nullptr, nullptr));
    }
}

TEST(Comparison, PassesOverCase)
{
    const struct
    {
        const WCHAR* a;
        const WCHAR* b;
        int ordinal;
    } cases[] = {
        // clang-format off
        {TEXT("a"),       TEXT("B"),       CSTR_LESS_THAN},
        {TEXT("a"),       TEXT("A"),       CSTR_EQUAL},
        {TEXT("a"),       TEXT("ab"),      CSTR_LESS_THAN},
        {TEXT("\u00e4"),  TEXT("\u00c4"),  CSTR_EQUAL},
        {TEXT("\u00ff"),  TEXT("\u0178"),  CSTR_EQUAL},
        {TEXT("\u03b1"),  TEXT("\u0391"),  CSTR_EQUAL},
        {TEXT("\u00d7"),  TEXT("\u00f7"),  CSTR_LESS_THAN},
        {TEXT("a_"),      TEXT("ab"),      CSTR_GREATER_THAN},
        // clang-format on
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(testing::PrintToString(Text(row.a)) + " " + testing::PrintToString(Text(row.b)));
        EXPECT_EQ(row.ordinal, CompareStringOrdinal(row.a, -1, row.b, -1, TRUE));
        EXPECT_EQ(row.ordinal == CSTR_EQUAL, lstrcmpiW(row.a, row.b) == 0);
        EXPECT_EQ(CSTR_EQUAL + CSTR_EQUAL - row.ordinal, CompareStringOrdinal(row.b, -1, row.a, -1, TRUE));
    }
    EXPECT_EQ(CSTR_GREATER_THAN, CompareStringOrdinal(TEXT("a"), -1, TEXT("A"), -1, FALSE));
    EXPECT_EQ(CSTR_EQUAL, CompareStringOrdinal(TEXT("abc"), 2, TEXT("abd"), 2, FALSE));
}

} // namespace
} // namespace tintwerk
