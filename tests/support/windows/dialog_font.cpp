// The dialog font as the system draws it.
#include "tests/support/dialog_font.h"

namespace tintwerk {

int DialogTextWidth(std::basic_string_view<WCHAR> line)
{
    static const HFONT font =
        CreateFontW(-11, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                    CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, TEXT("MS Shell Dlg"));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, font);
    SIZE size{};
    GetTextExtentPoint32W(dc, line.data(), static_cast<int>(line.size()), &size);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return size.cx;
}

int DialogBaseWidth()
{
    // The dialog manager's own rule: the average of the 52 letters, rounded.
    return (DialogTextWidth(TEXT("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")) / 26 + 1) / 2;
}

} // namespace tintwerk
