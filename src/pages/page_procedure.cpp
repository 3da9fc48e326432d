#include "src/pages/page_procedure.h"

#include <cstdio>
#include <cstring>

#include "src/bindings/check_boxes.h"
#include "src/config/registry_values.h"
#include "src/features/constraints.h"
#include "src/features/control_access.h"
#include "src/features/page_settings.h"
#include "src/i18n/page_translation.h"
#include "src/ink/consumption_page.h"
#include "src/pages/bar_painting.h"
#include "src/pages/consumption_tabs.h"
#include "src/pages/control_embedding.h"
#include "src/pages/information_page.h"
#include "src/pages/number_field_controls.h"
#include "src/pages/page_centring.h"
#include "src/pages/page_controls.h"
#include "src/pages/page_events.h"
#include "src/pages/pictures.h"
#include "src/pages/slider_controls.h"
#include "src/records/process_values.h"
#include "src/records/sheet_record.h"
#include "src/resources/control_ids.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr size_t kLogoPathBytes =
    std::size_t{2} * kRegistryTextBytes + sizeof "\\oem\\"; // whatever the lengths
constexpr size_t kLogoNames = 250;                          // directory and file name together stay below
constexpr WPARAM kSheetPagesScreenPrintingDisables[] = {2, 3, 5}; // colours, correction, ink control

// A document page and what it stands for; what is missing makes it no page.
struct DocumentPage
{
    HWND window;
    const PageEntry* entry;

    explicit operator bool() const
    {
        return entry && entry->position < kPageKinds && entry->record && entry->record->context;
    }
    DWORD TabBit() const { return kPageKindTable[entry->position].tabBit; }
    SheetRecord& Record() const { return *entry->record; }
    SheetContext& Context() const { return *entry->record->context; }
    HWND Sheet() const { return GetParent(window); }
    // The window that carries the page's controls.
    HWND Content() const { return TabBit() == kConsumptionPage ? PaneOf(window) : window; }
    void MarkChanged() const { SendMessageW(Sheet(), PSM_CHANGED, reinterpret_cast<WPARAM>(window), 0); }
};

// The logo that an OEM supplies beside the configuration, for a GUI that is not the full one.
void ShowOemLogo(HWND page)
{
    const GuiChoice gui = Process().gui.Get();
    char directory[kRegistryTextBytes];
    if (gui.mode == 0 || (gui.mode & kGuiModeFull) || ReadConfigDir(directory) != 0) return;
    if (std::strlen(directory) + std::strlen(gui.oemLogoFileName) >= kLogoNames) return;
    char path[kLogoPathBytes];
    std::snprintf(path, sizeof path, "%s\\oem\\%s", directory, gui.oemLogoFileName);
    Trace(TEXT("UI:  Load OEMlogo path= %S\r\n"), path);
    ShowPicture(PictureSlot::A, GetDlgItem(page, IDC_MAIN_OEM_LOGO),
                static_cast<HBITMAP>(
                    LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)));
}

void InitialiseDocumentPage(const DocumentPage& page)
{
    const DWORD tabBit = page.TabBit();
    CentrePage(page.window, kPageKindTable[page.entry->position].centringControl);
    Trace(TEXT("UI:  INIT document %#x\r\n"), TraceNumber(page.entry));
    if (tabBit == kMainPage) ShowOemLogo(page.window);
    if (tabBit == kConsumptionPage) OnTabbedDialogInit(page.window);
    MyEmbedControls(tabBit, page.Context(), page.Content());
    Trace(TEXT("DLGINDEX=%d (%d)\n"), static_cast<int>(tabBit), 2);
    TranslateDialogPage(tabBit, page.window);
}

// lParam is the page record of the property sheet, whose own lParam was set when the page was added.
void Initialise(HWND window, LPARAM lParam, bool devicePage)
{
    Trace(TEXT("UI:  DevicePropPageProc - INIT - (%#x, %#x) entry\r\n"), TraceNumber(window),
          static_cast<int>(lParam));
    const auto* const sheetPage = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
    if (!sheetPage) return;
    SetWindowLongPtrW(window, GWLP_USERDATA, sheetPage->lParam);
    if (devicePage) {
        Trace(TEXT("UI:  INIT device\r\n"));
        if (const auto* record = reinterpret_cast<const SheetRecord*>(sheetPage->lParam))
            InitialiseInformationPage(window, *record);
        return;
    }
    const DocumentPage page{window, reinterpret_cast<const PageEntry*>(sheetPage->lParam)};
    if (page) InitialiseDocumentPage(page);
}

void OnDestroy(const DocumentPage& page)
{
    ForgetControls(page.TabBit(), page.Context(), page.Content());
    ReleaseTabs(page.window);
    if (page.TabBit() == kMainPage) {
        ReleasePicture(GetDlgItem(page.window, IDC_MAIN_OEM_LOGO));
        ReleasePictureSlots();
    }
    SetWindowLongPtrW(page.window, GWLP_USERDATA, 0); // what the controls still send has nobody to reach
}

// In screen printing mode the pages about colours have nothing to say.
void SwitchScreenPrinting(const DocumentPage& page)
{
    SheetContext& context = page.Context();
    const HWND checkBox = context.checkBoxes.windows[kCheckScreenPrinting];
    if (!checkBox) return;
    const bool on = IsChecked(checkBox);
    for (const WPARAM index : kSheetPagesScreenPrintingDisables)
        EnableChildren(reinterpret_cast<HWND>(SendMessageW(page.Sheet(), PSM_INDEXTOHWND, index, 0)), !on);
    if (!on) UpdateMediaModeControls(context, 0);
}

void OnCommand(const DocumentPage& page, int id, int code, HWND sender)
{
    if (!HasMark(sender, ControlMark::Popup) || code == CBN_SELENDOK) {
        page.MarkChanged();
        if (id == IDC_SCREEN_PRINTING) SwitchScreenPrinting(page);
        HandlePageEvent(page.Context(), id);
        Trace(TEXT("\n!!!COMMAND - ID=%d\n"), id);
    }
    if (code == EN_KILLFOCUS) CommitNumberField(page.Context(), sender);
}

void OnScroll(const DocumentPage& page, HWND control)
{
    if (!control) return;
    if (IsBoundSlider(page.Context(), control)) SetScrollValue(control);
    page.MarkChanged();
}

void OnTabChanged(const DocumentPage& page, HWND tabControl)
{
    page.Context().consumption.displayMode = static_cast<int>(SendMessageW(tabControl, TCM_GETCURSEL, 0, 0));
    DrawConsumptionPage(page.Context());
}

void OnApply(const DocumentPage& page)
{
    Trace(TEXT("UI:  !!!APPLY BUTTON !!!\r\n"));
    Trace(TEXT("--- tabpage = %d ---\n"), static_cast<int>(page.entry->position));
    SavePPDOptions(page.Context(), page.TabBit());
    const SheetRecord& record = page.Record();
    if (record.privateDevmode) ++record.privateDevmode->applyCount; // so that every apply changes the DEVMODE
    if (record.sheetFunction)
        record.sheetFunction(record.sheet, CPSFUNC_SET_RESULT, record.lastPageHandle, CPSUI_OK);
    SetWindowLongPtrW(page.window, DWLP_MSGRESULT, PSNRET_NOERROR);
}

INT_PTR OnNotify(const DocumentPage& page, const NMHDR& notification)
{
    switch (notification.code) {
    case UDN_DELTAPOS:
        if (StepNumberField(page.Context(), reinterpret_cast<const NMUPDOWN&>(notification)))
            page.MarkChanged();
        return 1;
    case TCN_SELCHANGE:
        OnTabChanged(page, notification.hwndFrom);
        return 0;
    case PSN_APPLY:
        OnApply(page);
        return 1;
    case PSN_KILLACTIVE:
    case PSN_SETACTIVE:
        return 1;
    case NM_RELEASEDCAPTURE:
        Trace(TEXT("UI:  NOTIFY RELEASEDCAPTURE code=%d!\r\n"), static_cast<int>(notification.code));
        return 1;
    default:
        return 0;
    }
}

INT_PTR HandleDocumentMessage(const DocumentPage& page, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NULL:
        HandlePageEvent(page.Context(), LOWORD(wParam));
        return 0;
    case WM_DESTROY:
        OnDestroy(page);
        return 0;
    case WM_DRAWITEM:
        if (lParam) PaintBar(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return 0;
    case WM_NOTIFY:
        return lParam ? OnNotify(page, *reinterpret_cast<const NMHDR*>(lParam)) : 0;
    case WM_COMMAND:
        OnCommand(page, LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam));
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        OnScroll(page, reinterpret_cast<HWND>(lParam));
        return 0;
    default:
        return 0;
    }
}

INT_PTR DevicePropPageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool devicePage)
{
    if (message == WM_INITDIALOG) {
        Initialise(window, lParam, devicePage);
        return 0;
    }
    if (devicePage) {
        if (message == WM_DESTROY) EndInformationPage(window);
        return 0;
    }
    const DocumentPage page{window,
                            reinterpret_cast<const PageEntry*>(GetWindowLongPtrW(window, GWLP_USERDATA))};
    return page ? HandleDocumentMessage(page, message, wParam, lParam) : 0;
}

} // namespace

INT_PTR CALLBACK DocumentPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DevicePropPageProc(page, message, wParam, lParam, false);
}

INT_PTR CALLBACK DevicePageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DevicePropPageProc(page, message, wParam, lParam, true);
}

} // namespace tintwerk
