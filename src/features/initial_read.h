// The one read of all PPD selections when a document sheet opens, before any page exists.
#pragma once

#include <span>
#include <string_view>

#include "src/records/sheet_context.h"

namespace tintwerk {

// Page size statuses: above 0, the selection number of the borderless twin.
inline constexpr int kBorderlessTwin = 0;      // hidden: reached through its normal size
inline constexpr int kNormalSize = -1;         // without borderless twin
inline constexpr int kBorderlessOnlySize = -2; // borderless without a normal size
inline constexpr int kCustomSize = -3;

// Reads option lists, borderless page sizes, sliders, check boxes and number fields. Returns 0, or the status
// of getPPDComboOptions when that fails, in which case nothing else is read.
HRESULT InitPPDSettings(SheetContext& context);

// Sets the status of each page size: one status per size, both in list order. Twins are found ignoring case.
void PairBorderlessSizes(std::span<const std::string_view> sizes, std::span<int> statuses);

// Pairs the page sizes with their borderless twins, hides the twins and turns a selected twin into its normal
// size.
void CreateBorderlessList(SheetContext& context);

} // namespace tintwerk
