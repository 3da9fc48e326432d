#include "src/pages/page_centring.h"

#include "src/features/control_access.h"
#include "src/trace/trace.h"

namespace tintwerk {

BOOL CALLBACK MoveChild(HWND child, LPARAM lParam)
{
    MoveRequest& request = *reinterpret_cast<MoveRequest*>(lParam);
    ++request.visited;
    if (!GetParent(child)) return TRUE;
    const RECT place = PlaceInParent(child);
    MoveWindow(child, place.left + request.offset, place.top, place.right - place.left + 1,
               place.bottom - place.top + 1, FALSE);
    return TRUE;
}

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
    if (move <= 0) return;
    MoveRequest request{0, move};
    EnumChildWindows(page, &MoveChild, reinterpret_cast<LPARAM>(&request));
}

} // namespace tintwerk
