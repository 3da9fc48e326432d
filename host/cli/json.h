// The JSON library for the reports of the commands. Its document type is compiled once, in json.cpp: it is
// the costliest template of the program.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace tintwerk {

using Json = nlohmann::ordered_json;

// What is no UTF-8 becomes U+FFFD. Without an indent it stands on one line.
std::string JsonText(const Json& json, int indent = 2);

} // namespace tintwerk

extern template class nlohmann::basic_json<nlohmann::ordered_map>;
