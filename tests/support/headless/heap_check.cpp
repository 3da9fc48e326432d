#include "tests/support/heap_check.h"

bool tintwerk::HeapsAreSound()
{
    return true;
}
