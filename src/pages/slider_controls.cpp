#include "src/pages/slider_controls.h"

#include <algorithm>

#include "src/bindings/sliders.h"
#include "src/features/control_access.h"
#include "src/i18n/texts.h"
#include "src/pages/page_controls.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// Label formats are portable printf formats of one integer.
void ShowValue(HWND label, const ControlBinding& slider, int position)
{
    const WideText format = CopyWideFromUtf8(slider.format);
    const WideText text =
        format ? CopyFormattedString(format.get(), DisplayValue(slider, position)) : nullptr;
    if (!text) return;
    SetWindowTextW(label, text.get());
    UpdateWindow(label);
}

} // namespace

void BindSlider(HWND page, SheetContext& context, int row)
{
    const ControlBinding& binding = kSliderTable[static_cast<size_t>(row)];
    const HWND slider = GetControlByID(page, binding.sliderId);
    const HWND label = binding.labelId ? GetControlByID(page, binding.labelId) : nullptr;
    context.sliders.windows[row] = slider;
    if (!slider) return;

    if (label) {
        SetPropW(label, PROP_CONTROL, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(row)));
        SetPropW(slider, PROP_CONTROL, label);
    }
    Trace(TEXT("UI:  SCROLL-TEXT-Ref = %d"), TraceNumber(label));
    SendMessageW(slider, TBM_SETRANGEMIN, TRUE, binding.minimum);
    SendMessageW(slider, TBM_SETRANGEMAX, TRUE, binding.maximum);
    // Not every trackbar moves its thumb with its range, but each does with its position: it comes from the
    // end.
    SendMessageW(slider, TBM_SETPOS, FALSE, binding.minimum);
    SetLogicalPosition(slider, context.sliders.initialPositions[row]);
    SetScrollValue(slider);
}

bool IsBoundSlider(const SheetContext& context, HWND window)
{
    return window && std::ranges::find(context.sliders.windows, window) != std::end(context.sliders.windows);
}

void SetScrollValue(HWND slider)
{
    const HWND label = static_cast<HWND>(GetPropW(slider, PROP_CONTROL));
    Trace(TEXT("UI:  SetScrollValue - CtrlProperty = %d"), TraceNumber(label));
    const HANDLE reference = label ? GetPropW(label, PROP_CONTROL) : nullptr;
    Trace(TEXT("UI:  SetScrollValue - CtrlRef = %d"), TraceNumber(reference));
    const int position = GetLogicalPosition(slider);
    Trace(TEXT("UI:  SetScrollValue - Value = %d"), position);

    const size_t row = reinterpret_cast<UINT_PTR>(reference);
    if (label && row < kSliderTable.size()) ShowValue(label, kSliderTable[row], position);
}

} // namespace tintwerk
