// The PPD features that shape the pages themselves: GUI mode, OEM logo and screen printing. Read once while a
// document sheet opens.
#pragma once

#include "src/records/process_values.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

struct GuiFeatures
{
    GuiChoice choice{};
    bool screenPrinting = false;
};

// What an option of halvGuiMode asks for: "oem3" is 3, "oem12" is 12. Any other option keeps the current
// mode.
constexpr int GuiModeOf(const char* option, int current)
{
    if (option[0] != 'o' || option[1] != 'e' || option[2] != 'm' || !option[3]) return current;
    const int mode = option[3] - '0';
    return option[4] ? 10 * mode + (option[4] - '0') : mode;
}

// Defaults when there is no core helper or the core driver refuses.
GuiFeatures ReadGuiFeatures(const CoreArea& core);

} // namespace tintwerk
