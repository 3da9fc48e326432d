#include "src/features/option_lists.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "src/bindings/current_values.h"
#include "src/bindings/popups.h"
#include "src/bindings/screen_modes.h"
#include "src/features/feature_access.h"
#include "src/features/keyword_list.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

using NameView = std::basic_string_view<WCHAR>;

constexpr DWORD kListBytes = 4096;                      // first try at an option list; few features need more
constexpr size_t kNamesBlockUnits = 4096;               // of a block that display names are packed into
constexpr int kCurrentOptionBytes = kLongestOption + 1; // a longer one is cut and then matches none
constexpr char kFormTrayTable[] = "*UseFormTrayTable";  // an input slot of the core driver's own
constexpr WCHAR kForeignName[] = TEXT("ID fault");
constexpr WCHAR kForeignColors[] = TEXT("?,?,?,?,?,?,?,?,?,?,?,?");

// The text that the core driver shows for an option.
class DisplayName
{
public:
    // False when the core driver has none. A value that is no text is replaced by foreign.
    bool Read(const CoreArea& core, const char* feature, const char* option, NameView foreign)
    {
        DWORD type = kADT_UNKNOWN;
        DWORD needed = kReplyBytes;
        if (core.helper->GetOptionAttribute(core.object, 0, feature, option, "DisplayName", &type,
                                            reinterpret_cast<BYTE*>(units_), kReplyBytes, &needed) != S_OK)
            return false;
        if (type != kADT_UNICODE) {
            text_ = foreign;
            return true;
        }
        const size_t given = std::min(needed, kReplyBytes) / sizeof(WCHAR);
        const WCHAR* const terminator = std::char_traits<WCHAR>::find(units_, given, WCHAR{});
        text_ = {units_, terminator ? static_cast<size_t>(terminator - units_) : given};
        return true;
    }
    NameView Text() const { return text_; }

private:
    WCHAR units_[kReplyBytes / sizeof(WCHAR)] = {};
    NameView text_;
};
static_assert(kReplyBytes / sizeof(WCHAR) < kNamesBlockUnits, "every display name fits into a new block");

// Packs display names one after the other into blocks of the plug-in heap, which go with the sheet.
class NamesBlocks
{
public:
    explicit NamesBlocks(HANDLE heap) : heap_(heap) {}

    bool Begin()
    {
        next_ = static_cast<WCHAR*>(HeapAlloc(heap_, HEAP_ZERO_MEMORY, kNamesBlockUnits * sizeof(WCHAR)));
        room_ = next_ ? kNamesBlockUnits : 0;
        return next_ != nullptr;
    }

    // A copy of the name; null when the heap is exhausted.
    const WCHAR* Add(NameView name)
    {
        if (name.size() + 1 > room_) {
            Trace(TEXT("!!! need to allocate new memblock\n"));
            if (!Begin()) return nullptr;
        }
        WCHAR* const copy = next_;
        name.copy(copy, name.size()); // its terminator stands there already
        next_ += name.size() + 1;
        room_ -= name.size() + 1;
        return copy;
    }

private:
    HANDLE heap_;
    WCHAR* next_ = nullptr;
    size_t room_ = 0;
};

// Reads the options of a feature into a block of the plug-in heap that is exactly as large as the core
// driver's list. An unknown feature has an empty list; E_FAIL means that the heap is exhausted.
HRESULT ReadOptions(const CoreArea& core, const char* feature, KeywordList* options)
{
    char buffer[kListBytes] = {};
    DWORD needed = kListBytes;
    HRESULT result = core.helper->EnumOptions(core.object, 0, feature, buffer, kListBytes, &needed);
    if (result == S_OK || result == E_OUTOFMEMORY) {
        const DWORD size = result == S_OK ? static_cast<DWORD>(BytesGiven(needed, kListBytes)) : needed;
        char* const block = static_cast<char*>(HeapAlloc(core.heap, HEAP_ZERO_MEMORY, size));
        if (!block) return E_FAIL;
        if (result == S_OK)
            std::memcpy(block, buffer, size);
        else
            result = core.helper->EnumOptions(core.object, 0, feature, block, size, &needed);
        *options = KeywordList(block, size);
    }
    if (result != S_OK) {
        Trace(TEXT("options not found!\n"));
        *options = {};
    }
    return S_OK;
}

// Empty when the core driver does not say.
void ReadCurrentOption(const CoreArea& core, const char* feature, char (&current)[kCurrentOptionBytes])
{
    SelectedOption selected;
    const HRESULT result = ReadSelectedOption(core, feature, selected);
    if (result != S_OK) {
        Trace(TEXT("UI:  GetOptions failed with result = %x\n"), static_cast<unsigned>(result));
        return;
    }
    Trace(TEXT("UI:  Feature Option %S is %S\r\n"), feature, OrEmpty(selected.option));
    CopyKeyword(current, kCurrentOptionBytes, OrEmpty(selected.option));
}

// Fills one list of the option table and the selection of its row.
HRESULT ReadPopup(SheetContext& context, int row, NamesBlocks& names)
{
    const char* const feature = WithoutAsterisk(kPopupTable[static_cast<size_t>(row)].keyword);
    Trace(TEXT("getPPDComboOptionsLoop #%d\n"), row);
    Trace(TEXT("getPPDComboOptionsLoop2 #%d\n"), row);
    Trace(TEXT("UI:  getComboPPDFeature for %#S \r\n"), feature);
    Trace(TEXT("getPPDComboOptionsLoop3 #%d\n"), row);

    KeywordList options;
    if (const HRESULT result = ReadOptions(context.core, feature, &options); result != S_OK) return result;
    const int count = options.Count();
    Trace(TEXT("UI:  Counted %#d options\r\n"), count);

    char current[kCurrentOptionBytes] = {};
    if (count > 0) ReadCurrentOption(context.core, feature, current);
    Trace(TEXT("point1\n"));

    OptionList& list = context.options->lists[static_cast<size_t>(row)];
    DisplayName name;
    int selected = 0;
    int position = 0;
    for (const char* option : options) {
        if (position == kMaxOptions) break;
        if (row == kPopupInputSlot && std::strcmp(option, kFormTrayTable) == 0) continue;
        if (std::strcmp(option, current) == 0) selected = position;

        OptionEntry& entry = list[static_cast<size_t>(position)];
        entry.keyword = option;
        if (name.Read(context.core, feature, option, kForeignName)) {
            entry.displayName = names.Add(name.Text());
            if (!entry.displayName) return E_OUTOFMEMORY;
        }
        ++position;
    }
    Trace(TEXT("UI:  Option selection = '%S' (index %d)\n"), current, selected);
    context.popups.selections[row] = selected + 1;
    return S_OK;
}

void DeriveScreenPrinting(PopupArea& popups)
{
    const ScreenMode mode = DecodeScreenMode(popups.selections[kPopupScreenMode]);
    popups.selections[kPopupHalftone] = mode.halftone;
    Current().checkBoxes[kCheckScreenPrinting] = mode.on;
    Current().checkBoxes[kCheckMultiBlack] = mode.multiBlack;
}

void ReadCartridgeColors(SheetContext& context)
{
    DisplayName colors;
    if (!colors.Read(context.core, "halvCartridgeColors", "CartridgeColors", kForeignColors)) return;
    WCHAR(&text)[kCartridgeColorUnits] = context.options->cartridgeColors;
    const size_t length = colors.Text().copy(text, kCartridgeColorUnits - 1);
    text[length] = 0;
}

} // namespace

HRESULT getPPDComboOptions(SheetContext& context)
{
    Trace(TEXT("getPPDComboOptions\n"));
    if (!context.core.helper) { // nobody to ask: empty lists
        std::ranges::fill(context.popups.selections, 1);
        return S_OK;
    }

    NamesBlocks names(context.core.heap);
    if (!names.Begin()) return E_OUTOFMEMORY;
    for (int row = 0; row < kPopupRows; ++row)
        if (const HRESULT result = ReadPopup(context, row, names); result != S_OK) return result;
    DeriveScreenPrinting(context.popups);
    ReadCartridgeColors(context);
    return S_OK;
}

} // namespace tintwerk
