// The events of a print job: which are wanted, the print server's start, the warning for an offline printer,
// and a spooler that answers with anything.
#include "src/events/document_events.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "platform/function_hook.h"
#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "src/config/registry_values.h"
#include "src/events/offline_warning.h"
#include "tests/support/fake_helper_ps.h"
#include "tests/support/message_boxes.h"
#include "tests/support/testing.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

constexpr INT kStarted = 13;
constexpr INT kQueryFilter = 14;
constexpr DWORD kJob = 7;

std::vector<BYTE> Devmode(WORD extra = 36)
{
    DEVMODEW devmode{};
    devmode.dmSize = sizeof devmode;
    devmode.dmDriverExtra = extra;
    std::vector<BYTE> bytes(sizeof devmode + extra, 0xEE);
    std::memcpy(bytes.data(), &devmode, sizeof devmode);
    return bytes;
}

class DocumentEvents : public testing::Test
{
protected:
    DocumentEvents()
    {
        UseMemorySpooler();
        SetPrinter(0, 0);
        SetJob({TEXT("Poster"), Devmode()});
        WCHAR name[] = TEXT("P");
        EXPECT_TRUE(OpenPrinterW(name, printer.Receive(), nullptr));
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryKey);
        helper.selected["halvPreview"] = "1";
    }
    ~DocumentEvents() override
    {
        printer.Reset();
        StopMemorySpooler();
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryKey);
    }

    void SetPrinter(DWORD status, DWORD attributes)
    {
        MemorySpooler::Printer description;
        description.name = TEXT("P");
        description.status = status;
        description.attributes = attributes;
        if (const auto* known = TheMemorySpooler().FindPrinter(TEXT("P"))) description.jobs = known->jobs;
        TheMemorySpooler().SetPrinter(description);
    }
    void SetJob(MemorySpooler::Job job)
    {
        TheMemorySpooler().FindPrinter(TEXT("P"))->jobs[kJob] = std::move(job);
    }

    static void SetValue(const char* name, const std::string& text)
    {
        RegistryKey key;
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, kRegistryKey, 0, nullptr, 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                        nullptr, key.Receive(), nullptr);
        RegSetValueExA(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
    }

    INT Send(INT event, const void* in = nullptr, ULONG inSize = 0, void* out = nullptr, ULONG outSize = 0)
    {
        INT result = 99;
        EXPECT_EQ(S_OK, HandleDocumentEvent(printer.Get(), nullptr, event, inSize, const_cast<void*>(in),
                                            outSize, out, &result, &helper));
        return result;
    }
    INT StartJob(DWORD job = kJob) { return Send(kStarted, &job, sizeof job); }

    PrinterHandle printer;
    FakeHelperPS helper;
    ProcessRecorder processes;
    MessageBoxes boxes;
    DebugLines lines;
};

TEST_F(DocumentEvents, AreHandledByNumber)
{
    SetValue("InstallDir", "C:\\A");
    SetValue("PrintServerCmd", "s.exe");
    for (INT event = -1; event <= 17; ++event) {
        const bool wanted = event == 1 || event == 5 || event == kStarted || event == kQueryFilter;
        const size_t before = processes.Started().size();
        EXPECT_EQ(wanted ? 1 : 0, Send(event)) << event;
        EXPECT_EQ(event == kStarted ? 1u : 0u, processes.Started().size() - before) << event;
    }
    EXPECT_TRUE(lines.Contains(TEXT("UI:  IOemUI: DocumentEvent entry. iEsc=13\r\n")));
    EXPECT_EQ(S_OK, HandleDocumentEvent(nullptr, nullptr, 1, 0, nullptr, 0, nullptr, nullptr, nullptr));
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
                 {"for every event", 13, sizeof(DOCEVENT_FILTER) + 12 * sizeof(DWORD), true},
                 {"a count beyond the buffer", 13, 23, false},
                 {"the record alone", 0xFFFFFFFF, sizeof(DOCEVENT_FILTER), false},
                 {"one", 1, 20, false},
                 {"none", 0, 16, false},
                 {"no whole record", 2, 15, false}};
    for (const auto& row : cases) {
        UINT filter[] = {20, row.allocated, 77, 42, 1001, 1002, 1003};
        lines.Take();
        EXPECT_EQ(1, Send(kQueryFilter, nullptr, 0, filter, row.outSize)) << row.what;
        EXPECT_EQ(77u, filter[2]) << row.what;
        EXPECT_EQ(row.written ? 2u : 42u, filter[3]) << row.what;
        EXPECT_EQ(row.written ? 5u : 1001u, filter[4]) << row.what;
        EXPECT_EQ(row.written ? 13u : 1002u, filter[5]) << row.what;
        EXPECT_EQ(1003u, filter[6]) << row.what;
        EXPECT_EQ(row.outSize >= 16, lines.Contains(TEXT("elementsReturned=42\r\n"))) << row.what;
    }
    EXPECT_EQ(1, Send(kQueryFilter, nullptr, 0, nullptr, 100));
}

TEST_F(DocumentEvents, StartThePrintServerForEveryJob)
{
    const std::string a126(126, 'a'), a127(127, 'a'), a128(128, 'a'), b200(200, 'b');
    const struct
    {
        std::string directory;
        std::string command;
        std::string commandLine;
    } cases[] = {
        {"C:\\A", "bin\\srv.exe -q", "C:\\A\\bin\\srv.exe -q"},
        {a126, a126, a126 + "\\" + a126},
        {a127, a127, a127 + "\\" + a127},
        {a128, a128, a127 + "\\" + a127},
        {b200, "x", b200.substr(0, 127) + "\\x"},
        {"", "", "\\"},
    };
    for (const auto& row : cases) {
        SetValue("InstallDir", row.directory);
        SetValue("PrintServerCmd", row.command);
        const size_t before = processes.Started().size();
        EXPECT_EQ(1, StartJob(4711)); // a job that the spooler does not know
        ASSERT_EQ(before + 1, processes.Started().size());
        const StartedProcess process = processes.Started().back();
        EXPECT_EQ(row.commandLine, process.commandLine);
        EXPECT_EQ(row.directory, process.directory);
        EXPECT_FALSE(process.hasApplicationName || process.inheritsHandles || process.hasEnvironment);
        EXPECT_EQ(DWORD{DETACHED_PROCESS}, process.flags);
        STARTUPINFOA empty{};
        empty.cb = sizeof empty;
        EXPECT_EQ(0, std::memcmp(&empty, &process.startup, sizeof empty));
        EXPECT_EQ(0, processes.OpenHandles());
    }
}

TEST_F(DocumentEvents, StartNothingWithoutBothValues)
{
    SetValue("InstallDir", "C:\\A");
    EXPECT_EQ(1, StartJob());
    EXPECT_TRUE(lines.Contains(TEXT("reg value PrintServerCmd not found\n")));
    RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRegistryKey);
    SetValue("PrintServerCmd", "s.exe");
    EXPECT_EQ(1, StartJob());
    EXPECT_TRUE(lines.Contains(TEXT("reg value InstallDir not found\n")));
    EXPECT_TRUE(processes.Started().empty());

    SetValue("InstallDir", "C:\\A");
    processes.FailWith(ERROR_ACCESS_DENIED);
    EXPECT_EQ(1, StartJob());
    EXPECT_EQ(1u, processes.Started().size());
    EXPECT_TRUE(lines.Contains(TEXT("UI:  CreateProcess failed  error(5)!\r\n")));
}

TEST_F(DocumentEvents, WarnWhenThePreviewMustWait)
{
    const DWORD offline = PRINTER_STATUS_OFFLINE, away = PRINTER_ATTRIBUTE_WORK_OFFLINE;
    const std::optional<Text> poster = TEXT("Poster"), test = TEXT("Test print for default settings");
    const struct
    {
        const char* what;
        const char* preview;
        DWORD status;
        DWORD attributes;
        std::optional<Text> document;
        bool devmode;
        bool warned;
    } cases[] = {
        // clang-format off
        {"works offline",           "1",    0,                           away, poster,       true,  true},
        {"is offline",              "1",    offline,                     0,    poster,       true,  true},
        {"both",                    "1On",  offline | 0x400,             away, poster,       true,  true},
        {"is online",               "1",    PRINTER_STATUS_PAUSED,       0x40, poster,       true,  false},
        {"preview is off",          "0",    offline,                     away, poster,       true,  false},
        {"preview is empty",        "",     offline,                     away, poster,       true,  false},
        {"no such feature",         nullptr, offline,                    away, poster,       true,  false},
        {"test print",              "1",    offline,                     away, test,         true,  false},
        {"nearly a test print",     "1",    offline,                     away, *test + TEXT("!"), true, true},
        {"document without a name", "1",    offline,                     away, std::nullopt, true,  true},
        {"job without settings",    "1",    offline,                     away, poster,       false, false},
        // clang-format on
    };
    for (const auto& row : cases) {
        SetPrinter(row.status, row.attributes);
        SetJob({row.document, row.devmode ? Devmode() : std::vector<BYTE>()});
        helper.selected.clear();
        if (row.preview) helper.selected["halvPreview"] = row.preview;
        boxes.shown.clear();
        EXPECT_EQ(1, StartJob()) << row.what;
        EXPECT_EQ(row.warned ? 1u : 0u, boxes.shown.size()) << row.what;
    }
    const FakeHelperPS::Question question = helper.Questions().back();
    EXPECT_EQ("halvPreview", question.feature);
    EXPECT_EQ(sizeof(DEVMODEW) + 36, question.size);
}

TEST_F(DocumentEvents, ShowNoBoxThatNobodyCanAnswer)
{
    SetValue("InstallDir", "C:\\A");
    SetValue("PrintServerCmd", "s.exe");
    SetPrinter(PRINTER_STATUS_OFFLINE, 0);
    SetJob({TEXT("Poster"), Devmode()});
    helper.selected["halvPreview"] = "1";
    static DWORD flags;
    static BOOL known;
    ReplaceFunction(
        "GetUserObjectInformationW", +[](HANDLE, int kind, LPVOID information, DWORD size, LPDWORD) -> BOOL {
            if (kind != UOI_FLAGS || size < sizeof(USEROBJECTFLAGS) || !known) return FALSE;
            *static_cast<USEROBJECTFLAGS*>(information) = {FALSE, FALSE, flags};
            return TRUE;
        });
    const struct
    {
        const char* what;
        BOOL known;
        DWORD flags;
        size_t boxes;
    } cases[] = {
        {"a service", TRUE, 0, 0}, {"a user's desk", TRUE, WSF_VISIBLE, 1}, {"unknown", FALSE, 0, 1}};
    for (const auto& row : cases) {
        known = row.known;
        flags = row.flags;
        boxes.shown.clear();
        const size_t before = processes.Started().size();
        EXPECT_EQ(1, StartJob()) << row.what;
        EXPECT_EQ(row.boxes, boxes.shown.size()) << row.what;
        EXPECT_EQ(1u, processes.Started().size() - before) << row.what;
    }
    RestoreFunction("GetUserObjectInformationW");
}

TEST_F(DocumentEvents, SpeakTheLanguageOfThePrinter)
{
    SetPrinter(PRINTER_STATUS_OFFLINE, 0);
    const Text english =
        TEXT("The printer seems to be offline. Please note that the print preview will only be invoked when "
             "the printer will come online again.");
    const Text german = TEXT(
        "Der Drucker scheint offline zu sein. Bitte beachten Sie, dass die Druckvorschau erst erscheint, "
        "wenn der Drucker wieder online ist.");
    const struct
    {
        std::vector<const char*> options;
        bool german;
    } cases[] = {
        {{"de", "en"}, true}, {{"en", "de"}, false}, {{"deutsch"}, true}, {{"DE"}, false}, {{}, false}};
    for (const auto& row : cases) {
        helper.offered["halvLanguage"] = row.options;
        boxes.shown.clear();
        StartJob();
        ASSERT_EQ(1u, boxes.shown.size());
        EXPECT_EQ(row.german ? german : english, boxes.shown[0].text);
        EXPECT_EQ(row.german ? TEXT("Achtung:") : TEXT("Attention:"), boxes.shown[0].caption);
        EXPECT_EQ(UINT{MB_OK | MB_ICONWARNING | MB_SYSTEMMODAL}, boxes.shown[0].type);
        EXPECT_EQ(nullptr, boxes.shown[0].owner);
        EXPECT_STREQ(row.german ? "de" : "en", JobLanguage());
    }
    helper.offered.clear();
    helper.offered["halvLanguage"] = {"de"};
    INT result = 0;
    boxes.shown.clear();
    const DWORD job = kJob;
    HandleDocumentEvent(printer.Get(), nullptr, kStarted, sizeof job, const_cast<DWORD*>(&job), 0, nullptr,
                        &result, nullptr);
    EXPECT_EQ(1, result);
    EXPECT_TRUE(boxes.shown.empty()); // without a helper nobody knows whether a preview is wanted
    EXPECT_STREQ("en", JobLanguage());
}

TEST_F(DocumentEvents, TraceWhatTheyAskOfTheSpooler)
{
    StartJob();
    std::vector<Text> told;
    for (const Text& line : lines.Take()) {
        if (line.starts_with(TEXT("Got")) || line.starts_with(TEXT("GetPrinter"))) told.push_back(line);
        if (line.starts_with(TEXT("pPrinterInfo2 is "))) told.push_back(line.substr(0, 17));
    }
    DWORD needed = 0;
    GetPrinterW(printer.Get(), 2, nullptr, 0, &needed);
    WCHAR bytes[64];
    wsprintfW(bytes, TEXT("GetPrinter needs %d Bytes\n"), static_cast<int>(needed));
    EXPECT_EQ((std::vector<Text>{TEXT("Got Job Info\n\r"), bytes, TEXT("pPrinterInfo2 is ")}), told);
}

TEST_F(DocumentEvents, FindTheJobByTheNumberGiven)
{
    SetPrinter(PRINTER_STATUS_OFFLINE, 0);
    const DWORD number[] = {kJob, 0xFFFFFFFF};
    const struct
    {
        const char* what;
        const void* in;
        ULONG size;
        size_t boxes;
    } cases[] = {
        {"exact", number, 4, 1}, {"more", number, 8, 1}, {"cut", number, 3, 0}, {"none", nullptr, 4, 0}};
    for (const auto& row : cases) {
        boxes.shown.clear();
        EXPECT_EQ(1, Send(kStarted, row.in, row.size)) << row.what;
        EXPECT_EQ(row.boxes, boxes.shown.size()) << row.what;
    }
}

// What GetJobW answers, call by call.
struct JobAnswer
{
    DWORD first;       // needed, as the first call reports it
    BOOL second;       // what the second call returns
    LONG_PTR document; // offset of the document name from the record, -1 for none
    LONG_PTR devmode;  // offset of the DEVMODE from the record
    WORD devmodeSize;
    bool terminated;
} jobAnswer;

BOOL WINAPI AnswerJob(HANDLE, DWORD, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    *needed = jobAnswer.first;
    if (!buffer) return FALSE;
    std::memset(buffer, jobAnswer.terminated ? 0 : 0x41, size);
    if (size >= sizeof(JOB_INFO_2W)) {
        auto& job = *reinterpret_cast<JOB_INFO_2W*>(buffer);
        job.pDocument =
            jobAnswer.document < 0 ? nullptr : reinterpret_cast<LPWSTR>(buffer + jobAnswer.document);
        job.pDevMode = reinterpret_cast<LPDEVMODEW>(reinterpret_cast<ULONG_PTR>(buffer) +
                                                    static_cast<ULONG_PTR>(jobAnswer.devmode));
        if (static_cast<size_t>(jobAnswer.devmode) + sizeof(DEVMODEW) <= size) {
            job.pDevMode->dmSize = jobAnswer.devmodeSize;
            job.pDevMode->dmDriverExtra = 0;
        }
    }
    return jobAnswer.second;
}

TEST_F(DocumentEvents, SurviveAnySpooler)
{
    SetPrinter(PRINTER_STATUS_OFFLINE, 0);
    constexpr DWORD kRecord = sizeof(JOB_INFO_2W), kRoom = kRecord + sizeof(DEVMODEW);
    const struct
    {
        const char* what;
        JobAnswer answer;
        bool warned;
    } cases[] = {
        // clang-format off
        {"honest",                          {kRoom, TRUE,  -1, kRecord, sizeof(DEVMODEW), true},       true},
        {"needs nothing",                   {0,     TRUE,  -1, kRecord, sizeof(DEVMODEW), true},       false},
        {"fails with the buffer",           {kRoom, FALSE, -1, kRecord, sizeof(DEVMODEW), true},       false},
        {"less than a record",              {3,     TRUE,  -1, 0,       0,                true},       false},
        {"more than there is memory",       {0xFFFFFFF0, FALSE, -1, 0,  0,                true},       false},
        {"settings larger than the record", {kRoom, TRUE,  -1, kRecord, sizeof(DEVMODEW) + 1, true},   false},
        {"settings behind the record",      {kRoom, TRUE,  -1, kRoom,   sizeof(DEVMODEW), true},       false},
        {"settings cut short",              {kRecord + 20, TRUE, -1, kRecord, 20,         true},       false},
        {"endless document name",           {kRoom, TRUE,  kRecord, kRecord, sizeof(DEVMODEW), false}, true},
        // clang-format on
    };
    for (const auto& row : cases) {
        jobAnswer = row.answer;
        ReplaceFunction("GetJobW", &AnswerJob);
        boxes.shown.clear();
        HeapWatch heaps;
        EXPECT_EQ(1, StartJob()) << row.what;
        EXPECT_EQ(row.warned ? 1u : 0u, boxes.shown.size()) << row.what;
        EXPECT_EQ(0, heaps.LiveBlocks()) << row.what;
    }
    RestoreFunction("GetJobW");
}

DWORD printerNeeds;
BOOL printerAnswers;

BOOL WINAPI AnswerPrinter(HANDLE, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    *needed = printerNeeds;
    if (level != 2 || !buffer) return FALSE;
    std::memset(buffer, 0xFF, size);
    return printerAnswers;
}

TEST_F(DocumentEvents, DoNotWarnOfAPrinterThatNobodyDescribes)
{
    const struct
    {
        DWORD needed;
        BOOL answers;
        bool warned;
    } cases[] = {{0, TRUE, false},
                 {sizeof(PRINTER_INFO_2W), TRUE, true},
                 {sizeof(PRINTER_INFO_2W), FALSE, false},
                 {5, TRUE, false}};
    for (const auto& row : cases) {
        printerNeeds = row.needed;
        printerAnswers = row.answers;
        ReplaceFunction("GetPrinterW", &AnswerPrinter);
        boxes.shown.clear();
        EXPECT_EQ(1, StartJob());
        EXPECT_EQ(row.warned ? 1u : 0u, boxes.shown.size()) << row.needed << ' ' << row.answers;
    }
    RestoreFunction("GetPrinterW");
}

TEST_F(DocumentEvents, EndWellWhenMemoryRunsOut)
{
    SetPrinter(PRINTER_STATUS_OFFLINE, 0);
    HeapWatch heaps;
    StartJob();
    const int allocations = heaps.Allocations();
    for (int nth = 1; nth <= allocations; ++nth) {
        heaps.FailAllocation(nth);
        EXPECT_EQ(1, StartJob()) << nth;
        EXPECT_EQ(0, heaps.LiveBlocks()) << nth;
    }
    boxes.shown.clear();
    heaps.FailAllocation(1, 1000);
    EXPECT_EQ(1, StartJob());
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(DocumentEvents, ComeFromManyThreadsAtOnce)
{
    SetValue("InstallDir", "C:\\A");
    SetValue("PrintServerCmd", "s.exe");
    helper.selected["halvPreview"] = "0";
    helper.offered["halvLanguage"] = {"de"};
    std::vector<std::thread> threads;
    std::atomic<int> handled{0};
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (int job = 0; job < 125; ++job)
                handled += StartJob();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(1000, handled);
    EXPECT_EQ(1000u, processes.Started().size());
    EXPECT_EQ(1000u, helper.Questions().size());
    EXPECT_EQ(0, processes.OpenHandles());
    EXPECT_STREQ("de", JobLanguage());
}

} // namespace
} // namespace tintwerk
