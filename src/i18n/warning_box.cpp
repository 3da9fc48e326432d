#include "src/i18n/warning_box.h"

namespace tintwerk {

int ShowWarningBox(HWND owner, bool cancelWanted, const WCHAR* caption, const WCHAR* text, int* answer)
{
    const UINT buttons = cancelWanted ? MB_OKCANCEL : MB_OK;
    const int button = MessageBoxW(owner, text, caption, buttons | MB_ICONWARNING | MB_SYSTEMMODAL);
    if (button == 0) return -1;
    if (answer) *answer = button == IDCANCEL ? 2 : 1;
    return 0;
}

} // namespace tintwerk
