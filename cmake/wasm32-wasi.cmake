# WebAssembly with clang, lld and the libraries of Debian, run under node. There are no threads and no exceptions: code
# that throws ends the program. Where CMAKE_CXX_FLAGS say -mno-simd128, the library has portable code alone.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)

set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_C_COMPILER_TARGET wasm32-wasi)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fexceptions -fignore-exceptions")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-z,stack-size=1048576 -Wl,--stack-first")

set(CMAKE_FIND_ROOT_PATH /usr/lib/wasm32-wasi /usr/include/wasm32-wasi)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR "node;--no-warnings;${CMAKE_CURRENT_LIST_DIR}/../web/run.mjs")
