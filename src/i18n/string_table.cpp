// The runtime table and its lookups.
#include "src/i18n/string_table.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/owners.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// The lengths of key and English text are measured once, when the table is built: most rows then differ from
// a query by length alone.
struct RuntimeRow
{
    std::string_view key;
    std::string_view english;
    const char* display; // the text in the chosen language
};

// Built anew by each sheet; the last one is left to the end of the process, not freed as the module goes.
std::span<RuntimeRow> table;

constexpr size_t kMarkupBytes = 256;
constexpr size_t kMarkupText = 249; // leaves room for a line break behind the last character
constexpr std::string_view kMarkupBreak = "<br />";

// The result of the last lookup whose text contained markup.
char markup[kMarkupBytes];

// Turns line breaks into markup ones. An empty line, or one that no longer fits, adds nothing.
const char* BuildMarkup(const char* text)
{
    size_t used = 0;
    while (*text) {
        const size_t line = std::strcspn(text, "\n");
        const size_t length = std::min(line, kMarkupText - std::min(kMarkupText, used));
        const bool endsWithBreak = text[line] == '\n';
        if (length > 0) {
            std::memcpy(markup + used, text, length);
            used += length;
            if (endsWithBreak) used += kMarkupBreak.copy(markup + used, kMarkupBreak.size());
        }
        text += line + (endsWithBreak ? 1 : 0);
    }
    markup[used] = 0;
    return markup;
}

} // namespace

void BuildStringTable(std::span<const StringRow> rows, const char* language)
{
    if (!table.empty()) HeapFree(GetProcessHeap(), 0, table.data());
    table = {};
    if (rows.empty()) return;
    HeapBlock<RuntimeRow> block(GetProcessHeap(), rows.size() * sizeof(RuntimeRow));
    if (!block) return;

    const bool german = std::strcmp(language, "de") == 0;
    table = {block.Release(), rows.size()};
    std::ranges::transform(rows, table.begin(), [german](const StringRow& row) {
        return RuntimeRow{row.key, row.english, german ? row.german : row.english};
    });
}

void InitStringTable(const char* language)
{
    BuildStringTable(kStringTable, language);
}

const char* FindDefaultString(const char* text, int byEnglish)
{
    const std::string_view wanted(OrEmpty(text));
    const auto column = byEnglish == 1 ? &RuntimeRow::english : &RuntimeRow::key;
    const auto found = text ? std::ranges::find(table, wanted, column) : table.end();
    if (found == table.end()) {
        Trace(TEXT("defaultstring not found: %S\n"), OrEmpty(text));
        return text ? text : "String-Error";
    }
    if (!found->display) {
        Trace(TEXT("translation not found for %S\n"), text);
        return text;
    }
    Trace(TEXT("defaultstring found #%d: %S\n"), static_cast<int>(found - table.begin()), found->display);
    return std::strchr(found->display, '<') ? BuildMarkup(found->display) : found->display;
}

const char* TranslateEnglishText(const char* text)
{
    for (const StringRow& row : kStringTable) {
        if (std::strcmp(row.english, OrEmpty(text)) == 0) return row.german;
    }
    return text;
}

} // namespace tintwerk
