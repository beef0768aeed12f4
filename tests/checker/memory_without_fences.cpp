// Where memory cannot be protected: reads beyond it are not found here, and an invalid access ends the program.
#include "checker/memory.h"

namespace morvane::tests {

namespace {

constexpr std::size_t page = 4096;

}  // namespace

fenced_memory::fenced_memory(std::size_t bytes) {
  size_ = (bytes + page - 1) / page * page;
  mapped_ = size_ + 2 * page;
  mapping_ = new std::uint8_t[mapped_]();
  begin_ = mapping_ + page;
}

fenced_memory::~fenced_memory() {
  delete[] mapping_;
}

int run_guarded(const std::function<void()>& call) {
  call();
  return 0;
}

const char* name_of_signal(int) {
  return "";
}

int run_guarded(catalogue::thunk convert, const catalogue::call& c) {
  convert(c);
  return 0;
}

}  // namespace morvane::tests
