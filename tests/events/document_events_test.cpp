// The events of a print job: which are wanted, the print server's start, the warning for an offline printer,
// and a spooler that answers with anything.
#include "src/events/document_events.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "platform/function_hook.h"
#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "src/events/offline_warning.h"
#include "tests/support/fake_core.h"
#include "tests/support/installed_value.h"
#include "tests/support/message_boxes.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = DebugLines::Text;

constexpr INT kStarted = 13;
constexpr INT kQueryFilter = 14;
constexpr DWORD kJob[] = {7, 0xFFFFFFFF};
constexpr DWORD kOffline = PRINTER_STATUS_OFFLINE;

std::vector<BYTE> Devmode()
{
    std::vector<BYTE> bytes(sizeof(DEVMODEW) + 36, 0xEE);
    auto& devmode = *reinterpret_cast<DEVMODEW*>(bytes.data());
    devmode.dmSize = sizeof devmode;
    devmode.dmDriverExtra = 36;
    return bytes;
}

struct StartedProcess
{
    std::string commandLine;
    std::string directory;
    bool plain; // detached, with no application name, environment, handles or window of ours
};

// What was asked to be started, which nothing is; the handles given out and not closed.
std::vector<StartedProcess> started;
std::set<HANDLE> open;
DWORD startError;
decltype(&CloseHandle) closeHandle;

BOOL WINAPI RecordProcess(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                          BOOL inherit, DWORD flags, LPVOID environment, LPCSTR directory,
                          LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information)
{
    STARTUPINFOA empty{};
    empty.cb = sizeof empty;
    const bool isEmpty = std::memcmp(&empty, startup, sizeof empty) == 0;
    started.push_back({commandLine, directory,
                       !application && !inherit && !environment && flags == DETACHED_PROCESS && isEmpty});
    SetLastError(startError);
    if (startError) return FALSE;
    *information = {reinterpret_cast<HANDLE>(0x7E570004), reinterpret_cast<HANDLE>(0x7E570008), 0, 0};
    open = {information->hProcess, information->hThread};
    return TRUE;
}

BOOL WINAPI CloseRecorded(HANDLE handle)
{
    return open.erase(handle) > 0 || closeHandle(handle);
}

// An offline printer with a job that wants the preview, and a print server.
class DocumentEvents : public testing::Test
{
protected:
    DocumentEvents()
    {
        started.clear();
        startError = 0;
        ReplaceFunction("CreateProcessA", &RecordProcess);
        closeHandle = ReplaceFunction("CloseHandle", &CloseRecorded);
        UseMemorySpooler();
        SetPrinter(kOffline, 0, {TEXT("Poster"), Devmode()});
        WCHAR name[] = TEXT("P");
        EXPECT_TRUE(OpenPrinterW(name, printer.Receive(), nullptr));
        helper.selected["halvPreview"] = "1";
    }
    ~DocumentEvents() override
    {
        printer.Reset();
        StopMemorySpooler();
        RestoreFunction("CloseHandle");
        RestoreFunction("CreateProcessA");
    }

    static void SetPrinter(DWORD status, DWORD attributes, const MemorySpooler::Job& job)
    {
        MemorySpooler::Printer description;
        description.name = TEXT("P");
        description.status = status;
        description.attributes = attributes;
        description.jobs[kJob[0]] = job;
        TheMemorySpooler().SetPrinter(description);
    }

    INT Send(INT event, const void* in = nullptr, ULONG inSize = 0, void* out = nullptr, ULONG outSize = 0)
    {
        INT result = 99;
        EXPECT_EQ(S_OK, HandleDocumentEvent(printer.Get(), event, inSize, const_cast<void*>(in), outSize, out,
                                            &result, &helper));
        return result;
    }
    // Starts a job. Returns the number of boxes that the user sees.
    size_t Warnings(const void* job = kJob, ULONG size = sizeof kJob[0])
    {
        boxes.shown.clear();
        EXPECT_EQ(1, Send(kStarted, job, size));
        return boxes.shown.size();
    }

    const InstalledValue directory{"InstallDir", "C:\\A"}, server{"PrintServerCmd", "s.exe"};
    PrinterHandle printer;
    FakeHelperPS helper;
    MessageBoxes boxes;
    DebugLines lines;
};

TEST_F(DocumentEvents, AreHandledByNumber)
{
    for (INT event = -1; event <= 17; ++event) {
        const bool wanted = event == 1 || event == 5 || event == kStarted || event == kQueryFilter;
        const size_t before = started.size();
        EXPECT_EQ(wanted ? 1 : 0, Send(event)) << event;
        EXPECT_EQ(event == kStarted ? 1u : 0u, started.size() - before) << event;
    }
    EXPECT_TRUE(lines.Contains(TEXT("UI:  IOemUI: DocumentEvent entry. iEsc=13\r\n")));
    startError = ERROR_ACCESS_DENIED;
    Warnings();
    EXPECT_TRUE(lines.Contains(TEXT("UI:  CreateProcess failed  error(5)!\r\n")));
    EXPECT_EQ(S_OK, HandleDocumentEvent(nullptr, 1, 0, nullptr, 0, nullptr, nullptr, nullptr));
}

TEST_F(DocumentEvents, AnswerTheFilterWhereThereIsRoom)
{
    const struct
    {
        const char* what;
        UINT allocated;
        ULONG outSize;
        bool written;
    } cases[] = {{"two", 2, 24, true},
                 {"a count beyond the buffer", 0xFFFFFFFF, 23, false},
                 {"one", 1, 24, false},
                 {"no whole record", 2, 15, false}};
    for (const auto& row : cases) {
        UINT filter[] = {20, row.allocated, 77, 42, 1001, 1002, 1003};
        lines.Take();
        EXPECT_EQ(1, Send(kQueryFilter, nullptr, 0, filter, row.outSize)) << row.what;
        const std::vector<UINT> left(filter + 2, filter + 7);
        EXPECT_EQ(row.written ? (std::vector<UINT>{77, 2, 5, 13, 1003})
                              : (std::vector<UINT>{77, 42, 1001, 1002, 1003}),
                  left)
            << row.what;
        EXPECT_EQ(row.outSize >= 16, lines.Contains(TEXT("elementsReturned=42\r\n"))) << row.what;
    }
    EXPECT_EQ(1, Send(kQueryFilter, nullptr, 0, nullptr, 100));
}

TEST_F(DocumentEvents, StartThePrintServerForEveryJobWhenBothValuesNameIt)
{
    const std::string a127(127, 'a'), a128(128, 'a');
    const struct
    {
        std::string directory;
        std::string command;
        std::string commandLine;
    } cases[] = {{"C:\\A", "bin\\srv.exe -q", "C:\\A\\bin\\srv.exe -q"},
                 {a128, a128, a127 + "\\" + a127},
                 {"", "", "\\"}};
    for (const auto& row : cases) {
        const InstalledValue folder("InstallDir", row.directory), command("PrintServerCmd", row.command);
        EXPECT_EQ(0u, Warnings(nullptr)); // a job that the spooler does not know
        const StartedProcess& process = started.back();
        EXPECT_EQ(row.commandLine, process.commandLine);
        EXPECT_EQ(row.directory, process.directory);
        EXPECT_TRUE(process.plain);
        EXPECT_TRUE(open.empty());
    }
    for (const char* name : {"InstallDir", "PrintServerCmd"}) {
        const InstalledValue value(name, "a");
        Warnings();
    }
    EXPECT_TRUE(lines.Contains(TEXT("reg value PrintServerCmd not found\n")));
    EXPECT_TRUE(lines.Contains(TEXT("reg value InstallDir not found\n")));
    EXPECT_EQ(std::size(cases), started.size());
}

// The window station's flags.
constexpr DWORD kUnknownStation = ~0u;
DWORD station;

BOOL WINAPI TellStation(HANDLE, int kind, LPVOID information, DWORD size, LPDWORD)
{
    if (kind != UOI_FLAGS || size < sizeof(USEROBJECTFLAGS) || station == kUnknownStation) return FALSE;
    *static_cast<USEROBJECTFLAGS*>(information) = {FALSE, FALSE, station};
    return TRUE;
}

TEST_F(DocumentEvents, WarnWhenThePreviewMustWait)
{
    const DWORD away = PRINTER_ATTRIBUTE_WORK_OFFLINE;
    const std::optional<Text> poster = TEXT("Poster"), test = TEXT("Test print for default settings");
    const struct
    {
        const char* what;
        const char* preview;
        DWORD status;
        DWORD attributes;
        std::optional<Text> document;
        bool devmode;
        size_t warnings;
        DWORD station = WSF_VISIBLE;
    } cases[] = {
        {"works offline", "1", 0, away, poster, true, 1},
        {"is offline", "1On", kOffline | 0x400, 0, poster, true, 1},
        {"is online", "1", PRINTER_STATUS_PAUSED, 0x40, poster, true, 0},
        {"preview is off", "0", kOffline, away, poster, true, 0},
        {"preview is neither", "", kOffline, away, poster, true, 0},
        {"no such feature", nullptr, kOffline, away, poster, true, 0},
        {"test print", "1", kOffline, away, test, true, 0},
        {"nearly a test print", "1", kOffline, away, *test + TEXT("!"), true, 1},
        {"document without a name", "1", kOffline, away, std::nullopt, true, 1},
        {"job without settings", "1", kOffline, away, poster, false, 0},
        {"a service, which nobody can answer", "1", kOffline, away, poster, true, 0, 0},
        {"nobody knows who is there", "1", kOffline, away, poster, true, 1, kUnknownStation},
    };
    ReplaceFunction("GetUserObjectInformationW", &TellStation);
    for (const auto& row : cases) {
        SetPrinter(row.status, row.attributes, {row.document, row.devmode ? Devmode() : std::vector<BYTE>()});
        helper.selected.clear();
        if (row.preview) helper.selected["halvPreview"] = row.preview;
        station = row.station;
        EXPECT_EQ(row.warnings, Warnings()) << row.what;
    }
    RestoreFunction("GetUserObjectInformationW");
    EXPECT_EQ(std::size(cases), started.size()); // the print server's
    EXPECT_EQ("halvPreview", helper.asked);
    EXPECT_EQ(sizeof(DEVMODEW) + 36, helper.askedSize);
}

TEST_F(DocumentEvents, AskTheSpoolerForTheJobOfTheNumberGiven)
{
    EXPECT_EQ(1u, Warnings(kJob, sizeof kJob));
    const std::vector<Text> told = lines.Lines();
    EXPECT_EQ(TEXT("Got Job Info\n\r"), told.at(told.size() - 3));
    EXPECT_TRUE(told[told.size() - 2].starts_with(TEXT("GetPrinter needs "))); // a number follows
    EXPECT_TRUE(told[told.size() - 1].starts_with(TEXT("pPrinterInfo2 is ")));
    EXPECT_EQ(0u, Warnings(kJob, 3));
    EXPECT_EQ(0u, Warnings(nullptr));
}

TEST_F(DocumentEvents, SpeakTheLanguageOfThePrinter)
{
    using Options = std::vector<const char*>;
    for (const Options& options :
         {Options{"de", "en"}, {"en", "de"}, {"deutsch"}, {"DE"}, {"da"}, {"nl_de"}, {}}) {
        const bool isGerman = !options.empty() && std::string_view(options[0]).starts_with("de");
        helper.offered["halvLanguage"] = options;
        ASSERT_EQ(1u, Warnings());
        EXPECT_TRUE(boxes.shown[0].text.starts_with(isGerman ? TEXT("Der Drucker ") : TEXT("The printer ")));
        EXPECT_EQ(isGerman ? TEXT("Achtung:") : TEXT("Attention:"), boxes.shown[0].caption);
        EXPECT_EQ(UINT{MB_OK | MB_ICONWARNING | MB_SYSTEMMODAL}, boxes.shown[0].type);
        EXPECT_EQ(nullptr, boxes.shown[0].owner);
    }
    helper.offered["halvLanguage"] = {"de"};
    Warnings();
    boxes.shown.clear();
    HandleDocumentEvent(printer.Get(), kStarted, sizeof kJob, const_cast<DWORD*>(kJob), 0, nullptr, nullptr,
                        nullptr);
    EXPECT_TRUE(boxes.shown.empty()); // without a helper nobody knows whether a preview is wanted
}

// What GetJobW answers. The document's name, if any, lies behind the record.
struct JobAnswer
{
    DWORD needed;
    BOOL succeeds;
    LONG_PTR devmode; // offset from the record
    WORD devmodeSize;
    BYTE filling = 0;
    int fetched = 0; // calls with a buffer
} jobAnswer;

BOOL WINAPI AnswerJob(HANDLE, DWORD, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    *needed = jobAnswer.needed;
    if (!buffer) return FALSE;
    ++jobAnswer.fetched;
    std::memset(buffer, jobAnswer.filling, size);
    if (size < offsetof(JOB_INFO_2W, pSecurityDescriptor)) return jobAnswer.succeeds;
    auto& job = *reinterpret_cast<JOB_INFO_2W*>(buffer);
    job.pDocument = jobAnswer.filling ? reinterpret_cast<LPWSTR>(&job + 1) : nullptr;
    job.pDevMode = reinterpret_cast<LPDEVMODEW>(reinterpret_cast<LONG_PTR>(buffer) + jobAnswer.devmode);
    if (static_cast<size_t>(jobAnswer.devmode) + sizeof(DEVMODEW) <= size) {
        job.pDevMode->dmSize = jobAnswer.devmodeSize;
        job.pDevMode->dmDriverExtra = 0;
    }
    return jobAnswer.succeeds;
}

TEST_F(DocumentEvents, SurviveAnySpooler)
{
    constexpr DWORD kRecord = sizeof(JOB_INFO_2W), kRoom = kRecord + sizeof(DEVMODEW);
    constexpr WORD kDevmode = sizeof(DEVMODEW);
    const struct
    {
        const char* what;
        JobAnswer answer;
        size_t warnings;
    } cases[] = {
        {"honest", {kRoom, TRUE, kRecord, kDevmode}, 1},
        {"needs nothing", {0, TRUE, kRecord, kDevmode}, 0},
        {"fails with the buffer", {kRoom, FALSE, kRecord, kDevmode}, 0},
        {"less than a record", {3, TRUE, 0, 0}, 0},
        {"settings in the record's missing end", {kRecord - 8, TRUE, kRecord - 4, 0}, 0},
        {"more than there is memory", {0xFFFFFFF0, FALSE, 0, 0}, 0},
        {"settings larger than the record", {kRoom, TRUE, kRecord, kDevmode + 1}, 0},
        {"settings behind the record", {kRoom, TRUE, kRoom, kDevmode}, 0},
        {"settings cut short", {kRecord + 20, TRUE, kRecord, 20}, 0},
        {"endless document name", {kRoom, TRUE, kRecord, kDevmode, 0x41}, 1},
    };
    ReplaceFunction("GetJobW", &AnswerJob);
    for (const auto& row : cases) {
        jobAnswer = row.answer;
        HeapWatch heaps;
        EXPECT_EQ(row.warnings, Warnings()) << row.what;
        EXPECT_EQ(0, heaps.LiveBlocks()) << row.what;
        const bool sensible = jobAnswer.needed > 0 && jobAnswer.needed < 0x1000000;
        EXPECT_EQ(sensible ? 1 : 0, jobAnswer.fetched) << row.what;
    }
    RestoreFunction("GetJobW");
}

TEST_F(DocumentEvents, DoNotWarnOfAPrinterThatNobodyDescribes)
{
    static DWORD status, needs;
    static BOOL answers;
    ReplaceFunction(
        "GetPrinterW", +[](HANDLE, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
            if (level == 6) std::memcpy(buffer, &status, sizeof status);
            if (level == 6) return TRUE;
            *needed = needs;
            if (buffer) std::memset(buffer, 0xFF, size);
            return buffer && answers;
        });
    constexpr DWORD kRecord = sizeof(PRINTER_INFO_2W);
    for (const DWORD told : {DWORD{0}, kOffline})
        for (const auto& [size, answer] :
             {std::pair{DWORD{0}, TRUE}, {kRecord, FALSE}, {5, TRUE}, {kRecord, TRUE}}) {
            status = told;
            needs = size;
            answers = answer;
            // Its attributes say offline; its status counts as soon as there is a description to ask for.
            EXPECT_EQ((told ? size != 0 : size == kRecord && answer) ? 1u : 0u, Warnings())
                << told << ' ' << size << ' ' << answer;
        }
    RestoreFunction("GetPrinterW");
}

TEST_F(DocumentEvents, EndWellWhenMemoryRunsOut)
{
    HeapWatch heaps;
    Warnings();
    const int allocations = heaps.Calls();
    for (int nth = 1; nth <= allocations; ++nth) {
        heaps.Fail(nth);
        Warnings();
        EXPECT_EQ(0, heaps.LiveBlocks()) << nth;
    }
    heaps.Fail(1, 1000);
    EXPECT_EQ(0u, Warnings());
}

} // namespace
} // namespace tintwerk
