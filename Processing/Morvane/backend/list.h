// The backends, narrowest first: a tag, which names the type in vector/ and the translation unit here, and whether the
// processor and the operating system can run it. Who includes this file says what MORVANE_BACKEND makes of a line. The
// build defines MORVANE_WITH_<TAG> for each backend that it compiles.

#ifdef MORVANE_WITH_PORTABLE
MORVANE_BACKEND(portable, true)
#endif
#ifdef MORVANE_WITH_NEON
MORVANE_BACKEND(neon, true)
#endif
#ifdef MORVANE_WITH_WASM
MORVANE_BACKEND(wasm, true)
#endif
#ifdef MORVANE_WITH_AVX2
MORVANE_BACKEND(avx2, (__builtin_cpu_init(), __builtin_cpu_supports("avx2") && converts_half_floats()))
#endif
#ifdef MORVANE_WITH_AVX512
MORVANE_BACKEND(avx512,
                (__builtin_cpu_init(), __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                                           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                                           __builtin_cpu_supports("avx512vbmi") &&
                                           __builtin_cpu_supports("avx512vnni") && converts_half_floats()))
#endif

#undef MORVANE_BACKEND
