#include "host/ppd/encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/ppd/ppd_text.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

// The upper halves of the single-byte encodings, where they differ from ISO 8859-1.

// clang-format off
constexpr std::array<char16_t, 32> kWindows80{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
constexpr std::array<char16_t, 96> kLatin2A0{
    0x00A0, 0x0104, 0x02D8, 0x0141, 0x00A4, 0x013D, 0x015A, 0x00A7, 0x00A8, 0x0160, 0x015E, 0x0164, 0x0179, 0x00AD, 0x017D, 0x017B,
    0x00B0, 0x0105, 0x02DB, 0x0142, 0x00B4, 0x013E, 0x015B, 0x02C7, 0x00B8, 0x0161, 0x015F, 0x0165, 0x017A, 0x02DD, 0x017E, 0x017C,
    0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7, 0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F,
    0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};
constexpr std::array<char16_t, 128> kMac80{
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};
// clang-format on

char16_t CodeOf(unsigned char byte, PpdEncoding encoding)
{
    if (byte < 0x80) return byte;
    switch (encoding) {
    case PpdEncoding::MacStandard:
        return kMac80[byte - 0x80];
    case PpdEncoding::IsoLatin2:
        return byte < 0xA0 ? byte : kLatin2A0[byte - 0xA0];
    case PpdEncoding::IsoLatin5:
        switch (byte) {
        case 0xD0:
            return 0x011E;
        case 0xDD:
            return 0x0130;
        case 0xDE:
            return 0x015E;
        case 0xF0:
            return 0x011F;
        case 0xFD:
            return 0x0131;
        case 0xFE:
            return 0x015F;
        default:
            return byte;
        }
    default: // Files that say ISO 8859-1, or nothing, hold the Windows characters too.
        return byte < 0xA0 ? kWindows80[byte - 0x80] : byte;
    }
}

void AppendUtf8(std::string& text, char16_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | code >> 12);
        text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// The bytes between "<" and ">": pairs of digits, blanks between them. False when it is anything else.
bool AppendHex(std::string& bytes, std::string_view digits)
{
    std::string result;
    int high = -1;
    for (const char c : digits) {
        if (IsBlank(c) || IsLineEnd(c)) continue;
        const int digit = HexDigit(c);
        if (digit < 0) return false;
        if (high < 0) {
            high = digit;
        } else {
            result += static_cast<char>(high * 16 + digit);
            high = -1;
        }
    }
    if (high >= 0 || result.empty() || result.find('\0') != std::string::npos) return false;
    bytes += result;
    return true;
}

constexpr UINT kCodePages[] = {932, 936, 950, 949, 20932}; // of the encodings from ShiftJis on

// Nothing when the platform has no such code page, or the code page no such text.
std::optional<std::string> FromCodePage(const std::string& bytes, UINT codePage)
{
    std::basic_string<WCHAR> wide(bytes.size(), 0);
    const int units =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                            wide.data(), static_cast<int>(wide.size()));
    if (units <= 0) return std::nullopt;
    std::string text(static_cast<std::size_t>(units) * 3, 0);
    text.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, wide.data(), units, text.data(), static_cast<int>(text.size()), nullptr, nullptr)));
    return text;
}

bool IsAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

PpdEncoding PpdEncodingFromName(std::string_view name)
{
    struct Name
    {
        std::string_view name;
        PpdEncoding encoding;
    };
    static constexpr Name kNames[] = {
        {"ISOLatin1", PpdEncoding::IsoLatin1},
        {"ISOLatin2", PpdEncoding::IsoLatin2},
        {"ISOLatin5", PpdEncoding::IsoLatin5},
        {"WindowsANSI", PpdEncoding::WindowsAnsi},
        {"MacStandard", PpdEncoding::MacStandard},
        {"UTF-8", PpdEncoding::Utf8},
        {"JIS83-RKSJ", PpdEncoding::ShiftJis},
        {"MacJapanese", PpdEncoding::ShiftJis},
        {"ShiftJIS", PpdEncoding::ShiftJis},
        {"GB2312-80", PpdEncoding::Gbk},
        {"GBK", PpdEncoding::Gbk},
        {"BIG5", PpdEncoding::Big5},
        {"KSC5601-1992", PpdEncoding::Korean},
        {"EUC-JP", PpdEncoding::EucJp},
    };
    for (const Name& row : kNames) {
        if (row.name == name) return row.encoding;
    }
    return PpdEncoding::Unknown;
}

bool IsUtf8(std::string_view bytes)
{
    return bytes.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                                static_cast<int>(bytes.size()), nullptr, 0) > 0;
}

bool IsPlainPpdText(std::string_view raw)
{
    if (raw.empty()) return true;
    const auto blank = [](char c) { return IsBlank(c) || IsLineEnd(c); };
    if (blank(raw.front()) || blank(raw.back())) return false;
    return std::all_of(raw.begin(), raw.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '<'; });
}

std::string ResolvePpdHex(std::string_view raw)
{
    std::string bytes;
    while (!raw.empty()) {
        const std::size_t open = std::min(raw.find('<'), raw.size());
        bytes += raw.substr(0, open);
        raw.remove_prefix(open);
        if (raw.empty()) break;
        const std::size_t close = raw.find('>');
        if (close != std::string_view::npos && AppendHex(bytes, raw.substr(1, close - 1))) {
            raw.remove_prefix(close + 1);
        } else {
            bytes += '<';
            raw.remove_prefix(1);
        }
    }
    return bytes;
}

std::optional<std::string> DecodePpdText(std::string_view raw, PpdEncoding encoding)
{
    std::string bytes = ResolvePpdHex(Trim(raw));
    if (IsAscii(bytes)) return bytes;
    const bool asian = encoding >= PpdEncoding::ShiftJis;
    const bool mayBeUtf8 = encoding == PpdEncoding::Utf8 || encoding == PpdEncoding::Unknown || asian;
    if (mayBeUtf8 && IsUtf8(bytes)) return bytes;
    if (asian)
        return FromCodePage(bytes,
                            kCodePages[static_cast<int>(encoding) - static_cast<int>(PpdEncoding::ShiftJis)]);
    std::string text;
    for (const char c : bytes)
        AppendUtf8(text, CodeOf(static_cast<unsigned char>(c), encoding));
    return text;
}

} // namespace tintwerk
