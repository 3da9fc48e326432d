// Dialog templates as they lie in the module's resources, for tests that read what was built.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

struct TemplateControl
{
    int id; // -1 for those that nobody asks for
    DWORD style;
    std::string
        kind; // window class in lower case: "static", "button", "combobox", "edit", "msctls_trackbar32" ...
    std::basic_string<WCHAR> text;
    WORD picture; // number of the picture that the template itself names, 0 for none
    RECT area;    // dialog units
};

struct DialogPage
{
    int number;
    DWORD style;
    SIZE size; // dialog units
    std::basic_string<WCHAR> caption;
    std::basic_string<WCHAR> font;
    int points;
    std::vector<TemplateControl> controls; // in tab order; empty when there is no such template

    const TemplateControl* Find(int id) const;
};

DialogPage ReadDialogPage(int number);

} // namespace tintwerk
