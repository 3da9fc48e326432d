#include "src/pages/page_centring.h"

#include "src/features/control_access.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

// The offset is in pixels to the right. Each window ends one pixel wider and higher than it was.
BOOL CALLBACK MoveChild(HWND child, LPARAM offset)
{
    if (!GetParent(child)) return TRUE;
    const RECT place = PlaceInParent(child);
    MoveWindow(child, place.left + static_cast<int>(offset), place.top, place.right - place.left + 1,
               place.bottom - place.top + 1, FALSE);
    return TRUE;
}

} // namespace

void CentrePage(HWND page, int referenceControl)
{
    RECT reference{}, frame{}, sheet{};
    if (!GetWindowRect(GetDlgItem(page, referenceControl), &reference) || !GetWindowRect(page, &frame) ||
        !GetWindowRect(GetParent(page), &sheet))
        return;

    Trace(TEXT("UI:  \nINIT - xpos2=%d xpos=%d (%d,%d)\r\n\n"), static_cast<int>(reference.left - frame.left),
          static_cast<int>(frame.left - sheet.left), static_cast<int>(sheet.left),
          static_cast<int>(reference.left));
    const int move = CentringMove(reference, frame, sheet);
    Trace(TEXT("**MOVE by %d Pixels\n"), move);
    if (move > 0) EnumChildWindows(page, &MoveChild, move);
}

} // namespace tintwerk
