// A fixed set of threads that share out numbered jobs.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace morvane::tool {

class workers {
 public:
  // The caller's thread is one of them.
  explicit workers(int count);
  ~workers();
  workers(const workers&) = delete;
  workers& operator=(const workers&) = delete;

  int count() const { return static_cast<int>(threads_.size()) + 1; }

  // Does job(0) to job(jobs - 1), any of them at once, and returns when all are done.
  void run(int jobs, const std::function<void(int)>& job);

 private:
  void serve();
  bool do_one(std::unique_lock<std::mutex>& lock);

  std::mutex mutex_;
  std::condition_variable work_;
  std::condition_variable done_;
  const std::function<void(int)>* job_ = nullptr;
  int next_ = 0;
  int jobs_ = 0;
  int unfinished_ = 0;
  bool stopping_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace morvane::tool
