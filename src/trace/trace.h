// Diagnostic lines for the debugger output. Every room reports through these two functions; the lines are
// part of the driver's observable behaviour, so their texts are kept to the byte.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// Formats in the wide printf dialect of the platform's runtime ("%s" 16-bit, "%S" 8-bit text), cuts at 260
// characters and hands the line to OutputDebugStringW. Returns 1 when a line was emitted, 0 when the format
// is null or memory is short. A null text argument must be passed as an empty text: OrEmpty below.
int Trace(const WCHAR* format, ...);

// The same for a finished 8-bit UTF-8 text: it is shown as it stands, percent signs included. A text that is
// not UTF-8 emits nothing.
void TraceText(const char* text);

// An address or a handle as trace lines show it: the lower half.
inline int TraceNumber(const void* address)
{
    return static_cast<int>(reinterpret_cast<INT_PTR>(address));
}

// The text, or an empty one for none.
constexpr const char* OrEmpty(const char* text)
{
    return text ? text : "";
}
constexpr const WCHAR* OrEmpty(const WCHAR* text)
{
    return text ? text : TEXT("");
}

} // namespace tintwerk
