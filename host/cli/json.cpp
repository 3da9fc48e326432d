#include "host/cli/json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace tintwerk {

std::string JsonText(const Json& json, int indent)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

} // namespace tintwerk
