#include "crew.h"

namespace Processing::Morvane::checked {

namespace {

// Tells the processor that this is a loop that waits.
void pause() {
#if defined(__x86_64__)
  __builtin_ia32_pause();
#elif defined(__aarch64__)
  asm volatile("yield");
#endif
}

// Some tens of microseconds, where every hand has a processor of its own.
int spins_for(const int hands) {
  return hands <= static_cast<int>(std::thread::hardware_concurrency()) ? 2000 : 0;
}

}  // namespace

crew::crew(const int hands) : spins_(spins_for(hands)) {
  threads_.reserve(static_cast<size_t>(hands - 1));
  try {
    for (int hand = 1; hand < hands; ++hand) threads_.emplace_back([this, hand] { serve(hand); });
  } catch (...) {
    stop();
    throw;
  }
}

crew::~crew() {
  stop();
}

void crew::stop() {
  stopping_ = true;
  jobs_.fetch_add(1, std::memory_order_release);
  jobs_.notify_all();
  for (std::thread& t : threads_) t.join();
}

uint32_t crew::wait_for_change(const std::atomic<uint32_t>& value, const uint32_t seen) const {
  for (int i = 0; i < spins_; ++i) {
    const uint32_t now = value.load(std::memory_order_acquire);
    if (now != seen) return now;
    pause();
  }
  value.wait(seen, std::memory_order_acquire);
  return value.load(std::memory_order_acquire);
}

bool crew::share(const job& j) {
  if (busy_.test_and_set(std::memory_order_acquire)) return false;
  job_ = j;
  next_.store(0, std::memory_order_relaxed);
  guests_.store(open, std::memory_order_release);
  jobs_.fetch_add(1, std::memory_order_release);
  jobs_.notify_all();
  work(0);
  guests_.fetch_and(~open, std::memory_order_acq_rel);
  for (uint32_t left = guests_.load(std::memory_order_acquire); left != 0;) left = wait_for_change(guests_, left);
  busy_.clear(std::memory_order_release);
  return true;
}

bool crew::join() {
  uint32_t guests = guests_.load(std::memory_order_acquire);
  while ((guests & open) != 0)
    if (guests_.compare_exchange_weak(guests, guests + 1, std::memory_order_acq_rel)) return true;
  return false;
}

void crew::leave() {
  if (guests_.fetch_sub(1, std::memory_order_acq_rel) == 1) guests_.notify_one();
}

void crew::work(const int hand) {
  for (int i = next_.fetch_add(1, std::memory_order_relaxed); i < job_.parts;
       i = next_.fetch_add(1, std::memory_order_relaxed))
    job_.call(job_.context, hand, i);
}

void crew::serve(const int hand) {
  for (uint32_t seen = 0;;) {
    seen = wait_for_change(jobs_, seen);
    if (stopping_) return;
    if (!join()) continue;
    work(hand);
    leave();
  }
}

}  // namespace Processing::Morvane::checked
