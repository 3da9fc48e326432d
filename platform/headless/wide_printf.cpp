// The wide printf dialect of the system's runtime, as far as the diagnostic trace and the page texts speak
// it: "%s" takes 16-bit and "%S" 8-bit text, both with a precision; "%d" and "%x" with "+" and "#"; pointers
// are sixteen upper-case digits; a null text reads "(null)". There are no widths and no other numbers.
// Nothing is allocated, and never is more written than the buffer holds.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/win32.h"

namespace {

class Formatter
{
public:
    // Writes as much as there is room for.
    Formatter(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments)
        : buffer_(buffer), size_(size), at_(format)
    {
        va_copy(arguments_, arguments);
    }
    ~Formatter() { va_end(arguments_); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    // The length of the whole text.
    std::size_t Run()
    {
        while (*at_) {
            if (*at_ == u'%' && at_[1])
                Convert();
            else
                Put(*at_++);
        }
        return count_;
    }

private:
    void Put(WCHAR c)
    {
        if (count_ < size_) buffer_[count_] = c;
        ++count_;
    }

    bool Skip(WCHAR c)
    {
        if (*at_ != c) return false;
        ++at_;
        return true;
    }

    void Convert()
    {
        ++at_;
        bool plus = false, prefix = false;
        while (*at_ == u'+' || *at_ == u'#')
            (*at_++ == u'+' ? plus : prefix) = true;
        int precision = -1;
        if (Skip(u'.')) {
            for (precision = 0; *at_ >= u'0' && *at_ <= u'9'; ++at_)
                precision = std::min(precision, 100000) * 10 + (*at_ - u'0');
        }
        Skip(u'l'); // 32 bits, as without it
        const WCHAR conversion = *at_;
        if (*at_) ++at_;
        switch (conversion) {
        case u's':
            return Text(va_arg(arguments_, const WCHAR*), precision);
        case u'S':
            return Text(va_arg(arguments_, const char*), precision);
        case u'd':
            return Signed(va_arg(arguments_, int), plus);
        case u'x':
            return Hexadecimal(va_arg(arguments_, unsigned), prefix);
        case u'p':
            return Digits(reinterpret_cast<ULONG_PTR>(va_arg(arguments_, void*)), 16, "0123456789ABCDEF", 16);
        default:
            if (conversion) Put(conversion);
        }
    }

    template <typename Char> void Text(const Char* text, int precision)
    {
        if (!text) return Text("(null)", precision);
        for (int i = 0; i != precision && text[i]; ++i)
            Put(sizeof(Char) == 1 ? static_cast<unsigned char>(text[i]) : static_cast<WCHAR>(text[i]));
    }

    void Signed(int value, bool plus)
    {
        if (value < 0 || plus) Put(value < 0 ? u'-' : u'+');
        Digits(static_cast<ULONGLONG>(std::abs(static_cast<LONGLONG>(value))), 10, "0123456789", 1);
    }

    void Hexadecimal(unsigned value, bool prefix)
    {
        if (prefix && value) Text("0x", -1);
        Digits(value, 16, "0123456789abcdef", 1);
    }

    void Digits(ULONGLONG value, unsigned base, const char* alphabet, int atLeast)
    {
        char digits[24];
        int length = 0;
        for (; value || length < atLeast; value /= base)
            digits[length++] = alphabet[value % base];
        while (length > 0)
            Put(static_cast<WCHAR>(digits[--length]));
    }

    WCHAR* buffer_;
    std::size_t size_;
    std::size_t count_ = 0;
    const WCHAR* at_;
    va_list arguments_;
};

} // namespace

int _vsnwprintf(WCHAR* buffer, std::size_t size, const WCHAR* format, va_list arguments)
{
    const std::size_t count = Formatter(buffer, buffer ? size : 0, format, arguments).Run();
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
    const std::size_t count =
        std::min(Formatter(buffer, kLongest - 1, format, arguments).Run(), kLongest - 1);
    va_end(arguments);
    buffer[count] = 0;
    return static_cast<int>(count);
}
