// Reads and works the controls of an open sheet as a user does. Used by the script player and the
// descriptions that it makes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/ppd/wide_text.h"
#include "platform/win32.h"

namespace tintwerk {

std::string TextOfWindow(HWND window);
// "slider", "popup", "check box", "edit box", "tabs", ... ; the class name for anything else.
std::string KindOfControl(HWND control);

// A slider's position as people see it: the top of a vertical slider is its maximum.
int SliderPosition(HWND slider);
// Drags the thumb there: the slider tells its page of every step of it.
void DragSlider(HWND slider, int position);

// Types a text into an edit box and leaves it.
void TypeInto(HWND edit, const WideString& text);

struct ComboItem
{
    std::string text;
    LPARAM data = 0;
};
std::vector<ComboItem> ComboItems(HWND combo);
int ComboSelection(HWND combo); // -1 for none
// Picks an item as the keyboard does.
void PickComboItem(HWND combo, int item);

bool IsBoxChecked(HWND button);
void Click(HWND button);

// A visible button or check box of the page with this text (without the underscore mark of its shortcut) or
// control number; null when there is none.
HWND FindButton(HWND page, const std::string& textOrNumber);

// Visible controls of a page, those of its child dialogs too, in tab order.
std::vector<HWND> ControlsOf(HWND page);

} // namespace tintwerk
