// Reading, converting and writing at the same time. Whoever has to wait for another waits until it has come, however
// long that takes; only where it never comes does a test give up.
#include "frame_stream.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "names.h"

namespace morvane::tests {

namespace {

using namespace tool;
using tool::image;

// Counts what has happened.
class tally {
 public:
  void add() {
    {
      const std::lock_guard lock(mutex_);
      ++count_;
    }
    changed_.notify_all();
  }
  int count() const {
    const std::lock_guard lock(mutex_);
    return count_;
  }
  void wait_for(int count) const {
    constexpr std::chrono::seconds forever(20);
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, forever, [&] { return count_ >= count; })) << count_ << " of " << count;
  }

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  int count_ = 0;
};

// What is done while the frame of a number is at work.
using step = std::function<void(int frame)>;

constexpr extent size{2, 1};

class counting_source : public frame_source {
 public:
  counting_source(int frames, step during) : frames_(frames), during_(std::move(during)) {}

  const format_info& format() const override { return tool::format_named("y"); }
  extent size() const override { return tests::size; }
  std::optional<std::int64_t> remaining() const override { return std::nullopt; }
  bool read(image& into) override {
    if (frame_ == frames_) return false;
    during_(frame_);
    into.row(0, 0)[0] = static_cast<std::uint8_t>(frame_++);
    return true;
  }

 private:
  int frames_;
  step during_;
  int frame_ = 0;
};

class remembering_sink : public frame_sink {
 public:
  explicit remembering_sink(step during) : during_(std::move(during)) {}

  void write(const image& frame) override {
    during_(frame.row(0, 0)[0]);
    written.push_back(frame.row(0, 0)[0]);
  }
  void commit() override {}
  void keep(std::int64_t) override {}
  bool is_in_place() const override { return true; }

  std::vector<int> written;

 private:
  step during_;
};

const step nothing = [](int) {};

struct steps {
  step read = nothing;
  step convert = nothing;
  step write = nothing;
};

// Frames leave in their order, whoever waits for whom.
void expect_frames_to_pass(int frames, const steps& during) {
  counting_source source(frames, during.read);
  remembering_sink sink(during.write);
  const auto convert = [&](const image& from, image& to) {
    during.convert(from.row(0, 0)[0]);
    to.row(0, 0)[0] = from.row(0, 0)[0];
  };
  const frame_stream stream = {
      .source = source, .sink = sink, .limit = std::nullopt, .convert = convert, .frame_done = [] {}};
  std::vector<image> read, converted;
  for (std::size_t i = 0; i < images_in_flight(stream); ++i) {
    read.push_back(source.blank());
    converted.push_back(sink.blank(source.format(), size));
  }
  const stream_end end = run(stream, read, converted);
  EXPECT_EQ(end.frames, frames);
  EXPECT_EQ(end.failure, nullptr);
  std::vector<int> all;
  for (int frame = 0; frame < frames; ++frame) all.push_back(frame);
  EXPECT_EQ(sink.written, all);
}

TEST(frame_stream, reads_converts_and_writes_at_the_same_time) {
  tally there;
  const auto meet_at = [&](int frame) {
    return [&there, frame](int current) {
      if (current != frame) return;
      there.add();
      there.wait_for(3);
    };
  };
  expect_frames_to_pass(5, {.read = meet_at(2), .convert = meet_at(1), .write = meet_at(0)});
}

TEST(frame_stream, writes_a_frame_while_it_waits_for_the_next) {
  tally written;
  expect_frames_to_pass(4, {.read = [&](int frame) { written.wait_for(frame); }, .write = [&](int) { written.add(); }});
}

// Three images that were read and three that were converted are full then.
TEST(frame_stream, reads_six_frames_while_the_first_is_written) {
  tally read, written;
  const auto begin_reading = [&](int frame) {
    EXPECT_GE(written.count(), frame - 5) << "more frames are under way than there are images";
    read.add();
  };
  const auto write = [&](int frame) {
    if (frame == 0) read.wait_for(6);
    written.add();
  };
  expect_frames_to_pass(20, {.read = begin_reading, .write = write});
}

TEST(frame_stream, takes_no_more_images_than_there_are_frames) {
  counting_source source(9, nothing);
  remembering_sink sink(nothing);
  const auto images = [&](std::optional<std::int64_t> limit) {
    return images_in_flight({.source = source, .sink = sink, .limit = limit, .convert = {}, .frame_done = {}});
  };
  EXPECT_EQ(images(std::nullopt), 3U);
  EXPECT_EQ(images(100), 3U);
  EXPECT_EQ(images(2), 2U);
  EXPECT_EQ(images(1), 1U);
}

}  // namespace

}  // namespace morvane::tests
