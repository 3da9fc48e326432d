// What happens at once when the user touches a control of a document page. Everything else waits until the
// page is applied.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// The event number is the id of the control that the user touched; numbers without a reaction do nothing.
void HandlePageEvent(SheetContext& context, int event);

} // namespace tintwerk
