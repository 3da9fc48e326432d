// The print spooler of the headless platform: printers, jobs, forms and drivers in memory, answered through
// the platform's own records; and the DEVMODE and document event records that travel with a job. What the
// spooler knows is set by platform/memory_spooler.h, or through the platform's own Add... functions.
#pragma once

#include "platform/headless/kernel.h"

constexpr int CCHDEVICENAME = 32;
constexpr int CCHFORMNAME = 32;

// The members that describe a printer; those for displays share their room and are not declared.
struct DEVMODEW
{
    WCHAR dmDeviceName[CCHDEVICENAME];
    WORD dmSpecVersion;
    WORD dmDriverVersion;
    WORD dmSize;
    WORD dmDriverExtra;
    DWORD dmFields;
    SHORT dmOrientation;
    SHORT dmPaperSize;
    SHORT dmPaperLength;
    SHORT dmPaperWidth;
    SHORT dmScale;
    SHORT dmCopies;
    SHORT dmDefaultSource;
    SHORT dmPrintQuality;
    SHORT dmColor;
    SHORT dmDuplex;
    SHORT dmYResolution;
    SHORT dmTTOption;
    SHORT dmCollate;
    WCHAR dmFormName[CCHFORMNAME];
    WORD dmLogPixels;
    DWORD dmBitsPerPel;
    DWORD dmPelsWidth;
    DWORD dmPelsHeight;
    union {
        DWORD dmDisplayFlags;
        DWORD dmNup;
    };
    DWORD dmDisplayFrequency;
    DWORD dmICMMethod;
    DWORD dmICMIntent;
    DWORD dmMediaType;
    DWORD dmDitherType;
    DWORD dmReserved1;
    DWORD dmReserved2;
    DWORD dmPanningWidth;
    DWORD dmPanningHeight;
};
static_assert(sizeof(DEVMODEW) == 220);
using PDEVMODEW = DEVMODEW*;
using LPDEVMODEW = DEVMODEW*;

constexpr WORD DM_SPECVERSION = 0x0401;
constexpr DWORD DM_ORIENTATION = 0x1;
constexpr DWORD DM_PAPERSIZE = 0x2;
constexpr DWORD DM_PAPERLENGTH = 0x4;
constexpr DWORD DM_PAPERWIDTH = 0x8;
constexpr DWORD DM_SCALE = 0x10;
constexpr DWORD DM_NUP = 0x40;
constexpr DWORD DM_COPIES = 0x100;
constexpr DWORD DM_DEFAULTSOURCE = 0x200;
constexpr DWORD DM_PRINTQUALITY = 0x400;
constexpr DWORD DM_COLOR = 0x800;
constexpr DWORD DM_DUPLEX = 0x1000;
constexpr DWORD DM_YRESOLUTION = 0x2000;
constexpr DWORD DM_TTOPTION = 0x4000;
constexpr DWORD DM_COLLATE = 0x8000;
constexpr DWORD DM_FORMNAME = 0x10000;
constexpr SHORT DMORIENT_PORTRAIT = 1;
constexpr SHORT DMORIENT_LANDSCAPE = 2;
constexpr SHORT DMPAPER_LETTER = 1;
constexpr SHORT DMPAPER_A4 = 9;
constexpr SHORT DMPAPER_USER = 256;
constexpr SHORT DMCOLOR_MONOCHROME = 1;
constexpr SHORT DMCOLOR_COLOR = 2;
constexpr SHORT DMDUP_SIMPLEX = 1;
constexpr SHORT DMDUP_VERTICAL = 2;
constexpr SHORT DMDUP_HORIZONTAL = 3;
constexpr SHORT DMCOLLATE_FALSE = 0;
constexpr SHORT DMCOLLATE_TRUE = 1;

constexpr DWORD PRINTER_STATUS_PAUSED = 0x1;
constexpr DWORD PRINTER_STATUS_ERROR = 0x2;
constexpr DWORD PRINTER_STATUS_OFFLINE = 0x80;
constexpr DWORD PRINTER_ATTRIBUTE_QUEUED = 0x1;
constexpr DWORD PRINTER_ATTRIBUTE_DEFAULT = 0x4;
constexpr DWORD PRINTER_ATTRIBUTE_SHARED = 0x8;
constexpr DWORD PRINTER_ATTRIBUTE_LOCAL = 0x40;
constexpr DWORD PRINTER_ATTRIBUTE_WORK_OFFLINE = 0x400;
constexpr ACCESS_MASK PRINTER_ACCESS_ADMINISTER = 0x4;
constexpr ACCESS_MASK PRINTER_ACCESS_USE = 0x8;
constexpr ACCESS_MASK PRINTER_ALL_ACCESS = 0xF000C;

struct PRINTER_DEFAULTSW
{
    LPWSTR pDatatype;
    LPDEVMODEW pDevMode;
    ACCESS_MASK DesiredAccess;
};
using LPPRINTER_DEFAULTSW = PRINTER_DEFAULTSW*;

struct PRINTER_INFO_2W
{
    LPWSTR pServerName;
    LPWSTR pPrinterName;
    LPWSTR pShareName;
    LPWSTR pPortName;
    LPWSTR pDriverName;
    LPWSTR pComment;
    LPWSTR pLocation;
    LPDEVMODEW pDevMode;
    LPWSTR pSepFile;
    LPWSTR pPrintProcessor;
    LPWSTR pDatatype;
    LPWSTR pParameters;
    PSECURITY_DESCRIPTOR pSecurityDescriptor;
    DWORD Attributes;
    DWORD Priority;
    DWORD DefaultPriority;
    DWORD StartTime;
    DWORD UntilTime;
    DWORD Status;
    DWORD cJobs;
    DWORD AveragePPM;
};
struct PRINTER_INFO_6
{
    DWORD dwStatus;
};
struct JOB_INFO_2W
{
    DWORD JobId;
    LPWSTR pPrinterName;
    LPWSTR pMachineName;
    LPWSTR pUserName;
    LPWSTR pDocument;
    LPWSTR pNotifyName;
    LPWSTR pDatatype;
    LPWSTR pPrintProcessor;
    LPWSTR pParameters;
    LPWSTR pDriverName;
    LPDEVMODEW pDevMode;
    LPWSTR pStatus;
    PSECURITY_DESCRIPTOR pSecurityDescriptor;
    DWORD Status;
    DWORD Priority;
    DWORD Position;
    DWORD StartTime;
    DWORD UntilTime;
    DWORD TotalPages;
    DWORD Size;
    SYSTEMTIME Submitted;
    DWORD Time;
    DWORD PagesPrinted;
};
constexpr DWORD FORM_USER = 0;
constexpr DWORD FORM_BUILTIN = 1;
constexpr DWORD FORM_PRINTER = 2;
struct FORM_INFO_1W
{
    DWORD Flags;
    LPWSTR pName;
    SIZEL Size; // thousandths of a millimetre
    RECTL ImageableArea;
};
struct DRIVER_INFO_3W
{
    DWORD cVersion;
    LPWSTR pName;
    LPWSTR pEnvironment;
    LPWSTR pDriverPath;
    LPWSTR pDataFile;
    LPWSTR pConfigFile;
    LPWSTR pHelpFile;
    LPWSTR pDependentFiles; // a list of texts ended by an empty one
    LPWSTR pMonitorName;
    LPWSTR pDefaultDataType;
};
struct DRIVER_INFO_4W
{
    DWORD cVersion;
    LPWSTR pName;
    LPWSTR pEnvironment;
    LPWSTR pDriverPath;
    LPWSTR pDataFile;
    LPWSTR pConfigFile;
    LPWSTR pHelpFile;
    LPWSTR pDependentFiles; // a list of texts ended by an empty one
    LPWSTR pMonitorName;
    LPWSTR pDefaultDataType;
    LPWSTR pszzPreviousNames;
};
constexpr DWORD APD_COPY_ALL_FILES = 0x4;
constexpr DWORD APD_COPY_FROM_DIRECTORY = 0x10;

BOOL OpenPrinterW(LPWSTR name, LPHANDLE printer, LPPRINTER_DEFAULTSW defaults);
BOOL ClosePrinter(HANDLE printer);
BOOL GetPrinterW(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed);
BOOL GetJobW(HANDLE printer, DWORD job, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed);
BOOL GetFormW(HANDLE printer, LPWSTR name, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed);
BOOL GetPrinterDriverW(HANDLE printer, LPWSTR environment, DWORD level, LPBYTE buffer, DWORD size,
                       LPDWORD needed);
BOOL AddFormW(HANDLE printer, DWORD level, LPBYTE form);
BOOL DeleteFormW(HANDLE printer, LPWSTR name);
HANDLE AddPrinterW(LPWSTR server, DWORD level, LPBYTE printer);
BOOL DeletePrinter(HANDLE printer);
BOOL AddPrinterDriverExW(LPWSTR server, DWORD level, LPBYTE driver, DWORD flags);

// Document events, from the interface between the spooler and the printer driver.
constexpr int DOCUMENTEVENT_CREATEDCPRE = 1;
constexpr int DOCUMENTEVENT_STARTDOCPRE = 5;
constexpr int DOCUMENTEVENT_STARTDOCPOST = 13;
constexpr int DOCUMENTEVENT_QUERYFILTER = 14;
constexpr int DOCUMENTEVENT_SUCCESS = 1;
constexpr int DOCUMENTEVENT_UNSUPPORTED = 0;
constexpr int DOCUMENTEVENT_FAILURE = -1;
struct DOCEVENT_FILTER
{
    UINT cbSize;
    UINT cElementsAllocated;
    UINT cElementsNeeded;
    UINT cElementsReturned;
    DWORD aDocEventCall[1];
};
using PDOCEVENT_FILTER = DOCEVENT_FILTER*;
