// The JSON library for the reports of the commands. Its document type is compiled once, in json.cpp: it is
// the costliest template of the program.
#pragma once

#include <iosfwd>

#include <nlohmann/json.hpp>

namespace tintwerk {

using Json = nlohmann::ordered_json;

// A whole document with a line end; what is no UTF-8 in it becomes U+FFFD.
void WriteJson(std::ostream& out, const Json& json);

} // namespace tintwerk

extern template class nlohmann::basic_json<nlohmann::ordered_map>;
