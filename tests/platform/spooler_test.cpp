// The records of the spooler in memory: sizes first, then data, texts behind the record.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory_spooler.h"
#include "platform/owners.h"

namespace tintwerk {
namespace {

struct InMemory
{
    InMemory() { UseMemorySpooler(); }
    ~InMemory() { StopMemorySpooler(); }
};

TEST(Spooler, DescribesItsPrintersAndRefusesOthers)
{
    const InMemory spooler;
    MemorySpooler::Printer printer;
    printer.name = TEXT("Tintwerk P4");
    printer.driverName = TEXT("Tintwerk PS [4]");
    printer.status = PRINTER_STATUS_OFFLINE;
    TheMemorySpooler().SetPrinter(printer);
    WCHAR name[] = TEXT("tintwerk p4"), nowhere[] = TEXT("Nowhere"), form[] = TEXT("a3"),
          noForm[] = TEXT("Napkin");
    PrinterHandle handle, other;
    ASSERT_TRUE(OpenPrinterW(name, handle.Receive(), nullptr));
    DWORD needed = 0, again = 0;
    EXPECT_FALSE(GetPrinterW(handle.Get(), 2, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    std::vector<BYTE> buffer(needed);
    EXPECT_FALSE(GetPrinterW(handle.Get(), 2, buffer.data(), needed - 1, &again));
    ASSERT_TRUE(GetPrinterW(handle.Get(), 2, buffer.data(), needed, &again));
    const auto& info = *reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data());
    EXPECT_EQ(printer.name, info.pPrinterName);
    EXPECT_EQ(printer.driverName, info.pDriverName);
    EXPECT_EQ(printer.status, info.Status);
    EXPECT_LT(reinterpret_cast<const BYTE*>(info.pDriverName), buffer.data() + needed);

    const struct
    {
        const char* what;
        BOOL answer;
        DWORD answerError, error;
    } cases[] = {
        {"no such printer", OpenPrinterW(nowhere, other.Receive(), nullptr), GetLastError(),
         ERROR_INVALID_PRINTER_NAME},
        {"no such level", GetPrinterW(handle.Get(), 77, nullptr, 0, &needed), GetLastError(),
         ERROR_INVALID_LEVEL},
        {"a form", GetFormW(handle.Get(), form, 1, nullptr, 0, &needed), GetLastError(),
         ERROR_INSUFFICIENT_BUFFER},
        {"no such form", GetFormW(handle.Get(), noForm, 1, nullptr, 0, &needed), GetLastError(),
         ERROR_INVALID_FORM_NAME},
        {"no printer", GetPrinterW(nullptr, 2, nullptr, 0, &needed), GetLastError(), ERROR_INVALID_HANDLE},
    };
    for (const auto& row : cases) {
        EXPECT_FALSE(row.answer) << row.what;
        EXPECT_EQ(row.error, row.answerError) << row.what;
    }
}

} // namespace
} // namespace tintwerk
