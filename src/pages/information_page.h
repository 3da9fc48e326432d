// The information page of the printer properties: pictures and the versions of the driver's modules.
#pragma once

#include "src/records/sheet_record.h"

namespace tintwerk {

void InitialiseInformationPage(HWND page, const SheetRecord& record);

// Gives the pictures back when the page is destroyed.
void EndInformationPage(HWND page);

} // namespace tintwerk
