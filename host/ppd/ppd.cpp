#include "host/ppd/ppd.h"
