// The spooler's functions of the headless platform, over the spooler in memory.
#include "platform/headless/handles.h"
#include "platform/headless/hookable.h"
#include "platform/memory_spooler.h"

using namespace tintwerk::headless;
using tintwerk::MemorySpooler;
using tintwerk::TheMemorySpooler;
using Text = MemorySpooler::Text;

namespace {

HandleTable<Text>& OpenPrinters()
{
    static auto& printers = *new HandleTable<Text>;
    return printers;
}

// No printer has an empty name, so a handle that is not open finds none.
Text NameOf(HANDLE printer)
{
    const std::shared_ptr<Text> name = OpenPrinters().Get(printer);
    return name ? *name : Text();
}

BOOL Open(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW)
{
    if (!name || !TheMemorySpooler().FindPrinter(name)) return Fail(ERROR_INVALID_PRINTER_NAME);
    *printer = OpenPrinters().Open(std::make_shared<Text>(name));
    return TRUE;
}

BOOL Close(HANDLE printer)
{
    return OpenPrinters().Close(printer);
}

BOOL Printer(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetPrinter(NameOf(printer), level, buffer, size, needed);
}

BOOL Job(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetJob(NameOf(printer), job, level, buffer, size, needed);
}

BOOL Form(HANDLE, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetForm(name, level, buffer, size, needed);
}

BOOL Driver(HANDLE printer, LPWSTR, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    return TheMemorySpooler().GetDriver(NameOf(printer), level, buffer, size, needed);
}

Hookable<Open> openPrinter{"OpenPrinterW"};
Hookable<Close> closePrinter{"ClosePrinter"};
Hookable<Printer> getPrinter{"GetPrinterW"};
Hookable<Job> getJob{"GetJobW"};
Hookable<Form> getForm{"GetFormW"};
Hookable<Driver> getPrinterDriver{"GetPrinterDriverW"};

} // namespace

BOOL OpenPrinterW(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW defaults)
{
    return openPrinter(name, printer, defaults);
}

BOOL ClosePrinter(HANDLE printer)
{
    return closePrinter(printer);
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
    return getPrinterDriver(printer, environment, level, buffer, size, needed);
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
