// Pictures of windows, for the host's --screenshot.
#pragma once

#include <filesystem>
#include <string>

#include "platform/win32.h"

namespace tintwerk {

// False where there are no windows that a picture could show.
bool CanTakePictures();

// Saves what a visible window shows as a PNG file. Returns an empty text, or why there is no picture.
std::string SaveWindowPicture(HWND window, const std::filesystem::path& file);

} // namespace tintwerk
