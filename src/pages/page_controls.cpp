#include "src/pages/page_controls.h"

#include "src/bindings/borderless_sizes.h"
#include "src/features/control_access.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr int kBorderlessExpansionIds[] = {IDC_MAIN_OVERPRINT_MAX, IDC_MAIN_OVERPRINT_MIN,
                                           IDC_MAIN_OVERPRINT_CAPTION, IDC_MAIN_OVERPRINT};
constexpr int kScreenParameterIds[] = {
    IDC_SCREEN_SHAPE_CAPTION, IDC_SCREEN_SHAPE,         IDC_SCREEN_LPI_CAPTION, IDC_SCREEN_LPI,
    IDC_SCREEN_LPI_SPIN,      IDC_SCREEN_ANGLE_CAPTION, IDC_SCREEN_ANGLE,       IDC_SCREEN_ANGLE_SPIN};

BOOL CALLBACK EnableChild(HWND child, LPARAM enable)
{
    EnableWindow(child, static_cast<BOOL>(enable));
    return TRUE;
}

} // namespace

void MarkControl(HWND control, ControlMark mark)
{
    SetWindowLongPtrW(control, GWLP_USERDATA, static_cast<LONG_PTR>(mark));
}

bool HasMark(HWND control, ControlMark mark)
{
    return control && GetWindowLongPtrW(control, GWLP_USERDATA) == static_cast<LONG_PTR>(mark);
}

HWND GetControlByID(HWND window, int id)
{
    const HWND control = GetDlgItem(window, id);
    Trace(TEXT("GetControlByID : win=%d, id=%d, result=%d\n"), TraceNumber(window), id, TraceNumber(control));
    return control;
}

void CheckControl(HWND checkBox, bool check)
{
    SendMessageW(checkBox, BM_SETCHECK, check ? BST_CHECKED : BST_UNCHECKED, 0);
}

int StatusOfPageSize(const SheetContext& context, int selection)
{
    return selection >= 1 && selection <= kMaxOptions ? context.pageSizes.statuses[selection - 1]
                                                      : kBorderlessTwin;
}

void ShowBorderlessExpansion(const SheetContext& context, bool show)
{
    for (const int id : kBorderlessExpansionIds)
        ShowControl(GetControlByID(context.pages[PositionOfPage(kMainPage)], id), show);
}

void ShowScreenParameters(HWND page, bool show)
{
    for (const int id : kScreenParameterIds) {
        if (const HWND control = GetControlByID(page, id))
            ShowWindow(control, show ? SW_SHOWNORMAL : SW_HIDE);
    }
}

void EnableChildren(HWND page, bool enable)
{
    // Without a window the system would take all windows of the desktop.
    if (page) EnumChildWindows(page, &EnableChild, enable);
}

RECT ClientRectInParent(HWND control)
{
    RECT area{};
    GetClientRect(control, &area);
    MapWindowPoints(control, GetParent(control), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

} // namespace tintwerk
