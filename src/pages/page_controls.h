// Finding and marking the controls of a page; those that come and go together.
#pragma once

#include "platform/win32.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

// Links a window to its binding; see BindSlider and BindNumberField. Removed before the window goes.
#define PROP_CONTROL TEXT("PROP_CONTROL")

// What kind of control a bound one is, kept in its user data.
enum class ControlMark : LONG_PTR
{
    Popup = 2009,
    CheckBox = 2011,
    NumberField = 2012,
};

void MarkControl(HWND control, ControlMark mark);
bool HasMark(HWND control, ControlMark mark);

// The child control of a window, null when it has none with that id. Every look-up is traced.
HWND GetControlByID(HWND window, int id);

void CheckControl(HWND checkBox, bool check);

// The status of the page size with a selection number; that of a hidden one for none.
int StatusOfPageSize(const SheetContext& context, int selection);

// The overprint slider and its captions, for borderless page sizes.
void ShowBorderlessExpansion(const SheetContext& context, bool show);

// Halftone shape, LPI and angle.
void ShowScreenParameters(HWND page, bool show);

// Every child window of a page; without a page nothing.
void EnableChildren(HWND page, bool enable);

// The client area of a control in its parent's coordinates.
RECT ClientRectInParent(HWND control);

} // namespace tintwerk
