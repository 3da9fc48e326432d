#include "src/bindings/current_values.h"

namespace tintwerk {

CurrentValues InitialValues()
{
    CurrentValues values{};
    for (const ControlBinding& slider : kSliderTable)
        values.sliders[static_cast<size_t>(slider.index)] = slider.initialValue;
    return values;
}

CurrentValues& Current()
{
    static CurrentValues values = InitialValues();
    return values;
}

} // namespace tintwerk
