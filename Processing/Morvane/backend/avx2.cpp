#include "../vector/avx2.h"

#include "unit.h"

MORVANE_BACKEND_UNIT(avx2)
