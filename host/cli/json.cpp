#include "host/cli/json.h"

#include <ostream>

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace tintwerk {

void WriteJson(std::ostream& out, const Json& json)
{
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

} // namespace tintwerk
