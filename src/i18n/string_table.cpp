// The lookups in the table of the last sheet's language.
#include "src/i18n/string_table.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr StringTable kEnglish{kStringTable, false};
constexpr StringTable kGerman{kStringTable, true};

constinit std::atomic<const StringTable*> current{nullptr};

constexpr size_t kMarkupText = 249; // leaves room for a line break behind the last character
constexpr std::string_view kMarkupBreak = "<br />";

} // namespace

// Turns line breaks into markup ones. An empty line, or one that no longer fits, adds nothing.
FoundText::FoundText(const char* text, Markup) : text_(markup_)
{
    size_t used = 0;
    while (*text) {
        const size_t line = std::strcspn(text, "\n");
        const size_t length = std::min(line, kMarkupText - std::min(kMarkupText, used));
        const bool endsWithBreak = text[line] == '\n';
        if (length > 0) {
            std::memcpy(markup_ + used, text, length);
            used += length;
            if (endsWithBreak) used += kMarkupBreak.copy(markup_ + used, kMarkupBreak.size());
        }
        text += line + (endsWithBreak ? 1 : 0);
    }
    markup_[used] = 0;
}

void UseStringTable(const StringTable* table)
{
    current = table;
}

void InitStringTable(const char* language)
{
    UseStringTable(std::strcmp(language, "de") == 0 ? &kGerman : &kEnglish);
}

FoundText FindDefaultString(const char* text, int byEnglish)
{
    const StringTable* const table = current;
    const std::span<const StringRow> rows = table && text ? table->rows : std::span<const StringRow>();
    const auto column = byEnglish == 1 ? &StringRow::english : &StringRow::key;
    const auto found = std::ranges::find(rows, std::string_view(OrEmpty(text)), column);
    if (found == rows.end()) {
        Trace(TEXT("defaultstring not found: %S\n"), OrEmpty(text));
        return FoundText(text ? text : "String-Error");
    }
    const char* const display = found->In(table->german);
    if (!display) {
        Trace(TEXT("translation not found for %S\n"), text);
        return FoundText(text);
    }
    Trace(TEXT("defaultstring found #%d: %S\n"), static_cast<int>(found - rows.begin()), display);
    if (std::strchr(display, '<')) return FoundText(display, FoundText::Markup{});
    return FoundText(display);
}

const char* TranslateEnglishText(const char* text)
{
    const auto found = std::ranges::find(kStringTable, std::string_view(OrEmpty(text)), &StringRow::english);
    return found == std::end(kStringTable) ? text : found->german;
}

} // namespace tintwerk
