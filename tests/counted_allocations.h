// The C library's functions that allocate, which operator new calls too, in a program that links this: they count, and
// fail when they are told to.
#pragma once

namespace morvane::tests {

// How often memory was asked for since the program began.
int allocations();

// How many runs of memory were got and not yet freed.
int held_allocations();

// While it lives, the request after so many others fails, and so does every later one.
class scarce_memory {
 public:
  explicit scarce_memory(int requests_that_succeed);
  scarce_memory(const scarce_memory&) = delete;
  scarce_memory& operator=(const scarce_memory&) = delete;
  ~scarce_memory();
};

}  // namespace morvane::tests
