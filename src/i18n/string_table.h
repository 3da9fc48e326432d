// The texts of the pages: one constant table of keys with an English and a German text, and the language of
// the sheet that was opened last, which is the language of every lookup in the process.
#pragma once

#include <span>
#include <string_view>

#include "platform/win32.h"

namespace tintwerk {

struct StringRow
{
    std::string_view key;     // ASCII
    std::string_view english; // UTF-8, with a zero behind it
    const char* german;       // UTF-8; null where the translation is missing

    const char* In(bool inGerman) const { return inGerman ? german : english.data(); }
};

inline constexpr int kStringRows = 98;
extern const StringRow
    kStringTable[kStringRows]; // in the order in which lookups search: the first match counts

// Rows in one of their languages. A change of language is a change from one constant to another, so that
// sheets on other threads can look up texts meanwhile.
struct StringTable
{
    std::span<const StringRow> rows;
    bool german;
};

// What lookups search from now on, any thread's; it must outlive them. Null: nothing is found, as before the
// first sheet.
void UseStringTable(const StringTable* table);

// The texts of the pages; language is "en" or "de".
void InitStringTable(const char* language);

// A text that a lookup found. Markup is built anew for every lookup and goes with it; any other text stays.
class FoundText
{
public:
    struct Markup
    {
    };
    explicit FoundText(const char* text) : text_(text) {}
    FoundText(const char* text, Markup);
    FoundText(const FoundText&) = delete;
    FoundText& operator=(const FoundText&) = delete;

    const char* Get() const { return text_; }

private:
    const char* text_;
    char markup_[256];
};

// Looks a text up by its English wording (byEnglish 1) or by its key (0) and returns the text in the sheet's
// language; a text that is not found comes back itself, a null text as "String-Error".
FoundText FindDefaultString(const char* text, int byEnglish);

// The German text of the first row with that English text, the text itself when there is none. For job
// events, which choose no language for the pages; to be used when the language is not "en".
const char* TranslateEnglishText(const char* text);

// The language rule: German when the first option that the PPD lists for halvLanguage begins with "de".
constexpr const char* LanguageOfFirstOption(const char* option)
{
    return option && option[0] == 'd' && option[1] == 'e' ? "de" : "en";
}

} // namespace tintwerk
