// A thread that runs one job again and again while the first thread does its own part.
#pragma once

#include <atomic>
#include <thread>

#include "measure/workload.h"

namespace morvane::bench {

class second_thread {
 public:
  explicit second_thread(job work) : work_(std::move(work)), thread_([this] { serve(); }) {}
  second_thread(const second_thread&) = delete;
  second_thread& operator=(const second_thread&) = delete;
  ~second_thread() {
    stop_ = true;
    thread_.join();
  }

  void start() { ++asked_; }
  void wait() const {
    while (done_ != asked_) std::this_thread::yield();
  }

 private:
  job work_;
  std::atomic<int> asked_ = 0;
  std::atomic<int> done_ = 0;
  std::atomic<bool> stop_ = false;
  std::thread thread_;  // last, so that it finds all the others made

  // Without sleep: waking up would take as long as a part of an image.
  void serve() {
    while (!stop_) {
      if (done_ == asked_) {
        std::this_thread::yield();
        continue;
      }
      work_();
      ++done_;
    }
  }
};

}  // namespace morvane::bench
