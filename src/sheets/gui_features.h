// The PPD features that shape the pages themselves: GUI mode, OEM logo and screen printing. Read once while a
// document sheet opens.
#pragma once

#include "src/records/sheet_context.h"

namespace tintwerk {

inline constexpr int kLogoFileNameBytes = 256;

struct GuiFeatures
{
    int mode = 0; // 0 when the PPD has no GUI mode
    bool screenPrinting = false;
    char logoFileName[kLogoFileNameBytes] = {};
};

// What an option of halvGuiMode asks for: "oem3" is 3, "oem12" is 12. Any other option keeps the current
// mode.
constexpr int GuiModeOf(const char* option, int current)
{
    if (option[0] != 'o' || option[1] != 'e' || option[2] != 'm' || !option[3]) return current;
    const int mode = option[3] - '0';
    return option[4] ? 10 * mode + (option[4] - '0') : mode;
}

// The file that an option of halvGuiIcon names. Keywords cannot hold a path separator: the first "-" stands
// for it.
void CopyLogoFileName(char (&fileName)[kLogoFileNameBytes], const char* option);

// Defaults when there is no core helper or the core driver refuses.
GuiFeatures ReadGuiFeatures(const CoreArea& core);

} // namespace tintwerk
