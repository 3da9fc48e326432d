#include "src/bindings/current_values.h"

#include <utility>

namespace tintwerk {

namespace {

template <size_t... row> constexpr CurrentValues FreshValues(std::index_sequence<row...>)
{
    return {{kSliderTable[row].initialValue...}, {}};
}

constexpr std::make_index_sequence<kSliderRows> kRows;

constinit CurrentValues values = FreshValues(kRows);

} // namespace

CurrentValues InitialValues()
{
    return FreshValues(kRows);
}

CurrentValues& Current()
{
    return values;
}

} // namespace tintwerk
