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
    WCHAR* const line =
        static_cast<WCHAR*>(HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, (kLineLength + 1) * sizeof(WCHAR)));
    if (!line) return 0;

    va_list arguments;
    va_start(arguments, format);
    // The runtime leaves a line that fills the buffer unterminated.
    const int length = _vsnwprintf(line, kLineLength, format, arguments);
    va_end(arguments);
    line[length < 0 || static_cast<SIZE_T>(length) > kLineLength ? kLineLength
                                                                 : static_cast<SIZE_T>(length)] = 0;

    OutputDebugStringW(line);
    HeapFree(GetProcessHeap(), 0, line);
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
