// SheetContext: everything that the pages of one open document sheet share. A container of small areas, each
// with one owner. It is taken zero-filled from the process heap when the sheet opens and lives until the
// sheet's end; a page that was never opened leaves its windows empty.
#pragma once

#include "platform/coredriver.h"
#include "platform/win32.h"
#include "src/records/options.h"
#include "src/records/page_kinds.h"

namespace tintwerk {

inline constexpr int kSliderRows = 22;             // rows of the slider binding table
inline constexpr int kNumberFieldRows = 2;         // rows of the number field table
inline constexpr int kCheckBoxRows = 18;           // rows of the check box table
inline constexpr int kCartridgeRows = 12;          // the last rows of the check box table
inline constexpr int kInkChannels = 20;            // rows of the ink channel table
inline constexpr int kConsumptionSlots = 12;       // lines of the consumption page
inline constexpr int kSumSlot = kConsumptionSlots; // the sum below the lines
inline constexpr int kInkFilePathBytes = 512;
inline constexpr int kPrinterNameUnits = 128;

// The combo boxes by row of the popup binding table, and the selection number of each row's current option (0
// for none).
struct PopupArea
{
    HWND windows[kPopups];
    int selections[kPopupRows];
};

struct SliderArea
{
    HWND windows[kSliderRows];
    int initialPositions[kSliderRows]; // logical positions
};

struct NumberFieldArea
{
    HWND edits[kNumberFieldRows];
    HWND spins[kNumberFieldRows];
    int values[kNumberFieldRows]; // internal units: the displayed number times the row's divisor
};

struct CheckBoxArea
{
    HWND windows[kCheckBoxRows]; // by row of the check box table
    HWND borderless;             // of the main page
};

struct PageSizeArea
{
    int statuses[kMaxOptions]; // one per option of the page size list; see src/bindings/borderless_sizes.h
    bool borderless;           // the PPD or the user selects a borderless one
};

struct InkCounters
{
    int lastJob[kInkChannels];
    int total[kInkChannels];
    DWORD shownRank[kInkChannels]; // 0 when hidden, else the 1-based rank among the shown channels
};

// One view of the consumption page: bars, number fields (the sum's last) and names (the sum's caption last).
struct ConsumptionView
{
    HWND bars[kConsumptionSlots];
    HWND numbers[kSumSlot + 1];
    HWND names[kSumSlot + 1];
};

struct ConsumptionArea
{
    ConsumptionView lastJob;
    ConsumptionView totals; // shares the pane's controls with the last-job view
    int displayMode;        // 0 last job, else totals
    int firstLine;          // top of the first name field in pane coordinates; below 0 while not measured
    int lineHeight;
    int lastLine; // top of the twelfth name field
};

struct InkControlArea
{
    HWND brightCyanLabel;
    HWND photoIcon; // of both bright inks
    HWND brightCyanIcon;
};

struct SourceRow; // a line of a generated page's source list, declared by the generated pages

struct OptionItemsArea
{
    OPTITEM* layoutItems;
    OPTITEM* advancedItems;
    SourceRow* advancedRows;
    int layoutItemCount;
    int advancedItemCount;
};

// Copies of the sheet record's fields that the feature layer works with.
struct CoreArea
{
    POEMUIOBJ object;
    IPrintCoreUI2* helper; // may be null; not owned
    HANDLE printer;
    HANDLE heap; // the core driver's plug-in heap; goes with the sheet
};

struct SheetContext
{
    PopupArea popups;
    SliderArea sliders;
    NumberFieldArea numberFields;
    CheckBoxArea checkBoxes;
    HWND owner; // of message boxes: the sheet's top-level window
    char inkFilePath[kInkFilePathBytes];
    PageSizeArea pageSizes;
    InkCounters inkCounters;
    OptionTable* options; // the separate zero-filled option buffer of kOptionBufferBytes
    WCHAR printerName[kPrinterNameUnits];
    OptionItemsArea optionItems;
    CoreArea core;
    HWND pages[kPageKinds]; // by position; the pane for the consumption page
    InkControlArea inkControl;
    ConsumptionArea consumption;
};

} // namespace tintwerk
