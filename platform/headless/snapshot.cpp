#include "platform/snapshot.h"

namespace tintwerk {

std::string SaveWindowPicture(HWND, const std::filesystem::path&)
{
    return "this target has no display to take pictures of (the Windows program has one: ./run)";
}

} // namespace tintwerk
