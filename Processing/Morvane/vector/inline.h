// Functions that are inlined wherever they are called, also in unoptimised builds.
//
// Kernels are compiled once for every instruction set of a processor. A function that two of those copies shared would
// be kept once by the linker, in whichever copy comes first, and could bring instructions into the code for processors
// that lack them. So whatever a kernel calls is either a template over its backend or MORVANE_INLINE, and never a
// function of the standard library.
#pragma once

#define MORVANE_INLINE [[gnu::always_inline]] inline
