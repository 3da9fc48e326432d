// Label tables of the pages and their translation.
#pragma once

#include <span>

#include "platform/win32.h"

namespace tintwerk {

struct PageLabel
{
    int controlId;
    const char* key; // of the string table
};

// The labels of the page at a position of the page list; empty for positions without a table.
std::span<const PageLabel> PageLabels(int position);

// Sets the text of every listed control of a page to the sheet's language. pageBits is the page's tab bit;
// the lowest set bit counts.
void TranslateDialogPage(DWORD pageBits, HWND page);

} // namespace tintwerk
