#include "../vector/wasm.h"

#include "unit.h"

MORVANE_BACKEND_UNIT(wasm)
