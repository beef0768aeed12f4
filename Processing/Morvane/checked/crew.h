// Threads that share one job after the other.
#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#if defined(__wasm__) && !defined(_REENTRANT)
#include "crew_of_one.h"
#else
#include <thread>

namespace Processing::Morvane::checked {

// Pictures may be converted in a few microseconds, so threads that are done wait for the next job for a while before
// they sleep, and a job does not wait for a thread that has not come to it yet. Running a job allocates nothing.
class crew {
 public:
  static constexpr bool can_be_hired = true;

  // The caller of run() is one of the hands. Throws std::system_error where a thread cannot be started.
  explicit crew(int hands);
  ~crew();
  crew(const crew&) = delete;
  crew& operator=(const crew&) = delete;

  int hands() const { return static_cast<int>(threads_.size()) + 1; }

  // Calls part(hand, i) for every i below `parts`. Each hand begins with a range of its own, the same in every job of
  // as many parts, so that it finds in its caches what it left there; a hand that is done with it takes of the others'.
  // False, and nothing is called, where the crew is at another caller's job.
  template <class Part>
  bool run(const int parts, const Part& part) {
    const job j = {
        [](const void* context, const int hand, const int i) { (*static_cast<const Part*>(context))(hand, i); }, &part,
        parts};
    return share(j);
  }

 private:
  struct job {
    void (*call)(const void* context, int hand, int i);
    const void* context;
    int parts;
  };

  // Parts that are left of a hand's range.
  struct alignas(64) range {
    std::atomic<int> next = 0;
    int end = 0;
  };

  // Of state_, from the lowest bit: how many threads are at the job beside its caller, whether it takes more, and the
  // number of the job.
  static constexpr uint32_t guests = (1U << 15) - 1;
  static constexpr uint32_t open = 1U << 15;
  static constexpr uint32_t job_number = ~(guests | open);
  static constexpr uint32_t next_job = 1U << 16;

  bool share(const job& j);
  void deal(int parts);
  bool join();
  void leave();
  void work(int hand);
  void serve(int hand);
  void stop();
  // Returns the state with which `is_met` is true.
  template <class Condition>
  uint32_t wait_until(Condition is_met) const;

  std::vector<range> ranges_;
  std::vector<std::thread> threads_;
  int spins_ = 0;
  std::atomic<bool> stopping_ = false;  // a late thread may look at it while it is set
  std::atomic_flag busy_ = ATOMIC_FLAG_INIT;
  // In one cache line, so that a thread that sees a new state has the job with it.
  alignas(64) std::atomic<uint32_t> state_ = 0;
  job job_ = {};
};

}  // namespace Processing::Morvane::checked

#endif
