#include "src/records/process_values.h"

namespace tintwerk {

namespace {

constinit ProcessValues processValues{};

}

ProcessValues& Process()
{
    return processValues;
}

} // namespace tintwerk
