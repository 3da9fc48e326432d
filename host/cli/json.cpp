#include "host/cli/json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;
