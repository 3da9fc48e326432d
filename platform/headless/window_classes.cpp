// The kinds of windows that there are: dialogs and the controls of the pages. Programs register none of their
// own.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

const WindowClass kClasses[] = {
    {TEXT("#32770"), DefDlgProcW, DLGWINDOWEXTRA, 0x8002},
    {TEXT("Button"), ButtonProcedure, 0, 0x80},
    {TEXT("Edit"), EditProcedure, 0, 0x81},
    {TEXT("Static"), StaticProcedure, 0, 0x82},
    {TEXT("ComboBox"), ComboBoxProcedure, 0, 0x85},
    {TRACKBAR_CLASSW, TrackbarProcedure, 0, 0},
    {UPDOWN_CLASSW, UpDownProcedure, 0, 0},
    {WC_TABCONTROLW, TabProcedure, 0, 0},
};

} // namespace

const WindowClass* FindClass(LPCWSTR name)
{
    const WORD atom = IS_INTRESOURCE(name) ? LOWORD(reinterpret_cast<ULONG_PTR>(name)) : WORD{0};
    for (const WindowClass& entry : kClasses) {
        const bool same =
            IS_INTRESOURCE(name) ? atom && entry.atom == atom : lstrcmpiW(entry.name, name) == 0;
        if (same) return &entry;
    }
    return nullptr;
}

} // namespace tintwerk::headless
