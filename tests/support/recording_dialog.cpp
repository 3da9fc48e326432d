#include "tests/support/recording_dialog.h"

#include <utility>

namespace tintwerk {
namespace {

void Add(std::vector<WORD>& words, DWORD value)
{
    words.push_back(LOWORD(value));
    words.push_back(HIWORD(value));
}

void AddText(std::vector<WORD>& words, const WCHAR* text)
{
    do
        words.push_back(static_cast<WORD>(*text));
    while (*text++);
}

void AddControl(std::vector<WORD>& words, const ControlSpec& control)
{
    if (words.size() % 2) words.push_back(0);
    Add(words, WS_CHILD | WS_VISIBLE | control.style);
    Add(words, 0);
    for (const short place : {control.x, control.y, control.width, control.height})
        words.push_back(static_cast<WORD>(place));
    words.push_back(control.id);
    AddText(words, control.className);
    AddText(words, control.text);
    words.push_back(0); // creation data
}

} // namespace

std::vector<WORD> DialogWords(DWORD style, short width, short height,
                              const std::vector<ControlSpec>& controls)
{
    std::vector<WORD> words;
    Add(words, style);
    Add(words, 0);
    words.push_back(static_cast<WORD>(controls.size()));
    for (const short place : {short{20}, short{20}, width, height})
        words.push_back(static_cast<WORD>(place));
    words.insert(words.end(), {0, 0}); // no menu, no class of its own
    AddText(words, TEXT("Recorded"));
    words.push_back(8);
    AddText(words, TEXT("MS Shell Dlg"));
    for (const ControlSpec& control : controls)
        AddControl(words, control);
    return words;
}

LPCDLGTEMPLATEW TemplateIn(const std::vector<WORD>& words)
{
    return reinterpret_cast<LPCDLGTEMPLATEW>(words.data());
}

RecordingDialog::RecordingDialog(const std::vector<ControlSpec>& controls, DWORD style, HWND parent)
{
    const INITCOMMONCONTROLSEX families{sizeof families, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&families);
    const std::vector<WORD> words = DialogWords(style, 271, 127, controls);
    window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), TemplateIn(words), parent, Procedure,
                                         reinterpret_cast<LPARAM>(this));
    Pump();
    lines.clear();
}

RecordingDialog::~RecordingDialog()
{
    if (IsWindow(window_)) DestroyWindow(window_);
}

RECT RecordingDialog::RectOf(int id) const
{
    RECT place{};
    GetWindowRect(Item(id), &place);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

Lines RecordingDialog::During(const std::function<void()>& action)
{
    lines.clear();
    action();
    return std::exchange(lines, {});
}

INT_PTR CALLBACK RecordingDialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    auto* const self = reinterpret_cast<RecordingDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!self) return FALSE;
    self->window_ = dialog;
    self->Note(message, wParam, lParam);
    return self->onMessage ? self->onMessage(message, wParam, lParam) : FALSE;
}

void RecordingDialog::Note(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto number = [](auto value) { return std::to_string(static_cast<int>(value)); };
    switch (message) {
    case WM_COMMAND:
        lines.push_back("command " + number(LOWORD(wParam)) + ": " + number(HIWORD(wParam)));
        break;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.code == static_cast<UINT>(NM_CUSTOMDRAW)) break; // depends on how much is painted
        lines.push_back("notify " + number(header.idFrom) + ": " + number(header.code));
        break;
    }
    case WM_DRAWITEM:
        lines.push_back("draw " + number(wParam));
        break;
    default:
        break;
    }
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
