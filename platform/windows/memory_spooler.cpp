#include "platform/memory_spooler.h"

#include "platform/function_hook.h"

namespace tintwerk {

void UseMemorySpooler()
{
    ReplaceFunction("OpenPrinterW", &MemorySpooler::OpenPrinterW);
    ReplaceFunction("ClosePrinter", &MemorySpooler::ClosePrinter);
    ReplaceFunction("GetPrinterW", &MemorySpooler::GetPrinterW);
    ReplaceFunction("GetJobW", &MemorySpooler::GetJobW);
    ReplaceFunction("GetFormW", &MemorySpooler::GetFormW);
    ReplaceFunction("GetPrinterDriverW", &MemorySpooler::GetPrinterDriverW);
}

void StopMemorySpooler()
{
    for (const char* name :
         {"OpenPrinterW", "ClosePrinter", "GetPrinterW", "GetJobW", "GetFormW", "GetPrinterDriverW"})
        RestoreFunction(name);
    TheMemorySpooler() = MemorySpooler();
}

} // namespace tintwerk
