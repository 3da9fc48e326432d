// What a number field makes of typed text, and how it shows a value.
#include "src/pages/number_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr NumberFieldBinding Field(int minimum, int maximum, int divisor)
{
    return {kScreenPrintingPage, "", 1, 2, minimum, maximum, 1, 1, divisor, 1};
}

TEST(NumberText, IsReadAsADecimalNumberFromItsStart)
{
    // clang-format off
    const struct { const char* text; std::optional<int> value; } cases[] = { // in tenths, from -1000 to 1500
        {"45.5", 455}, {"45", 450}, {"  45.5 lpi", 455}, {"\t+7", 70}, {"-3.5", -35}, {"12,5", 120}, {".5", 5},
        {"5.", 50}, {"-.05", -1}, {"0.05", 1}, {"0.04999999999999999999", 0}, {"1e2", 10}, {"0x10", 0},
        {"200", 1500}, {"-200", -1000}, {"99999999999999999999.5", 1500}, {"-99999999999999999999", -1000},
        {"", {}}, {"  ", {}}, {"x5", {}}, {"-", {}}, {".", {}}, {"- 5", {}}, {"\xB5", {}},
    };
    // clang-format on
    for (const auto& row : cases) {
        const Text text(row.text, row.text + std::strlen(row.text));
        EXPECT_EQ(row.value, ReadNumber(text, Field(-1000, 1500, 10))) << row.text;
    }
}

TEST(NumberText, ShowsAsManyDecimalsAsTheDivisorAsks)
{
    // clang-format off
    const struct { int divisor, value; const WCHAR* text; } cases[] = {
        {10, 455, TEXT("45.5")}, {10, 0, TEXT("0.0")}, {10, 7, TEXT("0.7")}, {10, -35, TEXT("-3.5")},
        {1, 0, TEXT("0")}, {1, -12, TEXT("-12")}, {2, 3, TEXT("1.5")}, {1000, 1234, TEXT("1.234")},
        {100, 5, TEXT("0.050")}, {10, 2147483647, TEXT("214748364.7")},
        {10, -2147483647 - 1, TEXT("-214748364.8")},
    };
    // clang-format on
    for (const auto& row : cases)
        EXPECT_EQ(Text(row.text), FormatNumber(row.value, Field(0, 1, row.divisor)).units) << row.value;
}

TEST(NumberText, IsReadBackAsItIsShown)
{
    for (const NumberFieldBinding& field : kNumberFieldTable) {
        for (int value = field.minimum; value <= field.maximum; ++value)
            ASSERT_EQ(value, ReadNumber(FormatNumber(value, field).units, field));
    }
}

} // namespace
} // namespace tintwerk
