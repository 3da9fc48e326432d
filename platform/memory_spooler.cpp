#include "platform/memory_spooler.h"

#include <cstring>

#include "platform/handles.h"

namespace tintwerk {

namespace {

using Text = MemorySpooler::Text;

// Packs one record: the fixed part first, what it points to from the end of the needed room backwards, as the
// spooler does. With too little room it only measures.
class Packing
{
public:
    Packing(LPBYTE buffer, DWORD size, DWORD fixed) : buffer_(buffer), size_(size), fixed_(fixed) {}

    // A null text where there is nothing to point to.
    void Add(WCHAR*& field, const Text* text)
    {
        if (text) AddBytes(field, text->c_str(), (text->size() + 1) * sizeof(WCHAR));
    }
    void Add(WCHAR*& field, const Text& text) { Add(field, &text); }
    void Add(DEVMODEW*& field, const std::vector<BYTE>& devmode)
    {
        if (!devmode.empty()) AddBytes(field, devmode.data(), devmode.size());
    }

    // Reports the bytes needed and, where they are there, the record.
    template <typename Record> BOOL Finish(const Record& record, LPDWORD needed)
    {
        const std::size_t total = fixed_ + tail_.size();
        *needed = static_cast<DWORD>(total);
        if (!buffer_ || size_ < total) return Refuse(ERROR_INSUFFICIENT_BUFFER);
        std::memcpy(buffer_, &record, sizeof record);
        if (!tail_.empty()) std::memcpy(buffer_ + fixed_, tail_.data(), tail_.size());
        return TRUE;
    }

private:
    template <typename Pointer> void AddBytes(Pointer*& field, const void* bytes, std::size_t size)
    {
        tail_.resize((tail_.size() + 7) & ~std::size_t{7});
        // As a number: without a buffer there is nothing to point to.
        field = reinterpret_cast<Pointer*>(reinterpret_cast<ULONG_PTR>(buffer_) + fixed_ + tail_.size());
        const auto* const first = static_cast<const BYTE*>(bytes);
        tail_.insert(tail_.end(), first, first + size);
    }

    LPBYTE buffer_;
    DWORD size_;
    std::size_t fixed_;
    std::vector<BYTE> tail_;
};

template <typename Record> Packing PackingOf(const Record&, LPBYTE buffer, DWORD size)
{
    return {buffer, size, sizeof(Record)};
}

HandleTable<Text>& OpenPrinters()
{
    static auto& printers = *new HandleTable<Text>;
    return printers;
}

// Null, with the last error set, when the handle is not open or its printer has gone.
const MemorySpooler::Printer* LookUp(HANDLE handle)
{
    const std::shared_ptr<Text> name = OpenPrinters().Get(handle);
    const MemorySpooler::Printer* const printer = name ? TheMemorySpooler().FindPrinter(*name) : nullptr;
    return printer ? printer : Refuse<MemorySpooler::Printer*>(ERROR_INVALID_HANDLE);
}

struct StandardForm
{
    const WCHAR* name;
    LONG width;
    LONG height;
};
constexpr StandardForm kStandardForms[] = {
    // clang-format off
    {TEXT("Letter"),              215900, 279400},
    {TEXT("Letter Small"),        215900, 279400},
    {TEXT("Tabloid"),             279400, 431800},
    {TEXT("Ledger"),              431800, 279400},
    {TEXT("Legal"),               215900, 355600},
    {TEXT("Statement"),           139700, 215900},
    {TEXT("Executive"),           184150, 266700},
    {TEXT("A3"),                  297000, 420000},
    {TEXT("A4"),                  210000, 297000},
    {TEXT("A4 Small"),            210000, 297000},
    {TEXT("A5"),                  148000, 210000},
    {TEXT("B4 (JIS)"),            257000, 364000},
    {TEXT("B5 (JIS)"),            182000, 257000},
    {TEXT("Folio"),               215900, 330200},
    {TEXT("Quarto"),              215000, 275000},
    {TEXT("10x14"),               254000, 355600},
    {TEXT("11x17"),               279400, 431800},
    {TEXT("Note"),                215900, 279400},
    {TEXT("Envelope #10"),        104775, 241300},
    {TEXT("Envelope DL"),         110000, 220000},
    {TEXT("Envelope C5"),         162000, 229000},
    {TEXT("Envelope C4"),         229000, 324000},
    {TEXT("Envelope C6"),         114000, 162000},
    {TEXT("A2"),                  420000, 594000},
    {TEXT("A6"),                  105000, 148000},
    {TEXT("Super A"),             227000, 356000},
    {TEXT("Super B"),             305000, 487000},
    // clang-format on
};

} // namespace

bool MemorySpooler::IgnoreCase::operator()(const Text& a, const Text& b) const
{
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_LESS_THAN;
}

MemorySpooler::MemorySpooler()
{
    for (const StandardForm& form : kStandardForms)
        SetForm(form.name, {{form.width, form.height}, {0, 0, form.width, form.height}, FORM_BUILTIN});
}

void MemorySpooler::SetPrinter(Printer printer)
{
    const Text name = printer.name;
    printers_.insert_or_assign(name, std::move(printer));
}

void MemorySpooler::SetDriver(Driver driver)
{
    const Text name = driver.name;
    drivers_.insert_or_assign(name, std::move(driver));
}

void MemorySpooler::SetForm(const Text& name, Form form)
{
    forms_.insert_or_assign(name, form);
}

MemorySpooler::Printer* MemorySpooler::FindPrinter(const Text& name)
{
    const auto at = printers_.find(name);
    return at != printers_.end() ? &at->second : nullptr;
}

BOOL WINAPI MemorySpooler::OpenPrinterW(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW)
{
    if (!name || !TheMemorySpooler().FindPrinter(name)) return Refuse(ERROR_INVALID_PRINTER_NAME);
    *printer = OpenPrinters().Open(std::make_shared<Text>(name));
    return TRUE;
}

BOOL WINAPI MemorySpooler::ClosePrinter(HANDLE printer)
{
    return OpenPrinters().Close(printer);
}

BOOL WINAPI MemorySpooler::GetPrinterW(HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    const Printer* const printer = LookUp(handle);
    if (!printer) return FALSE;
    if (level == 6) {
        PRINTER_INFO_6 record{};
        record.dwStatus = printer->status;
        return PackingOf(record, buffer, size).Finish(record, needed);
    }
    if (level != 2) return Refuse(ERROR_INVALID_LEVEL);
    PRINTER_INFO_2W record{};
    Packing packing = PackingOf(record, buffer, size);
    packing.Add(record.pPrinterName, printer->name);
    packing.Add(record.pShareName, Text());
    packing.Add(record.pPortName, printer->port);
    packing.Add(record.pDriverName, printer->driverName);
    packing.Add(record.pComment, Text());
    packing.Add(record.pLocation, Text());
    packing.Add(record.pDevMode, printer->devmode);
    packing.Add(record.pSepFile, Text());
    packing.Add(record.pPrintProcessor, Text(TEXT("winprint")));
    packing.Add(record.pDatatype, Text(TEXT("RAW")));
    packing.Add(record.pParameters, Text());
    record.Attributes = printer->attributes;
    record.Status = printer->status;
    record.Priority = 1;
    record.cJobs = static_cast<DWORD>(printer->jobs.size());
    return packing.Finish(record, needed);
}

BOOL WINAPI MemorySpooler::GetJobW(HANDLE handle, DWORD id, DWORD level, LPBYTE buffer, DWORD size,
                                   LPDWORD needed)
{
    const Printer* const printer = LookUp(handle);
    if (!printer) return FALSE;
    const auto at = printer->jobs.find(id);
    if (at == printer->jobs.end()) return Refuse(ERROR_INVALID_PARAMETER);
    if (level != 2) return Refuse(ERROR_INVALID_LEVEL);
    const Job& job = at->second;
    JOB_INFO_2W record{};
    Packing packing = PackingOf(record, buffer, size);
    packing.Add(record.pPrinterName, printer->name);
    packing.Add(record.pDocument, job.document ? &*job.document : nullptr);
    packing.Add(record.pDatatype, Text(TEXT("RAW")));
    packing.Add(record.pPrintProcessor, Text(TEXT("winprint")));
    packing.Add(record.pDriverName, printer->driverName);
    packing.Add(record.pDevMode, job.devmode);
    record.JobId = id;
    record.Priority = 1;
    record.Position = 1;
    return packing.Finish(record, needed);
}

BOOL WINAPI MemorySpooler::GetFormW(HANDLE, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size,
                                    LPDWORD needed)
{
    const auto& forms = TheMemorySpooler().forms_;
    const auto at = forms.find(name ? name : TEXT(""));
    if (at == forms.end()) return Refuse(ERROR_INVALID_FORM_NAME);
    if (level != 1) return Refuse(ERROR_INVALID_LEVEL);
    FORM_INFO_1W record{};
    Packing packing = PackingOf(record, buffer, size);
    packing.Add(record.pName, at->first);
    record.Flags = at->second.flags;
    record.Size = at->second.size;
    record.ImageableArea = at->second.imageableArea;
    return packing.Finish(record, needed);
}

BOOL WINAPI MemorySpooler::GetPrinterDriverW(HANDLE handle, LPWSTR, DWORD level, LPBYTE buffer, DWORD size,
                                             LPDWORD needed)
{
    const Printer* const printer = LookUp(handle);
    if (!printer) return FALSE;
    const auto& drivers = TheMemorySpooler().drivers_;
    const auto at = drivers.find(printer->driverName);
    if (at == drivers.end()) return Refuse(ERROR_UNKNOWN_PRINTER_DRIVER);
    if (level != 4) return Refuse(ERROR_INVALID_LEVEL);
    const Driver* const driver = &at->second;
    Text files;
    for (const Text& file : driver->dependentFiles)
        files += file + TEXT('\0');
    DRIVER_INFO_4W record{};
    Packing packing = PackingOf(record, buffer, size);
    packing.Add(record.pName, driver->name);
    packing.Add(record.pEnvironment, Text(TEXT("Windows x64")));
    packing.Add(record.pDriverPath, driver->driverPath);
    packing.Add(record.pDataFile, driver->dataFile);
    packing.Add(record.pConfigFile, driver->configFile);
    packing.Add(record.pDependentFiles, driver->dependentFiles.empty() ? nullptr : &files);
    record.cVersion = driver->version;
    return packing.Finish(record, needed);
}

MemorySpooler& TheMemorySpooler()
{
    static MemorySpooler& spooler = *new MemorySpooler;
    return spooler;
}

} // namespace tintwerk
