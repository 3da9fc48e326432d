// A print spooler in memory: the printers, jobs, forms and drivers that the host and the tests speak of. On
// Linux it is the platform's spooler; on Windows it stands in for the system's, for this program and the
// plug-in, once UseMemorySpooler is called. Any thread may ask it; it is filled before the asking begins.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

class MemorySpooler
{
public:
    using Text = std::basic_string<WCHAR>;

    struct Job
    {
        std::optional<Text> document; // nothing: the job has no document name
        std::vector<BYTE> devmode; // the public part and what the driver adds; empty: the job has no DEVMODE
    };
    struct Printer
    {
        Text name;
        Text driverName;
        Text port = TEXT("FILE:");
        DWORD status = 0;     // PRINTER_STATUS_...
        DWORD attributes = 0; // PRINTER_ATTRIBUTE_...
        std::vector<BYTE> devmode;
        std::map<DWORD, Job> jobs;
    };
    struct Driver
    {
        DWORD version = 3;
        Text name;
        Text driverPath;
        Text dataFile;
        Text configFile;
        std::vector<Text> dependentFiles;
    };
    struct Form
    {
        SIZEL size; // thousandths of a millimetre
        RECTL imageableArea;
        DWORD flags = FORM_USER;
    };

    // With the standard forms, without printers and drivers.
    MemorySpooler();

    // The names are the keys; an entry of the same name is replaced.
    void SetPrinter(Printer printer);
    void SetDriver(Driver driver);
    void SetForm(const Text& name, Form form);
    // Null when there is none.
    Printer* FindPrinter(const Text& name);

    // The platform's functions of the same names, for the one of this process: the record with its texts
    // packed behind it, or the last error 122 and the bytes needed.
    static BOOL WINAPI OpenPrinterW(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW);
    static BOOL WINAPI ClosePrinter(HANDLE printer);
    static BOOL WINAPI GetPrinterW(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed);
    static BOOL WINAPI GetJobW(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size,
                               LPDWORD needed);
    static BOOL WINAPI GetFormW(HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size,
                                LPDWORD needed);
    static BOOL WINAPI GetPrinterDriverW(HANDLE printer, LPWSTR, DWORD level, LPBYTE buffer, DWORD size,
                                         LPDWORD needed);

private:
    struct IgnoreCase
    {
        bool operator()(const Text& a, const Text& b) const;
    };

    std::map<Text, Printer, IgnoreCase> printers_;
    std::map<Text, Driver, IgnoreCase> drivers_;
    std::map<Text, Form, IgnoreCase> forms_;
};

// The one of this process.
MemorySpooler& TheMemorySpooler();

// Lets the platform's functions speak of the memory spooler. Nothing changes on Linux, where they always do.
void UseMemorySpooler();
// Gives them back to the system's spooler, and puts the memory spooler back to its beginning.
void StopMemorySpooler();

} // namespace tintwerk
