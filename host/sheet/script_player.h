// Plays a script on an open sheet: from a timer inside the sheet's own message loop it works the real
// controls, step by step, and closes the sheet at the end. Message boxes that come up are told and answered,
// so a script never waits.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/sheet/message_boxes.h"
#include "host/sheet/property_sheet.h"
#include "host/sheet/script.h"

namespace tintwerk {

struct ScriptSettings
{
    std::vector<Step> steps;
    UINT pace = 10;                               // milliseconds between two steps
    bool confirmsQuestions = false;               // how message boxes with a choice are answered
    std::function<void(const std::string&)> tell; // one line of what happens
    // Called when the steps are done, with the sheet still open.
    std::function<void(class ScriptPlayer&)> beforeClosing;
};

// The options of a popup's feature in the order in which its items number them, from 1.
std::vector<std::string_view> OfferedOptions(const PageControl& control, const CoreDriver& core);

class ScriptPlayer
{
public:
    // One at a time in a process.
    ScriptPlayer(PropertySheet& sheet, ScriptSettings settings);
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer&) = delete;
    ScriptPlayer& operator=(const ScriptPlayer&) = delete;

    // Shows the sheet until the script has closed it. Returns an empty text, or why it did not come to its
    // end.
    std::string Run();

    // Brings a page to the front; null when the sheet does not have it.
    HWND ShowPage(int index);
    int PageCount() const { return static_cast<int>(sheet_.Pages().size()); }
    PropertySheet& Sheet() { return sheet_; }
    std::string TabText(int index) const;

private:
    struct Failed
    {
        std::string reason;
    };

    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);

    void Tick();
    void Do(const Step& step);
    void Close(int button);
    void PressAndEnd(int button);

    HWND ShowNamedPage(PageName name);
    HWND UsableControl(const PageControl& control);
    void Set(const Step& step);
    void Choose(const Step& step);
    bool ChooseInPopup(const Step& step);
    bool ChooseOptionItem(const Step& step);
    void Check(const Step& step);
    void Press(const Step& step);
    void Show(const std::string& feature);
    std::string StateOf(const std::string& feature);
    std::string StateOf(const PageControl& control);
    void TakePicture(const std::filesystem::path& folder);
    void Tour(const std::filesystem::path& folder);

    PropertySheet& sheet_;
    ScriptSettings settings_;
    AnsweredMessageBoxes boxes_;
    std::size_t next_ = 0;
    bool busy_ = false;
    bool opened_ = false;
    bool closing_ = false;
    UINT_PTR timer_ = 0;
    std::string problem_;
    std::vector<std::filesystem::path> pictures_; // that were saved
};

} // namespace tintwerk
