// Text of the headless platform: lengths, copies, comparisons and the conversions between 8-bit code pages
// and 16 bits.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "platform/win32.h"

namespace {

constexpr UINT kLatin1 = 28591;
constexpr UINT kWindows1252 = 1252;
constexpr WCHAR kReplacement = 0xFFFD;

// --- Case and order

constexpr unsigned Upper(unsigned c)
{
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7) ||
        (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) || (c >= 0x430 && c <= 0x44F))
        return c - 32;
    if (c == 0xFF) return 0x178;
    if ((c >= 0x100 && c <= 0x137 && c != 0x131) || (c >= 0x14A && c <= 0x177)) return c & ~1u;
    return c;
}

template <typename Char> constexpr unsigned Unit(Char c)
{
    return static_cast<std::make_unsigned_t<std::conditional_t<sizeof(Char) == 1, char, std::int16_t>>>(c);
}

// Letters come behind digits and those behind signs; two texts that differ in case alone stand lower case
// first.
constexpr unsigned Weight(unsigned c)
{
    const unsigned upper = Upper(c);
    const bool letter = (upper >= 'A' && upper <= 'Z') || upper >= 0xC0;
    const bool digit = c >= '0' && c <= '9';
    return upper + (letter ? 0x20000 : digit ? 0x10000 : 0);
}

template <typename Char> int Compare(const Char* a, const Char* b, bool ignoreCase)
{
    if (!a || !b) return a ? 1 : b ? -1 : 0;
    int caseOrder = 0;
    for (;; ++a, ++b) {
        const unsigned left = Weight(Unit(*a)), right = Weight(Unit(*b));
        if (left != right) return left < right ? -1 : 1;
        if (*a == 0) return ignoreCase ? 0 : caseOrder;
        if (caseOrder == 0 && *a != *b) caseOrder = Upper(Unit(*a)) != Unit(*a) ? -1 : 1;
    }
}

template <typename Char> Char* CopyBounded(Char* destination, const Char* source, int size)
{
    if (!destination || !source) return nullptr;
    Char* at = destination;
    for (int left = size; left > 1 && *source; --left)
        *at++ = *source++;
    if (size > 0) *at = 0;
    return destination;
}

// --- Code pages

// Windows-1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr std::array<WCHAR, 32> kWindows1252Upper{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// What the platform writes for a letter of U+0100 to U+017F that an 8-bit code page lacks; a blank where it
// has nothing.
constexpr char kLettersWithoutMarks[] =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi  JjKk LlLlLl  LlNnNnNn   OoOoOoOo"
    "RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZz ";
static_assert(sizeof kLettersWithoutMarks == 129);

struct BestFit
{
    WCHAR from;
    char to;
};
constexpr BestFit kPunctuation[] = {{0x2002, ' '}, {0x2003, ' '}, {0x2010, '-'},  {0x2011, '-'},
                                    {0x2013, '-'}, {0x2014, '-'}, {0x2018, '\''}, {0x2019, '\''},
                                    {0x201A, ','}, {0x201C, '"'}, {0x201D, '"'},  {0x201E, '"'},
                                    {0x2022, '.'}, {0x2026, '.'}, {0x2122, 'T'}};

bool IsSingleByte(UINT codePage)
{
    return codePage == kLatin1 || codePage == kWindows1252;
}

WCHAR FromSingleByte(UINT codePage, unsigned char byte)
{
    if (codePage == kWindows1252 && byte >= 0x80 && byte < 0xA0 && kWindows1252Upper[byte - 0x80u])
        return kWindows1252Upper[byte - 0x80u];
    return byte;
}

// The byte of a character, -1 when the code page has none.
int ExactByte(UINT codePage, WCHAR c)
{
    if (codePage == kLatin1 || c < 0x80 || (c >= 0xA0 && c < 0x100)) return c < 0x100 ? c : -1;
    const auto* const at = std::ranges::find(kWindows1252Upper, c);
    if (at != kWindows1252Upper.end()) return 0x80 + static_cast<int>(at - kWindows1252Upper.begin());
    return c < 0xA0 && !kWindows1252Upper[c - 0x80u] ? c : -1;
}

int BestFitByte(WCHAR c)
{
    if (c >= 0x100 && c < 0x180 && kLettersWithoutMarks[c - 0x100] != ' ')
        return kLettersWithoutMarks[c - 0x100];
    const auto* const at = std::ranges::find(kPunctuation, c, &BestFit::from);
    return at != std::end(kPunctuation) ? at->to : -1;
}

// Writes as long as there is room and counts in any case; without a buffer everything is only counted.
template <typename Char> struct Output
{
    Char* buffer;
    int size;
    int count = 0;
    bool full = false;

    // A character of several units goes in whole or not at all.
    void Put(const Char* units, int length)
    {
        if (size > 0 && (full || count + length > size)) {
            full = true;
            return;
        }
        if (size > 0) std::copy_n(units, length, buffer + count);
        count += length;
    }
    void Put(Char unit) { Put(&unit, 1); }

    int Finish(bool invalid) const
    {
        if (full || invalid) {
            SetLastError(full ? ERROR_INSUFFICIENT_BUFFER : ERROR_NO_UNICODE_TRANSLATION);
            return 0;
        }
        return count;
    }
};

struct Decoded
{
    unsigned character;
    int bytes;
    bool valid;
};

// One UTF-8 character. A broken sequence ends before the first byte that cannot continue it; a second byte
// that makes it too long, too large or half of a pair still belongs to it.
Decoded DecodeUtf8(const unsigned char* at, int left)
{
    const unsigned lead = *at;
    if (lead < 0x80) return {lead, 1, true};
    const int length = lead >= 0xC2 && lead < 0xE0   ? 2
                       : lead >= 0xE0 && lead < 0xF0 ? 3
                       : lead >= 0xF0 && lead < 0xF5 ? 4
                                                     : 1;
    if (length == 1) return {kReplacement, 1, false};
    unsigned character = lead & (0x7Fu >> length);
    for (int i = 1; i < length; ++i) {
        if (i == left || (at[i] & 0xC0) != 0x80) return {kReplacement, i, false};
        character = (character << 6) | (at[i] & 0x3F);
        const bool impossible =
            (length == 3 && (character < 0x20 || (character >= 0x360 && character < 0x380))) ||
            (length == 4 && (character < 0x10 || character >= 0x110));
        if (i == 1 && impossible) return {kReplacement, 2, false};
    }
    return {character, length, true};
}

int FromUtf8(const char* text, int bytes, WCHAR* wide, int units, bool strict)
{
    Output<WCHAR> output{wide, units};
    bool invalid = false;
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    for (int left = bytes; left > 0;) {
        const Decoded decoded = DecodeUtf8(at, left);
        invalid |= !decoded.valid;
        if (decoded.character >= 0x10000) {
            output.Put(static_cast<WCHAR>(0xD7C0 + (decoded.character >> 10)));
            output.Put(static_cast<WCHAR>(0xDC00 | (decoded.character & 0x3FF)));
        } else {
            output.Put(static_cast<WCHAR>(decoded.character));
        }
        at += decoded.bytes;
        left -= decoded.bytes;
    }
    return output.Finish(invalid && strict);
}

void PutUtf8(Output<char>& output, unsigned c)
{
    const int length = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    char bytes[4];
    for (int i = length - 1; i > 0; --i, c >>= 6)
        bytes[i] = static_cast<char>(0x80 | (c & 0x3F));
    bytes[0] = static_cast<char>(length == 1 ? c : (0xF00u >> length) | c);
    output.Put(bytes, length);
}

int ToUtf8(const WCHAR* wide, int units, char* text, int bytes, bool strict, bool& replaced)
{
    Output<char> output{text, bytes};
    for (int i = 0; i < units; ++i) {
        unsigned c = wide[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < units && wide[i + 1] >= 0xDC00 && wide[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (wide[++i] - 0xDC00u);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = kReplacement;
            replaced = true;
        }
        PutUtf8(output, c);
    }
    return output.Finish(replaced && strict);
}

int ToSingleByte(UINT codePage, DWORD flags, const WCHAR* wide, int units, Output<char> output, char unmapped,
                 bool& replaced)
{
    for (int i = 0; i < units; ++i) {
        int byte = ExactByte(codePage, wide[i]);
        if (byte < 0 && !(flags & WC_NO_BEST_FIT_CHARS)) byte = BestFitByte(wide[i]);
        replaced |= byte < 0;
        output.Put(byte < 0 ? unmapped : static_cast<char>(byte));
    }
    return output.Finish(false);
}

int Fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

} // namespace

int lstrlenA(LPCSTR text)
{
    return text ? static_cast<int>(std::strlen(text)) : 0;
}
int lstrlenW(LPCWSTR text)
{
    return text ? static_cast<int>(std::char_traits<WCHAR>::length(text)) : 0;
}
int lstrcmpA(LPCSTR a, LPCSTR b)
{
    return Compare(a, b, false);
}
int lstrcmpW(LPCWSTR a, LPCWSTR b)
{
    return Compare(a, b, false);
}
int lstrcmpiA(LPCSTR a, LPCSTR b)
{
    return Compare(a, b, true);
}
int lstrcmpiW(LPCWSTR a, LPCWSTR b)
{
    return Compare(a, b, true);
}
LPSTR lstrcpynA(LPSTR destination, LPCSTR source, int size)
{
    return CopyBounded(destination, source, size);
}
LPWSTR lstrcpynW(LPWSTR destination, LPCWSTR source, int size)
{
    return CopyBounded(destination, source, size);
}
LPSTR lstrcpyA(LPSTR destination, LPCSTR source)
{
    return CopyBounded(destination, source, lstrlenA(source) + 1);
}
LPWSTR lstrcpyW(LPWSTR destination, LPCWSTR source)
{
    return CopyBounded(destination, source, lstrlenW(source) + 1);
}
LPSTR lstrcatA(LPSTR destination, LPCSTR source)
{
    lstrcpyA(destination + lstrlenA(destination), source);
    return destination;
}
LPWSTR lstrcatW(LPWSTR destination, LPCWSTR source)
{
    lstrcpyW(destination + lstrlenW(destination), source);
    return destination;
}

int CompareStringOrdinal(LPCWSTR a, int lengthA, LPCWSTR b, int lengthB, BOOL ignoreCase)
{
    if (!a || !b) return Fail(ERROR_INVALID_PARAMETER);
    const int leftLength = lengthA < 0 ? lstrlenW(a) : lengthA;
    const int rightLength = lengthB < 0 ? lstrlenW(b) : lengthB;
    for (int i = 0; i < std::min(leftLength, rightLength); ++i) {
        const unsigned left = ignoreCase ? Upper(a[i]) : a[i];
        const unsigned right = ignoreCase ? Upper(b[i]) : b[i];
        if (left != right) return left < right ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
    }
    return leftLength == rightLength  ? CSTR_EQUAL
           : leftLength < rightLength ? CSTR_LESS_THAN
                                      : CSTR_GREATER_THAN;
}

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int bytes, LPWSTR wide, int units)
{
    if (codePage == CP_ACP) codePage = kWindows1252;
    if (!text || bytes == 0 || units < 0 || (units > 0 && !wide) ||
        (codePage != CP_UTF8 && !IsSingleByte(codePage)))
        return Fail(ERROR_INVALID_PARAMETER);
    if (flags & ~(MB_PRECOMPOSED | MB_ERR_INVALID_CHARS)) return Fail(ERROR_INVALID_FLAGS);
    const int length = bytes < 0 ? lstrlenA(text) + 1 : bytes;
    if (codePage == CP_UTF8) return FromUtf8(text, length, wide, units, flags & MB_ERR_INVALID_CHARS);

    Output<WCHAR> output{wide, units};
    for (int i = 0; i < length; ++i)
        output.Put(FromSingleByte(codePage, static_cast<unsigned char>(text[i])));
    return output.Finish(false);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR text, int bytes,
                        LPCSTR defaultCharacter, LPBOOL usedDefault)
{
    if (codePage == CP_ACP) codePage = kWindows1252;
    if (!wide || units == 0 || bytes < 0 || (bytes > 0 && !text) ||
        (codePage != CP_UTF8 && !IsSingleByte(codePage)))
        return Fail(ERROR_INVALID_PARAMETER);
    const int length = units < 0 ? lstrlenW(wide) + 1 : units;
    bool replaced = false;
    const int result = codePage == CP_UTF8
                           ? ToUtf8(wide, length, text, bytes, flags & WC_ERR_INVALID_CHARS, replaced)
                           : ToSingleByte(codePage, flags, wide, length, {text, bytes},
                                          defaultCharacter ? *defaultCharacter : '?', replaced);
    if (usedDefault) *usedDefault = replaced;
    return result;
}

int MulDiv(int number, int numerator, int denominator)
{
    if (denominator == 0) return -1;
    const LONGLONG product = static_cast<LONGLONG>(number) * numerator;
    const LONGLONG divisor = denominator;
    const bool negative = (product < 0) != (divisor < 0);
    const LONGLONG size = ((product < 0 ? -product : product) + (divisor < 0 ? -divisor : divisor) / 2) /
                          (divisor < 0 ? -divisor : divisor);
    return size > 0x7FFFFFFF ? -1 : static_cast<int>(negative ? -size : size);
}
