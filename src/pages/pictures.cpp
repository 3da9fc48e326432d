#include "src/pages/pictures.h"

#include <algorithm>
#include <array>

#include "platform/owners.h"

namespace tintwerk {

namespace {

std::array<HBITMAP, 3> slots; // what is left in them goes with the process, not with the module

HBITMAP SetImage(HWND control, HBITMAP bitmap)
{
    return reinterpret_cast<HBITMAP>(
        SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}

bool InSlot(HBITMAP bitmap)
{
    return std::ranges::find(slots, bitmap) != slots.end();
}

// Returns the picture that the control shows: the bitmap itself, or a copy that the control made of it (one
// with an alpha channel, under the common controls' version 6), in which case the bitmap is released.
BitmapHandle Put(HWND control, BitmapHandle bitmap)
{
    BitmapHandle previous(SetImage(control, bitmap.Get()));
    if (InSlot(previous.Get())) previous.Release();
    const auto shown = reinterpret_cast<HBITMAP>(SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0));
    return shown == bitmap.Get() ? std::move(bitmap) : BitmapHandle(shown);
}

} // namespace

void ShowPicture(HWND control, HBITMAP bitmap)
{
    if (bitmap) Put(control, BitmapHandle(bitmap)).Release();
}

void ReleasePicture(HWND control)
{
    BitmapHandle picture(SetImage(control, nullptr));
    if (InSlot(picture.Get())) picture.Release();
}

void ShowPicture(PictureSlot slot, HWND control, HBITMAP bitmap)
{
    if (!bitmap) return;
    BitmapHandle shown = Put(control, BitmapHandle(bitmap));
    const BitmapHandle former(std::exchange(slots[static_cast<size_t>(slot)], shown.Release()));
}

void ReleasePictureSlots()
{
    for (HBITMAP& slot : slots)
        BitmapHandle(std::exchange(slot, nullptr));
}

} // namespace tintwerk
