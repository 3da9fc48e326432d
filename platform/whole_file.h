// Files that are read and replaced as a whole: the printers' PPDs, and the selections, which no failure of a
// disk may tear.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

// The bytes of a file, `most` of them; empty when there is no such file. False when there is one that cannot
// be read to its end.
bool ReadWhole(const std::filesystem::path& file, std::string& text, std::size_t most = std::string::npos);

// What stands in a file behind the platform's back, whatever function is replaced; empty when it cannot be
// read.
std::vector<BYTE> ReadWholeFile(const char* path);

// True when every byte has reached the disk; else the file is gone again.
bool WriteWhole(const std::filesystem::path& file, std::string_view text);

// Puts a file in the place of another of the same folder, in one step.
bool PutInPlace(const std::filesystem::path& fresh, const std::filesystem::path& file);

} // namespace tintwerk
