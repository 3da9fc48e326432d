#include "platform/headless/dialog_template.h"

#include <cstring>

namespace tintwerk::headless {

namespace {

constexpr SIZE kSystemUnits{9, 16};
constexpr SIZE kUnitsOfEightPoints{7, 13};
constexpr WORD kExtended = 0xFFFF; // the second word of the other layout

// Reads the words of a template in order and never past its end.
class TemplateReader
{
public:
    TemplateReader(const void* data, std::size_t size) : data_(static_cast<const BYTE*>(data)), size_(size) {}

    template <typename Value> Value Take()
    {
        Value value{};
        const std::size_t place = place_;
        Skip(sizeof value);
        if (!failed_) std::memcpy(&value, data_ + place, sizeof value);
        return value;
    }
    void Skip(std::size_t bytes)
    {
        failed_ = failed_ || size_ - place_ < bytes;
        if (!failed_) place_ += bytes;
    }
    std::u16string TakeText()
    {
        std::u16string text;
        while (const WCHAR unit = Take<WCHAR>())
            text.push_back(unit);
        return text;
    }
    // 0: nothing; 0xFFFF: a number follows; else a text.
    TextOrNumber TakeTextOrNumber()
    {
        const std::size_t start = place_;
        if (Take<WORD>() == 0xFFFF) return {{}, Take<WORD>()};
        place_ = start;
        return {TakeText(), 0};
    }
    void AlignToDword() { Skip(-place_ % 4); }
    bool Failed() const { return failed_; }

private:
    const BYTE* data_;
    std::size_t size_;
    std::size_t place_ = 0;
    bool failed_ = false;
};

template <typename Placed> void TakePlace(TemplateReader& reader, Placed& placed)
{
    placed.x = reader.Take<short>();
    placed.y = reader.Take<short>();
    placed.width = reader.Take<short>();
    placed.height = reader.Take<short>();
}

DialogItem TakeItem(TemplateReader& reader)
{
    DialogItem item;
    reader.AlignToDword();
    item.style = reader.Take<DWORD>();
    item.exStyle = reader.Take<DWORD>();
    TakePlace(reader, item);
    item.id = reader.Take<WORD>();
    item.className = reader.TakeTextOrNumber();
    item.text = reader.TakeTextOrNumber();
    reader.Skip(reader.Take<WORD>()); // creation data
    return item;
}

} // namespace

SIZE DialogTemplate::Units() const
{
    if (!pointSize) return kSystemUnits;
    return {MulDiv(kUnitsOfEightPoints.cx, pointSize, 8), MulDiv(kUnitsOfEightPoints.cy, pointSize, 8)};
}

POINT DialogTemplate::PixelsOf(POINT units) const
{
    return {MulDiv(units.x, Units().cx, 4), MulDiv(units.y, Units().cy, 8)};
}

SIZE DialogTemplate::PixelSize() const
{
    const POINT size = PixelsOf({width, height});
    return {size.x, size.y};
}

bool ParseDialogTemplate(const void* data, std::size_t size, DialogTemplate& dialog)
{
    if (!data) return false;
    TemplateReader reader(data, size);
    dialog = {};
    dialog.style = reader.Take<DWORD>();
    if (HIWORD(dialog.style) == kExtended) return false;
    dialog.exStyle = reader.Take<DWORD>();
    const WORD count = reader.Take<WORD>();
    TakePlace(reader, dialog);
    reader.TakeTextOrNumber(); // menu
    reader.TakeTextOrNumber(); // class
    dialog.title = reader.TakeTextOrNumber().text;
    if (dialog.style & DS_SETFONT) {
        dialog.pointSize = reader.Take<WORD>();
        reader.TakeText(); // every face has the same measures here
    }
    for (WORD i = 0; i < count && !reader.Failed(); ++i)
        dialog.items.push_back(TakeItem(reader));
    return !reader.Failed();
}

bool LoadDialogTemplate(HINSTANCE module, LPCWSTR name, DialogTemplate& dialog)
{
    const HRSRC resource = FindResourceW(module, name, RT_DIALOG);
    return resource && ParseDialogTemplate(LockResource(LoadResource(module, resource)),
                                           SizeofResource(module, resource), dialog);
}

} // namespace tintwerk::headless
