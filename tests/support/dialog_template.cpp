// Reads the templates of the linked resources.
#include "tests/support/dialog_template.h"

#include <cctype>
#include <cstring>

namespace tintwerk {
namespace {

using Text = std::basic_string<WCHAR>;

class Reader
{
public:
    Reader(const void* data, size_t bytes) : data_(static_cast<const char*>(data)), bytes_(bytes) {}

    template <typename T> T Take()
    {
        T value{};
        if (at_ + sizeof(T) > bytes_) return value;
        std::memcpy(&value, data_ + at_, sizeof(T));
        at_ += sizeof(T);
        return value;
    }

    Text TakeText()
    {
        Text text;
        while (const WORD unit = Take<WORD>())
            text += static_cast<WCHAR>(unit);
        return text;
    }

    // A name or, behind 0xFFFF, a number.
    WORD TakeNameOrNumber(Text& name)
    {
        const size_t start = at_;
        if (Take<WORD>() == 0xFFFF) return Take<WORD>();
        at_ = start;
        name = TakeText();
        return 0;
    }

    RECT TakeArea()
    {
        const int x = Take<short>(), y = Take<short>(), cx = Take<short>(), cy = Take<short>();
        return {x, y, x + cx, y + cy};
    }

    void Align() { at_ = (at_ + 3) & ~size_t{3}; }

private:
    const char* data_;
    size_t bytes_;
    size_t at_ = 0;
};

std::string Kind(WORD atom, const Text& name)
{
    static const char* const kinds[] = {"button", "edit", "static", "listbox", "scrollbar", "combobox"};
    if (atom >= 0x80 && atom < 0x86) return kinds[atom - 0x80];
    std::string kind;
    for (const WCHAR unit : name)
        kind += static_cast<char>(std::tolower(static_cast<unsigned char>(unit)));
    return kind;
}

TemplateControl TakeControl(Reader& reader)
{
    reader.Align();
    TemplateControl control{};
    control.style = reader.Take<DWORD>();
    reader.Take<DWORD>(); // extended style
    control.area = reader.TakeArea();
    control.id = static_cast<short>(reader.Take<WORD>());
    Text className;
    const WORD atom = reader.TakeNameOrNumber(className);
    control.kind = Kind(atom, className);
    control.picture = reader.TakeNameOrNumber(control.text);
    reader.Take<WORD>(); // creation data
    return control;
}

} // namespace

const TemplateControl* DialogPage::Find(int id) const
{
    for (const TemplateControl& control : controls)
        if (control.id == id) return &control;
    return nullptr;
}

DialogPage ReadDialogPage(int number)
{
    DialogPage page{};
    page.number = number;
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(number), MAKEINTRESOURCEW(5)); // RT_DIALOG
    if (!resource) return page;
    Reader reader(LockResource(LoadResource(module, resource)), SizeofResource(module, resource));
    page.style = reader.Take<DWORD>();
    reader.Take<DWORD>(); // extended style
    const int count = reader.Take<WORD>();
    const RECT area = reader.TakeArea();
    page.size = {area.right - area.left, area.bottom - area.top};
    Text menu, className;
    reader.TakeNameOrNumber(menu);
    reader.TakeNameOrNumber(className);
    page.caption = reader.TakeText();
    page.points = reader.Take<WORD>();
    page.font = reader.TakeText();
    for (int i = 0; i < count; ++i)
        page.controls.push_back(TakeControl(reader));
    return page;
}

} // namespace tintwerk
