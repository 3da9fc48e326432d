#include "src/records/process_values.h"

namespace tintwerk {

ProcessValues& Process()
{
    static ProcessValues values;
    return values;
}

} // namespace tintwerk
