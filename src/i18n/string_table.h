// The texts of the pages: one static table of keys with an English and a German text, and the process-wide
// runtime table that is built from it in the language of the sheet that was opened last.
#pragma once

#include <span>

#include "platform/win32.h"

namespace tintwerk {

struct StringRow
{
    const char* key;     // ASCII
    const char* english; // UTF-8
    const char* german;  // UTF-8
};

inline constexpr int kStringRows = 98;
extern const StringRow
    kStringTable[kStringRows]; // in the order in which lookups search: the first match counts

// Builds the runtime table; language is "en" or "de". When memory is short the table is empty and every
// lookup misses.
void InitStringTable(const char* language);

// The same from other rows, which must outlive the table; no rows leave it empty, as before the first sheet.
void BuildStringTable(std::span<const StringRow> rows, const char* language);

// Looks a text up by its English wording (byEnglish 1) or by its key (0) and returns the text in the sheet's
// language; a text that is not found comes back itself, a null text as "String-Error". Markup texts are
// returned in a process-wide buffer that the next such lookup overwrites.
const char* FindDefaultString(const char* text, int byEnglish);

// The German text of the first row with that English text, the text itself when there is none. For job
// events, which do not build the runtime table; to be used when the language is not "en".
const char* TranslateEnglishText(const char* text);

// The language rule: German when the first option that the PPD lists for halvLanguage begins with "de".
constexpr const char* LanguageOfFirstOption(const char* option)
{
    return option && option[0] == 'd' && option[1] == 'e' ? "de" : "en";
}

} // namespace tintwerk
