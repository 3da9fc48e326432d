#include "host/sheet/property_sheet.h"

#include <algorithm>
#include <utility>

#include "src/sheets/page_list.h"

namespace tintwerk {

namespace {

std::optional<PageName> NameOf(WORD dialog)
{
    if (dialog == IDD_INFORMATION) return PageName::Information;
    for (const PageKind& kind : kPageKindTable) {
        const auto position = static_cast<std::size_t>(&kind - kPageKindTable.data());
        for (const PageList* const list : {&kLegacyPages, &kReducedPages, &kFullPages}) {
            if (dialog && (*list)[position] == dialog) return PageOfTab(kind.tabBit);
        }
    }
    return std::nullopt;
}

// The sheet function carries no data of its caller; a thread runs one sheet at a time.
thread_local PropertySheet* running = nullptr;

BOOL CALLBACK FindSheet(HWND window, LPARAM found)
{
    if (!FindWindowExW(window, nullptr, WC_TABCONTROLW, nullptr)) return TRUE;
    if (!SendMessageW(window, PSM_GETTABCONTROL, 0, 0)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

PropertySheet::PropertySheet(PluginSession& session, SheetKind kind, const WideString& printer,
                             HANDLE printerHandle, bool german, std::function<void()> applied)
    : session_(session), kind_(kind), printer_(printer), german_(german), applied_(std::move(applied))
{
    devmode_ = session.WholeDevmode(printer_.c_str());
    parameters_.cbSize = sizeof(OEMUIPSPARAM);
    parameters_.poemuiobj = session.Core().CoreObject();
    parameters_.hPrinter = printerHandle;
    parameters_.pPrinterName = printer_.data();
    parameters_.hModule = session.Module();
    parameters_.hOEMHeap = session.Heap();
    parameters_.pPublicDM = reinterpret_cast<PDEVMODEW>(devmode_.data());
    parameters_.pOEMDM = session.PrivateDevmode().data();
    parameters_.sheet = this;
}

std::string PropertySheet::Run()
{
    PropertySheet* const outer = running;
    running = this;
    DWORD result = CPSUI_CANCEL;
    const LONG shown =
        CommonPropertySheetUIW(nullptr, Callback, reinterpret_cast<LPARAM>(&parameters_), &result);
    running = outer;
    if (shown < 0 && problem_.empty())
        return "the property sheet could not be shown (system answer " + std::to_string(shown) + ")";
    return problem_;
}

HWND PropertySheet::Window() const
{
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindSheet, reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND PropertySheet::Tabs() const
{
    return reinterpret_cast<HWND>(SendMessageW(Window(), PSM_GETTABCONTROL, 0, 0));
}

int PropertySheet::CurrentPage() const
{
    const HWND tabs = Tabs();
    return tabs ? static_cast<int>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0)) : -1;
}

LONG CALLBACK PropertySheet::Callback(PPROPSHEETUI_INFO info, LPARAM lParam)
{
    auto* const parameters = reinterpret_cast<Parameters*>(info->lParamInit);
    return parameters->sheet->Call(*info, lParam);
}

// The plug-in gets the sheet's information with a sheet function and user data of its own.
LONG PropertySheet::Call(PROPSHEETUI_INFO& info, LPARAM lParam)
{
    // Newer systems ask something before the sheet begins; the core driver's plug-ins know the classic
    // reasons only.
    if (info.Reason > PROPSHEETUI_REASON_GET_ICON) return 1;
    systemFunction_ = info.pfnComPropSheet;
    PROPSHEETUI_INFO forPlugin = info;
    forPlugin.pfnComPropSheet = SheetFunction;
    forPlugin.UserData = pluginData_;
    const HRESULT answer = kind_ == SheetKind::Preferences
                               ? session_.Plugin().DocumentPropertySheets(&forPlugin, lParam)
                               : session_.Plugin().DevicePropertySheets(&forPlugin, lParam);
    pluginData_ = forPlugin.UserData;
    info.Result = forPlugin.Result;
    if (FAILED(answer)) {
        problem_ = "the plug-in refused to open its pages";
        return -1;
    }
    if (info.Reason == PROPSHEETUI_REASON_GET_INFO_HEADER && lParam)
        SetTitle(*reinterpret_cast<PROPSHEETUI_INFO_HEADER*>(lParam));
    return 1;
}

// The print folder, not the driver, names the sheet after the printer.
void PropertySheet::SetTitle(PROPSHEETUI_INFO_HEADER& header)
{
    if (kind_ == SheetKind::Preferences)
        title_ = german_ ? TEXT("Druckeinstellungen f\u00fcr ") + printer_
                         : printer_ + TEXT(" Printing Preferences");
    else
        title_ = german_ ? TEXT("Eigenschaften von ") + printer_ : printer_ + TEXT(" Properties");
    header.pTitle = title_.data();
    header.Flags = static_cast<WORD>((header.Flags & ~PSUIHDRF_PROPTITLE) | PSUIHDRF_EXACT_PTITLE);
}

LONG_PTR CALLBACK PropertySheet::SheetFunction(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2)
{
    PropertySheet* const self = running;
    if (!self || !self->systemFunction_) return 0;
    switch (function) {
    case CPSFUNC_ADD_PROPSHEETPAGEW: {
        auto& page = *reinterpret_cast<PROPSHEETPAGEW*>(lParam1);
        const bool isNumbered = !(page.dwFlags & PSP_DLGINDIRECT) && IS_INTRESOURCE(page.pszTemplate);
        const WORD dialog = isNumbered ? LOWORD(reinterpret_cast<ULONG_PTR>(page.pszTemplate)) : WORD{0};
        return self->AddPage(sheet, page, lParam2, {NameOf(dialog), dialog});
    }
    case CPSFUNC_ADD_PCOMPROPSHEETUIW:
        return self->AddOptionItems(sheet, lParam1, lParam2);
    case CPSFUNC_SET_RESULT:
        self->applied_();
        break;
    default:
        break;
    }
    return self->systemFunction_(sheet, function, lParam1, lParam2);
}

LONG_PTR PropertySheet::AddPage(HANDLE sheet, PROPSHEETPAGEW& page, LPARAM unused, SheetPage known)
{
    known.resource = page.pResource;
    known.procedure = page.pfnDlgProc;
    if (watcher_) page.pfnDlgProc = PageProcedure;
    const LONG_PTR handle =
        systemFunction_(sheet, CPSFUNC_ADD_PROPSHEETPAGEW, reinterpret_cast<LPARAM>(&page), unused);
    page.pfnDlgProc = known.procedure;
    if (handle > 0) pages_.push_back(known);
    return handle;
}

// Stands before the procedures of a watched sheet's pages.
INT_PTR CALLBACK PropertySheet::PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    PropertySheet& self = *running;
    const auto page = std::ranges::find_if(self.pages_, [=](const SheetPage& each) {
        return message == WM_INITDIALOG
                   ? each.resource == reinterpret_cast<const PROPSHEETPAGEW*>(lParam)->pResource
                   : each.window == window;
    });
    if (page == self.pages_.end()) return FALSE;
    page->window = window;
    const bool answers = std::exchange(self.pageAnswers_, true);
    if (!answers) self.watcher_(*page, message, wParam, lParam);
    const INT_PTR answer = page->procedure(window, message, wParam, lParam);
    self.pageAnswers_ = answers;
    return answer;
}

LONG_PTR PropertySheet::AddOptionItems(HANDLE sheet, LPARAM description, LPARAM pageCount)
{
    auto* const count = reinterpret_cast<DWORD*>(pageCount);
    const LONG_PTR drawnBySystem =
        systemFunction_(sheet, CPSFUNC_ADD_PCOMPROPSHEETUIW, description, pageCount);
    const auto* const wanted = reinterpret_cast<const COMPROPSHEETUI*>(description);
    const auto name = [wanted] {
        return wanted->pDlgPage == CPSUI_PDLGPAGE_DOCPROP ? PageName::Layout : PageName::Advanced;
    };
    if (drawnBySystem > 0) {
        pages_.push_back({name()});
        return drawnBySystem;
    }
    if (count) *count = 0;
    if (const LONG problem = OptionItemsPage::Check(wanted)) return problem;
    auto page = std::make_unique<OptionItemsPage>(*wanted, german_, applied_);
    const LONG_PTR handle = AddPage(sheet, page->Page(), 0, {name(), 0, page.get()});
    if (handle <= 0) return handle;
    if (count) *count = 1;
    itemPages_.push_back(std::move(page));
    return handle;
}

} // namespace tintwerk
