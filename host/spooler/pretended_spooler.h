// A printer that is not installed: answers the plug-in's questions to the spooler about one printer, its driver, its forms
// and its jobs. Calls about any other printer go to the platform's own spooler. Used by the host's sheets and print jobs.
#pragma once

#include <filesystem>
#include <vector>

#include "host/core/wide_text.h"
#include "host/ppd/ppd.h"
#include "platform/win32.h"

namespace tintwerk {

struct PretendedPrinter
{
    WideString name;
    WideString driverName; // its last four characters are the printer's number
    WideString dataFile;   // the PPD
    WideString coreModule; // plays the core driver: this program
    WideString pluginModule;
    bool workOffline = false;   // the user set it offline
    bool statusOffline = false; // it does not answer
};

struct PretendedJob
{
    DWORD id = 0;
    WideString document;
    std::vector<BYTE> devmode; // the first element is the first byte of a DEVMODEW; empty: none
};

// One at a time in a process.
class PretendedSpooler
{
public:
    PretendedSpooler(PretendedPrinter printer, const Ppd& ppd);
    ~PretendedSpooler();
    PretendedSpooler(const PretendedSpooler&) = delete;
    PretendedSpooler& operator=(const PretendedSpooler&) = delete;

    // What stands for the opened printer.
    HANDLE Printer() const;
    PretendedPrinter& Description() { return printer_; }
    void SetJob(PretendedJob job) { job_ = std::move(job); }

    BOOL GetPrinter(DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const;
    BOOL GetDriver(DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const;
    BOOL GetForm(const WCHAR* name, DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const;
    BOOL GetJob(DWORD id, DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const;

private:
    PretendedPrinter printer_;
    PretendedJob job_;
    const Ppd& ppd_;
};

} // namespace tintwerk
