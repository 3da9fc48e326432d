// Which selections leave a popup of the driver's pages empty: by the PPD's constraints, and by the driver's
// own rules for media types, rendering intents and colour models. Part of tintwerk check.
#pragma once

#include <vector>

#include "host/cli/check_rules.h"

namespace tintwerk {

void CheckEmptyPopups(const Ppd& ppd, std::vector<Finding>& findings);

} // namespace tintwerk
