// Static controls: texts, pictures, frames, and owner-drawn fields whose painting is asked of the parent.
#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

struct StaticState final : ControlState
{
    HBITMAP picture = nullptr;
    HBITMAP ownPicture = nullptr; // loaded from the template's picture number
    ~StaticState() override
    {
        if (ownPicture) DeleteObject(ownPicture);
    }
};

DWORD StaticKind(const Window& window)
{
    return window.style & SS_TYPEMASK;
}

// An etched line is as thin as its edges.
void Flatten(Window& window)
{
    window.exStyle |= WS_EX_STATICEDGE;
    const RECT edge = WithFrame({window.Width(), 0}, window.style, window.exStyle);
    window.place.right = window.place.left + edge.right - edge.left;
    window.place.bottom = window.place.top + edge.bottom - edge.top;
}

void FitToPicture(Window& window, HBITMAP picture)
{
    BITMAP description{};
    if ((window.style & SS_CENTERIMAGE) || !GetObjectW(picture, sizeof description, &description)) return;
    const RECT frame = FrameOf(window);
    SetWindowPos(window.handle, nullptr, 0, 0, description.bmWidth + frame.left + frame.right,
                 description.bmHeight + frame.top + frame.bottom, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT SetPicture(HWND handle, HBITMAP picture)
{
    auto* const state = StateOf<StaticState>(handle);
    Window* const window = Peek(handle);
    if (!state || StaticKind(*window) != SS_BITMAP) return 0;
    BITMAP description{};
    if (picture && !GetObjectW(picture, sizeof description, &description)) return 0;
    const HBITMAP previous = std::exchange(state->picture, picture);
    if (picture) FitToPicture(*window, picture);
    InvalidateRect(handle, nullptr, TRUE);
    return reinterpret_cast<LRESULT>(previous);
}

void DrawItem(HWND handle)
{
    PAINTSTRUCT paint;
    if (!BeginPaint(handle, &paint)) return;
    const Window& window = *Peek(handle);
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_STATIC;
    item.CtlID = static_cast<UINT>(window.id);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = window.style & WS_DISABLED ? ODS_DISABLED : 0;
    item.hwndItem = handle;
    item.hDC = paint.hdc;
    item.rcItem = ClientOf(window);
    if (window.parent)
        SendMessageW(window.parent->handle, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
    EndPaint(handle, &paint);
}

void LoadOwnPicture(Window& window, StaticState& state, const CREATESTRUCTW& creation)
{
    if (StaticKind(window) != SS_BITMAP || !creation.lpszName) return;
    if (!IS_INTRESOURCE(creation.lpszName) && !*creation.lpszName) return;
    state.ownPicture = static_cast<HBITMAP>(
        LoadImageW(creation.hInstance, creation.lpszName, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
    state.picture = state.ownPicture;
    if (state.picture) FitToPicture(window, state.picture);
}

} // namespace

LRESULT CALLBACK StaticProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window& window = *Peek(handle);
    auto& state = StateFor<StaticState>(window, message);
    switch (message) {
    case WM_NCCREATE:
        if (StaticKind(window) == SS_ETCHEDHORZ) Flatten(window);
        return DefWindowProcW(handle, message, wParam, lParam);
    case WM_CREATE:
        LoadOwnPicture(window, state, *reinterpret_cast<const CREATESTRUCTW*>(lParam));
        return 0;
    case WM_PAINT:
        if (StaticKind(window) != SS_OWNERDRAW) return DefWindowProcW(handle, message, wParam, lParam);
        DrawItem(handle);
        return 0;
    case WM_ENABLE:
        InvalidateRect(handle, nullptr, FALSE);
        return 0;
    case STM_SETIMAGE:
        return wParam == IMAGE_BITMAP ? SetPicture(handle, reinterpret_cast<HBITMAP>(lParam)) : 0;
    case STM_GETIMAGE:
        return wParam == IMAGE_BITMAP ? reinterpret_cast<LRESULT>(state.picture) : 0;
    default:
        return DefWindowProcW(handle, message, wParam, lParam);
    }
}

} // namespace tintwerk::headless
