# 64-bit Arm Linux with Debian's cross g++.
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
include(${CMAKE_CURRENT_LIST_DIR}/aarch64-linux-gnu.cmake)
