// Writes what a user does in the open window as the steps of a script that does the same. Used by --record.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "host/sheet/property_sheet.h"

namespace tintwerk {

class Recorder
{
public:
    // Looks at the page in front every so many milliseconds. One at a time in a process; begun before the
    // sheet runs.
    Recorder(PropertySheet& sheet, std::function<void(const std::string&)> write, UINT pace = 100);
    // The sheet has closed.
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // For the sheet's own callback: a page was applied.
    void OnApplied();

private:
    struct Seen
    {
        HWND control; // null for an option item
        std::string step;
    };
    using States = std::map<std::string, Seen>; // by feature or control

    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void Watch();
    void WriteChanges(bool typingEnds);
    States StatesOfPage() const;
    void AddControls(States& states) const;
    void AddItems(States& states) const;

    PropertySheet& sheet_;
    std::function<void(const std::string&)> write_;
    UINT_PTR timer_ = 0;
    int page_ = -1; // that stood in front last
    HWND window_ = nullptr;
    States states_;
    bool applied_ = false;
};

} // namespace tintwerk
