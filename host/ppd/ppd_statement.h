// One statement of a PPD. Made by the scanner, understood by the reader, judged by tintwerk check.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/ppd/ppd_text.h"

namespace tintwerk {

// What a main keyword means here.
enum class PpdKeyword : std::uint32_t
{
    OpenUI,
    CloseUI,
    JclOpenUI,
    JclCloseUI,
    OpenGroup,
    CloseGroup,
    OpenSubGroup,
    CloseSubGroup,
    OrderDependency,
    UIConstraints,
    NonUIConstraints,
    Include,
    SymbolValue,
    PaperDimension,
    ImageableArea,
    CustomPageSize,
    ParamCustomPageSize,
    MaxMediaWidth,
    MaxMediaHeight,
    Header,      // what the file says about the printer and itself
    Default,     // `main` stands without "Default"
    Option,      // of a feature
    Translation, // of a feature or an option, in another language
    Stray,       // no statement: `value` is the beginning of a line without an asterisk
    Other,
};

// *main option/text: value
struct PpdStatement
{
    const char* at = nullptr; // its asterisk
    std::string_view main, option, text, value;
    PpdKeyword keyword = PpdKeyword::Other;
    bool hasText = false, hasValue = false;
    bool quoted = false;
    bool unclosed = false; // the value's closing quote is missing: it ends with its line

    // What "*CloseUI: *Name" and "*OpenGroup: Name/Text" speak of, written sloppily without the colon too.
    std::string_view Named() const { return WithoutText(hasValue ? value : option); }
};

} // namespace tintwerk
