// Opens the plug-in's sheet as the core driver does: the system's common property sheet UI calls the plug-in
// through here, and pages of option items that the system leaves to its caller are added as pages of the
// host's own.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/sheet/option_items_page.h"
#include "host/sheet/plugin_session.h"
#include "host/sheet/script.h"

namespace tintwerk {

enum class SheetKind
{
    Preferences,
    Properties
};

struct SheetPage
{
    std::optional<PageName> name;     // nothing for a page that this host does not know
    WORD dialog = 0;                  // number of its dialog template; 0 for option items
    OptionItemsPage* items = nullptr; // null for a dialog page, and where the system draws the items
    HWND window = nullptr;            // of a watched sheet, from the page's first showing
    LPCDLGTEMPLATEW resource = nullptr;
    DLGPROC procedure = nullptr;
};

// Something that is said to a page from outside: by its controls, or by the sheet.
using PageWatcher = std::function<void(const SheetPage& page, UINT message, WPARAM wParam, LPARAM lParam)>;

class PropertySheet
{
public:
    // Applied is called after each page that was applied.
    PropertySheet(PluginSession& session, SheetKind kind, const WideString& printer, HANDLE printerHandle,
                  bool german, std::function<void()> applied);
    PropertySheet(const PropertySheet&) = delete;
    PropertySheet& operator=(const PropertySheet&) = delete;

    // The watcher hears every message before its page does, but none that a page causes while it answers
    // another. To be set before the sheet runs.
    void Watch(PageWatcher watcher) { watcher_ = std::move(watcher); }
    // Shows the sheet until it is closed. Returns an empty text, or why it could not be shown.
    std::string Run();

    // While it runs, and what is left of it afterwards.
    std::span<const SheetPage> Pages() const { return pages_; }
    HWND Window() const; // null while there is none
    HWND Tabs() const;
    int CurrentPage() const; // -1 for none
    PluginSession& Session() { return session_; }

private:
    struct Parameters : OEMUIPSPARAM
    {
        PropertySheet* sheet;
    };

    static LONG CALLBACK Callback(PPROPSHEETUI_INFO info, LPARAM lParam);
    static LONG_PTR CALLBACK SheetFunction(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2);
    LONG Call(PROPSHEETUI_INFO& info, LPARAM lParam);
    void SetTitle(PROPSHEETUI_INFO_HEADER& header);
    static INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LONG_PTR AddPage(HANDLE sheet, PROPSHEETPAGEW& page, LPARAM unused, SheetPage known);
    LONG_PTR AddOptionItems(HANDLE sheet, LPARAM description, LPARAM pageCount);

    PluginSession& session_;
    SheetKind kind_;
    WideString printer_;
    WideString title_;
    bool german_;
    std::function<void()> applied_;
    PageWatcher watcher_;
    bool pageAnswers_ = false;
    Parameters parameters_{};
    std::vector<BYTE> devmode_;
    PFNCOMPROPSHEET systemFunction_ = nullptr;
    ULONG_PTR pluginData_ = 0;
    std::vector<SheetPage> pages_;
    std::vector<std::unique_ptr<OptionItemsPage>> itemPages_;
    std::string problem_;
};

} // namespace tintwerk
