// What a library of the compiler asks for, on WebAssembly, and no other one has: dividing 128 bits watches its stack.
#include <cstdint>

extern "C" {
std::uintptr_t __stack_chk_guard = 1;
[[noreturn]] void __stack_chk_fail() {
  __builtin_trap();
}
}
