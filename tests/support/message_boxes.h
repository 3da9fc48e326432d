// Message boxes that a test answers instead of a user; nothing is shown.
#pragma once

#include <string>
#include <vector>

#include "platform/function_hook.h"
#include "platform/win32.h"

namespace tintwerk {

struct ShownBox
{
    HWND owner;
    std::basic_string<WCHAR> text;
    std::basic_string<WCHAR> caption;
    UINT type;
};

// Records the boxes while it lives; one at a time. answer is what the user presses; 0: the box cannot be
// shown.
class MessageBoxes
{
public:
    MessageBoxes()
    {
        current_ = this;
        ReplaceFunction("MessageBoxW", &Answer);
    }
    ~MessageBoxes()
    {
        RestoreFunction("MessageBoxW");
        current_ = nullptr;
    }
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;

    int answer = IDOK;
    std::vector<ShownBox> shown;

private:
    static int WINAPI Answer(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
    {
        current_->shown.push_back({owner, text ? text : TEXT(""), caption ? caption : TEXT(""), type});
        return current_->answer;
    }

    static inline MessageBoxes* current_ = nullptr;
};

} // namespace tintwerk
