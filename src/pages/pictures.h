// Bitmaps in the static controls of the pages, and the three of them that belong to the process. Every
// function takes over the bitmap that it is given; a null one changes nothing, and one that its control
// cannot show is released.
#pragma once

#include "platform/win32.h"

namespace tintwerk {

// The control keeps the picture until ReleasePicture, which leaves a slot's picture to its slot.
void ShowPicture(HWND control, HBITMAP bitmap);
void ReleasePicture(HWND control);

// Slots of the process: the next picture for a slot, of whatever sheet, releases the former one, and so does
// the end of the slots. One that a page still shows stays until that page gives it back with ReleasePicture.
enum class PictureSlot
{
    A, // the OEM logo of the main page, or the second logo of the information page
    B, // the product logo of the information page
    C, // the product's picture on the information page
};
void ShowPicture(PictureSlot slot, HWND control, HBITMAP bitmap);
void ReleasePictureSlots();

} // namespace tintwerk
