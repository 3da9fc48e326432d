// One of the plug-in's dialogs that writes down what its controls tell it. Shared by the tests of windows and
// controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

using Lines = std::vector<std::string>;

// Writes down commands ("command 7: 0"), notifications ("notify 12: -551") and requests to draw ("draw 2").
class RecordingDialog
{
public:
    explicit RecordingDialog(int number);
    ~RecordingDialog() { DestroyWindow(sheet_); }
    RecordingDialog(const RecordingDialog&) = delete;
    RecordingDialog& operator=(const RecordingDialog&) = delete;

    HWND Window() const { return window_; }
    HWND Item(int id) const { return GetDlgItem(window_, id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendMessageW(Item(id), message, wParam, lParam);
    }
    // What was told while the action ran.
    Lines During(const std::function<void()>& action);

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    HWND sheet_ = nullptr;
    HWND window_ = nullptr;
    Lines lines_;
};

void Pump(); // handles every message that waits
std::basic_string<WCHAR> TextOf(HWND window);

} // namespace tintwerk
