#include "platform/memory_spooler.h"

#include <list>
#include <mutex>

#include "platform/function_hook.h"

namespace tintwerk {

namespace {

// Names that are open; a handle points to its entry.
struct OpenNames
{
    std::mutex mutex;
    std::list<MemorySpooler::Text> names;
};

OpenNames& Names()
{
    static OpenNames& names = *new OpenNames;
    return names;
}

const MemorySpooler::Text& NameOf(HANDLE printer)
{
    static const MemorySpooler::Text none;
    const std::lock_guard lock(Names().mutex);
    for (const MemorySpooler::Text& name : Names().names) {
        if (&name == printer) return name;
    }
    return none;
}

BOOL WINAPI OpenInMemory(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW)
{
    if (!name || !TheMemorySpooler().FindPrinter(name)) {
        SetLastError(ERROR_INVALID_PRINTER_NAME);
        return FALSE;
    }
    const std::lock_guard lock(Names().mutex);
    *printer = &Names().names.emplace_back(name);
    return TRUE;
}

BOOL WINAPI CloseInMemory(HANDLE printer)
{
    const std::lock_guard lock(Names().mutex);
    if (Names().names.remove_if([printer](const auto& name) { return &name == printer; }) > 0) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

BOOL WINAPI PrinterInMemory(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetPrinter(NameOf(printer), level, buffer, size, needed);
}

BOOL WINAPI JobInMemory(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetJob(NameOf(printer), job, level, buffer, size, needed);
}

BOOL WINAPI FormInMemory(HANDLE, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetForm(name, level, buffer, size, needed);
}

BOOL WINAPI DriverInMemory(HANDLE printer, LPWSTR, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetDriver(NameOf(printer), level, buffer, size, needed);
}

} // namespace

void UseMemorySpooler()
{
    ReplaceFunction("OpenPrinterW", &OpenInMemory);
    ReplaceFunction("ClosePrinter", &CloseInMemory);
    ReplaceFunction("GetPrinterW", &PrinterInMemory);
    ReplaceFunction("GetJobW", &JobInMemory);
    ReplaceFunction("GetFormW", &FormInMemory);
    ReplaceFunction("GetPrinterDriverW", &DriverInMemory);
}

void StopMemorySpooler()
{
    for (const char* name :
         {"OpenPrinterW", "ClosePrinter", "GetPrinterW", "GetJobW", "GetFormW", "GetPrinterDriverW"})
        RestoreFunction(name);
    TheMemorySpooler() = MemorySpooler();
}

} // namespace tintwerk
