#include "src/trace/trace.h"

#include <cstdarg>
#include <cstring>

#include "platform/owners.h"

namespace tintwerk {

namespace {

constexpr SIZE_T kLineLength = 260;

} // namespace

int Trace(const WCHAR* format, ...)
{
    if (!format) return 0;
    // The runtime leaves a line that fills its room unterminated: the unit behind it stays zero.
    const HeapBlock<WCHAR> line(GetProcessHeap(), (kLineLength + 1) * sizeof(WCHAR));
    if (!line) return 0;

    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(line.Get(), kLineLength, format, arguments);
    va_end(arguments);
    OutputDebugStringW(line.Get());
    return 1;
}

void TraceText(const char* text)
{
    const int bytes = static_cast<int>(std::strlen(text)) + 1;
    const HeapBlock<WCHAR> wide(GetProcessHeap(), static_cast<SIZE_T>(bytes) * sizeof(WCHAR));
    if (wide && MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, wide.Get(), bytes) > 0)
        Trace(TEXT("%s"), wide.Get());
}

} // namespace tintwerk
