#include "src/events/print_server.h"

#include <cstdio>

#include "platform/owners.h"
#include "src/config/registry_values.h"
#include "src/trace/trace.h"

namespace tintwerk {

void StartConfiguredPrintServer()
{
    char directory[kRegistryTextBytes];
    char command[kRegistryTextBytes];
    const bool hasDirectory = ReadRegistryString(kInstallDirValue, directory) == 0;
    const bool hasCommand = ReadRegistryString(kPrintServerValue, command) == 0;
    if (!hasDirectory || !hasCommand) return;
    char commandLine[512];
    std::snprintf(commandLine, sizeof commandLine, "%.127s\\%.127s", directory, command);
    StartPrintServer(directory, commandLine);
}

void StartPrintServer(const char* workingDir, char* commandLine)
{
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(nullptr, commandLine, nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, workingDir,
                        &startup, &information)) {
        Trace(TEXT("UI:  CreateProcess failed  error(%d)!\r\n"), static_cast<int>(GetLastError()));
        return;
    }
    const KernelHandle process(information.hProcess), thread(information.hThread);
}

} // namespace tintwerk
