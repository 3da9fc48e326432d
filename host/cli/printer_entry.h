// A printer that is not installed, as the spooler would describe it. Used by every command that opens pages
// or plays jobs.
#pragma once

#include <string>

#include "host/ppd/ppd.h"
#include "host/ppd/wide_text.h"
#include "platform/owners.h"

namespace tintwerk {

struct PaperSize
{
    int width = 0, height = 0; // thousandths of a millimetre
};

struct PrinterEntry
{
    WideString name;
    WideString driver;
    std::string ppdFile;
    bool offline = false;
    PaperSize custom = {}; // of the option CustomPageSize; nothing while the user gave none
};

// Lets the spooler speak of this printer, its driver and its forms, and of nothing else; opens the printer.
// Throws a CommandError when it does not open.
class SpooledPrinter
{
public:
    SpooledPrinter(const Ppd& ppd, const PrinterEntry& entry);
    ~SpooledPrinter();
    SpooledPrinter(const SpooledPrinter&) = delete;
    SpooledPrinter& operator=(const SpooledPrinter&) = delete;

    HANDLE Handle() const { return printer_.Get(); }

private:
    PrinterHandle printer_;
};

// The folder of this program, without a separator at its end.
WideString ProgramFolder();

} // namespace tintwerk
