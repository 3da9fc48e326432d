// Who the printer of a document sheet is: the number at the end of its driver's name, and the ink counter
// file that belongs to that number.
#pragma once

#include <string_view>

#include "src/records/sheet_record.h"

namespace tintwerk {

inline constexpr int kUnknownPrinterNumber = -1;
inline constexpr int kPrinterNumberLimit = 10000;
inline constexpr SIZE_T kNumberCharacters = 4; // at the end of the driver's name

// What a decimal conversion makes of a text.
struct ScannedNumber
{
    int count; // values read, 0 or 1
    int value; // kUnknownPrinterNumber when none was read
};

// Leading blanks and a sign are accepted; the first other character ends the number.
ScannedNumber ScanNumber(std::basic_string_view<WCHAR> text);

// Appends the counter file of a printer to the configuration directory in path. A directory that leaves no
// room for it stays as it is.
void AppendInkFile(char (&path)[kInkFilePathBytes], int printerNumber);

// Sets printer handle and printer number of the record, and printer handle, ink file path and printer name of
// its context, from the record's parameter block.
void IdentifyPrinter(SheetRecord& record);

} // namespace tintwerk
