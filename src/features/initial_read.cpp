#include "src/features/initial_read.h"

#include "src/bindings/current_values.h"
#include "src/bindings/number_fields.h"
#include "src/features/borderless_list.h"
#include "src/features/feature_access.h"
#include "src/features/option_lists.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

void ReadSliders(SheetContext& context)
{
    for (size_t row = 0; row < kSliderTable.size(); ++row) {
        const ControlBinding& slider = kSliderTable[row];
        SharedValue<int>& current = Current().sliders[row];
        int value = 0;
        if (getPPDOptionSV(context, slider.keyword, &value, nullptr, 0) == S_OK)
            current = value;
        else
            value = current;
        context.sliders.initialPositions[row] = PositionOf(slider, value);
    }
}

void ReadCheckBoxes(SheetContext& context)
{
    if (!context.core.helper) return; // nobody to ask: the boxes stay as they are
    for (size_t row = 0; row < kCheckBoxTable.size(); ++row) {
        if (!IsPpdFeature(kCheckBoxTable[row])) continue;
        int value = 0;
        const HRESULT result = getPPDOptionSV(context, kCheckBoxTable[row].keyword, &value, nullptr, 0);
        Current().checkBoxes[row] = result == S_OK ? value : kCheckBoxMissing;
    }
}

// A part that cannot be read counts 0.
int ReadNumberPart(const SheetContext& context, const char* feature)
{
    int value = 0;
    return getPPDOptionSV(context, feature, &value, nullptr, 0) == S_OK ? value : 0;
}

void ReadNumberFields(SheetContext& context)
{
    for (size_t row = 0; row < kNumberFieldTable.size(); ++row) {
        const NumberFieldBinding& field = kNumberFieldTable[row];
        NumberParts parts{};
        parts.rest = ReadNumberPart(context, RestFeature(field).name);
        parts.coarse = ReadNumberPart(context, field.keyword);
        context.numberFields.values[row] = JoinNumber(field, parts);
    }
}

} // namespace

HRESULT InitPPDSettings(SheetContext& context)
{
    if (const HRESULT result = getPPDComboOptions(context); result != S_OK) return result;
    Trace(TEXT("*** create BORDERLESS list***\n"));
    CreateBorderlessList(context);
    ReadSliders(context);
    ReadCheckBoxes(context);
    ReadNumberFields(context);
    return S_OK;
}

} // namespace tintwerk
