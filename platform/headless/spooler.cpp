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

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

Text OrEmpty(const WCHAR* text)
{
    return text ? text : TEXT("");
}

BOOL Open(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW)
{
    if (!name || !TheMemorySpooler().FindPrinter(name)) return Fail(ERROR_INVALID_PRINTER_NAME);
    *printer = OpenPrinters().Open(std::make_shared<Text>(name));
    return TRUE;
}

BOOL Close(HANDLE printer)
{
    return OpenPrinters().Close(printer) ? TRUE : Fail(ERROR_INVALID_HANDLE);
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

BOOL AddFormW(HANDLE, DWORD level, LPBYTE form)
{
    if (level != 1) return Fail(ERROR_INVALID_LEVEL);
    const auto& record = *reinterpret_cast<const FORM_INFO_1W*>(form);
    TheMemorySpooler().SetForm(record.pName, {record.Size, record.ImageableArea, record.Flags});
    return TRUE;
}

BOOL DeleteFormW(HANDLE, LPWSTR name)
{
    return TheMemorySpooler().RemoveForm(OrEmpty(name)) ? TRUE : Fail(ERROR_INVALID_FORM_NAME);
}

HANDLE AddPrinterW(LPWSTR, DWORD level, LPBYTE printer)
{
    const auto& record = *reinterpret_cast<const PRINTER_INFO_2W*>(printer);
    if (level != 2)
        SetLastError(ERROR_INVALID_LEVEL);
    else if (TheMemorySpooler().FindPrinter(OrEmpty(record.pPrinterName)))
        SetLastError(ERROR_PRINTER_ALREADY_EXISTS);
    else if (!TheMemorySpooler().FindDriver(OrEmpty(record.pDriverName)))
        SetLastError(ERROR_UNKNOWN_PRINTER_DRIVER);
    else {
        MemorySpooler::Printer added;
        added.name = record.pPrinterName;
        added.driverName = record.pDriverName;
        added.port = OrEmpty(record.pPortName);
        added.attributes = record.Attributes;
        TheMemorySpooler().SetPrinter(std::move(added));
        return OpenPrinters().Open(std::make_shared<Text>(record.pPrinterName));
    }
    return nullptr;
}

BOOL DeletePrinter(HANDLE printer)
{
    return TheMemorySpooler().RemovePrinter(NameOf(printer)) ? TRUE : Fail(ERROR_INVALID_HANDLE);
}

BOOL AddPrinterDriverExW(LPWSTR, DWORD level, LPBYTE driver, DWORD)
{
    // The records of levels 3 and 4 begin alike, and nothing behind that is kept.
    if (level != 3 && level != 4) return Fail(ERROR_INVALID_LEVEL);
    const auto& record = *reinterpret_cast<const DRIVER_INFO_3W*>(driver);
    MemorySpooler::Driver added;
    added.version = record.cVersion;
    added.name = OrEmpty(record.pName);
    added.driverPath = OrEmpty(record.pDriverPath);
    added.dataFile = OrEmpty(record.pDataFile);
    added.configFile = OrEmpty(record.pConfigFile);
    for (const WCHAR* file = record.pDependentFiles; file && *file; file += lstrlenW(file) + 1)
        added.dependentFiles.emplace_back(file);
    TheMemorySpooler().SetDriver(std::move(added));
    return TRUE;
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
