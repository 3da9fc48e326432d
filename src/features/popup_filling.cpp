#include "src/features/popup_filling.h"

#include "src/bindings/popups.h"
#include "src/features/control_access.h"
#include "src/features/feature_access.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

void Empty(HWND combo)
{
    const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i)
        SendMessageW(combo, CB_DELETESTRING, 0, 0);
}

// The item carries the selection number: it differs from the item's position as soon as an option is left
// out.
void Append(HWND combo, const WCHAR* text, int selection)
{
    const LRESULT item = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    if (item >= 0) SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(item), selection);
}

// Adds the entries of a list that are to be seen. Returns the 1-based position of the item to show: where the
// selected entry was left out, the one before it, which is 0 at the top.
int AppendEntries(HWND combo, const OptionEntry* list, const int* visibility, int selection)
{
    const int count = CountOptions(list);
    int active = 1;
    int added = 0;
    for (int i = 0; i < count; ++i) {
        const WCHAR* const name = OrEmpty(list[i].displayName);
        if (visibility && !visibility[i]) {
            Trace(TEXT("UI:  --- INVISIBLE --- '%s'\n"), name);
        } else if (list[i].keyword[0] != '*') {
            Append(combo, name, i + 1);
            Trace(TEXT("UI:  Adding to PopUpButton: '%s' itemname:%S\n"), name, list[i].keyword);
            ++added;
        }
        if (i + 1 == selection) active = added;
        Trace(TEXT("UI:  Fillpopup - setactive item to #%d\n"), added);
    }
    return active;
}

} // namespace

void FillPopUp(HWND combo, const OptionEntry* list, const int* visibility, int selection)
{
    const OptionEntry* const selected = FindSelected(list, selection);
    Trace(TEXT("UI:  \nFILLPOPUP - active= %d / '%s'\n"), selection,
          OrEmpty(selected ? selected->displayName : nullptr));
    Empty(combo);
    const int active = AppendEntries(combo, list, visibility, selection);
    Trace(TEXT("UI:  FillPOPUP -> activeidx = %d\n"), active);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(active - 1), 0);
}

const OptionEntry* PopupList(const SheetContext& context, int row)
{
    return row == kPopupHalftone ? kHalftoneList.data()
                                 : context.options->lists[static_cast<size_t>(row)].data();
}

const int* PopupVisibility(const SheetContext& context, int row)
{
    return row == kPopupPageSize ? context.pageSizes.statuses : nullptr;
}

bool SetPopupOption(SheetContext& context, int row)
{
    const int selection = SelectedItemData(context.popups.windows[row]);
    context.popups.selections[row] = selection;
    const OptionEntry* const entry =
        FindSelected(context.options->lists[static_cast<size_t>(row)].data(), selection);
    if (!entry) {
        Trace(TEXT("No PPD Options for feature available\n"));
        return false;
    }
    const char* const keyword = kPopupTable[static_cast<size_t>(row)].keyword;
    Trace(TEXT("UI:  Option '%S' selection is '%S'\r\n"), keyword, entry->keyword);
    Trace(TEXT("UI:  Selection is entry #%d'\r\n"), selection);
    SetOption(context, keyword, entry->keyword);
    return true;
}

} // namespace tintwerk
