// The activation context in which every page of ours is created, so that its controls are those of version 6.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// Lets a page be created in the module's activation context, which the first page of the process makes. A
// page comes up without it when it cannot be made, and the next page tries again.
void UseActivationContext(PropertySheetPage& page);

} // namespace tintwerk
