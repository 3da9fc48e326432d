// Dialogs, made from templates.
#include "platform/headless/dialog_template.h"
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

// A child stands in its parent, another one on the screen, from the owner's client area.
RECT PlaceOf(const DialogTemplate& dialog, HWND parent)
{
    RECT place = WithFrame(dialog.PixelSize(), dialog.style, dialog.exStyle);
    POINT at = dialog.PixelsOf({dialog.x, dialog.y});
    if (!(dialog.style & WS_CHILD) && parent) MapWindowPoints(parent, nullptr, &at, 1);
    return {at.x + place.left, at.y + place.top, at.x + place.right, at.y + place.bottom};
}

void SettleStyles(DialogTemplate& dialog)
{
    dialog.style |= DS_3DLOOK;
    if ((dialog.style & DS_CONTROL) || !(dialog.style & WS_CHILD)) dialog.exStyle |= WS_EX_CONTROLPARENT;
    if (dialog.style & DS_CONTROL) dialog.style &= ~(WS_CAPTION | WS_SYSMENU);
}

bool CreateItem(HWND handle, const DialogTemplate& dialog, const DialogItem& item, HINSTANCE module)
{
    DWORD style = (item.style & ~WS_POPUP) | WS_CHILD;
    DWORD exStyle = item.exStyle | WS_EX_NOPARENTNOTIFY;
    if (style & WS_BORDER) { // borders look sunken in dialogs
        style &= ~WS_BORDER;
        exStyle |= WS_EX_CLIENTEDGE;
    }
    const POINT at = dialog.PixelsOf({item.x, item.y});
    const POINT size = dialog.PixelsOf({item.width, item.height});
    return CreateWindowExW(exStyle, item.className.Name(), item.text.Name(), style, at.x, at.y, size.x,
                           size.y, handle, reinterpret_cast<HMENU>(LONG_PTR{item.id}), module,
                           nullptr) != nullptr;
}

} // namespace

HWND CreateDialogFrom(const DialogTemplate& source, HINSTANCE module, HWND parent, DLGPROC procedure,
                      LPARAM lParam)
{
    DialogTemplate dialog = source;
    SettleStyles(dialog);
    const RECT place = PlaceOf(dialog, parent);
    const HWND handle = CreateWindowExW(
        dialog.exStyle, TEXT("#32770"), dialog.title.c_str(), dialog.style & ~WS_VISIBLE, place.left,
        place.top, place.right - place.left, place.bottom - place.top, parent, nullptr, module, nullptr);
    Window* const window = Peek(handle);
    if (!window) return nullptr;
    window->dialogUnits = dialog.Units();
    SetWindowLongPtrW(handle, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
    for (const DialogItem& item : dialog.items) {
        if (!Peek(handle)) return nullptr;
        if (!CreateItem(handle, dialog, item, module)) {
            DestroyWindow(handle);
            return nullptr;
        }
    }
    const HWND first = GetNextDlgTabItem(handle, nullptr, FALSE);
    const bool focus = SendMessageW(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), lParam) != 0;
    if (!Peek(handle)) return nullptr;
    if (focus && (!(dialog.style & DS_CONTROL) || (dialog.style & WS_VISIBLE))) {
        if (const HWND item = GetNextDlgTabItem(handle, nullptr, FALSE)) SetFocus(item);
    }
    if (Peek(handle) && (dialog.style & WS_VISIBLE)) ShowWindow(handle, SW_SHOWNORMAL);
    return Peek(handle) ? handle : nullptr;
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HWND WINAPI CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM lParam)
{
    DialogTemplate dialog;
    return LoadDialogTemplate(module, name, dialog)
               ? CreateDialogFrom(dialog, module, parent, procedure, lParam)
               : nullptr;
}

HWND WINAPI CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW data, HWND parent, DLGPROC procedure,
                                       LPARAM lParam)
{
    DialogTemplate dialog;
    return ParseDialogTemplate(data, kUnknownTemplateSize, dialog)
               ? CreateDialogFrom(dialog, module, parent, procedure, lParam)
               : nullptr;
}

DWORD WINAPI GetDialogBaseUnits()
{
    const SIZE units = DialogTemplate().Units();
    return static_cast<DWORD>(MAKELONG(units.cx, units.cy));
}

BOOL WINAPI MapDialogRect(HWND handle, LPRECT rectangle)
{
    const Window* const window = Find(handle);
    if (!window || !window->dialogUnits.cx || !rectangle) return FALSE;
    const auto [width, height] = window->dialogUnits;
    *rectangle = {MulDiv(rectangle->left, width, 4), MulDiv(rectangle->top, height, 8),
                  MulDiv(rectangle->right, width, 4), MulDiv(rectangle->bottom, height, 8)};
    return TRUE;
}

BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check)
{
    const HWND button = GetDlgItem(dialog, id);
    if (button) SendMessageW(button, BM_SETCHECK, check, 0);
    return button != nullptr;
}

BOOL WINAPI SetDlgItemTextW(HWND dialog, int id, LPCWSTR text)
{
    const HWND control = GetDlgItem(dialog, id);
    return control && SetWindowTextW(control, text);
}

UINT WINAPI GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int size)
{
    if (text && size > 0) text[0] = 0;
    const HWND control = GetDlgItem(dialog, id);
    return control ? static_cast<UINT>(GetWindowTextW(control, text, size)) : 0;
}
