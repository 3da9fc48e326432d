// The values of the binding tables' rows that change at run time. They belong to the process, not to a sheet:
// two sheets open at once share them, on whatever threads, and the last one read or applied decides.
#pragma once

#include <array>
#include <utility>

#include "src/bindings/check_boxes.h"
#include "src/bindings/sliders.h"
#include "src/records/shared_value.h"

namespace tintwerk {

inline constexpr int kCheckBoxMissing = -1; // the feature is not in the PPD: the check box is hidden

using SliderValues = std::array<SharedValue<int>, kSliderRows>;

template <size_t... row> constexpr SliderValues InitialSliderValues(std::index_sequence<row...>)
{
    return {kSliderTable[row].initialValue...};
}

struct CurrentValues
{
    // Of each slider feature's selected option, as last read.
    SliderValues sliders = InitialSliderValues(std::make_index_sequence<kSliderRows>());
    std::array<SharedValue<int>, kCheckBoxRows> checkBoxes{}; // kCheckBoxMissing, 0 off, any other value on
};

inline CurrentValues& Current()
{
    static constinit CurrentValues values{};
    return values;
}

} // namespace tintwerk
