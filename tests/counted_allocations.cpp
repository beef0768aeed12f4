#include "counted_allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>

namespace {

constexpr int unlimited = -1;

std::atomic<int> requests = 0;
std::atomic<int> held = 0;
std::atomic<int> left = unlimited;

bool is_refused() {
  ++requests;
  if (left == unlimited) return false;
  if (left > 0) {
    --left;
    return false;
  }
  errno = ENOMEM;  // which starting a thread relies on
  return true;
}

void* counted(void* memory) {
  if (memory != nullptr) ++held;
  return memory;
}

}  // namespace

namespace morvane::tests {

int allocations() {
  return requests;
}

int held_allocations() {
  return held;
}

scarce_memory::scarce_memory(int requests_that_succeed) {
  left = requests_that_succeed;
}

scarce_memory::~scarce_memory() {
  left = unlimited;
}

}  // namespace morvane::tests

extern "C" {

void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* before, std::size_t bytes);
void* __libc_memalign(std::size_t alignment, std::size_t bytes);
void __libc_free(void* memory);

void* malloc(std::size_t bytes) {
  return is_refused() ? nullptr : counted(__libc_malloc(bytes));
}

void* calloc(std::size_t count, std::size_t bytes) {
  return is_refused() ? nullptr : counted(__libc_calloc(count, bytes));
}

void* realloc(void* before, std::size_t bytes) {
  if (is_refused()) return nullptr;
  if (before != nullptr) --held;
  return counted(__libc_realloc(before, bytes));
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) {
  return is_refused() ? nullptr : counted(__libc_memalign(alignment, bytes));
}

int posix_memalign(void** result, std::size_t alignment, std::size_t bytes) {
  *result = is_refused() ? nullptr : counted(__libc_memalign(alignment, bytes));
  return *result == nullptr ? ENOMEM : 0;
}

void free(void* memory) {
  if (memory != nullptr) --held;
  __libc_free(memory);
}

}  // extern "C"
