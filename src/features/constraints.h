// Keeps popups and controls consistent with the PPD's constraints and with the media's abilities.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

// Refills the popup of kPopupMediaType or kPopupResolution without the options that the core driver's
// constraints forbid.
void CheckConstraints(SheetContext& context, int row);

// Refills the popup of kPopupIntent or kPopupColorModel without the options that the media mode does not
// allow.
void checkAvailabilityforMenus(SheetContext& context, int row);

// Enables, shows and relabels what depends on the media mode. controlId is the control whose change caused
// the call (0 for none): the media type popup brings the warning about incomplete profiles.
void UpdateMediaModeControls(SheetContext& context, int controlId);

// Shows the colour space popup that fits the selected colour model.
void UpdateColorModeControls(SheetContext& context);

// Enables or disables the four colour correction sliders.
void EnableColorControls(SheetContext& context, bool enable);

} // namespace tintwerk
