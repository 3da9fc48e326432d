#include "platform/snapshot.h"

namespace tintwerk {

bool CanTakePictures()
{
    return false;
}

std::string SaveWindowPicture(HWND, const std::filesystem::path&)
{
    return "this target has no display to take pictures of";
}

} // namespace tintwerk
