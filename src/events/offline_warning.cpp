#include "src/events/offline_warning.h"

#include <cstddef>
#include <cstring>
#include <iterator>

#include "src/i18n/string_table.h"
#include "src/records/spooler_record.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr char kWarningTitle[] = "Attention:";
constexpr char kWarningText[] =
    "The printer seems to be offline. Please note that the print preview will only be invoked when "
    "the printer will come online again.";
constexpr WCHAR kTestPrint[] = TEXT("Test print for default settings");

const char* InLanguage(const char* english, const char* language)
{
    return std::strcmp(language, "en") == 0 ? english : TranslateEnglishText(english);
}

bool IsTestPrint(const WCHAR* documentName)
{
    return documentName && CompareStringOrdinal(documentName, -1, kTestPrint, -1, FALSE) == CSTR_EQUAL;
}

// False when there is no description to ask for: nobody is warned then, whatever the status says.
bool ReadPrinterState(HANDLE printer, PrinterState& state)
{
    state = {};
    DWORD needed = 0;
    alignas(PRINTER_INFO_6) BYTE status[128] = {};
    if (GetPrinterW(printer, 6, status, sizeof status, &needed))
        state.status = reinterpret_cast<const PRINTER_INFO_6*>(status)->dwStatus;

    bool known = false;
    const SpoolerRecord<PRINTER_INFO_2W> description([&](LPBYTE buffer, DWORD size, DWORD* bytes) {
        if (buffer) {
            known = true;
            Trace(TEXT("pPrinterInfo2 is %d\n"), TraceNumber(buffer));
        }
        const BOOL done = GetPrinterW(printer, 2, buffer, size, bytes);
        if (!buffer && *bytes) Trace(TEXT("GetPrinter needs %d Bytes\n"), static_cast<int>(*bytes));
        return done;
    });
    if (description) state.attributes = description->Attributes;
    return known;
}

// A service has windows that nobody sees and nobody can close.
bool SomebodyCanAnswer()
{
    USEROBJECTFLAGS station{};
    return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &station, sizeof station,
                                      nullptr) ||
           (station.dwFlags & WSF_VISIBLE);
}

} // namespace

const char* ChooseJobLanguage(IPrintCoreHelperPS* helper)
{
    PCSTR* options = nullptr;
    DWORD count = 0;
    const bool listed =
        helper && SUCCEEDED(helper->EnumOptions("halvLanguage", &options, &count)) && options && count > 0;
    return LanguageOfFirstOption(listed ? options[0] : nullptr);
}

bool WantsPreview(const JobSettings& job, IPrintCoreHelperPS* helper)
{
    constexpr SIZE_T kHeader = offsetof(DEVMODEW, dmFields);
    if (!job.devmode || IsTestPrint(job.documentName)) return false;
    Trace(TEXT("Got Job Info\n\r"));
    if (!helper || job.devmodeRoom < kHeader) return false;
    const DWORD size = DWORD{job.devmode->dmSize} + job.devmode->dmDriverExtra;
    // A DEVMODE that claims more than the spooler sent is not passed on.
    if (size > job.devmodeRoom) return false;
    PCSTR option = nullptr;
    return SUCCEEDED(helper->GetOption(job.devmode, size, "halvPreview", &option)) && option &&
           option[0] == '1';
}

void WarnThatPreviewComesLater(const char* language)
{
    if (!SomebodyCanAnswer()) return;
    WCHAR title[128] = {};
    WCHAR text[256] = {};
    _snwprintf(title, std::size(title) - 1, TEXT("%.127S"), InLanguage(kWarningTitle, language));
    MultiByteToWideChar(CP_UTF8, 0, InLanguage(kWarningText, language), -1, text,
                        static_cast<int>(std::size(text)) - 1);
    MessageBoxW(nullptr, text, title, MB_OK | MB_ICONWARNING | MB_SYSTEMMODAL);
}

void WarnIfPrinterIsOffline(HANDLE printer, DWORD jobId, IPrintCoreHelperPS* helper)
{
    const char* const language = ChooseJobLanguage(helper);

    const SpoolerRecord<JOB_INFO_2W> job([printer, jobId](LPBYTE buffer, DWORD size, DWORD* needed) {
        return GetJobW(printer, jobId, 2, buffer, size, needed);
    });
    if (!job) return;
    const JobSettings settings{job.Text(job->pDocument), job->pDevMode, job.RoomAt(job->pDevMode)};
    PrinterState state;
    if (WantsPreview(settings, helper) && ReadPrinterState(printer, state) && IsOffline(state))
        WarnThatPreviewComesLater(language);
}

} // namespace tintwerk
