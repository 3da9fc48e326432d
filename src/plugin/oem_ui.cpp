#include "src/plugin/oem_ui.h"

#include <cstring>

#include "src/events/document_events.h"
#include "src/plugin/devmode_requests.h"
#include "src/plugin/heap_object.h"
#include "src/plugin/module_counters.h"
#include "src/records/private_devmode.h"
#include "src/sheets/device_sheet.h"
#include "src/sheets/document_sheet.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr WCHAR kColorProfile[] = TEXT("OEMPROFILE.icm");
constexpr ULONG kColorProfileBytes = 32; // reported, and asked of the caller's buffer
static_assert(sizeof kColorProfile <= kColorProfileBytes);

HRESULT FailWith(DWORD error)
{
    SetLastError(error);
    return E_FAIL;
}

HRESULT Declined(const WCHAR* entry)
{
    Trace(entry);
    return E_NOTIMPL;
}

template <typename Interface>
HRESULT Adopt(ComPtr<Interface>& helper, IUnknown* published, REFIID interfaceId)
{
    Interface* asked = nullptr;
    if (!published || FAILED(published->QueryInterface(interfaceId, reinterpret_cast<void**>(&asked))) ||
        !asked)
        return E_FAIL;
    *helper.Receive() = asked;
    return S_OK;
}

} // namespace

IOemUI::IOemUI()
{
    ++moduleCounters.liveObjects;
}
IOemUI::~IOemUI()
{
    --moduleCounters.liveObjects;
}

HRESULT IOemUI::QueryInterface(REFIID interfaceId, void** object)
{
    Trace(TEXT("UI:  IOemUI:QueryInterface entry.\r\n\r\n"));
    if (!object) return E_POINTER;
    if (IsEqualIID(interfaceId, IID_IUnknown)) {
        Trace(TEXT("UI:  IOemUI:Return pointer to IUnknown.\r\n\r\n"));
    } else if (IsEqualIID(interfaceId, IID_IPrintOemUI2)) {
        Trace(TEXT("UI:  IOemUI:Return pointer to IPrintOemUI.\r\n"));
    } else {
        *object = nullptr;
        Trace(TEXT("UI:  IOemUI:No Interface. Return NULL.\r\n"));
        return E_NOINTERFACE;
    }
    *object = static_cast<IPrintOemUI2*>(this);
    AddRef();
    return S_OK;
}

ULONG IOemUI::AddRef()
{
    Trace(TEXT("UI:  IOemUI:AddRef entry.\r\n"));
    return static_cast<ULONG>(++references_);
}

ULONG IOemUI::Release()
{
    Trace(TEXT("UI:  IOemUI:Release entry.\r\n"));
    const LONG left = --references_;
    if (left == 0) {
        coreUi_.Reset();
        coreHelper_.Reset();
        DeleteOnHeap(this);
    }
    return static_cast<ULONG>(left);
}

HRESULT IOemUI::GetInfo(DWORD mode, PVOID buffer, DWORD size, PDWORD needed)
{
    Trace(TEXT("UI:  IOemUI::GetInfo(%d) entry.\r\r\n"), static_cast<int>(mode));
    DWORD answer = 0;
    bool known = true;
    switch (mode) {
    case OEMGI_GETSIGNATURE:
        answer = kPluginSignature;
        break;
    case OEMGI_GETVERSION:
        answer = kPluginVersion;
        break;
    case OEMGI_GETREQUESTEDHELPERINTERFACES:
        answer = OEMPUBLISH_IPRINTCOREHELPER;
        break;
    case OEMGI_GETPUBLISHERINFO:
        break;
    default:
        known = false;
        break;
    }
    if (!needed || !known) {
        Trace(TEXT("UI:  IOemUI::GetInfo() exit pcbNeeded is NULL! ERROR_INVALID_PARAMETER\r\r\n"));
        return FailWith(ERROR_INVALID_PARAMETER);
    }
    *needed = sizeof answer;
    if (size < sizeof answer || !buffer) {
        Trace(TEXT("UI:  IOemUI::GetInfo() exit insufficient buffer!\r\r\n"));
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    }
    if (mode == OEMGI_GETPUBLISHERINFO) {
        Trace(TEXT("UI:  IOemUI::GetInfo() exit mode not supported.\r\r\n"));
        *needed = 0;
        return FailWith(ERROR_NOT_SUPPORTED);
    }
    std::memcpy(buffer, &answer, sizeof answer);
    Trace(TEXT("UI:  IOemUI::GetInfo() exit S_OK, (*pBuffer is %#x).\r\r\n"), static_cast<unsigned>(answer));
    return S_OK;
}

HRESULT IOemUI::DevMode(DWORD mode, POEMDMPARAM parameters)
{
    return HandleDevMode(mode, parameters);
}

HRESULT IOemUI::PublishDriverInterface(IUnknown* helper)
{
    Trace(TEXT("UI:  IOemUI:PublishDriverInterface entry.\r\n"));
    if (!coreUi_) return Adopt(coreUi_, helper, IID_IPrintCoreUI2);
    if (!coreHelper_) return Adopt(coreHelper_, helper, IID_IPrintCoreHelperPS);
    return S_OK;
}

HRESULT IOemUI::CommonUIProp(DWORD, PVOID)
{
    Trace(TEXT("UI:  IOemUI:CommonUIProp entry.\r\n"));
    return S_OK;
}

HRESULT IOemUI::DocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam)
{
    Trace(TEXT("UI:  IOemUI:DocumentPropertySheets entry.\r\n"));
    return hrOEMDocumentPropertySheets(info, lParam, coreUi_.Get());
}

HRESULT IOemUI::DevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam)
{
    Trace(TEXT("UI:  IOemUI:DevicePropertySheets entry.\r\n"));
    return hrOEMDevicePropertySheets(info, lParam, coreUi_.Get());
}

HRESULT IOemUI::DevQueryPrintEx(POEMUIOBJ, PVOID, PDEVMODEW, PVOID)
{
    return Declined(TEXT("UI:  IOemUI:DevQueryPrintEx entry.\r\n"));
}

HRESULT IOemUI::DeviceCapabilities(POEMUIOBJ, HANDLE, PWSTR, WORD, PVOID, PDEVMODEW, PVOID, DWORD, DWORD*)
{
    return Declined(TEXT("UI:  IOemUI:DeviceCapabilities entry.\r\n"));
}

HRESULT IOemUI::UpgradePrinter(DWORD, PBYTE)
{
    return Declined(TEXT("UI:  IOemUI:UpgradePrinter entry.\r\n"));
}

HRESULT IOemUI::PrinterEvent(PWSTR, INT, DWORD, LPARAM)
{
    return Declined(TEXT("UI:  IOemUI:PrinterEvent entry.\r\n"));
}

HRESULT IOemUI::DriverEvent(DWORD, DWORD, LPBYTE, LPARAM)
{
    return Declined(TEXT("UI:  IOemUI:DriverEvent entry.\r\n"));
}

HRESULT IOemUI::QueryColorProfile(HANDLE, POEMUIOBJ, PDEVMODEW, PVOID, ULONG mode, VOID* data, ULONG* size,
                                  FLONG* flags)
{
    Trace(TEXT("UI:  IOemUI:QueryColorProfile entry.\r\n"));
    if (mode != QCP_DEVICEPROFILE) return E_FAIL;
    if (!size) return FailWith(ERROR_INVALID_PARAMETER);
    const ULONG room = *size;
    *size = kColorProfileBytes;
    if (!data || room < kColorProfileBytes) return FailWith(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(data, kColorProfile, sizeof kColorProfile);
    if (flags) *flags = QCPF_PROFILEDISK;
    return S_OK;
}

HRESULT IOemUI::FontInstallerDlgProc(HWND, UINT, WPARAM, LPARAM)
{
    return Declined(TEXT("UI:  IOemUI:FontInstallerDlgProc entry.\r\n"));
}

HRESULT IOemUI::UpdateExternalFonts(HANDLE, HANDLE, PWSTR)
{
    return Declined(TEXT("UI:  IOemUI:UpdateExternalFonts entry.\r\n"));
}

HRESULT IOemUI::QueryJobAttributes(HANDLE, PDEVMODEW, DWORD, LPBYTE)
{
    return E_NOTIMPL;
}

// Whatever is asked: the core driver's own pages are hidden.
HRESULT IOemUI::HideStandardUI(DWORD)
{
    return S_OK;
}

HRESULT IOemUI::DocumentEvent(HANDLE printer, HDC, INT event, ULONG inSize, PVOID in, ULONG outSize,
                              PVOID out, PINT result)
{
    return HandleDocumentEvent(printer, event, inSize, in, outSize, out, result, coreHelper_.Get());
}

} // namespace tintwerk
