// Memory whose limits are seen to, and calls that may break them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include "catalogue/call.h"

namespace morvane::tests {

// Memory between two inaccessible pages.
class fenced_memory {
 public:
  explicit fenced_memory(std::size_t bytes);
  fenced_memory(const fenced_memory&) = delete;
  fenced_memory& operator=(const fenced_memory&) = delete;
  ~fenced_memory();

  std::span<std::uint8_t> bytes() const { return {begin_, size_}; }

 private:
  std::uint8_t* mapping_ = nullptr;
  std::size_t mapped_ = 0;
  std::uint8_t* begin_ = nullptr;
  std::size_t size_ = 0;
};

// Calls it; returns 0, or the signal of an invalid memory access that ended it.
int run_guarded(const std::function<void()>& call);
const char* name_of_signal(int signal);

// The same of convert(c).
int run_guarded(catalogue::thunk convert, const catalogue::call& c);

}  // namespace morvane::tests
