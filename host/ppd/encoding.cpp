#include "host/ppd/encoding.h"

#include <algorithm>
#include <iterator>

#include "host/ppd/ppd_text.h"
#include "host/ppd/wide_text.h"

namespace tintwerk {
namespace {

// By PpdEncoding. Files that say ISO 8859-1, or nothing, hold the Windows characters too.
constexpr UINT kCodePages[] = {1252, 1252, 28592, 28599, 1252, 10000, 1252, 932, 936, 950, 949, 20932};
static_assert(std::size(kCodePages) == static_cast<std::size_t>(PpdEncoding::EucJp) + 1);

// Nothing when the platform has no such code page, or the code page no such text.
std::optional<std::string> FromCodePage(const std::string& bytes, UINT codePage)
{
    WideString wide(bytes.size(), 0);
    const int units =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                            wide.data(), static_cast<int>(wide.size()));
    if (units <= 0) return std::nullopt;
    return Utf8FromWide(WideView(wide).substr(0, static_cast<std::size_t>(units)));
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
    const auto row = std::ranges::find(kNames, name, &Name::name);
    return row == std::end(kNames) ? PpdEncoding::Unknown : row->encoding;
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
        const auto part = close == raw.npos ? std::nullopt : BytesOfHex(raw.substr(1, close - 1));
        if (part && !part->empty() && part->find('\0') == part->npos) {
            bytes += *part;
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
    const bool mayBeUtf8 = encoding == PpdEncoding::Utf8 || encoding == PpdEncoding::Unknown ||
                           encoding >= PpdEncoding::ShiftJis;
    if (mayBeUtf8 && IsUtf8(bytes)) return bytes;
    return FromCodePage(bytes, kCodePages[static_cast<std::size_t>(encoding)]);
}

} // namespace tintwerk
