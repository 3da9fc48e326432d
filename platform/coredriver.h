// The public interfaces between the PostScript core driver and its plug-ins, as far as the toolchain's headers lack them:
// parameter records, the plug-in interface that the module implements and the helper interfaces that the core driver
// publishes. Declared in the platform's own names; nothing here has code.
//
// "List" is a buffer of zero-terminated 8-bit strings ended by an empty one. All sizes count bytes.
#pragma once

#include <type_traits>

#include "platform/win32.h"

// Handed from the core driver to every call that concerns one open sheet or document; opaque to a plug-in.
using POEMUIOBJ = struct OEMUIOBJ*;

// lParamInit of the plug-in's property sheet callbacks.
struct OEMUIPSPARAM
{
    DWORD cbSize;
    POEMUIOBJ poemuiobj;
    HANDLE hPrinter;
    PWSTR pPrinterName;
    HANDLE hModule;
    HANDLE hOEMHeap; // a heap of the core driver that lives as long as the sheet
    PDEVMODEW pPublicDM;
    PVOID pOEMDM; // the plug-in's private part of the DEVMODE
    PVOID pOEMUserData;
    DWORD dwFlags;
    PVOID pOemEntry;
};

// Argument of IPrintOemUI2::DevMode.
struct OEMDMPARAM
{
    DWORD cbSize;
    PVOID pdriverobj;
    HANDLE hPrinter;
    HANDLE hModule;
    PDEVMODEW pPublicDMIn;
    PDEVMODEW pPublicDMOut;
    PVOID pOEMDMIn;
    PVOID pOEMDMOut;
    DWORD cbBufSize;
};
using POEMDMPARAM = OEMDMPARAM*;

inline constexpr DWORD OEMDM_SIZE = 1;
inline constexpr DWORD OEMDM_DEFAULT = 2;
inline constexpr DWORD OEMDM_CONVERT = 3;
inline constexpr DWORD OEMDM_MERGE = 4;

inline constexpr DWORD OEMGI_GETSIGNATURE = 1;
inline constexpr DWORD OEMGI_GETVERSION = 3;
inline constexpr DWORD OEMGI_GETPUBLISHERINFO = 4;
inline constexpr DWORD OEMGI_GETREQUESTEDHELPERINTERFACES = 5;

inline constexpr DWORD OEMPUBLISH_IPRINTCOREHELPER = 1;

// Data types of the attribute methods.
inline constexpr DWORD kADT_UNKNOWN = 0;
inline constexpr DWORD kADT_DWORD = 4;
inline constexpr DWORD kADT_ASCII = 5;
inline constexpr DWORD kADT_UNICODE = 6;

inline constexpr DWORD SETOPTIONS_FLAG_RESOLVE_CONFLICT = 1;
inline constexpr DWORD SETOPTIONS_FLAG_KEEP_CONFLICT = 2;

// Results that IPrintCoreUI2::SetOptions reports.
inline constexpr DWORD SETOPTIONS_RESULT_NO_CONFLICT = 0;
inline constexpr DWORD SETOPTIONS_RESULT_CONFLICT_RESOLVED = 1;
inline constexpr DWORD SETOPTIONS_RESULT_CONFLICT_REMAINED = 2;

// Query mode and result flag of IPrintOemUI2::QueryColorProfile.
inline constexpr ULONG QCP_DEVICEPROFILE = 0;
inline constexpr FLONG QCPF_PROFILEDISK = 2; // the profile is named by a file on disk

inline constexpr GUID IID_IPrintOemUI{0xC6A7A9D0, 0x774C, 0x11D1, {0x94, 0x7F, 0x00, 0xA0, 0xC9, 0x06, 0x40, 0xB8}};
inline constexpr GUID IID_IPrintOemUI2{0x292515F9, 0xB54B, 0x489B, {0x92, 0x75, 0xBA, 0xB5, 0x68, 0x21, 0x39, 0x5E}};
inline constexpr GUID IID_IPrintCoreUI2{0x085CCFCA, 0x3ADF, 0x4C9E, {0xB4, 0x91, 0xD8, 0x51, 0xA6, 0xED, 0xC9, 0x97}};
inline constexpr GUID IID_IPrintCoreHelperPS{
    0xC2C14F6F, 0x95D3, 0x4D63, {0x96, 0xCF, 0x6B, 0xD9, 0xE6, 0xC9, 0x07, 0xC2}};

// What a plug-in of the core driver's user interface half implements.
struct IPrintOemUI2 : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetInfo(DWORD mode, PVOID buffer, DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevMode(DWORD mode, POEMDMPARAM parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE PublishDriverInterface(IUnknown* helper) = 0;
    virtual HRESULT STDMETHODCALLTYPE CommonUIProp(DWORD mode, PVOID parameters) = 0;
    virtual HRESULT STDMETHODCALLTYPE DocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevQueryPrintEx(POEMUIOBJ core, PVOID query, PDEVMODEW publicDevmode,
                                                      PVOID privateDevmode) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeviceCapabilities(POEMUIOBJ core, HANDLE printer, PWSTR device, WORD capability,
                                                         PVOID output, PDEVMODEW publicDevmode, PVOID privateDevmode,
                                                         DWORD old, DWORD* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE UpgradePrinter(DWORD level, PBYTE information) = 0;
    virtual HRESULT STDMETHODCALLTYPE PrinterEvent(PWSTR printer, INT event, DWORD flags, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DriverEvent(DWORD event, DWORD level, LPBYTE information, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryColorProfile(HANDLE printer, POEMUIOBJ core, PDEVMODEW publicDevmode,
                                                        PVOID privateDevmode, ULONG mode, VOID* data, ULONG* size,
                                                        FLONG* flags) = 0;
    virtual HRESULT STDMETHODCALLTYPE FontInstallerDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE UpdateExternalFonts(HANDLE printer, HANDLE heap, PWSTR cartridges) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryJobAttributes(HANDLE printer, PDEVMODEW devmode, DWORD level,
                                                         LPBYTE attributes) = 0;
    virtual HRESULT STDMETHODCALLTYPE HideStandardUI(DWORD mode) = 0;
    virtual HRESULT STDMETHODCALLTYPE DocumentEvent(HANDLE printer, HDC dc, INT event, ULONG inSize, PVOID in,
                                                    ULONG outSize, PVOID out, PINT result) = 0;
};

// The core driver's helper for a user interface plug-in. A query that succeeds with nothing to report writes one zero
// byte and needed = 1; a buffer that is null or too small gives E_OUTOFMEMORY with needed set; an unknown feature or
// option gives E_INVALIDARG.
struct IPrintCoreUI2 : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID core, PCSTR feature, PVOID output, DWORD size,
                                                          PDWORD needed, PDWORD returned) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE printer, PCSTR feature, PCSTR option) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID core, PVOID item, DWORD previous, DWORD mode) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOptions(POEMUIOBJ core, DWORD flags, PCSTR request, DWORD requestSize, PSTR reply,
                                                 DWORD replySize, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOptions(POEMUIOBJ core, DWORD flags, PCSTR pairs, DWORD size, PDWORD result) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list,
                                                             DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE WhyConstrained(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option, PSTR pairs,
                                                     DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlobalAttribute(POEMUIOBJ core, DWORD flags, PCSTR attribute, PDWORD type,
                                                         PBYTE value, DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFeatureAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR attribute,
                                                          PDWORD type, PBYTE value, DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOptionAttribute(POEMUIOBJ core, DWORD flags, PCSTR feature, PCSTR option,
                                                         PCSTR attribute, PDWORD type, PBYTE value, DWORD size,
                                                         PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumFeatures(POEMUIOBJ core, DWORD flags, PSTR list, DWORD size, PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumOptions(POEMUIOBJ core, DWORD flags, PCSTR feature, PSTR list, DWORD size,
                                                  PDWORD needed) = 0;
    virtual HRESULT STDMETHODCALLTYPE QuerySimulationSupport(HANDLE printer, DWORD level, PBYTE output, DWORD size,
                                                             PDWORD needed) = 0;
};

struct PRINT_FEATURE_OPTION
{
    PCSTR pszFeature;
    PCSTR pszOption;
};

// The core driver's helper for PostScript plug-ins. Whatever it returns by pointer is owned by the core driver.
struct IPrintCoreHelperPS : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetOption(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR* option) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOptions(DEVMODEW* devmode, DWORD size, BOOL resolve,
                                                 const PRINT_FEATURE_OPTION* pairs, DWORD count, DWORD* written,
                                                 DWORD* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumConstrainedOptions(const DEVMODEW* devmode, DWORD size, PCSTR feature,
                                                             PCSTR** options, DWORD* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE WhyConstrained(const DEVMODEW* devmode, DWORD size, PCSTR feature, PCSTR option,
                                                     const PRINT_FEATURE_OPTION** pairs, DWORD* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumFeatures(PCSTR** features, DWORD* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumOptions(PCSTR feature, PCSTR** options, DWORD* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontSubstitution(PCWSTR font, PCWSTR* deviceFont) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontSubstitution(PCWSTR font, PCWSTR deviceFont) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateInstanceOfMSXMLObject(REFCLSID classId, IUnknown* outer, DWORD context,
                                                                  REFIID interfaceId, void** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetGlobalAttribute(PCSTR attribute, DWORD* type, PBYTE* value, DWORD* size) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFeatureAttribute(PCSTR feature, PCSTR attribute, DWORD* type, PBYTE* value,
                                                          DWORD* size) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOptionAttribute(PCSTR feature, PCSTR option, PCSTR attribute, DWORD* type,
                                                         PBYTE* value, DWORD* size) = 0;
};

// The newest layout of a property sheet page: the platform's own record, or, where its headers know an older one, that
// record and the handle that came after it. The handle stays null: no page has a header bitmap.
template <class Record>
concept NewestSheetPage = requires(Record page) { page.hbmHeader; };
template <class Record>
struct WithHeaderBitmap : Record
{
    HBITMAP hbmHeader;
};
using PropertySheetPage =
    std::conditional_t<NewestSheetPage<PROPSHEETPAGEW>, PROPSHEETPAGEW, WithHeaderBitmap<PROPSHEETPAGEW>>;
static_assert(sizeof(PropertySheetPage) == 104);
