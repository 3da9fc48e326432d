// The one read of all PPD selections when a document sheet opens, before any page exists.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Reads option lists, borderless page sizes, sliders, check boxes and number fields. Returns 0, or the status
// of getPPDComboOptions when that fails, in which case nothing else is read.
HRESULT InitPPDSettings(SheetContext& context);

} // namespace tintwerk
