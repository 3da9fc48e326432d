#include "tests/support/recording_dialog.h"

#include <utility>

namespace tintwerk {

RecordingDialog::RecordingDialog(int number)
{
    const INITCOMMONCONTROLSEX families{sizeof families, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&families);
    const HINSTANCE module = GetModuleHandleW(nullptr);
    sheet_ = CreateWindowExW(0, TEXT("Static"), TEXT("sheet"), WS_POPUP | WS_VISIBLE, 0, 0, 600, 500, nullptr,
                             nullptr, module, nullptr);
    window_ = CreateDialogParamW(module, MAKEINTRESOURCEW(number), sheet_, Procedure,
                                 reinterpret_cast<LPARAM>(this));
    ShowWindow(window_, SW_SHOW);
    Pump();
}

Lines RecordingDialog::During(const std::function<void()>& action)
{
    lines_.clear();
    action();
    return std::exchange(lines_, {});
}

INT_PTR CALLBACK RecordingDialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    auto* const self = reinterpret_cast<RecordingDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!self) return FALSE;
    const auto note = [self](const char* what, auto id) {
        self->lines_.push_back(what + std::to_string(static_cast<int>(id)));
    };
    const auto* const header = reinterpret_cast<const NMHDR*>(lParam);
    if (message == WM_COMMAND) {
        note("command ", LOWORD(wParam));
        self->lines_.back() += ": " + std::to_string(HIWORD(wParam));
    } else if (message == WM_NOTIFY &&
               header->code != static_cast<UINT>(NM_CUSTOMDRAW)) { // depends on painting
        note("notify ", header->idFrom);
        self->lines_.back() += ": " + std::to_string(static_cast<int>(header->code));
    } else if (message == WM_DRAWITEM) {
        note("draw ", wParam);
    }
    return FALSE;
}

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

std::basic_string<WCHAR> TextOf(HWND window)
{
    std::basic_string<WCHAR> text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, 0);
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

} // namespace tintwerk
