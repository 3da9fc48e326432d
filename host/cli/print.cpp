// tintwerk print: plays the events of a print job against the plug-in, in the order of a real spooler.
#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <optional>
#include <ostream>

#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/cli/product_registry.h"
#include "host/cli/program.h"
#include "host/ppd/ppd_text.h"
#include "host/sheet/message_boxes.h"
#include "platform/console.h"
#include "platform/memory_spooler.h"
#include "src/config/registry_values.h"

namespace tintwerk {

namespace {

constexpr int kServerWait = 5000; // milliseconds until a started server must have written its line

struct JobEvent
{
    int number;
    const char* text;
};

// A real spooler sends only what the filter asks for; these are all that a one-page document raises.
constexpr std::array<JobEvent, 8> kJobEvents{{
    {DOCUMENTEVENT_CREATEDCPRE, "device context is about to be made"},
    {2, "device context is made"},
    {DOCUMENTEVENT_STARTDOCPRE, "document is about to start"},
    {DOCUMENTEVENT_STARTDOCPOST, "document has started"},
    {6, "page starts"},
    {7, "page ends"},
    {12, "document has ended"},
    {10, "device context goes"},
}};

struct EventFilter // room for every event, as the spooler gives it
{
    DOCEVENT_FILTER record;
    DWORD more[31];
};

std::vector<std::string> LinesOf(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::ifstream in(file, std::ios::binary);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

class PrintRun
{
public:
    PrintRun(const Arguments& arguments, Output& output)
        : arguments_(arguments), output_(output), json_(arguments.Has("json")),
          job_(static_cast<DWORD>(arguments.Number("job", 1, 1, 0x7FFFFFFF))),
          printer_(arguments, output, false), session_(printer_.StartPlugin())
    {
    }

    // A run that fails tells as JSON how far it came.
    int Run()
    {
        std::optional<CommandError> failed;
        try {
            Play();
        } catch (const CommandError& error) {
            failed = error;
        }
        if (json_)
            output_.out << JsonText({{"command", "print"},
                                     {"ppd", printer_.Description().FileName()},
                                     {"printer", Utf8FromWide(printer_.Name())},
                                     {"problem", failed ? failed->what() : ""},
                                     {"events", lines_},
                                     {"server_starts", serverStarts_}})
                        << "\n";
        if (failed) throw *failed;
        return kExitSuccess;
    }

private:
    void Play()
    {
        if (arguments_.Has("preview")) SelectPreview();
        QueueJob();
        RegisterServer();

        std::optional<AnsweredMessageBoxes> boxes;
        if (!WindowsAreVisible() || json_)
            boxes.emplace(false, [this](const std::string& line) { Tell(line); });
        const std::vector<DWORD> wanted = QueryFilter();
        for (const JobEvent& event : kJobEvents)
            Raise(event, wanted);
        if (!serverLog_.empty()) WaitForServer();
    }

    void Tell(const std::string& line)
    {
        if (json_)
            lines_.push_back(line);
        else
            output_.out << line << std::endl;
    }

    void SelectPreview()
    {
        CoreDriver& core = printer_.Core();
        for (const std::string_view option : core.Options("halvPreview")) {
            if (option.starts_with('1') && core.Select("halvPreview", option)) return;
        }
        Fail("--preview: the PPD has no feature halvPreview with an option that begins with 1");
    }

    void QueueJob()
    {
        MemorySpooler::Job queued;
        if (!arguments_.Has("no-document-name"))
            queued.document = WideFromUtf8(arguments_.Value("document", "Untitled"));
        queued.devmode = session_.WholeDevmode(printer_.Name().c_str());
        TheMemorySpooler().FindPrinter(printer_.Name())->jobs[job_] = queued;
    }

    // With --probe-server the product's registry values name a server that tells of its start.
    void RegisterServer()
    {
        const bool probes = arguments_.Has("probe-server");
        if (probes || arguments_.Has("install-dir"))
            installDir_.emplace(kInstallDirValue,
                                probes ? Utf8FromWide(ProgramFolder()) : arguments_.Value("install-dir"));
        if (probes || arguments_.Has("server"))
            server_.emplace(kPrintServerValue,
                            probes ? "tintwerk-print-server -job" : arguments_.Value("server"));
        if (!probes) return;
        serverLog_ = std::filesystem::absolute(printer_.StoreFile().parent_path()) / "print-server.log";
        std::error_code ignored;
        std::filesystem::create_directories(serverLog_.parent_path(), ignored);
        logged_ = LinesOf(serverLog_).size();
        SetEnvironmentVariableA("TINTWERK_PRINT_SERVER_LOG", serverLog_.string().c_str());
    }

    std::vector<DWORD> QueryFilter()
    {
        EventFilter filter{};
        filter.record.cbSize = sizeof(DOCEVENT_FILTER);
        filter.record.cElementsAllocated = 1 + static_cast<UINT>(std::size(filter.more));
        INT result = DOCUMENTEVENT_FAILURE;
        session_.Plugin().DocumentEvent(printer_.Printer(), nullptr, DOCUMENTEVENT_QUERYFILTER, 0, nullptr,
                                        sizeof filter, &filter, &result);
        const UINT count = std::min(filter.record.cElementsReturned, filter.record.cElementsAllocated);
        std::vector<DWORD> wanted(count);
        std::memcpy(wanted.data(), filter.record.aDocEventCall, count * sizeof(DWORD));
        const std::string text = Joined(wanted, [](DWORD event) { return std::to_string(event); });
        Tell("query filter: the driver wants " + (text.empty() ? "every event" : "the events " + text));
        return wanted;
    }

    void Raise(const JobEvent& event, const std::vector<DWORD>& wanted)
    {
        const bool isWanted =
            wanted.empty() || std::ranges::find(wanted, static_cast<DWORD>(event.number)) != wanted.end();
        std::string text = "event " + std::to_string(event.number) + ", " + event.text;
        if (event.number == DOCUMENTEVENT_STARTDOCPOST) text += " as job " + std::to_string(job_);
        if (!isWanted && !arguments_.Has("all-events")) return Tell(text + ": not sent");
        INT result = DOCUMENTEVENT_FAILURE;
        DWORD input = job_;
        const HRESULT answer = session_.Plugin().DocumentEvent(printer_.Printer(), nullptr, event.number,
                                                               sizeof input, &input, 0, nullptr, &result);
        if (FAILED(answer) || result < 0)
            Fail(text + ": the driver failed the job (result " + std::to_string(result) + ")");
        Tell(text + (result == DOCUMENTEVENT_SUCCESS ? ": handled" : ": not handled"));
    }

    void WaitForServer()
    {
        const ULONGLONG started = GetTickCount64();
        std::vector<std::string> lines;
        while ((lines = LinesOf(serverLog_)).size() <= logged_ && GetTickCount64() - started < kServerWait)
            Sleep(20);
        if (lines.size() <= logged_)
            Fail("the print server did not start; --trace shows what the driver tried (its command "
                 "line takes at most 127 characters of each part)");
        for (std::size_t i = logged_; i < lines.size(); ++i) {
            serverStarts_.push_back(lines[i]);
            Tell("print server started: " + lines[i]);
        }
    }

    const Arguments& arguments_;
    Output& output_;
    bool json_;
    DWORD job_;
    PrinterRun printer_;
    PluginSession& session_;
    std::optional<ProductValue> installDir_, server_;
    std::filesystem::path serverLog_;
    std::size_t logged_ = 0;
    std::vector<std::string> lines_;
    std::vector<std::string> serverStarts_;
};

} // namespace

Command PrintCommand()
{
    const OptionRow own[] = {
        {"document", "NAME", "the document's name (default: Untitled)"},
        {"no-document-name", "", "the job has no document name"},
        {"job", "N", "the job's number (default: 1)"},
        {"preview", "", "the job asks for the print preview"},
        {"offline", "", "the printer works offline"},
        {"probe-server", "", "registers a print server that tells of its start"},
        {"install-dir", "DIR", "the registry value InstallDir during the job"},
        {"server", "COMMAND", "the registry value PrintServerCmd during the job"},
        {"all-events", "", "sends the events too that the driver does not want"},
        {"json", "", "tells everything as JSON instead"},
    };
    return {"print",
            "plays a print job: the events, the print server, the offline warning",
            "tintwerk print --ppd FILE [OPTION ...]",
            "Nothing is printed and nothing is kept.\n",
            PrinterOptions(own),
            [](const Arguments& arguments, Output& output) { return PrintRun(arguments, output).Run(); }};
}

} // namespace tintwerk
