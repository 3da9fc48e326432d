#include "host/sheet/sheet_controls.h"

#include <algorithm>

#include "host/ppd/ppd_text.h"

namespace tintwerk {

namespace {

LONG StyleOf(HWND window)
{
    return static_cast<LONG>(GetWindowLongPtrW(window, GWL_STYLE));
}

WideString ClassOf(HWND window)
{
    WCHAR name[64];
    const int length = GetClassNameW(window, name, 64);
    return WideString(name, length > 0 ? length : 0);
}

bool SameName(const WideString& a, const WCHAR* b)
{
    return lstrcmpiW(a.c_str(), b) == 0;
}

std::string KindOfButton(LONG style)
{
    switch (style & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        return "check box";
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return "radio button";
    case BS_GROUPBOX:
        return "group box";
    default:
        return "button";
    }
}

void Notify(HWND control, int code)
{
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code),
                 reinterpret_cast<LPARAM>(control));
}

// From the trackbar's own position to that which people see, or back.
int Mirrored(HWND slider, int position)
{
    if (!(StyleOf(slider) & TBS_VERT)) return position;
    return static_cast<int>(SendMessageW(slider, TBM_GETRANGEMAX, 0, 0)) +
           static_cast<int>(SendMessageW(slider, TBM_GETRANGEMIN, 0, 0)) - position;
}

BOOL CALLBACK Collect(HWND window, LPARAM list)
{
    if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

} // namespace

std::string TextOfWindow(HWND window)
{
    WideString text(GetWindowTextLengthW(window) + 1, WCHAR{});
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(std::max(length, 0));
    return Utf8FromWide(text);
}

std::string KindOfControl(HWND control)
{
    const WideString name = ClassOf(control);
    if (SameName(name, WC_BUTTONW)) return KindOfButton(StyleOf(control));
    if (SameName(name, TRACKBAR_CLASSW)) return "slider";
    if (SameName(name, WC_COMBOBOXW)) return "popup";
    if (SameName(name, WC_EDITW)) return "edit box";
    if (SameName(name, UPDOWN_CLASSW)) return "spin control";
    if (SameName(name, WC_TABCONTROLW)) return "tabs";
    if (SameName(name, WC_STATICW)) return (StyleOf(control) & SS_TYPEMASK) == SS_BITMAP ? "picture" : "text";
    return Utf8FromWide(name);
}

int SliderPosition(HWND slider)
{
    return Mirrored(slider, static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0)));
}

void DragSlider(HWND slider, int position)
{
    const int target = Mirrored(slider, position);
    const UINT message = StyleOf(slider) & TBS_VERT ? WM_VSCROLL : WM_HSCROLL;
    const HWND page = GetParent(slider);
    const auto tell = [&](WORD code, int raw) {
        SendMessageW(page, message, MAKEWPARAM(code, static_cast<WORD>(raw)),
                     reinterpret_cast<LPARAM>(slider));
    };
    SetFocus(slider);
    int raw = static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0));
    while (raw != target) {
        raw += raw < target ? 1 : -1;
        SendMessageW(slider, TBM_SETPOS, TRUE, raw);
        tell(TB_THUMBTRACK, raw);
    }
    tell(TB_THUMBPOSITION, raw);
    tell(TB_ENDTRACK, 0);
}

void TypeInto(HWND edit, const WideString& text)
{
    SetFocus(edit);
    const bool focused = GetFocus() == edit;
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    const HWND next = GetNextDlgTabItem(GetParent(edit), edit, FALSE);
    SetFocus(next ? next : GetParent(edit));
    if (!focused || GetFocus() == edit)
        Notify(edit, EN_KILLFOCUS); // a window that is not in front never had the focus
}

std::vector<ComboItem> ComboItems(HWND combo)
{
    std::vector<ComboItem> items;
    const int count = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, i, 0);
        WideString text(length > 0 ? length + 1 : 1, WCHAR{});
        if (length > 0) SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
        text.pop_back();
        items.push_back({Utf8FromWide(text), static_cast<LPARAM>(SendMessageW(combo, CB_GETITEMDATA, i, 0))});
    }
    return items;
}

int ComboSelection(HWND combo)
{
    return static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
}

void PickComboItem(HWND combo, int item)
{
    SetFocus(combo);
    SendMessageW(combo, CB_SETCURSEL, item, 0);
    Notify(combo, CBN_SELENDOK);
    Notify(combo, CBN_SELCHANGE);
}

bool IsBoxChecked(HWND button)
{
    return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void Click(HWND button)
{
    SendMessageW(button, BM_CLICK, 0, 0);
}

HWND FindButton(HWND page, const std::string& textOrNumber)
{
    const std::optional<int> number = DecimalNumber<int>(textOrNumber);
    for (const HWND control : ControlsOf(page)) {
        const std::string kind = KindOfControl(control);
        if (kind != "button" && kind != "check box") continue;
        std::string text = TextOfWindow(control);
        std::erase(text, '&');
        if (number ? GetDlgCtrlID(control) == *number : text == textOrNumber) return control;
    }
    return nullptr;
}

std::vector<HWND> ControlsOf(HWND page)
{
    std::vector<HWND> controls;
    EnumChildWindows(page, Collect, reinterpret_cast<LPARAM>(&controls));
    // The list box and the edit box inside a combo box are no controls of the page.
    std::erase_if(controls, [](HWND control) { return SameName(ClassOf(GetParent(control)), WC_COMBOBOXW); });
    return controls;
}

} // namespace tintwerk
