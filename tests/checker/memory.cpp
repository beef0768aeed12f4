#include "checker/memory.h"

#include <setjmp.h>
#include <signal.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace morvane::tests {

namespace {

// An invalid access jumps back to the call under test; without one under test it ends the program as usual.
sigjmp_buf return_point;
volatile sig_atomic_t under_test = 0;

void on_invalid_access(int signal, siginfo_t*, void*) {
  if (under_test == 0) {
    ::signal(signal, SIG_DFL);
    raise(signal);
    return;
  }
  under_test = 0;
  siglongjmp(return_point, signal);
}

void catch_invalid_accesses() {
  struct sigaction action {};
  action.sa_sigaction = on_invalid_access;
  action.sa_flags = SA_SIGINFO | SA_NODEFER;
  sigaction(SIGSEGV, &action, nullptr);
  sigaction(SIGBUS, &action, nullptr);
}

}  // namespace

fenced_memory::fenced_memory(std::size_t bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  size_ = (bytes + page - 1) / page * page;
  mapped_ = size_ + 2 * page;
  void* mapping = mmap(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapping == MAP_FAILED) throw std::runtime_error("mmap failed");
  mapping_ = static_cast<std::uint8_t*>(mapping);
  begin_ = mapping_ + page;
  if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) throw std::runtime_error("mprotect failed");
}

fenced_memory::~fenced_memory() {
  munmap(mapping_, mapped_);
}

int run_guarded(const std::function<void()>& call) {
  [[maybe_unused]] static const bool caught = (catch_invalid_accesses(), true);
  const int signal = sigsetjmp(return_point, 0);
  if (signal != 0) return signal;
  under_test = 1;
  call();
  under_test = 0;
  return 0;
}

const char* name_of_signal(int signal) {
  return strsignal(signal);
}

int run_guarded(catalogue::thunk convert, const catalogue::call& c) {
  return run_guarded([&] { convert(c); });
}

}  // namespace morvane::tests
