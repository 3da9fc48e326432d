// When a document has started, a user who asked for the preview of a printer that is offline is told that it
// will come later. The decisions take plain values, so that they can be made for jobs that no spooler knows.
#pragma once

#include "platform/coredriver.h"

namespace tintwerk {

// The whole of it for a job of the spooler. Nothing that goes wrong here fails the job; helper may be null.
void WarnIfPrinterIsOffline(HANDLE printer, DWORD jobId, IPrintCoreHelperPS* helper);

struct JobSettings
{
    const WCHAR* documentName; // null for a job without a name
    const DEVMODEW* devmode;   // null for a job without settings
    SIZE_T devmodeRoom;        // bytes that may be read at devmode
};

struct PrinterState
{
    DWORD status;     // PRINTER_STATUS_...
    DWORD attributes; // PRINTER_ATTRIBUTE_...
};

// "de" or "en", from the first option of the printer's language feature.
const char* ChooseJobLanguage(IPrintCoreHelperPS* helper);

// Whether the job's settings switch the print preview on. A test print of the default settings never shows
// it.
bool WantsPreview(const JobSettings& job, IPrintCoreHelperPS* helper);

constexpr bool IsOffline(const PrinterState& printer)
{
    return (printer.status & PRINTER_STATUS_OFFLINE) || (printer.attributes & PRINTER_ATTRIBUTE_WORK_OFFLINE);
}

// Shows the warning and waits for the user, where there can be one.
void WarnThatPreviewComesLater(const char* language);

} // namespace tintwerk
