// A page of option items, drawn by the host where the system's common property sheet UI leaves them to its
// caller: the standard document items as boxes with radio buttons, a list of items as groups of labelled
// combo boxes. Choices go into the items; PSN_APPLY tells the owner of the items as the system does.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/ppd/ppd.h"
#include "host/ppd/wide_text.h"
#include "platform/win32.h"

namespace tintwerk {

class OptionItemsPage
{
public:
    // 0 when the description can be shown, otherwise the system's own error number (ERR_CPSUI_...).
    static LONG Check(const COMPROPSHEETUI* description);

    // The description must have passed Check; its items must outlive the page. Applied is called after each
    // apply.
    OptionItemsPage(const COMPROPSHEETUI& description, bool german, std::function<void()> applied);
    OptionItemsPage(const OptionItemsPage&) = delete;
    OptionItemsPage& operator=(const OptionItemsPage&) = delete;

    // The page for the property sheet; valid as long as this object.
    PROPSHEETPAGEW& Page() { return page_; }

    // How scripts work the page: an item by its number, its options by theirs.
    int ItemCount() const { return description_.cOptItem; }
    const OPTITEM& Item(int item) const { return description_.pOptItem[item]; }
    int OptionCount(int item) const;
    const WCHAR* OptionTextOf(int item, int option) const;
    // By the keywords of feature and option, of the PPD or of the core driver's own. -1 when there is none.
    int FindItem(std::string_view feature, const Ppd& ppd) const;
    int FindOption(int item, std::string_view feature, std::string_view option, const Ppd& ppd) const;
    // As the keyboard does: sets the control and tells the page. False when there is no such option.
    bool Choose(int item, int option);
    struct Choice
    {
        int item, option;
    };
    // What a notification of a control chooses; nothing when it is about something else.
    std::optional<Choice> ChoiceAt(int id, int code) const;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    const WCHAR* ItemText(int item) const;
    bool HasRadioButtons(int item) const;
    bool HasPicture(int item) const;
    void BuildTemplate();
    void AddControl(DWORD style, WORD windowClass, int id, const WCHAR* text);
    void Fill();
    void Arrange();
    void ArrangeDocument(int width);
    void ArrangeList(int width);
    void PlaceRadioGroup(int item, int x, int y, int width);
    void PlaceCombo(int item, int x, int y, int width);
    void Place(int id, int x, int y, int width, int height);
    int GroupHeight(int item) const;
    RECT ClientArea() const;
    void SetScrollRange(int height);
    void ScrollTo(int position);
    void Scroll(int code, int thumb);
    void Reveal(HWND control);
    void OnCommand(int id, int code, HWND control);
    void Select(int item, int option);
    // The owner of the items is told as the system tells it. Returns its CPSUICB_ACTION_...
    LONG TellOwner(WORD reason, OPTITEM& current, LONG previous, LONG result);
    bool Apply();
    void DrawPicture(const DRAWITEMSTRUCT& draw) const;

    COMPROPSHEETUI description_;
    bool german_;
    bool isDocumentPage_;
    std::function<void()> applied_;
    std::vector<WORD> template_;
    WORD controls_ = 0;
    PROPSHEETPAGEW page_{};
    HWND window_ = nullptr;
    int scrolled_ = 0; // pixels
    int height_ = 0;   // of the whole content, in pixels
    bool arranging_ = false;
};

} // namespace tintwerk
