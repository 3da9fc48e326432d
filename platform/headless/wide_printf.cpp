// The wide printf dialect of the system's runtime, as far as the diagnostic trace and the page texts speak it: "%s" takes
// 16-bit and "%S" 8-bit text, pointers are sixteen upper-case digits, a null text reads "(null)". There are no floating
// point numbers, octal numbers and widths from an argument. Nothing is allocated, and never is more written than the
// buffer holds.
#include <algorithm>
#include <cstring>
#include <string>

#include "platform/win32.h"

namespace {

struct Spec
{
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    enum class Size
    {
        Natural,
        Short,
        Long,
        Wide64
    } size = Size::Natural;
    WCHAR conversion = 0;
};

// Counts every character and keeps those for which there is room.
class Sink
{
public:
    Sink(WCHAR* buffer, std::size_t size) : buffer_(buffer), size_(size) {}

    void Put(WCHAR c)
    {
        if (count_ < size_) buffer_[count_] = c;
        ++count_;
    }
    void Fill(WCHAR c, int times)
    {
        for (; times > 0; --times)
            Put(c);
    }
    std::size_t Count() const { return count_; }

private:
    WCHAR* buffer_;
    std::size_t size_;
    std::size_t count_ = 0;
};

constexpr bool IsDigit(WCHAR c)
{
    return c >= u'0' && c <= u'9';
}

class Formatter
{
public:
    Formatter(Sink& sink, const WCHAR* format, va_list arguments) : sink_(sink), at_(format)
    {
        va_copy(arguments_, arguments);
    }
    ~Formatter() { va_end(arguments_); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    void Run()
    {
        while (*at_) {
            if (*at_ != u'%') {
                sink_.Put(*at_++);
            } else if (*++at_ == u'%') {
                sink_.Put(*at_++);
            } else {
                const Spec spec = ReadSpec();
                if (!spec.conversion) return;
                Convert(spec);
            }
        }
    }

private:
    int ReadNumber()
    {
        int number = 0;
        for (; IsDigit(*at_); ++at_)
            number = std::min(number, 100000000) * 10 + (*at_ - u'0');
        return number;
    }

    Spec ReadSpec()
    {
        Spec spec;
        for (;; ++at_) {
            switch (*at_) {
            case u'-':
                spec.left = true;
                continue;
            case u'+':
                spec.plus = true;
                continue;
            case u' ':
                spec.blank = true;
                continue;
            case u'#':
                spec.alternate = true;
                continue;
            case u'0':
                spec.zero = true;
                continue;
            default:
                break;
            }
            break;
        }
        spec.width = ReadNumber();
        if (*at_ == u'.') {
            ++at_;
            spec.precision = ReadNumber();
        }
        ReadSize(spec);
        spec.conversion = *at_;
        if (*at_) ++at_;
        return spec;
    }

    void ReadSize(Spec& spec)
    {
        for (;; ++at_) {
            if (*at_ == u'h') {
                spec.size = Spec::Size::Short;
            } else if (*at_ == u'l') {
                spec.size = spec.size == Spec::Size::Long ? Spec::Size::Wide64 : Spec::Size::Long;
            } else if (*at_ == u'w') {
                spec.size = Spec::Size::Long;
            } else {
                return;
            }
        }
    }

    void Convert(const Spec& spec)
    {
        switch (spec.conversion) {
        case u's':
            spec.size == Spec::Size::Short ? Text(spec, va_arg(arguments_, const char*))
                                           : Text(spec, va_arg(arguments_, const WCHAR*));
            return;
        case u'S':
            spec.size == Spec::Size::Long ? Text(spec, va_arg(arguments_, const WCHAR*))
                                          : Text(spec, va_arg(arguments_, const char*));
            return;
        case u'c':
        case u'C':
            Character(spec);
            return;
        case u'd':
        case u'i':
            Signed(spec);
            return;
        case u'u':
        case u'x':
        case u'X':
            Integer(spec, Unsigned(spec), false);
            return;
        case u'p':
            Pointer(spec);
            return;
        case u'%':
            return;
        default:
            sink_.Put(spec.conversion);
            return;
        }
    }

    template <typename Char> void Text(const Spec& spec, const Char* text)
    {
        if (!text) return Text(spec, "(null)");
        int length = 0;
        while ((spec.precision < 0 || length < spec.precision) && text[length])
            ++length;
        Padded(spec, text, length);
    }

    void Character(const Spec& spec)
    {
        const int argument = va_arg(arguments_, int);
        const bool narrow =
            spec.conversion == u'c' ? spec.size == Spec::Size::Short : spec.size != Spec::Size::Long;
        const WCHAR c = static_cast<WCHAR>(narrow ? argument & 0xFF : argument);
        Padded(spec, &c, 1);
    }

    ULONGLONG Unsigned(const Spec& spec)
    {
        if (spec.size == Spec::Size::Wide64) return va_arg(arguments_, ULONGLONG);
        const unsigned value = va_arg(arguments_, unsigned);
        return spec.size == Spec::Size::Short ? value & 0xFFFFu : value;
    }

    void Signed(const Spec& spec)
    {
        LONGLONG value = 0;
        if (spec.size == Spec::Size::Wide64) {
            value = va_arg(arguments_, LONGLONG);
        } else {
            value = va_arg(arguments_, int);
            if (spec.size == Spec::Size::Short) value = static_cast<SHORT>(value);
        }
        Integer(spec, value < 0 ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value),
                value < 0);
    }

    void Pointer(Spec spec)
    {
        spec.conversion = u'X';
        spec.precision = 16;
        Integer(spec, reinterpret_cast<ULONG_PTR>(va_arg(arguments_, void*)), false);
    }

    void Integer(const Spec& spec, ULONGLONG value, bool negative)
    {
        const WCHAR conversion = spec.conversion;
        const bool isSigned = conversion == u'd' || conversion == u'i';
        const unsigned base = conversion == u'x' || conversion == u'X' ? 16 : 10;
        const char* const prefix = negative                 ? "-"
                                   : isSigned && spec.plus  ? "+"
                                   : isSigned && spec.blank ? " "
                                   : spec.alternate && value && base == 16
                                       ? (conversion == u'X' ? "0X" : "0x")
                                       : "";
        const char* const alphabet = conversion == u'X' ? "0123456789ABCDEF" : "0123456789abcdef";
        char digits[24];
        int length = 0;
        for (; value || (length == 0 && spec.precision != 0); value /= base)
            digits[length++] = alphabet[value % base];
        std::reverse(digits, digits + length);

        const int zeros = std::max(0, spec.precision - length);
        // A precision switches the zero flag of "%0.." off for numbers of its own width only.
        const bool zeroFill = spec.zero && !spec.left;
        const int used = static_cast<int>(std::strlen(prefix)) + zeros + length;
        if (!spec.left && !zeroFill) sink_.Fill(u' ', spec.width - used);
        for (const char* p = prefix; *p; ++p)
            sink_.Put(static_cast<WCHAR>(*p));
        if (zeroFill) sink_.Fill(u'0', spec.width - used);
        sink_.Fill(u'0', zeros);
        for (int i = 0; i < length; ++i)
            sink_.Put(static_cast<WCHAR>(digits[i]));
        if (spec.left) sink_.Fill(u' ', spec.width - used);
    }

    template <typename Char>
    void Padded(const Spec& spec, const Char* text, int length)
    {
        const int padding = spec.width - length;
        if (!spec.left) sink_.Fill(spec.zero ? u'0' : u' ', padding);
        for (int i = 0; i < length; ++i)
            sink_.Put(static_cast<WCHAR>(
                static_cast<std::make_unsigned_t<std::conditional_t<sizeof(Char) == 1, char, SHORT>>>(
                    text[i])));
        if (spec.left) sink_.Fill(u' ', padding);
    }

    Sink& sink_;
    const WCHAR* at_;
    va_list arguments_;
};

std::size_t Format(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments)
{
    Sink sink(buffer, size);
    Formatter(sink, format, arguments).Run();
    return sink.Count();
}

} // namespace

int _vsnwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments)
{
    const std::size_t count = Format(buffer, buffer ? size : 0, format, arguments);
    if (buffer && count < size) buffer[count] = 0;
    return buffer && count > size ? -1 : static_cast<int>(count);
}

int _snwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int count = _vsnwprintf(buffer, size, format, arguments);
    va_end(arguments);
    return count;
}

int _vscwprintf(const WCHAR* format, va_list arguments)
{
    return _vsnwprintf(nullptr, 0, format, arguments);
}

int wsprintfW(WCHAR* buffer, const WCHAR* format, ...)
{
    constexpr std::size_t kLongest = 1024; // the documented limit, terminator included
    va_list arguments;
    va_start(arguments, format);
    const std::size_t count = std::min(Format(buffer, kLongest - 1, format, arguments), kLongest - 1);
    va_end(arguments);
    buffer[count] = 0;
    return static_cast<int>(count);
}
