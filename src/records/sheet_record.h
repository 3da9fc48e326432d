// SheetRecord and PageEntry: one open property sheet and its tabbed pages. The record is taken from the core
// driver's plug-in heap; the callback info's UserData holds it between calls.
#pragma once

#include "platform/coredriver.h"
#include "src/records/private_devmode.h"
#include "src/records/sheet_context.h"

namespace tintwerk {

struct SheetRecord;

// The creation parameter of one document page.
struct PageEntry
{
    DWORD position;      // 0 to 5, the page's position in the page list
    LONG_PTR pageHandle; // what the add call returned for this page
    SheetRecord* record;
};

struct SheetRecord
{
    POEMUIOBJ coreObject;
    IPrintCoreUI2* coreHelper; // may be null; not owned
    HANDLE printer;
    HANDLE heap;
    OemPrivateDevmode* privateDevmode;
    HANDLE sheet;            // hComPropSheet of the callback info
    LONG_PTR lastPageHandle; // result of the most recent add call
    PFNCOMPROPSHEET sheetFunction;
    SheetContext* context; // null on the device sheet
    PageEntry pages[kPageKinds];
    OEMUIPSPARAM* parameters;
    int printerNumber; // -1 while unknown
};

} // namespace tintwerk
