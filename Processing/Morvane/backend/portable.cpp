#include "../vector/portable.h"

#include "unit.h"

MORVANE_BACKEND_UNIT(portable)
