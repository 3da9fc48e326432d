// Processes and time of the headless platform.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "platform/headless/hookable.h"
#include "platform/headless/kernel_objects.h"
#include "platform/headless/wide.h"

using namespace tintwerk::headless;
using tintwerk::Refuse;

namespace {

bool IsProgram(const std::string& path, const std::string& directory)
{
    struct stat status;
    const std::string full = path.starts_with('/') || directory.empty() ? path : directory + '/' + path;
    return stat(full.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(full.c_str(), X_OK) == 0;
}

// The words of the rest of a command line: blanks part them, quotes hold them together.
std::vector<std::string> Words(const std::string& line)
{
    std::vector<std::string> words;
    bool quoted = false, inside = false;
    for (const char c : line) {
        const bool blank = !quoted && (c == ' ' || c == '\t');
        if (!blank && !inside) words.emplace_back();
        inside = !blank;
        if (c == '"')
            quoted = !quoted;
        else if (!blank)
            words.back() += c;
    }
    return words;
}

// The program and its arguments. A path with blanks need not be in quotes: the shortest beginning that names
// a program is taken, as the platform does. Empty when there is none.
std::vector<std::string> SplitCommandLine(const std::string& line, const std::string& directory)
{
    std::vector<std::string> words;
    std::size_t end = std::string::npos;
    if (line.starts_with('"')) {
        end = line.find('"', 1);
        words.push_back(NativePath(line.substr(1, end == std::string::npos ? end : end - 1)));
        end += end == std::string::npos ? 0 : 1;
    } else {
        do {
            end = line.find(' ', end == std::string::npos ? 0 : end + 1);
            words.assign(1, NativePath(line.substr(0, end)));
        } while (!IsProgram(words[0], directory) && end != std::string::npos);
    }
    if (!IsProgram(words[0], directory)) return {};
    if (end != std::string::npos) {
        for (std::string& word : Words(line.substr(end)))
            words.push_back(std::move(word));
    }
    return words;
}

[[noreturn]] void BecomeProgram(char* const* arguments, const char* directory, int report)
{
    setsid();
    if (fork() != 0) _exit(0); // the grandchild belongs to nobody, so nobody has to wait for it
    if (!*directory || chdir(directory) == 0) execv(arguments[0], arguments);
    const int error = errno;
    [[maybe_unused]] const ssize_t told = write(report, &error, sizeof error);
    _exit(127);
}

// Returns 0 or the error of the start.
int Start(std::vector<std::string>& words, const std::string& directory)
{
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) return errno;
    const pid_t child = fork();
    if (child == 0) BecomeProgram(arguments.data(), directory.c_str(), report[1]);
    close(report[1]);
    int error = child < 0 ? errno : 0;
    if (child > 0) {
        waitpid(child, nullptr, 0);
        if (read(report[0], &error, sizeof error) <= 0) error = 0;
    }
    close(report[0]);
    return error;
}

BOOL StartProcess(LPCSTR, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
                  LPVOID, LPCSTR directory, LPSTARTUPINFOA, LPPROCESS_INFORMATION information)
{
    const std::string native = NativePath(directory ? directory : "");
    std::vector<std::string> words = SplitCommandLine(commandLine, native);
    struct stat status;
    if (!native.empty() && (stat(native.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)))
        return Refuse(ERROR_DIRECTORY);
    if (words.empty()) return Refuse(ERROR_FILE_NOT_FOUND);
    if (Start(words, native) != 0) return Refuse(ERROR_ACCESS_DENIED);
    *information = {};
    information->hProcess = KernelObjects().Open(std::make_shared<KernelObject>(-1));
    information->hThread = KernelObjects().Open(std::make_shared<KernelObject>(-1));
    return TRUE;
}

Hookable<StartProcess> createProcess{"CreateProcessA"};

} // namespace

BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES processAttributes,
                    LPSECURITY_ATTRIBUTES threadAttributes, BOOL inheritHandles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startup,
                    LPPROCESS_INFORMATION information)
{
    return createProcess(application, commandLine, processAttributes, threadAttributes, inheritHandles, flags,
                         environment, directory, startup, information);
}

DWORD GetCurrentThreadId()
{
    return static_cast<DWORD>(gettid());
}

HANDLE GetCurrentProcess()
{
    return INVALID_HANDLE_VALUE;
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

ULONGLONG GetTickCount64()
{
    using namespace std::chrono;
    return static_cast<ULONGLONG>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void Sleep(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
