// The records of the spooler in memory: sizes first, then data, texts behind the record.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory_spooler.h"
#include "platform/owners.h"
#include "platform/win32.h"

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

// Asks for the size, then for the data; empty when either fails.
template <typename Ask> std::vector<BYTE> AskTwice(Ask ask)
{
    DWORD needed = 0;
    EXPECT_FALSE(ask(nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    std::vector<BYTE> buffer(needed);
    DWORD again = 0;
    if (needed > 4) {
        EXPECT_FALSE(ask(buffer.data(), needed - 1, &again));
    }
    EXPECT_TRUE(ask(buffer.data(), needed, &again));
    EXPECT_LE(again, needed);
    return buffer;
}

bool Inside(const std::vector<BYTE>& buffer, const void* pointer)
{
    return pointer >= buffer.data() && pointer < buffer.data() + buffer.size();
}

class SpoolerTest : public testing::Test
{
protected:
    ~SpoolerTest() override { StopMemorySpooler(); }

    void UsePrinter()
    {
        UseMemorySpooler();
        MemorySpooler::Printer printer;
        printer.name = TEXT("Tintwerk P4");
        printer.driverName = TEXT("Tintwerk PS [4]");
        printer.status = PRINTER_STATUS_OFFLINE;
        printer.attributes = PRINTER_ATTRIBUTE_WORK_OFFLINE | PRINTER_ATTRIBUTE_LOCAL;
        TheMemorySpooler().SetPrinter(printer);
        TheMemorySpooler().SetDriver({3,
                                      TEXT("Tintwerk PS [4]"),
                                      TEXT("C:\\d\\PSCRIPT5.DLL"),
                                      TEXT("C:\\d\\p4.ppd"),
                                      TEXT("C:\\d\\PS5UI.DLL"),
                                      {TEXT("C:\\d\\PSTWUI.DLL"), TEXT("C:\\d\\PSTWDRV.DLL")}});
        WCHAR name[] = TEXT("tintwerk p4");
        ASSERT_TRUE(OpenPrinterW(name, printerHandle.Receive(), nullptr));
    }

    HANDLE Printer() const { return printerHandle.Get(); }

    PrinterHandle printerHandle;
};

TEST_F(SpoolerTest, DescribesPrinters)
{
    UsePrinter();
    const std::vector<BYTE> two = AskTwice([this](LPBYTE buffer, DWORD size, LPDWORD needed) {
        return GetPrinterW(Printer(), 2, buffer, size, needed);
    });
    const auto& info = *reinterpret_cast<const PRINTER_INFO_2W*>(two.data());
    EXPECT_EQ(TEXT("Tintwerk P4"), Text(info.pPrinterName));
    EXPECT_EQ(TEXT("Tintwerk PS [4]"), Text(info.pDriverName));
    EXPECT_TRUE(Inside(two, info.pPrinterName));
    EXPECT_EQ(DWORD{PRINTER_ATTRIBUTE_WORK_OFFLINE | PRINTER_ATTRIBUTE_LOCAL}, info.Attributes);

    const std::vector<BYTE> six = AskTwice([this](LPBYTE buffer, DWORD size, LPDWORD needed) {
        return GetPrinterW(Printer(), 6, buffer, size, needed);
    });
    EXPECT_EQ(DWORD{PRINTER_STATUS_OFFLINE}, reinterpret_cast<const PRINTER_INFO_6*>(six.data())->dwStatus);
    DWORD needed = 0;
    EXPECT_FALSE(GetPrinterW(Printer(), 77, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INVALID_LEVEL}, GetLastError());
}

TEST_F(SpoolerTest, RefusesWhatIsNotThere)
{
    UsePrinter();
    WCHAR nowhere[] = TEXT("Nowhere");
    HANDLE printer = nullptr;
    EXPECT_FALSE(OpenPrinterW(nowhere, &printer, nullptr));
    EXPECT_EQ(DWORD{ERROR_INVALID_PRINTER_NAME}, GetLastError());
    WCHAR known[] = TEXT("a3"), unknown[] = TEXT("Napkin");
    DWORD needed = 0;
    EXPECT_FALSE(GetFormW(Printer(), known, 1, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_FALSE(GetFormW(Printer(), unknown, 1, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INVALID_FORM_NAME}, GetLastError());
    EXPECT_FALSE(GetPrinterW(nullptr, 2, nullptr, 0, &needed));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
}

} // namespace
} // namespace tintwerk
