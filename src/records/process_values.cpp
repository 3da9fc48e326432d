#include "src/records/process_values.h"

namespace tintwerk {

namespace {

constinit ProcessValues values{};

}

ProcessValues& Process()
{
    return values;
}

} // namespace tintwerk
