// What a window does with a message that its own procedure leaves alone.
#include <algorithm>

#include "platform/headless/window.h"

using namespace tintwerk::headless;

namespace {

LRESULT CopyOut(std::u16string_view text, WPARAM size, WCHAR* buffer)
{
    if (!buffer || size == 0) return 0;
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    text.copy(buffer, length);
    buffer[length] = 0;
    return static_cast<LRESULT>(length);
}

void SetText(Window& window, LPCWSTR text)
{
    window.text = text && !IS_INTRESOURCE(text) ? text : TEXT("");
}

} // namespace

LRESULT WINAPI DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    switch (message) {
    case WM_NCCREATE:
        SetText(*window, reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName);
        return TRUE;
    case WM_SETTEXT:
        SetText(*window, reinterpret_cast<LPCWSTR>(lParam));
        return TRUE;
    case WM_GETTEXT:
        return CopyOut(window->text, wParam, reinterpret_cast<WCHAR*>(lParam));
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(window->text.size());
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    default:
        return 0;
    }
}
