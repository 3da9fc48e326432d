// The JSON library for the reports of the commands. Its document type is compiled once, in json.cpp: it is
// the costliest template of the program.
#pragma once

#include <nlohmann/json.hpp>

namespace tintwerk {

using Json = nlohmann::ordered_json;

} // namespace tintwerk

extern template class nlohmann::basic_json<nlohmann::ordered_map>;
