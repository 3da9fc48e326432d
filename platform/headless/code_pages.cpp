// Conversions between 8 and 16 bits: UTF-8 here, ISO 8859-1 for the names that the driver knows, and by the
// system's iconv the code pages of PPDs.
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "platform/code_pages.h"
#include "platform/refuse.h"

using tintwerk::Refuse;

namespace {

constexpr WCHAR kReplacement = 0xFFFD;

// Writes as long as there is room and counts in any case; without a buffer everything is only counted.
template <typename Char> struct Output
{
    Char* buffer;
    int size;
    int count = 0;
    bool full = false;

    // A character of several units goes in whole or not at all.
    void Put(const Char* units, int length)
    {
        if (size > 0 && (full || count + length > size)) {
            full = true;
            return;
        }
        if (size > 0) std::copy_n(units, length, buffer + count);
        count += length;
    }
    void Put(Char unit) { Put(&unit, 1); }

    int Finish(bool invalid = false) const
    {
        if (full) return Refuse(ERROR_INSUFFICIENT_BUFFER);
        return invalid ? Refuse(ERROR_NO_UNICODE_TRANSLATION) : count;
    }
};

struct Decoded
{
    unsigned character;
    int bytes;
    bool valid;
};

// One UTF-8 character. A broken sequence ends before the first byte that cannot continue it; a second byte
// that makes it too long, too large or half of a pair still belongs to it.
Decoded DecodeUtf8(const unsigned char* at, int left)
{
    const unsigned lead = *at;
    if (lead < 0x80) return {lead, 1, true};
    const int length = lead >= 0xC2 && lead < 0xE0   ? 2
                       : lead >= 0xE0 && lead < 0xF0 ? 3
                       : lead >= 0xF0 && lead < 0xF5 ? 4
                                                     : 1;
    if (length == 1) return {kReplacement, 1, false};
    unsigned character = lead & (0x7Fu >> length);
    for (int i = 1; i < length; ++i) {
        if (i == left || (at[i] & 0xC0) != 0x80) return {kReplacement, i, false};
        character = (character << 6) | (at[i] & 0x3F);
        const bool impossible =
            (length == 3 && (character < 0x20 || (character >= 0x360 && character < 0x380))) ||
            (length == 4 && (character < 0x10 || character >= 0x110));
        if (i == 1 && impossible) return {kReplacement, 2, false};
    }
    return {character, length, true};
}

int FromUtf8(const char* text, int bytes, WCHAR* wide, int units, bool strict)
{
    Output<WCHAR> output{wide, units};
    bool invalid = false;
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    for (int left = bytes; left > 0;) {
        const Decoded decoded = DecodeUtf8(at, left);
        invalid |= !decoded.valid;
        if (decoded.character >= 0x10000) {
            const WCHAR pair[] = {static_cast<WCHAR>(0xD7C0 + (decoded.character >> 10)),
                                  static_cast<WCHAR>(0xDC00 | (decoded.character & 0x3FF))};
            output.Put(pair, 2);
        } else {
            output.Put(static_cast<WCHAR>(decoded.character));
        }
        at += decoded.bytes;
        left -= decoded.bytes;
    }
    return output.Finish(invalid && strict);
}

void PutUtf8(Output<char>& output, unsigned c)
{
    const int length = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    char bytes[4];
    for (int i = length - 1; i > 0; --i, c >>= 6)
        bytes[i] = static_cast<char>(0x80 | (c & 0x3F));
    bytes[0] = static_cast<char>(length == 1 ? c : (0xF00u >> length) | c);
    output.Put(bytes, length);
}

int ToUtf8(const WCHAR* wide, int units, Output<char> output)
{
    for (int i = 0; i < units; ++i) {
        unsigned c = wide[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < units && wide[i + 1] >= 0xDC00 && wide[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (wide[++i] - 0xDC00u);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = kReplacement;
        }
        PutUtf8(output, c);
    }
    return output.Finish();
}

// --- Other code pages

struct CodePage
{
    UINT number;
    const char* name; // as the system calls it
    bool singleByte;
};
constexpr CodePage kCodePages[] = {
    {932, "CP932", false},       {936, "CP936", false},       {949, "CP949", false},
    {950, "BIG5", false},        {20932, "EUC-JP", false},    {1252, "CP1252", true},
    {28592, "ISO-8859-2", true}, {28599, "ISO-8859-9", true}, {10000, "MACINTOSH", true},
};

struct CloseDescriptor
{
    using pointer = iconv_t;
    void operator()(iconv_t descriptor) const { iconv_close(descriptor); }
};

// The descriptor of this thread for a code page: the one that was used last stays open. Null when the system
// lacks it.
iconv_t DescriptorOf(const CodePage& page)
{
    thread_local const CodePage* current = nullptr;
    thread_local std::unique_ptr<iconv_t, CloseDescriptor> descriptor;
    if (current != &page) {
        const iconv_t opened = iconv_open("UTF-16LE", page.name);
        descriptor.reset(opened == reinterpret_cast<iconv_t>(-1) ? nullptr : opened);
        current = &page;
    }
    return descriptor.get();
}

// A byte that a single-byte page has no character for stands for itself, as in the system's tables.
int FromCodePage(const CodePage& page, const char* text, int bytes, WCHAR* wide, int units, bool strict)
{
    const iconv_t descriptor = DescriptorOf(page);
    if (!descriptor) return Refuse(ERROR_INVALID_PARAMETER);
    iconv(descriptor, nullptr, nullptr, nullptr, nullptr);
    Output<WCHAR> output{wide, units};
    bool invalid = false;
    char* at = const_cast<char*>(text); // only read
    for (auto left = static_cast<std::size_t>(bytes); left > 0;) {
        WCHAR chunk[64];
        char* end = reinterpret_cast<char*>(chunk);
        std::size_t room = sizeof chunk;
        const bool refused =
            iconv(descriptor, &at, &left, &end, &room) == static_cast<std::size_t>(-1) && errno != E2BIG;
        for (const WCHAR* unit = chunk; unit < reinterpret_cast<const WCHAR*>(end); ++unit)
            output.Put(*unit);
        if (!refused) continue;
        output.Put(page.singleByte ? static_cast<unsigned char>(*at) : kReplacement);
        invalid |= !page.singleByte;
        ++at;
        --left;
    }
    return output.Finish(invalid && strict);
}

int ToLatin1(const WCHAR* wide, int units, Output<char> output, LPBOOL usedDefault)
{
    bool replaced = false;
    for (int i = 0; i < units; ++i) {
        replaced |= wide[i] > 0xFF;
        output.Put(wide[i] > 0xFF ? '?' : static_cast<char>(wide[i]));
    }
    if (usedDefault) *usedDefault = replaced;
    return output.Finish();
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int bytes, LPWSTR wide, int units)
{
    const auto* const page = std::ranges::find(kCodePages, codePage, &CodePage::number);
    if (!text || bytes == 0 || units < 0 || (units > 0 && !wide) ||
        (codePage != CP_UTF8 && page == std::end(kCodePages)))
        return Refuse(ERROR_INVALID_PARAMETER);
    if (flags & ~MB_ERR_INVALID_CHARS) return Refuse(ERROR_INVALID_FLAGS);
    const int length = bytes < 0 ? lstrlenA(text) + 1 : bytes;
    return codePage == CP_UTF8 ? FromUtf8(text, length, wide, units, flags)
                               : FromCodePage(*page, text, length, wide, units, flags);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR text, int bytes, LPCSTR,
                        LPBOOL usedDefault)
{
    if (!wide || units == 0 || bytes < 0 || (bytes > 0 && !text) ||
        (codePage == CP_UTF8 ? usedDefault != nullptr : codePage != tintwerk::kLatin1CodePage))
        return Refuse(ERROR_INVALID_PARAMETER);
    if (flags & ~(codePage == CP_UTF8 ? 0u : WC_NO_BEST_FIT_CHARS)) return Refuse(ERROR_INVALID_FLAGS);
    const int length = units < 0 ? lstrlenW(wide) + 1 : units;
    return codePage == CP_UTF8 ? ToUtf8(wide, length, {text, bytes})
                               : ToLatin1(wide, length, {text, bytes}, usedDefault);
}
