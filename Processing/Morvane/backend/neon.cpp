#include "../vector/neon.h"

#include "unit.h"

MORVANE_BACKEND_UNIT(neon)
