// The values of the binding tables' rows that change at run time. They belong to the process, not to a sheet:
// two sheets open at once share them, on whatever threads, and the last one read or applied decides.
#pragma once

#include <array>

#include "src/bindings/check_boxes.h"
#include "src/bindings/sliders.h"
#include "src/records/shared_value.h"

namespace tintwerk {

inline constexpr int kCheckBoxMissing = -1; // the feature is not in the PPD: the check box is hidden

struct CurrentValues
{
    std::array<SharedValue<int>, kSliderRows>
        sliders; // of each slider feature's selected option, as last read
    std::array<SharedValue<int>, kCheckBoxRows> checkBoxes; // kCheckBoxMissing, 0 off, any other value on
};

CurrentValues& Current();

// The state of a freshly loaded module: the sliders' fallbacks, every check box off.
CurrentValues InitialValues();

} // namespace tintwerk
