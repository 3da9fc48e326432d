// The number fields of the screen printing page: an edit box with a spin control for a value that the PPD
// stores as two features, a coarse one and the rest. Values are in internal units: the displayed number times
// the decimal divisor.
#pragma once

#include <algorithm>
#include <array>

#include "src/records/page_kinds.h"
#include "src/records/sheet_context.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

struct NumberFieldBinding
{
    DWORD tabBit;
    const char* keyword; // PPD feature of the coarse part; the rest lies in the feature with "2" appended
    int editId;
    int spinId;
    int minimum; // internal units
    int maximum;
    int spinUnit;   // internal units per spin position
    int coarseStep; // granularity of the coarse feature
    int divisor; // internal units per displayed unit: 1 shows an integer, 2 to 10 one decimal, above 10 three
                 // decimals
    int increment; // internal units per spin click
};

// clang-format off
inline constexpr std::array<NumberFieldBinding, kNumberFieldRows> kNumberFieldTable{{
    // page               keyword            edit              spin                   min  max  unit coarse divisor increment
    {kScreenPrintingPage, "halvScreenLPI",   IDC_SCREEN_LPI,   IDC_SCREEN_LPI_SPIN,   100, 1500, 1,  2,     10,     2},
    {kScreenPrintingPage, "halvScreenAngle", IDC_SCREEN_ANGLE, IDC_SCREEN_ANGLE_SPIN,   0, 1800, 1,  5,     10,     5},
}};
// clang-format on

// The PPD feature of the rest: the field's keyword (at most 64 characters of it) with "2" appended.
struct RestFeature
{
    explicit constexpr RestFeature(const NumberFieldBinding& field)
    {
        size_t length = 0;
        for (; length < sizeof name - 2 && field.keyword[length]; ++length)
            name[length] = field.keyword[length];
        name[length] = '2';
    }
    char name[66] = {};
};

// A value split over its two PPD features.
struct NumberParts
{
    int coarse; // option of the feature itself, a multiple of the coarse step
    int rest;   // option of the feature with "2" appended, internal units
    bool operator==(const NumberParts&) const = default;
};

constexpr NumberParts SplitNumber(const NumberFieldBinding& field, int value)
{
    int coarse = value / field.divisor;
    int rest = value % field.divisor;
    if (field.coarseStep > 1) {
        rest += coarse % field.coarseStep * field.divisor;
        coarse -= coarse % field.coarseStep;
    }
    if (field.spinUnit != 1) rest -= rest % field.spinUnit;
    return {coarse, rest};
}

// What the two features say together. Options far outside the field's range end at the ends of 32 bits.
constexpr int JoinNumber(const NumberFieldBinding& field, NumberParts parts)
{
    const long long value = static_cast<long long>(parts.coarse) * field.divisor + parts.rest;
    return static_cast<int>(std::clamp<long long>(value, -2147483647LL - 1, 2147483647LL));
}

} // namespace tintwerk
