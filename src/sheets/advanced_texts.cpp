#include "src/sheets/advanced_texts.h"

#include <algorithm>
#include <cstring>

#include "src/features/keyword_list.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr DWORD kOptionNameBytes = 1024;
constexpr char kDisplayName[] = "DisplayName";

enum class Reading
{
    Done,
    NoSuchFeature,
    NoRoom
};

// Takes the texts of one page one behind the other. The core driver writes into the free part at Next(); what
// it wrote becomes part of the area by one of the Keep functions. All offsets of 16-bit texts are even.
class WorkArea
{
public:
    char* Next() { return bytes_ + used_; }
    DWORD Room() const { return static_cast<DWORD>(sizeof(bytes_) - used_); }
    SIZE_T Used() const { return used_; }
    const char* Bytes() const { return bytes_; }
    void Rewind(SIZE_T used) { used_ = used; }
    void Align() { used_ += used_ % sizeof(WCHAR); }

    // A 16-bit text of at most the given bytes, ended by its zero or by the last unit given.
    bool KeepText(SIZE_T given)
    {
        const SIZE_T room = Room() / sizeof(WCHAR);
        if (room == 0) return false;
        auto* const text = reinterpret_cast<WCHAR*>(Next());
        WCHAR* const end = std::find(text, text + std::min(given / sizeof(WCHAR), room - 1), WCHAR{0});
        *end = 0;
        used_ += static_cast<SIZE_T>(end + 1 - text) * sizeof(WCHAR);
        return true;
    }

    // The 16-bit form of an ISO 8859-1 text.
    bool KeepLatin1(const char* text)
    {
        const SIZE_T units = std::strlen(text) + 1;
        if (units * sizeof(WCHAR) > Room()) return false;
        std::transform(text, text + units, reinterpret_cast<WCHAR*>(Next()),
                       [](char c) { return static_cast<WCHAR>(static_cast<unsigned char>(c)); });
        used_ += units * sizeof(WCHAR);
        return true;
    }

    // The strings of a keyword list of the given bytes; returns how many they are.
    int KeepKeywords(SIZE_T given)
    {
        const KeywordList keywords(Next(), given);
        for (const char* keyword : keywords)
            used_ += std::strlen(keyword) + 1;
        return keywords.Count();
    }

private:
    alignas(WCHAR) char bytes_[kAdvancedWorkBytes] = {};
    SIZE_T used_ = 0;
};

// A handled string: its keyword, and where its texts lie in the work area. The options' keywords follow one
// another, and so do their display names.
struct Handled
{
    const char* keyword;
    SIZE_T text;
    SIZE_T options;
    SIZE_T optionTexts;
    int optionCount;
};

struct Page
{
    WorkArea area;
    Handled strings[kMaxAdvancedStrings];
    int count = 0;
    SIZE_T keywordBytes = 0;
    SIZE_T optionCount = 0;
};

bool ReadFeatureText(const CoreArea& core, const char* feature, WorkArea& area)
{
    DWORD type = 0;
    DWORD needed = 0;
    const DWORD room = area.Room();
    const HRESULT status = core.helper->GetFeatureAttribute(
        core.object, 0, feature, kDisplayName, &type, reinterpret_cast<PBYTE>(area.Next()), room, &needed);
    if (status == E_OUTOFMEMORY) return false;
    const SIZE_T start = area.Used();
    if (!(SUCCEEDED(status) ? area.KeepText(BytesGiven(needed, room)) : area.KeepLatin1(feature)))
        return false;
    Trace(TEXT("DisplayName of Feature: '%s' - count=%d\n"),
          reinterpret_cast<const WCHAR*>(area.Bytes() + start), static_cast<int>(needed));
    return true;
}

bool ReadOptionText(const CoreArea& core, const char* feature, const char* option, WorkArea& area)
{
    DWORD type = 0;
    DWORD needed = 0;
    const DWORD room = std::min(area.Room(), kOptionNameBytes);
    const HRESULT status =
        core.helper->GetOptionAttribute(core.object, 0, feature, option, kDisplayName, &type,
                                        reinterpret_cast<PBYTE>(area.Next()), room, &needed);
    return SUCCEEDED(status) ? area.KeepText(BytesGiven(needed, room)) : area.KeepLatin1(option);
}

Reading ReadFeature(const CoreArea& core, WorkArea& area, Handled& string)
{
    if (!ReadFeatureText(core, string.keyword, area)) return Reading::NoRoom;

    string.options = area.Used();
    DWORD needed = 0;
    const DWORD room = area.Room();
    const HRESULT status =
        core.helper->EnumOptions(core.object, 0, string.keyword, area.Next(), room, &needed);
    if (status == E_OUTOFMEMORY) return Reading::NoRoom;
    if (FAILED(status)) return Reading::NoSuchFeature;
    const char* option = area.Next();
    string.optionCount = area.KeepKeywords(BytesGiven(needed, room));
    area.Align();

    string.optionTexts = area.Used();
    for (int i = 0; i < string.optionCount; ++i, option += std::strlen(option) + 1)
        if (!ReadOptionText(core, string.keyword, option, area)) return Reading::NoRoom;
    return Reading::Done;
}

Reading ReadString(const CoreArea& core, WorkArea& area, Handled& string)
{
    string.text = area.Used();
    if (string.keyword[0] != '+') return ReadFeature(core, area, string);
    return area.KeepLatin1(string.keyword + 1) ? Reading::Done : Reading::NoRoom;
}

void ReadPage(const CoreArea& core, const KeywordList& keywords, Page& page)
{
    for (const char* keyword : keywords) {
        if (page.count == kMaxAdvancedStrings) return;
        const SIZE_T before = page.area.Used();
        Handled string{keyword, 0, 0, 0, 0};
        const Reading reading = ReadString(core, page.area, string);
        if (reading != Reading::Done) page.area.Rewind(before);
        if (reading == Reading::NoRoom) return;
        if (reading == Reading::NoSuchFeature) {
            Trace(TEXT("DELETING ppditem %d\n"), page.count);
            continue;
        }
        page.strings[page.count++] = string;
        page.keywordBytes += std::strlen(keyword) + 1;
        page.optionCount += static_cast<SIZE_T>(string.optionCount);
    }
}

UINT_PTR Address(const void* text)
{
    return reinterpret_cast<UINT_PTR>(text);
}

// Appends the rows of one string; texts is the work area's copy.
SourceRow* FillRows(SourceRow* row, const Handled& string, const char* name, const char* texts)
{
    const bool alone = string.optionCount == 0;
    *row++ = {name, Address(texts + string.text), TVOT_COMBOBOX, alone ? kLastOption : 0};
    const char* option = texts + string.options;
    auto* text = reinterpret_cast<const WCHAR*>(texts + string.optionTexts);
    for (int i = 1; i <= string.optionCount; ++i) {
        *row++ = {option, Address(text), 0, i == string.optionCount ? kLastOption : 0};
        option += std::strlen(option) + 1;
        text += lstrlenW(text) + 1;
    }
    return row;
}

// The rows, the keywords and the texts as one block.
SourceRow* CopyToHeap(HANDLE heap, const Page& page)
{
    const SIZE_T rowBytes = (static_cast<SIZE_T>(page.count) + page.optionCount + 1) * sizeof(SourceRow);
    const SIZE_T keywordBytes = page.keywordBytes + page.keywordBytes % sizeof(WCHAR);
    auto* const rows = static_cast<SourceRow*>(
        HeapAlloc(heap, HEAP_ZERO_MEMORY, rowBytes + keywordBytes + page.area.Used()));
    if (!rows) return nullptr;
    char* name = reinterpret_cast<char*>(rows) + rowBytes;
    char* const texts = name + keywordBytes;
    std::memcpy(texts, page.area.Bytes(), page.area.Used());

    SourceRow* row = rows;
    for (int i = 0; i < page.count; ++i) {
        const SIZE_T bytes = std::strlen(page.strings[i].keyword) + 1;
        std::memcpy(name, page.strings[i].keyword, bytes);
        Trace(TEXT("skip: %S\n"), name);
        row = FillRows(row, page.strings[i], name, texts);
        name += bytes;
    }
    if (page.count) Trace(TEXT("First Displayname is %s\n"), reinterpret_cast<const WCHAR*>(texts));
    return rows;
}

} // namespace

SourceRow* RowsFromKeywords(const CoreArea& core, const AdvancedKeywords& keywords)
{
    const KeywordList list(keywords.list, sizeof(keywords.list));
    Trace(TEXT("######## optional items list ##########\n"));
    Trace(TEXT("Counted %d features\n"), list.Count());

    Page page;
    ReadPage(core, list, page);
    Trace(TEXT("Lastfeature = %d\n"), page.count);
    return CopyToHeap(core.heap, page);
}

} // namespace tintwerk
