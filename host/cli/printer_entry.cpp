#include "host/cli/printer_entry.h"

#include "host/cli/arguments.h"
#include "platform/memory_spooler.h"

namespace tintwerk {

namespace {

WideString ProgramPath()
{
    WideString path(1024, WCHAR{});
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

} // namespace

WideString ProgramFolder()
{
    const WideString program = ProgramPath();
    const std::size_t end = program.find_last_of(TEXT("\\/"));
    return program.substr(0, end == WideString::npos ? 0 : end);
}

SpooledPrinter::SpooledPrinter(const Ppd& ppd, const PrinterEntry& entry)
{
    UseMemorySpooler();
    MemorySpooler& spooler = TheMemorySpooler();
    const WideString program = ProgramPath();
    MemorySpooler::Driver driver;
    driver.name = entry.driver;
    driver.dataFile = WideFromUtf8(entry.ppdFile);
    driver.driverPath = program; // this program plays both halves of the core driver
    driver.configFile = program;
    driver.dependentFiles.push_back(ProgramFolder() + TEXT("\\PSTWUI.DLL"));
    spooler.SetDriver(driver);

    MemorySpooler::Printer printer;
    printer.name = entry.name;
    printer.driverName = driver.name;
    printer.attributes = PRINTER_ATTRIBUTE_LOCAL | (entry.offline ? PRINTER_ATTRIBUTE_WORK_OFFLINE : 0);
    spooler.SetPrinter(printer);

    // The core driver makes a form of every page size, under the name that people see.
    for (const PpdForm& form : ppd.Forms()) {
        spooler.SetForm(WideFromUtf8(form.text),
                        {{form.width, form.height},
                         {form.left, form.height - form.top, form.right, form.height - form.bottom},
                         FORM_PRINTER});
    }
    const PpdOption* const custom = ppd.Find("PageSize", kCustomPageSize);
    if (const PaperSize& size = entry.custom; custom && size.width)
        spooler.SetForm(WideFromUtf8(custom->text),
                        {{size.width, size.height}, {0, 0, size.width, size.height}, FORM_PRINTER});
    WideString name = entry.name;
    if (OpenPrinterW(name.data(), printer_.Receive(), nullptr)) return;
    const DWORD error = GetLastError();
    StopMemorySpooler();
    Fail("the printer does not open (error " + std::to_string(error) + ")");
}

SpooledPrinter::~SpooledPrinter()
{
    printer_.Reset();
    StopMemorySpooler();
}

} // namespace tintwerk
