// A dialog made from a template in memory that writes down what its controls tell it. Shared by the tests of
// windows, dialogs and controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

struct ControlSpec
{
    const WCHAR* className;
    WORD id;
    DWORD style; // besides WS_CHILD and WS_VISIBLE
    short x, y, width, height;
    const WCHAR* text = TEXT("");
};

// The words of a template in "MS Shell Dlg" of 8 points.
std::vector<WORD> DialogWords(DWORD style, short width, short height,
                              const std::vector<ControlSpec>& controls);
LPCDLGTEMPLATEW TemplateIn(const std::vector<WORD>& words);

inline constexpr DWORD kPopupDialog = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_SETFONT;
inline constexpr DWORD kChildDialog = WS_CHILD | WS_VISIBLE | DS_SETFONT | DS_CONTROL;

using Lines = std::vector<std::string>;

// Writes down commands ("command 7: 0"), notifications ("notify 12: -551") and requests to draw ("draw 2").
class RecordingDialog
{
public:
    explicit RecordingDialog(const std::vector<ControlSpec>& controls, DWORD style = kPopupDialog,
                             HWND parent = nullptr);
    ~RecordingDialog();
    RecordingDialog(const RecordingDialog&) = delete;
    RecordingDialog& operator=(const RecordingDialog&) = delete;

    HWND Window() const { return window_; }
    HWND Item(int id) const { return GetDlgItem(window_, id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendMessageW(Item(id), message, wParam, lParam);
    }
    RECT RectOf(int id) const; // in the dialog's client coordinates
    // What was told while the action ran.
    Lines During(const std::function<void()>& action);

    Lines lines;
    std::function<INT_PTR(UINT message, WPARAM wParam, LPARAM lParam)> onMessage; // after it was written down

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    void Note(UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
};

void Pump(); // handles every message that waits
std::basic_string<WCHAR> TextOf(HWND window);

} // namespace tintwerk
