#include "src/sheets/document_sheet.h"

#include "src/features/initial_read.h"
#include "src/i18n/string_table.h"
#include "src/i18n/texts.h"
#include "src/pages/page_procedure.h"
#include "src/records/process_values.h"
#include "src/resources/control_ids.h"
#include "src/sheets/gui_features.h"
#include "src/sheets/option_pages.h"
#include "src/sheets/page_list.h"
#include "src/sheets/printer_identity.h"
#include "src/sheets/sheet_calls.h"
#include "src/sheets/sheet_lifetime.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr SIZE_T kLanguageReplyBytes = 1024;

// German when the PPD lists German first; what the user selected does not matter.
const char* SheetLanguage(POEMUIOBJ object, IPrintCoreUI2* helper)
{
    char options[kLanguageReplyBytes] = {};
    DWORD needed = 0;
    if (!helper || FAILED(helper->EnumOptions(object, 0, "halvLanguage", options, sizeof(options), &needed)))
        return "en";
    return LanguageOfFirstOption(options);
}

void FillRecord(SheetRecord& record, IPrintCoreUI2* helper)
{
    const OEMUIPSPARAM& parameters = *record.parameters;
    record.coreObject = parameters.poemuiobj;
    record.coreHelper = helper;
    record.heap = parameters.hOEMHeap;
    record.privateDevmode = static_cast<OemPrivateDevmode*>(parameters.pOEMDM);
    Trace(TEXT("UI:  set poemuiobj to %#x\r\n"), TraceNumber(record.coreObject));
    CoreArea& core = record.context->core;
    core.object = record.coreObject;
    core.helper = record.coreHelper;
    core.heap = record.heap;
}

// The last sheet that opens decides for the whole process.
void PublishGuiChoice(const GuiChoice& choice)
{
    Trace(TEXT("UI:  halvGUIMODE= %d\n"), choice.mode);
    Trace(TEXT("UI:  halvOemLogoFilename= %S\n"), choice.oemLogoFileName);
    Process().gui.Set(choice);
}

void AddTabPage(SheetRecord& record, const PROPSHEETUI_INFO& info, DWORD position, WORD dialog,
                const WCHAR* title)
{
    PageEntry& entry = record.pages[position];
    entry.position = position;
    entry.record = &record;
    Trace(TEXT("Add Page #%d - tabidx = %d\n"), static_cast<int>(position + 1),
          static_cast<int>(kPageKindTable[position].tabBit));
    entry.pageHandle = AddDialogPage(record, info, dialog, title, DocumentPageProc, &entry);
}

const PageList& PagesOfThisWindows(int guiMode)
{
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    GetVersionExW(&version);
    return ChoosePageList(version.dwMajorVersion, version.dwMinorVersion, guiMode);
}

// The layout page follows the main page, whatever else is shown.
void AddTabPages(SheetRecord& record, const PROPSHEETUI_INFO& info, const GuiFeatures& gui)
{
    Trace(TEXT("DokumentPropSheets - Add Tab Pages\n"));
    const PageList& pages = PagesOfThisWindows(gui.choice.mode);
    for (DWORD position = 0; pages[position]; ++position) {
        if (pages[position] == IDD_SCREEN_PRINTING && !gui.screenPrinting) continue;
        const PageKind& kind = kPageKindTable[position];
        const WideText title = CopyWideFromUtf8(FindDefaultString(kind.titleKey, 0).Get());
        if (kind.tabBit == kColorPage) AddLayoutPage(record, info);
        if (ShowsPage(kind, gui.choice.mode))
            AddTabPage(record, info, position, pages[position], title.get());
    }
}

HRESULT OpenDocumentSheet(PROPSHEETUI_INFO& info, IPrintCoreUI2* helper)
{
    Trace(TEXT("UI:  DocPropSheet - INIT\n"));
    auto* const parameters = reinterpret_cast<OEMUIPSPARAM*>(info.lParamInit);
    SheetRecord* const record = parameters ? CreateSheet(*parameters) : nullptr;
    if (!record) return E_FAIL;
    info.UserData = reinterpret_cast<ULONG_PTR>(record);

    InitStringTable(SheetLanguage(parameters->poemuiobj, helper));
    IdentifyPrinter(*record);
    FillRecord(*record, helper);
    Trace(TEXT("UI:  DocPropSheet - INITPPD\n"));
    InitPPDSettings(*record->context);
    const GuiFeatures gui = ReadGuiFeatures(record->context->core);
    PublishGuiChoice(gui.choice);
    AddTabPages(*record, info, gui);
    AddAdvancedPages(*record, info);
    info.Result = 1;
    return 1;
}

HRESULT CloseSheet(PROPSHEETUI_INFO& info)
{
    ReleaseSheet(reinterpret_cast<SheetRecord*>(info.UserData));
    info.UserData = 0;
    info.Result = 1;
    return 1;
}

} // namespace

HRESULT hrOEMDocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam, IPrintCoreUI2* helper)
{
    if (!AcceptSheetCall(TEXT("hrOEMDocumentPropertySheets"), info, lParam)) return E_FAIL;
    switch (info->Reason) {
    case PROPSHEETUI_REASON_INIT:
        return OpenDocumentSheet(*info, helper);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
        GiveSheetTitle(*info, lParam, TEXT("Print"));
        return 1;
    case PROPSHEETUI_REASON_DESTROY:
        return CloseSheet(*info);
    case PROPSHEETUI_REASON_SET_RESULT:
        Trace(TEXT("PROPSHEET - REASON SET RESULT\n"));
        TakeSheetResult(*info, lParam);
        return 0;
    case PROPSHEETUI_REASON_GET_ICON:
        info->Result = 0;
        return 1;
    default:
        return 1; // reasons that a later Windows may bring
    }
}

} // namespace tintwerk
