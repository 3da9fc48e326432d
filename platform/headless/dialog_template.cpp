#include "platform/headless/dialog_template.h"

#include <cstring>

#include "platform/headless/window.h"

namespace tintwerk::headless {

namespace {

// Reads the words of a template in order and never past its end.
class Reader
{
public:
    Reader(const void* data, std::size_t size) : data_(static_cast<const BYTE*>(data)), size_(size) {}

    template <typename Value> Value Take()
    {
        Value value{};
        if (failed_ || size_ - place_ < sizeof value) {
            failed_ = true;
            return value;
        }
        std::memcpy(&value, data_ + place_, sizeof value);
        place_ += sizeof value;
        return value;
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
    const void* TakeBlock(std::size_t bytes)
    {
        if (failed_ || size_ - place_ < bytes) {
            failed_ = true;
            return nullptr;
        }
        const BYTE* const block = data_ + place_;
        place_ += bytes;
        return block;
    }
    void AlignToDword()
    {
        place_ = (place_ + 3) & ~std::size_t{3};
        if (place_ > size_) failed_ = true;
    }
    bool Failed() const { return failed_; }

private:
    const BYTE* data_;
    std::size_t size_;
    std::size_t place_ = 0;
    bool failed_ = false;
};

template <typename Placed> void TakePlace(Reader& reader, Placed& placed)
{
    placed.x = reader.Take<short>();
    placed.y = reader.Take<short>();
    placed.width = reader.Take<short>();
    placed.height = reader.Take<short>();
}

void TakeFont(Reader& reader, bool extended, DialogTemplate& dialog)
{
    if (!(dialog.style & DS_SETFONT)) return;
    dialog.pointSize = reader.Take<WORD>();
    if (extended) {
        reader.Take<WORD>(); // weight
        reader.Take<BYTE>(); // italic
        reader.Take<BYTE>(); // character set
    }
    reader.TakeText(); // every face has the same measures here
}

DialogItem TakeItem(Reader& reader, bool extended)
{
    DialogItem item;
    reader.AlignToDword();
    if (extended) {
        reader.Take<DWORD>(); // help id
        item.exStyle = reader.Take<DWORD>();
        item.style = reader.Take<DWORD>();
    } else {
        item.style = reader.Take<DWORD>();
        item.exStyle = reader.Take<DWORD>();
    }
    TakePlace(reader, item);
    item.id = extended ? reader.Take<DWORD>() : reader.Take<WORD>();
    item.className = reader.TakeTextOrNumber();
    item.text = reader.TakeTextOrNumber();
    if (const WORD bytes = reader.Take<WORD>()) item.creationData = reader.TakeBlock(bytes);
    return item;
}

} // namespace

int DialogTemplate::UnitWidth() const
{
    return pointSize ? MulDiv(7, pointSize, 8) : LOWORD(GetDialogBaseUnits());
}

int DialogTemplate::UnitHeight() const
{
    return pointSize ? MulDiv(13, pointSize, 8) : HIWORD(GetDialogBaseUnits());
}

SIZE DialogTemplate::PixelSize() const
{
    return {MulDiv(width, UnitWidth(), 4), MulDiv(height, UnitHeight(), 8)};
}

bool ParseDialogTemplate(const void* data, std::size_t size, DialogTemplate& dialog)
{
    if (!data) return false;
    Reader reader(data, size);
    dialog = {};
    const DWORD first = reader.Take<DWORD>();
    const bool extended = first == 0xFFFF0001;
    if (extended) {
        reader.Take<DWORD>(); // help id
        dialog.exStyle = reader.Take<DWORD>();
        dialog.style = reader.Take<DWORD>();
    } else {
        dialog.style = first;
        dialog.exStyle = reader.Take<DWORD>();
    }
    const WORD count = reader.Take<WORD>();
    TakePlace(reader, dialog);
    reader.TakeTextOrNumber(); // menu
    dialog.className = reader.TakeTextOrNumber();
    dialog.title = reader.TakeTextOrNumber().text;
    TakeFont(reader, extended, dialog);
    for (WORD i = 0; i < count && !reader.Failed(); ++i)
        dialog.items.push_back(TakeItem(reader, extended));
    return !reader.Failed();
}

bool LoadDialogTemplate(HINSTANCE module, LPCWSTR name, DialogTemplate& dialog)
{
    const HRSRC resource = FindResourceW(module, name, RT_DIALOG);
    if (!resource) return false;
    return ParseDialogTemplate(LockResource(LoadResource(module, resource)), SizeofResource(module, resource),
                               dialog);
}

} // namespace tintwerk::headless
