// Number fields between their text and internal units (the displayed number times the row's divisor). Pure,
// and the same in every locale: the decimal separator is a full stop.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/win32.h"
#include "src/bindings/number_fields.h"

namespace tintwerk {

constexpr int ClampToField(const NumberFieldBinding& field, long long value)
{
    return static_cast<int>(std::clamp<long long>(value, field.minimum, field.maximum));
}

// The decimal number at the start of a text, after blanks and with an optional sign and fraction, in internal
// units: rounded half away from zero and clamped to the field's range. What follows the number is ignored; an
// exponent is not part of it.
constexpr std::optional<int> ReadNumber(std::basic_string_view<WCHAR> text, const NumberFieldBinding& field)
{
    constexpr long long kHuge = 4000000000; // beyond every range; its product with a divisor fits 64 bits
    const auto isDigit = [](WCHAR unit) { return unit >= '0' && unit <= '9'; };
    const auto isBlank = [](WCHAR unit) { return unit == ' ' || (unit >= '\t' && unit <= '\r'); };

    size_t at = 0;
    while (at < text.size() && isBlank(text[at]))
        ++at;
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;

    bool found = false;
    long long whole = 0;
    for (; at < text.size() && isDigit(text[at]); ++at, found = true)
        whole = std::min(whole * 10 + (text[at] - '0'), kHuge);
    // Digits of the fraction beyond the ninth cannot change what is rounded.
    long long fraction = 0;
    long long one = 1;
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && isDigit(text[at]); ++at, found = true) {
            if (one == 1000000000) continue;
            fraction = fraction * 10 + (text[at] - '0');
            one *= 10;
        }
    }
    if (!found) return std::nullopt;
    const long long size = whole * field.divisor + (fraction * field.divisor + one / 2) / one;
    return ClampToField(field, negative ? -size : size);
}

// The text of a value: an integer, or with one or three decimals, as the row's divisor asks.
struct NumberText
{
    WCHAR units[32];
};

constexpr NumberText FormatNumber(int value, const NumberFieldBinding& field)
{
    const int decimals = field.divisor <= 1 ? 0 : field.divisor <= 10 ? 1 : 3;
    long long scale = 1;
    for (int decimal = 0; decimal < decimals; ++decimal)
        scale *= 10;
    const long long divisor = std::max(field.divisor, 1);
    const long long size = value < 0 ? -static_cast<long long>(value) : value;
    long long rest = (size * scale + divisor / 2) / divisor;

    WCHAR digits[32]{}; // last digit first
    int count = 0;
    for (; rest > 0 || count <= decimals; rest /= 10)
        digits[count++] = static_cast<WCHAR>('0' + rest % 10);

    NumberText text{};
    int length = 0;
    if (value < 0) text.units[length++] = '-';
    while (count > 0) {
        text.units[length++] = digits[--count];
        if (count == decimals && decimals > 0) text.units[length++] = '.';
    }
    return text;
}

} // namespace tintwerk
