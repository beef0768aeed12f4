// What the compiler and its libraries call where code throws or gives up. Debian's libraries for WebAssembly have no
// exceptions, so it ends there, without the message that would need a system to print it.
#include <__verbose_abort>
#include <cstddef>

void std::__libcpp_verbose_abort(const char*, ...) {
  __builtin_trap();
}

extern "C" {
void* __cxa_allocate_exception(size_t) noexcept {
  __builtin_trap();
}
[[noreturn]] void __cxa_throw(void*, void*, void (*)(void*)) {
  __builtin_trap();
}
void __cxa_free_exception(void*) noexcept {
}
[[noreturn]] void abort_message(const char*, ...) {
  __builtin_trap();
}
}
