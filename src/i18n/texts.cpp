// The conversions and the lookup by English wording.
#include "src/i18n/texts.h"

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "platform/code_pages.h"
#include "src/i18n/string_table.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kQueryLength = 255; // characters of the longest English text that is looked up

WideText NewText(size_t units)
{
    return WideText(static_cast<WCHAR*>(std::malloc(units * sizeof(WCHAR))));
}

// Turns every conversion "%from" of a format into "%to".
void ReplaceConversion(WCHAR* format, WCHAR from, WCHAR to)
{
    for (; *format; ++format) {
        if (format[0] == '%' && format[1] == from) format[1] = to;
    }
}

// False when the text is too long or has a character beyond ISO 8859-1.
bool ToLatin1(const WCHAR* text, char (&converted)[kQueryLength + 1])
{
    BOOL replaced = FALSE;
    return lstrlenW(text) <= kQueryLength &&
           WideCharToMultiByte(kLatin1CodePage, WC_NO_BEST_FIT_CHARS, text, -1, converted, sizeof converted, nullptr,
                               &replaced) > 0 &&
           !replaced;
}

} // namespace

WideText CopyWideFromUtf8(const char* text)
{
    const size_t bytes = std::strlen(OrEmpty(text)) + 1;
    WideText wide = NewText(bytes);
    if (!wide) return nullptr;
    const bool convertible = bytes <= INT_MAX;
    if (!convertible ||
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, OrEmpty(text), static_cast<int>(bytes), wide.get(),
                            static_cast<int>(bytes)) == 0)
        wide[0] = 0;
    return wide;
}

WideText CopyWideString(const WCHAR* text)
{
    const size_t units = static_cast<size_t>(lstrlenW(OrEmpty(text))) + 1;
    WideText copy = NewText(units);
    if (copy) std::memcpy(copy.get(), OrEmpty(text), units * sizeof(WCHAR));
    return copy;
}

WideText CopyFormattedString(const WCHAR* format, ...)
{
    const WideText portable = CopyWideString(format);
    if (portable) {
        ReplaceConversion(portable.get(), 's', 'S'); // before the next one makes new "%s"
        ReplaceConversion(portable.get(), '@', 's');
    }
    const WCHAR* const usable = portable ? portable.get() : OrEmpty(format);

    va_list arguments, measured;
    va_start(arguments, format);
    va_copy(measured, arguments);
    const int length = _vscwprintf(usable, measured);
    va_end(measured);
    WideText text = length < 0 ? nullptr : NewText(static_cast<size_t>(length) + 1);
    if (text) {
        _vsnwprintf(text.get(), static_cast<size_t>(length), usable, arguments);
        text[static_cast<size_t>(length)] = 0;
    }
    va_end(arguments);
    return text;
}

WideText CFCopyLocalizedString(const WCHAR* text, const WCHAR*)
{
    Trace(TEXT("CFCopyLocalizedString: %s\n"), OrEmpty(text));
    char query[kQueryLength + 1];
    if (!ToLatin1(OrEmpty(text), query)) {
        Trace(TEXT("Error creating cstring\n"));
        return CopyWideString(text);
    }
    const FoundText found = FindDefaultString(query, 1);
    const char* const translation = found.Get();
    Trace(TEXT("Translation = %S\n"), translation);
    // A miss gives the query back, which is ISO 8859-1 and not UTF-8 like the table's texts.
    return translation == query ? CopyWideString(text) : CopyWideFromUtf8(translation);
}

} // namespace tintwerk
