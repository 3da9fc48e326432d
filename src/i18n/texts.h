// Text conversions and the lookup for texts that the code carries in English. Every returned text is a new
// allocation that the caller owns; null means that memory is short.
#pragma once

#include "platform/owners.h"
#include "platform/win32.h"

namespace tintwerk {

// A UTF-8 text (null counts as empty) in 16 bits; empty when it is not valid UTF-8. The buffer has as many
// units as the text has bytes.
WideText CopyWideFromUtf8(const char* text);

// A copy of a 16-bit text; null counts as empty.
WideText CopyWideString(const WCHAR* text);

// Formats in the portable notation: "%s" takes an 8-bit and "%@" a 16-bit string.
WideText CopyFormattedString(const WCHAR* format, ...);

// The text in the sheet's language for an English text; the comment is for translators and is ignored. A text
// that is not in the table, or too long to be looked up, comes back as a copy.
WideText CFCopyLocalizedString(const WCHAR* text, const WCHAR* comment);

} // namespace tintwerk
