// Threads that wait for jobs.
#include "workers.h"

namespace morvane::tool {

workers::workers(int count) {
  for (int i = 1; i < count; ++i) threads_.emplace_back([this] { serve(); });
}

workers::~workers() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  work_.notify_all();
  for (std::thread& t : threads_) t.join();
}

void workers::run(int jobs, const std::function<void(int)>& job) {
  std::unique_lock lock(mutex_);
  job_ = &job;
  next_ = 0;
  jobs_ = unfinished_ = jobs;
  work_.notify_all();
  while (do_one(lock)) {
  }
  done_.wait(lock, [this] { return unfinished_ == 0; });
}

void workers::serve() {
  std::unique_lock lock(mutex_);
  while (!stopping_)
    if (!do_one(lock)) work_.wait(lock);
}

// Takes the next job, if there is one, and does it with the lock released.
bool workers::do_one(std::unique_lock<std::mutex>& lock) {
  if (next_ >= jobs_) return false;
  const int mine = next_++;
  lock.unlock();
  (*job_)(mine);
  lock.lock();
  if (--unfinished_ == 0) done_.notify_all();
  return true;
}

}  // namespace morvane::tool
