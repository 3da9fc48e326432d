#include "src/features/control_access.h"

namespace tintwerk {

namespace {

// The trackbar counts from the top; turns raw into logical positions and back.
int Mirror(HWND slider, int position)
{
    if (!(GetWindowLongPtrW(slider, GWL_STYLE) & TBS_VERT)) return position;
    const LRESULT ends =
        SendMessageW(slider, TBM_GETRANGEMAX, 0, 0) + SendMessageW(slider, TBM_GETRANGEMIN, 0, 0);
    return static_cast<int>(ends) - position;
}

} // namespace

bool IsChecked(HWND checkBox)
{
    return checkBox && SendMessageW(checkBox, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

int SelectedItemData(HWND popup)
{
    if (!popup) return 0;
    const LRESULT item = SendMessageW(popup, CB_GETCURSEL, 0, 0);
    if (item < 0) return 0;
    const LRESULT data = SendMessageW(popup, CB_GETITEMDATA, static_cast<WPARAM>(item), 0);
    return data == CB_ERR ? 0 : static_cast<int>(data);
}

int GetLogicalPosition(HWND slider)
{
    if (!slider) return 0;
    return Mirror(slider, static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0)));
}

void SetLogicalPosition(HWND slider, int position)
{
    if (slider) SendMessageW(slider, TBM_SETPOS, TRUE, Mirror(slider, position));
}

void ShowControl(HWND control, bool show)
{
    if (control) ShowWindow(control, show ? SW_SHOW : SW_HIDE);
}

void EnableControl(HWND control, bool enable)
{
    if (control) EnableWindow(control, enable);
}

RECT PlaceInParent(HWND control)
{
    RECT place{};
    if (GetWindowRect(control, &place))
        MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace tintwerk
