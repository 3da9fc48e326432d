// The spooler's functions of the headless platform, over the spooler in memory.
#include "platform/headless/hookable.h"
#include "platform/memory_spooler.h"

using tintwerk::MemorySpooler;
using tintwerk::headless::Hookable;

namespace {

Hookable<MemorySpooler::GetPrinterW> getPrinter{"GetPrinterW"};
Hookable<MemorySpooler::GetJobW> getJob{"GetJobW"};
Hookable<MemorySpooler::GetFormW> getForm{"GetFormW"};

} // namespace

BOOL OpenPrinterW(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW defaults)
{
    return MemorySpooler::OpenPrinterW(name, printer, defaults);
}

BOOL ClosePrinter(HANDLE printer)
{
    return MemorySpooler::ClosePrinter(printer);
}

BOOL GetPrinterW(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return getPrinter(printer, level, buffer, size, needed);
}

BOOL GetJobW(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return getJob(printer, job, level, buffer, size, needed);
}

BOOL GetFormW(HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return getForm(printer, name, level, buffer, size, needed);
}

BOOL GetPrinterDriverW(HANDLE printer, LPWSTR environment, DWORD level, LPBYTE buffer, DWORD size,
                       LPDWORD needed)
{
    return MemorySpooler::GetPrinterDriverW(printer, environment, level, buffer, size, needed);
}

namespace tintwerk {

void UseMemorySpooler()
{
}
void StopMemorySpooler()
{
    TheMemorySpooler() = MemorySpooler();
}

} // namespace tintwerk
