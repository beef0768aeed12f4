// A reading thread, a writing thread, and the images that go round between them and the caller's.
#include "frame_stream.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <limits>
#include <mutex>
#include <system_error>
#include <thread>

#include "errors.h"
#include "input_gate.h"

namespace morvane::tool {

namespace {

// Images on their way from one thread to another.
class queue {
 public:
  void push(image* i) {
    {
      const std::lock_guard lock(mutex_);
      images_.push_back(i);
    }
    changed_.notify_one();
  }
  // Null when it is closed and empty.
  image* pop() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return closed_ || !images_.empty(); });
    if (images_.empty()) return nullptr;
    image* first = images_.front();
    images_.pop_front();
    return first;
  }
  // Lets those that wait for images go; with `drop`, what is in it is not handed out any more.
  void close(bool drop = false) {
    {
      const std::lock_guard lock(mutex_);
      closed_ = true;
      if (drop) images_.clear();
    }
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<image*> images_;
  bool closed_ = false;
};

class running {
 public:
  running(const frame_stream& s, std::vector<image>& read, std::vector<image>& converted) : s_(s) {
    for (image& i : read) empty_.push(&i);
    for (image& i : converted) free_.push(&i);
    try {
      writer_ = std::jthread([this] { write_all(); });
      reader_ = std::jthread([this] { read_all(); });
    } catch (const std::system_error&) {
      full_.close();
      done_.close();
      io_failure("cannot start a thread");
    }
  }

  stream_end finish() {
    convert_all();
    full_.close(true);
    done_.close();
    writer_.join();
    reader_.join();
    return {frames_, write_failure_ ? write_failure_ : convert_failure_ ? convert_failure_ : read_failure_};
  }

 private:
  void read_all() {
    try {
      const std::int64_t limit = s_.limit.value_or(std::numeric_limits<std::int64_t>::max());
      for (std::int64_t frame = 0; frame < limit; ++frame) {
        image* into = empty_.pop();
        if (into == nullptr || !s_.source.read(*into)) break;
        full_.push(into);
      }
    } catch (const reading_stopped&) {
    } catch (...) {
      read_failure_ = std::current_exception();
    }
    full_.close();
  }

  void convert_all() {
    try {
      while (image* from = full_.pop()) {
        image* to = free_.pop();
        if (to == nullptr) break;
        s_.convert(*from, *to);
        empty_.push(from);
        done_.push(to);
      }
    } catch (...) {
      convert_failure_ = std::current_exception();
      end_reading();
    }
  }

  void write_all() {
    try {
      while (image* frame = done_.pop()) {
        s_.sink.write(*frame);
        ++frames_;
        s_.frame_done();
        free_.push(frame);
      }
    } catch (...) {
      write_failure_ = std::current_exception();
      free_.close(true);
      end_reading();
    }
  }

  void end_reading() {
    stop_reading();
    empty_.close(true);
  }

  const frame_stream& s_;
  queue empty_;  // to be read into
  queue full_;   // to be converted
  queue free_;   // to be converted into
  queue done_;   // to be written
  std::int64_t frames_ = 0;
  std::exception_ptr read_failure_;
  std::exception_ptr convert_failure_;
  std::exception_ptr write_failure_;
  std::jthread writer_;
  std::jthread reader_;
};

}  // namespace

std::size_t images_in_flight(const frame_stream& s) {
  constexpr std::int64_t enough = 3;
  const std::int64_t frames = std::min(s.limit.value_or(enough), s.source.remaining().value_or(enough));
  return static_cast<std::size_t>(std::clamp<std::int64_t>(frames, 1, enough));
}

stream_end run(const frame_stream& s, std::vector<image>& read, std::vector<image>& converted) {
  return running(s, read, converted).finish();
}

}  // namespace morvane::tool
