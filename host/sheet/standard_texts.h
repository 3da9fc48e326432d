// Texts that the system's common property sheet UI shows for string numbers, in English and German, with the
// keywords under which the core driver knows the standard layout items. Used where the host draws option
// items itself.
#pragma once

#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

struct StandardText
{
    int number;               // IDS_CPSUI_...
    std::string_view keyword; // of the core driver's feature or option; empty for a text without one
    const WCHAR* english;
    const WCHAR* german;
};

// Of a text's string number; null for a number that is not known here, and for a text itself.
const StandardText* FindStandardText(const WCHAR* textOrNumber);

// What an item's text stands for: a string number, or a pointer to a text (never null).
const WCHAR* OptionText(const WCHAR* textOrNumber, bool german);

} // namespace tintwerk
