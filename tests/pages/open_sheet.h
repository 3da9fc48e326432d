// A document sheet with real pages over a fake core driver: what a user sees and does, and what the sheet and
// the core driver notice of it.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/function_hook.h"
#include "platform/owners.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/current_values.h"
#include "src/bindings/popups.h"
#include "src/features/initial_read.h"
#include "src/i18n/string_table.h"
#include "src/pages/page_procedure.h"
#include "src/records/process_values.h"
#include "src/records/sheet_record.h"
#include "tests/support/fake_core.h"
#include "tests/support/testing.h"

namespace tintwerk {

using Text = std::basic_string<WCHAR>;

inline constexpr WORD kTemplates[kPageKinds] = {193, 189, 192, 191, 190, 229};
enum Position
{
    kMain,
    kColors,
    kCorrection,
    kConsumption,
    kInkControl,
    kScreenPrinting,
};

inline bool Shown(HWND control)
{
    return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}
inline bool Enabled(HWND control)
{
    return (GetWindowLongPtrW(control, GWL_STYLE) & WS_DISABLED) == 0;
}
inline bool Checked(HWND control)
{
    return SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}
inline HBITMAP Picture(HWND control)
{
    return reinterpret_cast<HBITMAP>(SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0));
}

class OpenSheet
{
public:
    OpenSheet()
    {
        const INITCOMMONCONTROLSEX families{sizeof families,
                                            ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_TAB_CLASSES};
        InitCommonControlsEx(&families);
        MakeFresh(Process());
        Process().module = GetModuleHandleW(nullptr);
        MakeFresh(Current());
        InitStringTable("en");
        sheet = CreateWindowExW(0, TEXT("Static"), TEXT("sheet"), WS_POPUP, 0, 0, 600, 500, nullptr, nullptr,
                                GetModuleHandleW(nullptr), this);
        SetWindowLongPtrW(sheet, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(sheet, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SheetProc));
        OfferEverything();
        record.sheetFunction = &SheetFunction;
        record.sheet = this;
        record.lastPageHandle = 4711;
        record.context = &context;
        record.privateDevmode = &devmode;
        for (DWORD position = 0; position < kPageKinds; ++position)
            record.pages[position] = {position, 100 + static_cast<LONG_PTR>(position), &record};
        context.options = options.get();
        context.core = {FakeCore::Object(), &core, nullptr, heap};
    }
    ~OpenSheet()
    {
        DestroyWindow(sheet);
        HeapDestroy(heap);
        UseStringTable(nullptr);
        MakeFresh(Current());
        MakeFresh(Process());
    }
    OpenSheet(const OpenSheet&) = delete;
    OpenSheet& operator=(const OpenSheet&) = delete;

    // Reads the selections, as the sheet does before it has pages.
    void Read()
    {
        InitPPDSettings(context);
        read = true;
    }

    HWND Open(int position) { return Open(position, kTemplates[position]); }
    HWND Open(int position, WORD dialog)
    {
        if (!read) Read();
        PROPSHEETPAGEW page{};
        page.lParam = reinterpret_cast<LPARAM>(&record.pages[position]);
        pages[static_cast<size_t>(position)] =
            CreateDialogParamW(Process().module, MAKEINTRESOURCEW(dialog), sheet, &DocumentPageProc,
                               reinterpret_cast<LPARAM>(&page));
        return pages[static_cast<size_t>(position)];
    }
    HWND Page(int position) const { return pages[static_cast<size_t>(position)]; }
    HWND Control(int position, int id) const { return GetDlgItem(Page(position), id); }

    // What controls send when the user works with them.
    void Command(int position, int id, int code)
    {
        SendMessageW(Page(position), WM_COMMAND, MAKEWPARAM(id, code),
                     reinterpret_cast<LPARAM>(Control(position, id)));
    }
    void Check(int position, int id, bool check)
    {
        SendMessageW(Control(position, id), BM_SETCHECK, check ? BST_CHECKED : BST_UNCHECKED, 0);
        Command(position, id, BN_CLICKED);
    }
    void Choose(int position, int id, int item)
    {
        SendMessageW(Control(position, id), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
        Command(position, id, CBN_SELENDOK);
    }
    LRESULT Notify(int position, int id, UINT code)
    {
        NMHDR notification{Control(position, id), static_cast<UINT_PTR>(id), code};
        return DocumentPageProc(Page(position), WM_NOTIFY, static_cast<WPARAM>(id),
                                reinterpret_cast<LPARAM>(&notification));
    }
    // The text of a popup's current item.
    Text Chosen(int position, int id) const
    {
        const HWND popup = Control(position, id);
        WCHAR text[256] = {};
        SendMessageW(popup, CB_GETLBTEXT, static_cast<WPARAM>(SendMessageW(popup, CB_GETCURSEL, 0, 0)),
                     reinterpret_cast<LPARAM>(text));
        return text;
    }

    FakeCore core;
    SheetContext context{};
    SheetRecord record{};
    OemPrivateDevmode devmode{sizeof devmode, kPluginSignature, kPluginVersion, 0, 0, 0};
    HWND sheet;
    std::array<HWND, kPageKinds> pages{};
    int changes = 0;                  // PSM_CHANGED for a page of this sheet
    std::array<HWND, 8> sheetPages{}; // what PSM_INDEXTOHWND answers
    std::vector<std::string> sheetCalls;

private:
    void OfferEverything()
    {
        // clang-format off
        for (const auto& [feature, offered, selected] : std::initializer_list<std::array<const char*, 3>>{
            {"halvCartridgeType", "Standard Special", "Standard"}, {"MediaType", "Plain_0 Photo_6 Chart_2", "Photo_6"},
            {"Resolution", "360 720", "720"}, {"PageSize", "A4 A4Borderless Letter PhotoBorderless Custom.1x2", "A4"},
            {"InputSlot", "Sheet Roll", "Sheet"}, {"OutputBin", "Rear", "Rear"},
            {"halvIntent", "none_0 photo_0 proof_3", "photo_0"}, {"halvColorModel", "RGB CMYK CMYKproof", "RGB"},
            {"halvDithering", "fine", "fine"}, {"halvColorspace", "sRGB Adobe", "sRGB"}, {"halvCMYKspace", "FOGRA", "FOGRA"},
            {"halvScreenShape", "Round Line", "Round"}, {"halvScreenmode", "off a b c d e f", "off"},
            {"halvScreenLPI", "44", "44"}, {"halvScreenLPI2", "15", "15"}, {"halvScreenAngle", "35", "35"},
            {"halvScreenAngle2", "25", "25"}, {"halvPreview", "0 1", "1"}, {"halvBrightness", "-50", "-50"},
            {"halvRefLight", "65", "65"}, {"halvScreenCartridge0", "0 1", "1"}, {"halvScreenCartridge1", "0 1", "0"},
            {"halvScreenCartridge3", "0 1", "1"}})
            core.Offer(feature, offered, selected);
        // clang-format on
    }

    static LRESULT CALLBACK SheetProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* const self = reinterpret_cast<OpenSheet*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == PSM_CHANGED) {
            self->changes += GetParent(reinterpret_cast<HWND>(wParam)) == window;
            return 0;
        }
        if (message == PSM_INDEXTOHWND)
            return wParam < self->sheetPages.size() ? reinterpret_cast<LRESULT>(self->sheetPages[wParam]) : 0;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    static LONG_PTR CALLBACK SheetFunction(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2)
    {
        static_cast<OpenSheet*>(sheet)->sheetCalls.push_back(
            std::to_string(function) + " " + std::to_string(lParam1) + " " + std::to_string(lParam2));
        return 1;
    }

    HANDLE heap = HeapCreate(0, 0, 0);
    std::unique_ptr<OptionTable> options = std::make_unique<OptionTable>();
    bool read = false;
};

} // namespace tintwerk
