#include "../vector/avx512.h"

#include "unit.h"

MORVANE_BACKEND_UNIT(avx512)
