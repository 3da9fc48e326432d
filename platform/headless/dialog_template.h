// A dialog template taken apart. Used by dialog.cpp for dialogs and by propsheet.cpp for pages, which change
// the style before the dialog is made.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk::headless {

// A text or a number; a number goes where texts go as an integer resource name.
struct TextOrNumber
{
    std::u16string text;
    WORD number = 0;

    LPCWSTR Name() const { return number ? MAKEINTRESOURCEW(number) : text.c_str(); }
};

struct DialogItem
{
    DWORD style = 0;
    DWORD exStyle = 0;
    short x = 0, y = 0, width = 0, height = 0; // dialog units
    WORD id = 0;
    TextOrNumber className;
    TextOrNumber text;
};

struct DialogTemplate
{
    DWORD style = 0;
    DWORD exStyle = 0;
    short x = 0, y = 0, width = 0, height = 0; // dialog units
    std::u16string title;
    int pointSize = 0; // 0: the system font
    std::vector<DialogItem> items;

    SIZE Units() const; // pixels of 4 horizontal and 8 vertical dialog units
    POINT PixelsOf(POINT units) const;
    SIZE PixelSize() const;
};

constexpr std::size_t kUnknownTemplateSize = 0x100000; // of a template that is given by its address alone

// False when the template ends before its items do, and for the extended layout, which no page has.
bool ParseDialogTemplate(const void* data, std::size_t size, DialogTemplate& dialog);
// The template resource of that name.
bool LoadDialogTemplate(HINSTANCE module, LPCWSTR name, DialogTemplate& dialog);

HWND CreateDialogFrom(const DialogTemplate& dialog, HINSTANCE module, HWND parent, DLGPROC procedure,
                      LPARAM lParam);

} // namespace tintwerk::headless
