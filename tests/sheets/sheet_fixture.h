// An open property sheet without windows: the plug-in heap, the parameter block and the sheet function of the
// common property sheet UI, which records the pages that are added; a spooler that knows one printer.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

#include "platform/environment.h"
#include "platform/function_hook.h"
#include "src/records/process_values.h"
#include "src/records/sheet_record.h"
#include "src/sheets/document_sheet.h"
#include "tests/sheets/scripted_core.h"
#include "tests/support/testing.h"

namespace tintwerk {

// What GetPrinterW knows.
struct TestSpooler
{
    inline static Text driverName;
    inline static bool sizeOnly; // tells the size, and then refuses and tells none
    inline static DWORD told;    // a size that is told instead of the true one; 0 for none

    TestSpooler() { ReplaceFunction("GetPrinterW", &Answer); }
    ~TestSpooler() { RestoreFunction("GetPrinterW"); }

    static BOOL WINAPI Answer(HANDLE printer, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed)
    {
        const SIZE_T nameBytes = (driverName.size() + 1) * sizeof(WCHAR);
        *needed = told ? told : static_cast<DWORD>(sizeof(PRINTER_INFO_2W) + nameBytes);
        if (!printer || level != 2) *needed = 0;
        if (*needed == 0 || size < *needed) return FALSE;
        if (sizeOnly) return *needed = 0;
        auto* const information = reinterpret_cast<PRINTER_INFO_2W*>(buffer);
        *information = {};
        information->pDriverName = reinterpret_cast<LPWSTR>(information + 1);
        std::memcpy(information->pDriverName, driverName.c_str(),
                    std::min(size - sizeof *information, nameBytes));
        return TRUE;
    }
};

// A page that was handed to the sheet function; texts are copied, as they may go when the call returns.
struct AddedPage
{
    UINT function;
    PropertySheetPage page; // of CPSFUNC_ADD_PROPSHEETPAGEW
    bool hasTitle;
    Text title;
    COMPROPSHEETUI items; // of CPSFUNC_ADD_PCOMPROPSHEETUIW
};

class TestSheet
{
public:
    explicit TestSheet(IPrintCoreUI2* helper, POEMUIOBJ object) : helper_(helper)
    {
        parameters.cbSize = sizeof(parameters);
        parameters.poemuiobj = object;
        parameters.hPrinter = &parameters;
        parameters.pPrinterName = printerName.data();
        parameters.hOEMHeap = HeapCreate(0, 0, 0);
        parameters.pOEMDM = &devmode;
        info.cbSize = sizeof(info);
        info.Version = PROPSHEETUI_INFO_VERSION;
        info.hComPropSheet = this;
        info.pfnComPropSheet = &AddPage;
        info.lParamInit = reinterpret_cast<LPARAM>(&parameters);
    }
    ~TestSheet()
    {
        if (info.UserData) Call(PROPSHEETUI_REASON_DESTROY);
        HeapDestroy(parameters.hOEMHeap);
    }
    TestSheet(const TestSheet&) = delete;
    TestSheet& operator=(const TestSheet&) = delete;

    HRESULT Call(int reason, LPARAM lParam = 0)
    {
        info.Reason = static_cast<WORD>(reason);
        return entry(&info, lParam, helper_);
    }
    HRESULT Open() { return Call(PROPSHEETUI_REASON_INIT); }

    SheetRecord& Record() { return *reinterpret_cast<SheetRecord*>(info.UserData); }
    SheetContext& Context() { return *Record().context; }

    // Dialog templates in the order of adding; "layout" and "advanced" for the generated pages.
    std::string Pages() const
    {
        std::string pages;
        for (const AddedPage& page : added)
            pages += (pages.empty() ? "" : " ") + Name(page);
        return pages;
    }
    const AddedPage* Find(std::string_view name) const
    {
        for (const AddedPage& page : added)
            if (Name(page) == name) return &page;
        return nullptr;
    }
    static std::string Name(const AddedPage& page)
    {
        if (page.function == CPSFUNC_ADD_PROPSHEETPAGEW)
            return std::to_string(reinterpret_cast<UINT_PTR>(page.page.pszTemplate));
        return page.items.pDlgPage == CPSUI_PDLGPAGE_DOCPROP ? "layout" : "advanced";
    }

    Text printerName = TEXT("Proofer");
    OemPrivateDevmode devmode{};
    OEMUIPSPARAM parameters{};
    PROPSHEETUI_INFO info{};
    decltype(&hrOEMDocumentPropertySheets) entry = &hrOEMDocumentPropertySheets;
    std::vector<AddedPage> added;
    bool refusesPages = false;

private:
    static LONG_PTR CALLBACK AddPage(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2)
    {
        auto& self = *static_cast<TestSheet*>(sheet);
        AddedPage added{};
        added.function = function;
        if (function == CPSFUNC_ADD_PROPSHEETPAGEW) {
            added.page = *reinterpret_cast<const PropertySheetPage*>(lParam1);
            added.hasTitle = (added.page.dwFlags & PSP_USETITLE) != 0;
            if (added.hasTitle) added.title = added.page.pszTitle;
        } else if (function == CPSFUNC_ADD_PCOMPROPSHEETUIW) {
            added.items = *reinterpret_cast<const COMPROPSHEETUI*>(lParam1);
            *reinterpret_cast<DWORD*>(lParam2) = 1;
        }
        self.added.push_back(added);
        return self.refusesPages ? 0 : static_cast<LONG_PTR>(100 + self.added.size());
    }

    IPrintCoreUI2* helper_;
};

// A printer called "Proofer" whose driver is number 42; the process as it was loaded.
class SheetTest : public testing::Test
{
protected:
    SheetTest()
    {
        MakeFresh(Process());
        Process().activationContext = LONG_PTR{0x51}; // of another page
        Process().configDirectory.Set({"C:\\conf"});
        TestSpooler::driverName = TEXT("Tintwerk 0042");
        TestSpooler::sizeOnly = false;
        TestSpooler::told = 0;
        SetWindowsVersion(10, 0);
    }
    ~SheetTest() override { SetWindowsVersion(0, 0); }

    ScriptedCore core;
    TestSpooler spooler;
    DebugLines trace;
};

} // namespace tintwerk
