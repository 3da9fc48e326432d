// The plug-in object: answers the core driver's questions and hands the work on to the rooms below.
#pragma once

#include <atomic>

#include "platform/coredriver.h"
#include "platform/owners.h"

namespace tintwerk {

class IOemUI final : public IPrintOemUI2
{
public:
    IOemUI();
    ~IOemUI();
    IOemUI(const IOemUI&) = delete;
    IOemUI& operator=(const IOemUI&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetInfo(DWORD mode, PVOID buffer, DWORD size, PDWORD needed) override;
    HRESULT STDMETHODCALLTYPE DevMode(DWORD mode, POEMDMPARAM parameters) override;
    // Called once for each helper that the core driver publishes, the user interface helper first.
    HRESULT STDMETHODCALLTYPE PublishDriverInterface(IUnknown* helper) override;
    HRESULT STDMETHODCALLTYPE CommonUIProp(DWORD mode, PVOID parameters) override;
    HRESULT STDMETHODCALLTYPE DocumentPropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) override;
    HRESULT STDMETHODCALLTYPE DevicePropertySheets(PPROPSHEETUI_INFO info, LPARAM lParam) override;
    HRESULT STDMETHODCALLTYPE DevQueryPrintEx(POEMUIOBJ core, PVOID query, PDEVMODEW publicDevmode,
                                              PVOID privateDevmode) override;
    HRESULT STDMETHODCALLTYPE DeviceCapabilities(POEMUIOBJ core, HANDLE printer, PWSTR device,
                                                 WORD capability, PVOID output, PDEVMODEW publicDevmode,
                                                 PVOID privateDevmode, DWORD old, DWORD* result) override;
    HRESULT STDMETHODCALLTYPE UpgradePrinter(DWORD level, PBYTE information) override;
    HRESULT STDMETHODCALLTYPE PrinterEvent(PWSTR printer, INT event, DWORD flags, LPARAM lParam) override;
    HRESULT STDMETHODCALLTYPE DriverEvent(DWORD event, DWORD level, LPBYTE information,
                                          LPARAM lParam) override;
    // The same profile for every printer, DEVMODE and medium.
    HRESULT STDMETHODCALLTYPE QueryColorProfile(HANDLE printer, POEMUIOBJ core, PDEVMODEW publicDevmode,
                                                PVOID privateDevmode, ULONG mode, VOID* data, ULONG* size,
                                                FLONG* flags) override;
    HRESULT STDMETHODCALLTYPE FontInstallerDlgProc(HWND window, UINT message, WPARAM wParam,
                                                   LPARAM lParam) override;
    HRESULT STDMETHODCALLTYPE UpdateExternalFonts(HANDLE printer, HANDLE heap, PWSTR cartridges) override;
    HRESULT STDMETHODCALLTYPE QueryJobAttributes(HANDLE printer, PDEVMODEW devmode, DWORD level,
                                                 LPBYTE attributes) override;
    HRESULT STDMETHODCALLTYPE HideStandardUI(DWORD mode) override;
    HRESULT STDMETHODCALLTYPE DocumentEvent(HANDLE printer, HDC dc, INT event, ULONG inSize, PVOID in,
                                            ULONG outSize, PVOID out, PINT result) override;

private:
    std::atomic<LONG> references_{1};
    ComPtr<IPrintCoreUI2> coreUi_;          // null until published
    ComPtr<IPrintCoreHelperPS> coreHelper_; // null until published
};

} // namespace tintwerk
