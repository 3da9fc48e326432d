#include "src/bindings/current_values.h"

namespace tintwerk {

constexpr CurrentValues FreshValues()
{
    CurrentValues values{};
    for (const ControlBinding& slider : kSliderTable)
        values.sliders[static_cast<size_t>(slider.index)] = slider.initialValue;
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
