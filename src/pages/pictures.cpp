#include "src/pages/pictures.h"

#include <algorithm>
#include <array>

#include "platform/owners.h"

namespace tintwerk {

namespace {

// A picture of the process and the control that shows it: a picture belongs to its slot, and when the slot
// has let it go while the control still lives, to the control's page.
struct Slot
{
    HBITMAP picture;
    HWND control; // null once its page has ended
};

std::array<Slot, 3> slots; // what is left in them goes with the process, not with the module
SRWLOCK slotsLock;         // held for a look, never while a message is sent

HBITMAP SetImage(HWND control, HBITMAP bitmap)
{
    return reinterpret_cast<HBITMAP>(
        SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}

// A picture that its control no longer shows: a slot's stays there, any other goes.
void Retire(BitmapHandle picture)
{
    const HeldLock held(slotsLock);
    const auto slot = std::ranges::find(slots, picture.Get(), &Slot::picture);
    if (slot == slots.end()) return;
    slot->control = nullptr;
    picture.Release();
}

// Puts another picture into a slot. The former one goes, unless it is still shown.
void Exchange(Slot& slot, Slot next)
{
    Slot former;
    {
        const HeldLock held(slotsLock);
        former = std::exchange(slot, next);
    }
    if (!former.control) BitmapHandle(former.picture).Reset();
}

// Returns the picture that the control shows: the bitmap itself, or a copy that the control made of it (one
// with an alpha channel, under the common controls' version 6), in which case the bitmap is released.
BitmapHandle Put(HWND control, BitmapHandle bitmap)
{
    if (const HBITMAP previous = SetImage(control, bitmap.Get())) Retire(BitmapHandle(previous));
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
    if (const HBITMAP picture = SetImage(control, nullptr)) Retire(BitmapHandle(picture));
}

void ShowPicture(PictureSlot slot, HWND control, HBITMAP bitmap)
{
    if (!bitmap) return;
    const HBITMAP shown = Put(control, BitmapHandle(bitmap)).Release();
    Exchange(slots[static_cast<size_t>(slot)], {shown, shown ? control : nullptr});
}

void ReleasePictureSlots()
{
    for (Slot& slot : slots)
        Exchange(slot, {});
}

} // namespace tintwerk
