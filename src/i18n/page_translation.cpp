// Puts the sheet's language on a page whose controls have been set up.
#include <bit>
#include <cstring>

#include "src/i18n/page_translation.h"
#include "src/i18n/string_table.h"
#include "src/i18n/texts.h"
#include "src/trace/trace.h"

namespace tintwerk {

namespace {

constexpr size_t kLabelBytes = 256;
constexpr int kPositions = 8; // positions that a tab bit can name

// Copies as much of a text as a label holds, whole UTF-8 characters only.
void CopyLabel(char (&label)[kLabelBytes], const char* text)
{
    size_t length = strnlen(text, kLabelBytes);
    if (length == kLabelBytes) {
        --length;
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
    }
    std::memcpy(label, text, length);
    label[length] = 0;
}

// Deletes every "<...>"; a "<" that no ">" follows stays.
void RemoveMarkup(char* text)
{
    while ((text = std::strchr(text, '<')) != nullptr) {
        const char* const end = std::strchr(text, '>');
        if (!end) return;
        std::memmove(text, end + 1, std::strlen(end + 1) + 1);
    }
}

void TranslateControl(HWND control, const char* key)
{
    char label[kLabelBytes];
    CopyLabel(label, FindDefaultString(key, 0).Get());
    RemoveMarkup(label);
    const WideText text = CopyWideFromUtf8(label);
    if (!text) return;
    Trace(TEXT("{\"%S\",\"%s\"},\n"), key, text.get());
    SetWindowTextW(control, text.get());
}

} // namespace

void TranslateDialogPage(DWORD pageBits, HWND page)
{
    Trace(TEXT("----- TRANSLAGE DLGPAGE dlgidx is %d\n"), static_cast<int>(pageBits));
    const int position = std::countr_zero(pageBits | 1u << kPositions);
    Trace(TEXT("DLGPAGE is %d\n"), position);
    for (const PageLabel& label : PageLabels(position)) {
        if (const HWND control = GetDlgItem(page, label.controlId)) TranslateControl(control, label.key);
    }
}

} // namespace tintwerk
