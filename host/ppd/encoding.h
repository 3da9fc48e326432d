// Turns the translation strings of a PPD, written in the file's *LanguageEncoding, into UTF-8. Called by the
// PPD reader.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tintwerk {

enum class PpdEncoding
{
    Unknown, // none stated, or one that is not known: UTF-8 where the bytes are UTF-8
    IsoLatin1,
    IsoLatin2,
    IsoLatin5,
    WindowsAnsi,
    MacStandard,
    Utf8,
    ShiftJis, // from here on UTF-8 too where the bytes are UTF-8
    Gbk,
    Big5,
    Korean,
    EucJp,
};

// The encoding that a *LanguageEncoding value names.
PpdEncoding PpdEncodingFromName(std::string_view name);

bool IsUtf8(std::string_view bytes);

// The text with its hexadecimal parts ("<c3bc>") resolved, in UTF-8, without blanks at its ends. Nothing when
// it holds bytes of an encoding that cannot be decoded; a "<" that begins no hexadecimal part stands for
// itself.
std::optional<std::string> DecodePpdText(std::string_view raw, PpdEncoding encoding);

// The bytes with their hexadecimal parts resolved and nothing else changed: how job control codes are
// written.
std::string ResolvePpdHex(std::string_view raw);

// True when DecodePpdText would change nothing.
bool IsPlainPpdText(std::string_view raw);

} // namespace tintwerk
