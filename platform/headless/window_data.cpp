// What programs attach to a window: the long values, properties and texts.
#include <algorithm>
#include <cstring>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

// The window bytes of the class, at an offset; null, with the last error set, when a value would not fit.
BYTE* BytesAt(Window& window, int index)
{
    if (index >= 0 && static_cast<std::size_t>(index) + sizeof(LONG_PTR) <= window.bytes.size())
        return window.bytes.data() + index;
    SetLastError(ERROR_INVALID_INDEX);
    return nullptr;
}

auto PropertyOf(Window& window, LPCWSTR name)
{
    return std::ranges::find_if(window.properties, [name](const auto& property) {
        return lstrcmpiW(property.first.c_str(), name) == 0;
    });
}

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

LONG_PTR WINAPI GetWindowLongPtrW(HWND handle, int index)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    switch (index) {
    case GWLP_USERDATA:
        return window->userData;
    case GWL_STYLE:
        return static_cast<LONG>(window->style);
    default:
        break;
    }
    LONG_PTR value = 0;
    if (const BYTE* const bytes = BytesAt(*window, index)) std::memcpy(&value, bytes, sizeof value);
    return value;
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND handle, int index, LONG_PTR value)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    switch (index) {
    case GWLP_USERDATA:
        return std::exchange(window->userData, value);
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(std::exchange(window->procedure, reinterpret_cast<WNDPROC>(value)));
    default:
        break;
    }
    LONG_PTR previous = 0;
    if (BYTE* const bytes = BytesAt(*window, index)) {
        std::memcpy(&previous, bytes, sizeof value);
        std::memcpy(bytes, &value, sizeof value);
    }
    return previous;
}

BOOL WINAPI SetPropW(HWND handle, LPCWSTR name, HANDLE value)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    const auto own = PropertyOf(*window, name);
    if (own != window->properties.end())
        own->second = value;
    else
        window->properties.emplace_back(name, value);
    return TRUE;
}

HANDLE WINAPI GetPropW(HWND handle, LPCWSTR name)
{
    Window* const window = Find(handle);
    if (!window) return nullptr;
    const auto own = PropertyOf(*window, name);
    return own != window->properties.end() ? own->second : nullptr;
}

HANDLE WINAPI RemovePropW(HWND handle, LPCWSTR name)
{
    Window* const window = Find(handle);
    if (!window) return nullptr;
    const auto own = PropertyOf(*window, name);
    if (own == window->properties.end()) return nullptr;
    const HANDLE value = own->second;
    window->properties.erase(own);
    return value;
}

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text)
{
    return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int WINAPI GetWindowTextW(HWND window, LPWSTR text, int size)
{
    if (!text || size <= 0) return 0;
    text[0] = 0;
    return static_cast<int>(
        SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(text)));
}

int WINAPI GetWindowTextLengthW(HWND window)
{
    return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
}
