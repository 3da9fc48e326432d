// Unpacks a PPD that gzip has packed, as distributions keep them. Needs zlib, which the Windows build does
// without.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tintwerk {

bool IsPacked(std::string_view bytes);

// Puts the text in the place of the packed bytes. Else it says what is wrong.
std::string Unpack(std::string& bytes, std::size_t most);

} // namespace tintwerk
