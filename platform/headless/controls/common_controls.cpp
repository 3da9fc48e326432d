// The control families are always there; asking for them changes nothing.
#include "platform/win32.h"

BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* families)
{
    return families && families->dwSize == sizeof *families;
}
