#include "host/spooler/pretended_spooler.h"

#include <cstring>
#include <utility>

#include "platform/function_hook.h"

namespace tintwerk {

namespace {

// One handle for the whole process, far from the values of real ones.
const HANDLE kPrinterHandle = reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(0x54570001));

PretendedSpooler* spooler = nullptr;
decltype(&GetPrinterW) realGetPrinter = nullptr;
decltype(&GetPrinterDriverW) realGetPrinterDriver = nullptr;
decltype(&GetFormW) realGetForm = nullptr;
decltype(&GetJobW) realGetJob = nullptr;

template <typename Function, typename... Arguments> BOOL PassOn(Function* real, Arguments... arguments)
{
    if (real) return real(arguments...);
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

BOOL WINAPI HookedGetPrinter(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    if (spooler && printer == kPrinterHandle) return spooler->GetPrinter(level, buffer, size, needed);
    return PassOn(realGetPrinter, printer, level, buffer, size, needed);
}

BOOL WINAPI HookedGetPrinterDriver(HANDLE printer, LPWSTR environment, DWORD level, LPBYTE buffer, DWORD size,
                                   LPDWORD needed)
{
    if (spooler && printer == kPrinterHandle) return spooler->GetDriver(level, buffer, size, needed);
    return PassOn(realGetPrinterDriver, printer, environment, level, buffer, size, needed);
}

BOOL WINAPI HookedGetForm(HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    if (spooler && printer == kPrinterHandle) return spooler->GetForm(name, level, buffer, size, needed);
    return PassOn(realGetForm, printer, name, level, buffer, size, needed);
}

BOOL WINAPI HookedGetJob(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
{
    if (spooler && printer == kPrinterHandle) return spooler->GetJob(job, level, buffer, size, needed);
    return PassOn(realGetJob, printer, job, level, buffer, size, needed);
}

// A record of the spooler and what its pointers point to, in one buffer: first counted, then written if there is room.
template <typename Record> class Reply
{
public:
    Reply(BYTE* buffer, DWORD size, DWORD* needed) : buffer_(buffer), size_(size), needed_(needed) {}

    void Text(LPWSTR Record::* member, const WideString& text) { Bytes(member, text.c_str(), text.size() + 1); }
    // The text may hold zeros: a list of texts.
    template <typename Pointer, typename Element>
    void Bytes(Pointer Record::* member, const Element* data, std::size_t count)
    {
        used_ = (used_ + 7) & ~std::size_t{7};
        const std::size_t at = used_;
        used_ += count * sizeof(Element);
        if (!Fits()) return;
        std::memcpy(buffer_ + at, data, count * sizeof(Element));
        record_.*member = reinterpret_cast<Pointer>(buffer_ + at);
    }
    Record& Fields() { return record_; }

    BOOL Finish()
    {
        if (needed_) *needed_ = static_cast<DWORD>(used_);
        if (!Fits()) {
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return FALSE;
        }
        std::memcpy(buffer_, &record_, sizeof record_);
        return TRUE;
    }

private:
    bool Fits() const { return buffer_ && used_ <= size_; }

    BYTE* buffer_;
    DWORD size_;
    DWORD* needed_;
    std::size_t used_ = sizeof(Record);
    Record record_{};
};

BOOL UnknownLevel(DWORD* needed)
{
    if (needed) *needed = 0;
    SetLastError(ERROR_INVALID_LEVEL);
    return FALSE;
}

} // namespace

PretendedSpooler::PretendedSpooler(PretendedPrinter printer, const Ppd& ppd) : printer_(std::move(printer)), ppd_(ppd)
{
    spooler = this;
    realGetPrinter = ReplaceFunction("GetPrinterW", &HookedGetPrinter);
    realGetPrinterDriver = ReplaceFunction("GetPrinterDriverW", &HookedGetPrinterDriver);
    realGetForm = ReplaceFunction("GetFormW", &HookedGetForm);
    realGetJob = ReplaceFunction("GetJobW", &HookedGetJob);
}

PretendedSpooler::~PretendedSpooler()
{
    for (const char* name : {"GetPrinterW", "GetPrinterDriverW", "GetFormW", "GetJobW"})
        RestoreFunction(name);
    spooler = nullptr;
}

HANDLE PretendedSpooler::Printer() const
{
    return kPrinterHandle;
}

BOOL PretendedSpooler::GetPrinter(DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const
{
    if (level == 6) {
        Reply<PRINTER_INFO_6> reply(buffer, size, needed);
        reply.Fields().dwStatus = printer_.statusOffline ? PRINTER_STATUS_OFFLINE : 0;
        return reply.Finish();
    }
    if (level != 2) return UnknownLevel(needed);
    Reply<PRINTER_INFO_2W> reply(buffer, size, needed);
    reply.Text(&PRINTER_INFO_2W::pPrinterName, printer_.name);
    reply.Text(&PRINTER_INFO_2W::pDriverName, printer_.driverName);
    reply.Text(&PRINTER_INFO_2W::pPortName, TEXT("FILE:"));
    reply.Fields().Attributes = PRINTER_ATTRIBUTE_LOCAL | (printer_.workOffline ? PRINTER_ATTRIBUTE_WORK_OFFLINE : 0);
    reply.Fields().Status = printer_.statusOffline ? PRINTER_STATUS_OFFLINE : 0;
    return reply.Finish();
}

BOOL PretendedSpooler::GetDriver(DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const
{
    if (level != 4) return UnknownLevel(needed);
    Reply<DRIVER_INFO_4W> reply(buffer, size, needed);
    reply.Fields().cVersion = 3;
    reply.Text(&DRIVER_INFO_4W::pName, printer_.driverName);
    reply.Text(&DRIVER_INFO_4W::pEnvironment, TEXT("Windows x64"));
    reply.Text(&DRIVER_INFO_4W::pDriverPath, printer_.coreModule);
    reply.Text(&DRIVER_INFO_4W::pConfigFile, printer_.coreModule);
    reply.Text(&DRIVER_INFO_4W::pDataFile, printer_.dataFile);
    const WideString dependent = printer_.pluginModule + WCHAR{}; // one text, then the list's end
    reply.Bytes(&DRIVER_INFO_4W::pDependentFiles, dependent.c_str(), dependent.size() + 1);
    return reply.Finish();
}

// The core driver makes a form of every page size, under the name that people see.
BOOL PretendedSpooler::GetForm(const WCHAR* name, DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const
{
    if (level != 1) return UnknownLevel(needed);
    const std::string wanted = name ? Utf8FromWide(name) : std::string();
    for (const PpdForm& form : ppd_.Forms()) {
        if (form.text != wanted) continue;
        Reply<FORM_INFO_1W> reply(buffer, size, needed);
        reply.Text(&FORM_INFO_1W::pName, WideFromUtf8(form.text));
        reply.Fields().Flags = FORM_PRINTER;
        reply.Fields().Size = {form.width, form.height};
        reply.Fields().ImageableArea = {form.left, form.height - form.top, form.right, form.height - form.bottom};
        return reply.Finish();
    }
    if (needed) *needed = 0;
    SetLastError(ERROR_INVALID_FORM_NAME);
    return FALSE;
}

BOOL PretendedSpooler::GetJob(DWORD id, DWORD level, BYTE* buffer, DWORD size, DWORD* needed) const
{
    if (level != 2) return UnknownLevel(needed);
    if (job_.id == 0 || id != job_.id) {
        if (needed) *needed = 0;
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    Reply<JOB_INFO_2W> reply(buffer, size, needed);
    reply.Fields().JobId = id;
    reply.Text(&JOB_INFO_2W::pPrinterName, printer_.name);
    reply.Text(&JOB_INFO_2W::pDriverName, printer_.driverName);
    reply.Text(&JOB_INFO_2W::pDocument, job_.document);
    if (!job_.devmode.empty()) reply.Bytes(&JOB_INFO_2W::pDevMode, job_.devmode.data(), job_.devmode.size());
    return reply.Finish();
}

} // namespace tintwerk
