#include "crew.h"

#if !defined(__wasm__) || defined(_REENTRANT)

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

crew::crew(const int hands) : ranges_(static_cast<size_t>(hands)), spins_(spins_for(hands)) {
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
  state_.fetch_add(next_job, std::memory_order_release);
  state_.notify_all();
  for (std::thread& t : threads_) t.join();
}

template <class Condition>
uint32_t crew::wait_until(const Condition is_met) const {
  for (int i = 0; i < spins_; ++i) {
    const uint32_t now = state_.load(std::memory_order_acquire);
    if (is_met(now)) return now;
    pause();
  }
  uint32_t now = state_.load(std::memory_order_acquire);
  for (; !is_met(now); now = state_.load(std::memory_order_acquire)) state_.wait(now, std::memory_order_acquire);
  return now;
}

// No other thread changes the state between two jobs.
bool crew::share(const job& j) {
  if (busy_.test_and_set(std::memory_order_acquire)) return false;
  deal(j.parts);
  job_ = j;
  const uint32_t before = state_.load(std::memory_order_relaxed);
  state_.store(((before & job_number) + next_job) | open, std::memory_order_release);
  state_.notify_all();
  work(0);
  state_.fetch_and(~open, std::memory_order_acq_rel);
  wait_until([](const uint32_t state) { return (state & guests) == 0; });
  busy_.clear(std::memory_order_release);
  return true;
}

bool crew::join() {
  uint32_t state = state_.load(std::memory_order_acquire);
  while ((state & open) != 0)
    if (state_.compare_exchange_weak(state, state + 1, std::memory_order_acq_rel)) return true;
  return false;
}

// Threads that sleep until the next job are woken too: they wait for the same state.
void crew::leave() {
  const uint32_t before = state_.fetch_sub(1, std::memory_order_acq_rel);
  if ((before & guests) == 1 && (before & open) == 0) state_.notify_all();
}

// Of a few parts, the caller's range has more than the others.
void crew::deal(const int parts) {
  const auto hands = static_cast<int64_t>(ranges_.size());
  const auto begin_of = [&](const size_t hand) {
    return static_cast<int>((parts * static_cast<int64_t>(hand) + hands - 1) / hands);
  };
  for (size_t hand = 0; hand < ranges_.size(); ++hand) {
    ranges_[hand].next.store(begin_of(hand), std::memory_order_relaxed);
    ranges_[hand].end = begin_of(hand + 1);
  }
}

void crew::work(const int hand) {
  for (size_t i = 0; i < ranges_.size(); ++i) {
    range& r = ranges_[(static_cast<size_t>(hand) + i) % ranges_.size()];
    for (int part = r.next.fetch_add(1, std::memory_order_relaxed); part < r.end;
         part = r.next.fetch_add(1, std::memory_order_relaxed))
      job_.call(job_.context, hand, part);
  }
}

void crew::serve(const int hand) {
  for (uint32_t seen = 0;;) {
    seen = wait_until([&](const uint32_t state) { return (state & job_number) != seen; }) & job_number;
    if (stopping_) return;
    if (!join()) continue;
    work(hand);
    leave();
  }
}

}  // namespace Processing::Morvane::checked

#endif
