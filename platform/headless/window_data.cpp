// What programs attach to a window: the long values, properties and texts.
#include "platform/headless/window.h"

#include <algorithm>
#include <cstring>

namespace tintwerk::headless {

namespace {

std::u16string PropertyKey(LPCWSTR name)
{
    if (!IS_INTRESOURCE(name)) return name;
    return {u'#', static_cast<char16_t>(reinterpret_cast<ULONG_PTR>(name))};
}

LONG_PTR* NamedValue(Window& window, int index)
{
    switch (index) {
    case GWLP_USERDATA:
        return &window.userData;
    case GWLP_ID:
        return &window.id;
    default:
        return nullptr;
    }
}

LONG_PTR ReadNamed(Window& window, int index)
{
    if (const LONG_PTR* const value = NamedValue(window, index)) return *value;
    switch (index) {
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(window.procedure);
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(window.module);
    case GWLP_HWNDPARENT:
        return reinterpret_cast<LONG_PTR>(window.IsChild() ? window.parent->handle : window.owner);
    case GWL_STYLE:
        return static_cast<LONG>(window.style);
    case GWL_EXSTYLE:
        return static_cast<LONG>(window.exStyle);
    default:
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
}

LONG_PTR WriteStyle(Window& window, DWORD Window::*member, int index, LONG_PTR value)
{
    STYLESTRUCT change{window.*member, static_cast<DWORD>(value)};
    const HWND handle = window.handle;
    window.*member = change.styleNew;
    SendMessageW(handle, WM_STYLECHANGED, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&change));
    return static_cast<LONG>(change.styleOld);
}

LONG_PTR WriteNamed(Window& window, int index, LONG_PTR value)
{
    if (LONG_PTR* const named = NamedValue(window, index)) return std::exchange(*named, value);
    switch (index) {
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(std::exchange(window.procedure, reinterpret_cast<WNDPROC>(value)));
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(std::exchange(window.module, reinterpret_cast<HINSTANCE>(value)));
    case GWLP_HWNDPARENT:
        if (window.IsChild())
            return reinterpret_cast<LONG_PTR>(SetParent(window.handle, reinterpret_cast<HWND>(value)));
        return reinterpret_cast<LONG_PTR>(std::exchange(window.owner, reinterpret_cast<HWND>(value)));
    case GWL_STYLE:
        return WriteStyle(window, &Window::style, index, value);
    case GWL_EXSTYLE:
        return WriteStyle(window, &Window::exStyle, index, value);
    default:
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
}

// The window bytes of the class, at an offset; null when a value of that size would not fit.
template <typename Value> BYTE* BytesAt(Window& window, int index)
{
    if (static_cast<std::size_t>(index) + sizeof(Value) > window.bytes.size()) {
        SetLastError(ERROR_INVALID_INDEX);
        return nullptr;
    }
    return window.bytes.data() + index;
}

template <typename Value> Value Read(HWND handle, int index)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    if (index < 0) return static_cast<Value>(ReadNamed(*window, index));
    Value value = 0;
    if (const BYTE* const bytes = BytesAt<Value>(*window, index)) std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <typename Value> Value Write(HWND handle, int index, Value value)
{
    Window* const window = Find(handle);
    if (!window) return 0;
    if (index < 0) return static_cast<Value>(WriteNamed(*window, index, value));
    Value previous = 0;
    if (BYTE* const bytes = BytesAt<Value>(*window, index)) {
        std::memcpy(&previous, bytes, sizeof value);
        std::memcpy(bytes, &value, sizeof value);
    }
    return previous;
}

} // namespace

} // namespace tintwerk::headless

using namespace tintwerk::headless;

LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index)
{
    return Read<LONG_PTR>(window, index);
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value)
{
    return Write<LONG_PTR>(window, index, value);
}

LONG WINAPI GetWindowLongW(HWND window, int index)
{
    return Read<LONG>(window, index);
}

LONG WINAPI SetWindowLongW(HWND window, int index, LONG value)
{
    return Write<LONG>(window, index, value);
}

BOOL WINAPI SetPropW(HWND handle, LPCWSTR name, HANDLE value)
{
    Window* const window = Find(handle);
    if (!window) return FALSE;
    const std::u16string key = PropertyKey(name);
    for (auto& property : window->properties) {
        if (EqualIgnoringCase(property.first, key)) {
            property.second = value;
            return TRUE;
        }
    }
    window->properties.emplace_back(key, value);
    return TRUE;
}

HANDLE WINAPI GetPropW(HWND handle, LPCWSTR name)
{
    const Window* const window = Find(handle);
    if (!window) return nullptr;
    const std::u16string key = PropertyKey(name);
    for (const auto& property : window->properties) {
        if (EqualIgnoringCase(property.first, key)) return property.second;
    }
    return nullptr;
}

HANDLE WINAPI RemovePropW(HWND handle, LPCWSTR name)
{
    Window* const window = Find(handle);
    if (!window) return nullptr;
    const std::u16string key = PropertyKey(name);
    const auto own = std::ranges::find_if(
        window->properties, [&key](const auto& property) { return EqualIgnoringCase(property.first, key); });
    if (own == window->properties.end()) return nullptr;
    const HANDLE value = own->second;
    window->properties.erase(own);
    return value;
}

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text)
{
    return Find(window) && SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int WINAPI GetWindowTextW(HWND window, LPWSTR text, int size)
{
    if (!text || size <= 0) return 0;
    text[0] = 0;
    if (!Find(window)) return 0;
    return static_cast<int>(
        SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(text)));
}

int WINAPI GetWindowTextLengthW(HWND window)
{
    return Find(window) ? static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) : 0;
}

BOOL WINAPI SetDlgItemTextW(HWND dialog, int id, LPCWSTR text)
{
    const HWND control = GetDlgItem(dialog, id);
    return control && SetWindowTextW(control, text);
}

UINT WINAPI GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int size)
{
    if (text && size > 0) text[0] = 0;
    const HWND control = GetDlgItem(dialog, id);
    return control ? static_cast<UINT>(GetWindowTextW(control, text, size)) : 0;
}
