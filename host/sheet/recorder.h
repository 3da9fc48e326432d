// Writes what a user does in the open window as the steps of a script that does the same. Used by --record.
#pragma once

#include <functional>
#include <string>

#include "host/sheet/property_sheet.h"

namespace tintwerk {

// It hears what the controls tell their pages and the sheet tells them, so it misses nothing. What a page
// changes by itself it does again when the steps are played, on a page that only comes to the front too.
class Recorder
{
public:
    // Begun before the sheet runs, ended when it has closed.
    Recorder(PropertySheet& sheet, std::function<void(const std::string&)> write);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

private:
    void OnCommand(const SheetPage& page, int id, int code, HWND sender);
    void OnNotify(const SheetPage& page, const NMHDR& notification);
    void Hold(const PageControl& control, HWND window);
    void WriteHeld();
    void Write(const std::string& step);

    PropertySheet& sheet_;
    std::function<void(const std::string&)> write_;
    HWND front_ = nullptr; // the page there
    // A control under the user's hand: where it ends shows when something else happens.
    const PageControl* held_ = nullptr;
    HWND heldWindow_ = nullptr;
    std::string atFirst_;  // step of the field with the focus, or of the open list, as it came there
    std::string last_;     // step that was written, since the last apply
    bool applies_ = false; // the sheet tells its pages of one apply
    bool applied_ = false; // not written yet: it was OK when nothing follows
};

} // namespace tintwerk
