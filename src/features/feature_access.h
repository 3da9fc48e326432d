// The one place that talks to the core driver about a single feature: reads its selected option, selects
// another one. Without a core helper both fail without a call.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Of the core driver's answer about one feature or option.
inline constexpr DWORD kReplyBytes = (kLongestName + 1) * sizeof(WCHAR);

// The core driver's answer to the question which option of a feature is selected. Both texts point into the
// reply; null when the answer names no feature, and an option that is missing is empty.
struct SelectedOption
{
    char reply[kReplyBytes];
    const char* feature;
    const char* option;
};

// Asks for one feature (without asterisk). Returns the status of the core driver; E_FAIL without a call when
// there is no core helper or the feature is too long for a request.
HRESULT ReadSelectedOption(const CoreArea& core, const char* feature, SelectedOption& selected);

// Copies a text into a buffer of size bytes (at least 1), cuts what does not fit and fills the rest with
// zeros.
void CopyKeyword(char* buffer, int size, const char* keyword);

// Selects an option. The feature may carry a leading "*". Returns the status of the core driver, or -1 when
// feature and option are too long for one request (nothing is sent then).
int SetOption(const SheetContext& context, const char* feature, const char* option);

// Reads the selected option of a feature (without asterisk). With a buffer of size bytes (at least 1) the
// keyword is copied into it and value is not touched; without one the keyword is turned into a number in
// *value. Returns 0 or E_FAIL, which callers take as "not available".
HRESULT getPPDOptionSV(const SheetContext& context, const char* feature, int* value, char* buffer, int size);

} // namespace tintwerk
