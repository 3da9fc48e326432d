#include "src/pages/information_page.h"

#include <iterator>

#include "src/config/module_versions.h"
#include "src/pages/pictures.h"
#include "src/records/process_values.h"

namespace tintwerk {

namespace {

constexpr int kVersionId = 1070;
constexpr int kModuleVersionsId = 1071;

struct InformationPicture
{
    PictureSlot slot;
    WORD resource;
    int controlId;
};
constexpr InformationPicture kPictures[] = {
    {PictureSlot::A, 148, 1062},
    {PictureSlot::B, 190, 1063},
    {PictureSlot::C, 125, 1066},
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
    SetDlgItemTextW(page, kVersionId, text);
    _snwprintf(text, std::size(text) - 1, TEXT("[ drv: %.19ls / pscript: %.19ls / psui: %.19ls ]"),
               versions.renderingPlugin, versions.coreDriver, versions.coreUi);
    SetDlgItemTextW(page, kModuleVersionsId, text);
}

} // namespace

void InitialiseInformationPage(HWND page, const SheetRecord& record)
{
    ShowPictures(page);
    ShowVersions(page, record.printer);
}

} // namespace tintwerk
