#include "src/pages/cartridge_controls.h"

#include "src/bindings/cartridge_codes.h"
#include "src/bindings/cartridges.h"
#include "src/bindings/check_boxes.h"
#include "src/bindings/current_values.h"
#include "src/features/control_access.h"
#include "src/pages/page_controls.h"
#include "src/pages/pictures.h"
#include "src/records/process_values.h"

namespace tintwerk {

namespace {

struct CartridgeControls
{
    HWND checkBox;
    HWND icon;
    HWND name;
};

// The picture of a colour code; a code that no cartridge has gives none.
void ShowCartridgeColor(HWND icon, std::basic_string_view<WCHAR> code)
{
    const CartridgeColor* const color = FindCartridgeColor(code);
    if (!icon || !color) return;
    ShowPicture(icon, static_cast<HBITMAP>(LoadImageW(Process().module, MAKEINTRESOURCEW(color->picture),
                                                      IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR)));
}

void EmbedCartridge(const CartridgeControls& controls, int value, std::basic_string_view<WCHAR> code,
                    bool enable)
{
    const HWND all[] = {controls.checkBox, controls.icon, controls.name};
    if (value < 0) {
        for (const HWND control : all)
            ShowControl(control, false);
        return;
    }
    // Behind its blanks the box's text begins where the box ends: nobody sees it, a screen reader says it.
    WCHAR spoken[2 + kCartridgeColorUnits] = {' ', ' '};
    const WCHAR* const name = spoken + 2;
    code.copy(spoken + 2, kCartridgeColorUnits - 1);
    CheckControl(controls.checkBox, value != 0);
    SetWindowTextW(controls.name, name);
    SetWindowTextW(controls.checkBox, spoken);
    ShowCartridgeColor(controls.icon, name);
    for (const HWND control : all) {
        ShowControl(control, true);
        EnableControl(control, enable);
    }
}

} // namespace

void EmbedCartridges(SheetContext& context, HWND window, bool enable)
{
    CartridgeCodes codes(context.options ? context.options->cartridgeColors : TEXT(""));
    for (size_t cartridge = 0; cartridge < kCartridgeRows; ++cartridge) {
        const std::basic_string_view<WCHAR> code = codes.Next();
        const size_t row = kCheckCartridge0 + cartridge;
        const CartridgeControls controls{GetControlByID(window, kCheckBoxTable[row].controlId),
                                         GetControlByID(window, kCartridgeIconIds[cartridge]),
                                         GetControlByID(window, kCartridgeNameIds[cartridge])};
        context.checkBoxes.windows[row] = controls.checkBox;
        if (!controls.checkBox) continue;
        MarkControl(controls.checkBox, ControlMark::CheckBox);
        EmbedCartridge(controls, Current().checkBoxes[row], code, enable);
    }
}

void EnableCartridges(const SheetContext& context, HWND page, bool enable)
{
    for (size_t cartridge = 0; cartridge < kCartridgeRows; ++cartridge) {
        const size_t row = kCheckCartridge0 + cartridge;
        if (Current().checkBoxes[row] < 0) return;
        EnableControl(context.checkBoxes.windows[row], enable);
        EnableControl(GetControlByID(page, kCartridgeIconIds[cartridge]), enable);
        EnableControl(GetControlByID(page, kCartridgeNameIds[cartridge]), enable);
    }
}

void ReleaseCartridgePictures(HWND page)
{
    for (const int icon : kCartridgeIconIds)
        ReleasePicture(GetDlgItem(page, icon));
}

} // namespace tintwerk
