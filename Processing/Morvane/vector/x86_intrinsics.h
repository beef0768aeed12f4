// The intrinsics of x86-64.
#pragma once

// g++ 12 takes the registers that its own header leaves undefined on purpose for a mistake.
#ifndef __clang__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>
#ifndef __clang__
#pragma GCC diagnostic pop
#endif
