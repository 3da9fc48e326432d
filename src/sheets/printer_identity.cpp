#include "src/sheets/printer_identity.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "src/config/registry_values.h"
#include "src/records/process_values.h"
#include "src/records/spooler_record.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

using TextView = std::basic_string_view<WCHAR>;

constexpr SIZE_T kInkFileCharacters = 20; // of "\ink\printer0000.ink"

bool IsBlank(WCHAR c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(WCHAR c)
{
    return c >= '0' && c <= '9';
}

int NumberOfDriver(const WCHAR* driverName)
{
    const TextView name(OrEmpty(driverName));
    Trace(TEXT("*** extracted drivername: %s\n"), name.data());
    if (name.size() <= kNumberCharacters) return kUnknownPrinterNumber;
    const ScannedNumber number = ScanNumber(name.substr(name.size() - kNumberCharacters));
    Trace(TEXT("Got %d args with number=%d\n"), number.count, number.value);
    return number.value;
}

// Asks the spooler for the printer's driver.
int ReadPrinterNumber(const SheetRecord& record)
{
    const BYTE* block = nullptr;
    DWORD needed = 0;
    const auto ask = [&](LPBYTE buffer, DWORD size, DWORD* bytes) -> BOOL {
        block = buffer;
        if (buffer) {
            Trace(TEXT("pPrinterInfo2 is %d\n"), TraceNumber(buffer));
            return GetPrinterW(record.printer, 2, buffer, size, &needed);
        }
        PRINTER_INFO_2W sizing{};
        GetPrinterW(record.printer, 2, reinterpret_cast<LPBYTE>(&sizing), sizeof sizing, &needed);
        if (needed) Trace(TEXT("GetPrinter needs %d Bytes\n"), static_cast<int>(needed));
        *bytes = needed;
        return FALSE;
    };
    const SpoolerRecord<PRINTER_INFO_2W> printer(ask, record.parameters->hOEMHeap);
    if (printer) return NumberOfDriver(printer.Text(printer->pDriverName));
    if (!needed && !block) return kUnknownPrinterNumber;
    if (!block) Trace(TEXT("pPrinterInfo2 is 0\n"));
    Trace(TEXT("GetPrinter2 failed - cbNeeded=%d\n"), static_cast<int>(needed));
    return kUnknownPrinterNumber;
}

// The process keeps the directory once it could be read; empty while there is none.
ConfigDirectoryText ConfigDirectory()
{
    ConfigDirectoryText directory = Process().configDirectory.Get();
    if (directory.path[0]) return directory;
    if (ReadRegistryString(kConfigDirValue, directory.path) != 0) {
        std::fprintf(stderr, "get_settings_directory failed\n");
        return {};
    }
    Process().configDirectory.Set(directory);
    return directory;
}

} // namespace

ScannedNumber ScanNumber(TextView text)
{
    auto at = std::ranges::find_if_not(text, IsBlank);
    const bool negative = at != text.end() && *at == '-';
    if (at != text.end() && (*at == '-' || *at == '+')) ++at;
    if (at == text.end() || !IsDigit(*at)) return {0, kUnknownPrinterNumber};
    int value = 0;
    for (; at != text.end() && IsDigit(*at); ++at)
        value = 10 * value + (*at - '0');
    return {1, negative ? -value : value};
}

void AppendInkFile(char (&path)[kInkFilePathBytes], int printerNumber)
{
    const SIZE_T length = std::strlen(path);
    if (length < kInkFilePathBytes - kInkFileCharacters)
        std::snprintf(path + length, kInkFilePathBytes - length, "\\ink\\printer%.04d.ink", printerNumber);
}

void IdentifyPrinter(SheetRecord& record)
{
    SheetContext& context = *record.context;
    record.printer = context.core.printer = record.parameters->hPrinter;
    record.printerNumber = ReadPrinterNumber(record);
    if (record.printerNumber == kUnknownPrinterNumber) {
        Trace(TEXT("GetPrinter failed\n"));
        record.printerNumber = 0;
    }
    lstrcpynA(context.inkFilePath, ConfigDirectory().path, kInkFilePathBytes);
    record.printerNumber %= kPrinterNumberLimit;
    AppendInkFile(context.inkFilePath, record.printerNumber);
    if (const WCHAR* const name = record.parameters->pPrinterName)
        lstrcpynW(context.printerName, name, kPrinterNameUnits);
}

} // namespace tintwerk
