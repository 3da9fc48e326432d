// Dialog templates as they lie in the module's resources, for tests that read what was built.
#pragma once

#include <cctype>
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

class DialogPage
{
public:
    explicit DialogPage(int number)
    {
        const HMODULE module = GetModuleHandleW(nullptr);
        const HRSRC resource =
            FindResourceW(module, MAKEINTRESOURCEW(number), MAKEINTRESOURCEW(5)); // RT_DIALOG
        if (!resource) return;
        start_ = at_ = static_cast<const WORD*>(LockResource(LoadResource(module, resource)));
        style = TakeStyle();
        controls.resize(*at_++);
        const RECT area = TakeArea();
        size = {area.right - area.left, area.bottom - area.top};
        TakeNameOrNumber(caption); // menu
        TakeNameOrNumber(caption); // window class
        caption = TakeText();
        points = *at_++;
        font = TakeText();
        for (TemplateControl& control : controls) {
            at_ += (at_ - start_) % 2;
            control.style = TakeStyle();
            control.area = TakeArea();
            control.id = static_cast<short>(*at_++);
            control.kind = TakeKind();
            control.picture = TakeNameOrNumber(control.text);
            ++at_; // creation data
        }
    }

    const TemplateControl* Find(int id) const
    {
        for (const TemplateControl& control : controls)
            if (control.id == id) return &control;
        return nullptr;
    }

    DWORD style = 0;
    SIZE size{}; // dialog units
    std::basic_string<WCHAR> caption;
    std::basic_string<WCHAR> font;
    int points = 0;
    std::vector<TemplateControl> controls; // in tab order; empty when there is no such template

private:
    DWORD TakeStyle()
    {
        at_ += 4; // an extended style follows
        return at_[-4] | DWORD{at_[-3]} << 16;
    }
    RECT TakeArea()
    {
        const auto* const place = reinterpret_cast<const short*>(at_);
        at_ += 4;
        return {place[0], place[1], place[0] + place[2], place[1] + place[3]};
    }
    std::basic_string<WCHAR> TakeText()
    {
        std::basic_string<WCHAR> text;
        while (const WORD unit = *at_++)
            text += static_cast<WCHAR>(unit);
        return text;
    }
    // A name or, behind 0xFFFF, a number.
    WORD TakeNameOrNumber(std::basic_string<WCHAR>& name)
    {
        if (*at_ == 0xFFFF) return (at_ += 2)[-1];
        name = TakeText();
        return 0;
    }
    std::string TakeKind()
    {
        static const char* const kinds[] = {"button", "edit", "static", "listbox", "scrollbar", "combobox"};
        std::basic_string<WCHAR> name;
        if (const WORD atom = TakeNameOrNumber(name)) return kinds[atom - 0x80];
        std::string kind;
        for (const WCHAR unit : name)
            kind += static_cast<char>(std::tolower(unit));
        return kind;
    }

    const WORD* start_ = nullptr;
    const WORD* at_ = nullptr;
};

} // namespace tintwerk
