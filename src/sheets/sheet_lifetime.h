// Takes and gives back the records of one open document sheet.
#pragma once

#include "src/records/sheet_record.h"

namespace tintwerk {

// A zero-filled record in the plug-in heap of the parameter block, with its context and option buffer. Null
// when memory is short; nothing stays behind then.
SheetRecord* CreateSheet(OEMUIPSPARAM& parameters);

// Null is accepted. Option lists that were read into the context stay in the plug-in heap, which goes with
// the sheet.
void ReleaseSheet(SheetRecord* record);

} // namespace tintwerk
