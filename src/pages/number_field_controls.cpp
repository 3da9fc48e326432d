#include "src/pages/number_field_controls.h"

#include "src/bindings/number_fields.h"
#include "src/pages/number_text.h"
#include "src/pages/page_controls.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kEditUnits = 256; // of the edit text that are read

const NumberFieldBinding& Field(int row)
{
    return kNumberFieldTable[static_cast<size_t>(row)];
}

std::optional<int> ReadNumberText(HWND edit, const NumberFieldBinding& field)
{
    WCHAR text[kEditUnits] = {};
    return ReadNumber({text, static_cast<size_t>(GetWindowTextW(edit, text, kEditUnits))}, field);
}

void WriteNumberText(HWND edit, const NumberFieldBinding& field, int value)
{
    SetWindowTextW(edit, FormatNumber(value, field).units);
}

void SetSpinPosition(HWND spin, int position)
{
    SendMessageW(spin, UDM_SETPOS32, 0, position);
}

void LinkToRow(HWND control, int row)
{
    SetPropW(control, PROP_CONTROL, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(row + 1)));
    MarkControl(control, ControlMark::NumberField);
}

// -1 for a window that is not bound.
int RowOf(HWND control)
{
    const int row = static_cast<int>(reinterpret_cast<INT_PTR>(GetPropW(control, PROP_CONTROL))) - 1;
    return row < kNumberFieldRows ? row : -1;
}

} // namespace

void BindNumberField(HWND page, SheetContext& context, int row)
{
    const NumberFieldBinding& field = Field(row);
    const int value = context.numberFields.values[row];

    const HWND edit = GetControlByID(page, field.editId);
    context.numberFields.edits[row] = edit;
    if (edit) {
        LinkToRow(edit, row);
        Trace(TEXT("UI:  --- found #%d: controlid=%d"), row, field.editId);
        WriteNumberText(edit, field, value);
    }

    const HWND spin = GetControlByID(page, field.spinId);
    context.numberFields.spins[row] = spin;
    if (!spin) return;
    UDACCEL click{0, static_cast<UINT>(field.increment / field.spinUnit)};
    LinkToRow(spin, row);
    SendMessageW(spin, UDM_SETRANGE32, static_cast<WPARAM>(field.minimum / field.spinUnit),
                 field.maximum / field.spinUnit);
    SetSpinPosition(spin, value / field.spinUnit);
    SendMessageW(spin, UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&click));
}

bool StepNumberField(SheetContext& context, const NMUPDOWN& notification)
{
    Trace(TEXT("UI:  NOTIFY DELTAPOS pos=%d delta=%d!\r\n"), notification.iPos, notification.iDelta);
    const HWND sender = notification.hdr.hwndFrom;
    if (!sender) {
        Trace(TEXT("UI:  NO LPARAM AS CTRL\n\r"));
        return false;
    }
    const int row = RowOf(sender);
    if (row < 0) return false;

    const NumberFieldBinding& field = Field(row);
    const HWND edit = context.numberFields.edits[row];
    const HWND spin = context.numberFields.spins[row];
    const long long unit = field.spinUnit;
    const long long clicks = field.increment / unit * (notification.iDelta > 0 ? 1 : -1);
    const std::optional<int> shown = ReadNumberText(edit, field);
    const long long current = shown ? *shown : unit * notification.iPos;
    Trace(TEXT("UI:  Found Spin #%d set to %d (was %d)\r\n"), row, notification.iPos,
          static_cast<int>(current));

    const int stepped = ClampToField(field, current + clicks * unit);
    Trace(TEXT("Set numval to %d\n\r"), stepped);
    const int position = stepped / field.spinUnit;
    SetSpinPosition(sender, position);
    if (edit) WriteNumberText(edit, field, stepped);
    context.numberFields.values[row] = stepped;

    // The spin control adds the delta after this notification, and lands on the position then.
    if (notification.iPos != position && spin)
        SetSpinPosition(spin, static_cast<int>(static_cast<long long>(position) - notification.iDelta));
    Trace(TEXT("UI:  Set Spin #%d to %d (was %d)\r\n"), row, position, notification.iPos);
    return true;
}

void CommitNumberField(SheetContext& context, HWND edit)
{
    const int row = RowOf(edit);
    if (row < 0 || context.numberFields.edits[row] != edit) return;
    Trace(TEXT("UI:  KILLFOCUS received from edit #%d\n\r"), row);

    const NumberFieldBinding& field = Field(row);
    int& stored = context.numberFields.values[row];
    stored = ReadNumberText(edit, field).value_or(stored);
    WriteNumberText(edit, field, stored);
    if (const HWND spin = context.numberFields.spins[row]) SetSpinPosition(spin, stored / field.spinUnit);
}

} // namespace tintwerk
