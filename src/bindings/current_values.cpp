#include "src/bindings/current_values.h"

namespace tintwerk {

constexpr CurrentValues FreshValues()
{
    CurrentValues values{};
    for (size_t row = 0; row < kSliderTable.size(); ++row)
        values.sliders[row] = kSliderTable[row].initialValue;
    return values;
}

namespace {

constinit CurrentValues values = FreshValues();

}

CurrentValues InitialValues()
{
    return FreshValues();
}

CurrentValues& Current()
{
    return values;
}

} // namespace tintwerk
