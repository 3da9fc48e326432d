#include "src/features/size_label.h"

#include "src/bindings/popups.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kLongestFormName = 127;
constexpr DWORD kFormBytes = 1024;

// A form is measured in thousandths of a millimetre.
int Millimetres(LONG thousandths)
{
    return static_cast<int>((static_cast<long long>(thousandths) + 500) / 1000);
}

} // namespace

void ShowFormSize(SheetContext& context)
{
    const HWND page = context.pages[PositionOfPage(kMainPage)];
    const HWND label = page ? GetDlgItem(page, IDC_MAIN_SIZE_LABEL) : nullptr;
    const HWND combo = context.popups.windows[kPopupPageSize];
    if (!label || !combo) return;
    const LRESULT item = SendMessageW(combo, CB_GETCURSEL, 0, 0);
    if (item < 0) return;
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(item), 0);
    if (length < 0 || length > kLongestFormName) return;
    WCHAR name[kLongestFormName + 1] = {};
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(name));
    Trace(TEXT("ComboBox PageSize - Selection = %s\n"), name);

    alignas(FORM_INFO_1W) BYTE bytes[kFormBytes] = {}; // the form's name lies behind the record
    DWORD needed = 0;
    const BOOL result = GetFormW(context.core.printer, name, 1, bytes, kFormBytes, &needed);
    Trace(TEXT("ComboBox PageSize - GetForm result = %d\n"), static_cast<int>(result));
    if (!result) {
        Trace(TEXT("** GetForm failed - cbNeeded = %d (%d)\n"), static_cast<int>(needed),
              static_cast<int>(kFormBytes));
        return;
    }
    const auto& form = *reinterpret_cast<const FORM_INFO_1W*>(bytes);
    const int width = Millimetres(form.Size.cx);
    const int height = Millimetres(form.Size.cy);
    WCHAR text[64];
    wsprintfW(text, TEXT("(%d x %d mm)"), width, height);
    SetWindowTextW(label, text);
    Trace(TEXT("Form:%s (%d x %d mm)\n\n"), OrEmpty(form.pName), width, height);
}

} // namespace tintwerk
