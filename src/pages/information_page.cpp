#include "src/pages/information_page.h"

#include <iterator>

#include "src/config/module_versions.h"
#include "src/pages/pictures.h"
#include "src/records/process_values.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

namespace {

struct InformationPicture
{
    PictureSlot slot;
    WORD resource;
    int controlId;
};
constexpr InformationPicture kPictures[] = {
    {PictureSlot::A, IDB_MAKER_LOGO, IDC_INFORMATION_MAKER_LOGO},
    {PictureSlot::B, IDB_PRODUCT_LOGO, IDC_INFORMATION_PRODUCT_LOGO},
    {PictureSlot::C, IDB_INFORMATION, IDC_INFORMATION_PICTURE},
};

void ShowPictures(HWND page)
{
    for (const InformationPicture& picture : kPictures) {
        const HANDLE bitmap = LoadImageW(Process().module, MAKEINTRESOURCEW(picture.resource), IMAGE_BITMAP,
                                         0, 0, LR_LOADMAP3DCOLORS | LR_LOADTRANSPARENT);
        ShowPicture(picture.slot, GetDlgItem(page, picture.controlId), static_cast<HBITMAP>(bitmap));
    }
}

void ShowVersions(HWND page, HANDLE printer)
{
    DriverVersions versions{};
    GetDriverVersions(printer, &versions);

    WCHAR text[128] = {};
    _snwprintf(text, std::size(text) - 1, TEXT("Version: %.24ls"), versions.plugin);
    SetDlgItemTextW(page, IDC_INFORMATION_VERSION, text);
    _snwprintf(text, std::size(text) - 1, TEXT("[ drv: %.19ls / pscript: %.19ls / psui: %.19ls ]"),
               versions.renderingPlugin, versions.coreDriver, versions.coreUi);
    SetDlgItemTextW(page, IDC_INFORMATION_MODULE_VERSIONS, text);
}

} // namespace

void InitialiseInformationPage(HWND page, const SheetRecord& record)
{
    ShowPictures(page);
    ShowVersions(page, record.printer);
}

void EndInformationPage(HWND page)
{
    for (const InformationPicture& picture : kPictures)
        ReleasePicture(GetDlgItem(page, picture.controlId));
}

} // namespace tintwerk
