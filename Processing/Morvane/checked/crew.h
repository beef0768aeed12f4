// Threads that share one job after the other.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

namespace Processing::Morvane::checked {

// Pictures may be converted in a few microseconds, so threads that are done wait for the next job for a while before
// they sleep, and a job does not wait for a thread that has not come to it yet. Running a job allocates nothing.
class crew {
 public:
  // The caller of run() is one of the hands. Throws std::system_error where a thread cannot be started.
  explicit crew(int hands);
  ~crew();
  crew(const crew&) = delete;
  crew& operator=(const crew&) = delete;

  int hands() const { return static_cast<int>(threads_.size()) + 1; }

  // Calls part(hand, i) for every i below `parts`, each on the hand that is free next. False, and nothing is called,
  // where the crew is at another caller's job.
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

  // Of guests_: whether the job takes more threads; below it, how many are at it.
  static constexpr uint32_t open = 1U << 16;

  bool share(const job& j);
  bool join();
  void leave();
  void work(int hand);
  void serve(int hand);
  void stop();
  // Returns another value than `seen`.
  uint32_t wait_for_change(const std::atomic<uint32_t>& value, uint32_t seen) const;

  std::vector<std::thread> threads_;
  int spins_ = 0;
  job job_ = {};
  bool stopping_ = false;
  std::atomic_flag busy_ = ATOMIC_FLAG_INIT;
  alignas(64) std::atomic<uint32_t> jobs_ = 0;  // how many were begun
  alignas(64) std::atomic<int> next_ = 0;       // part
  alignas(64) std::atomic<uint32_t> guests_ = 0;
};

}  // namespace Processing::Morvane::checked
