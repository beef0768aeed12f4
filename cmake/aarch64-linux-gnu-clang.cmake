# 64-bit Arm Linux with clang, which takes headers, runtime and linker from Debian's cross g++.
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)
set(CMAKE_C_COMPILER clang)
set(CMAKE_C_COMPILER_TARGET aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/aarch64-linux-gnu.cmake)
