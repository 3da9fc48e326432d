// Text of the headless platform: lengths, copies and comparisons.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "platform/refuse.h"

namespace {

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

template <typename Char> int CompareIgnoringCase(const Char* a, const Char* b)
{
    for (;; ++a, ++b) {
        const unsigned left = Upper(Unit(*a)), right = Upper(Unit(*b));
        if (left != right) return left < right ? -1 : 1;
        if (left == 0) return 0;
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

} // namespace

int lstrlenA(LPCSTR text)
{
    return text ? static_cast<int>(std::strlen(text)) : 0;
}
int lstrlenW(LPCWSTR text)
{
    return text ? static_cast<int>(std::char_traits<WCHAR>::length(text)) : 0;
}
int lstrcmpiA(LPCSTR a, LPCSTR b)
{
    return CompareIgnoringCase(a, b);
}
int lstrcmpiW(LPCWSTR a, LPCWSTR b)
{
    return CompareIgnoringCase(a, b);
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

int CompareStringOrdinal(LPCWSTR a, int lengthA, LPCWSTR b, int lengthB, BOOL ignoreCase)
{
    if (!a || !b) return tintwerk::Refuse(ERROR_INVALID_PARAMETER);
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
