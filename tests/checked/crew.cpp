// The threads of a plan: who does which part of a job, and when a job is done.
#include "checked/crew.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace morvane::tests {
namespace {

using Processing::Morvane::checked::crew;
using namespace std::chrono_literals;

constexpr int many = 64;

TEST(crew_of_threads, does_every_part_once_and_each_hand_one_at_a_time) {
  for (const int hands : {1, 2, 5}) {
    crew c(hands);
    EXPECT_EQ(c.hands(), hands);
    for (int job = 0; job < 50; ++job) {
      std::array<std::atomic<int>, many> done{};
      std::vector<std::atomic<int>> at_work(static_cast<std::size_t>(hands));
      std::atomic<bool> crowded = false;
      EXPECT_TRUE(c.run(many, [&](const int hand, const int part) {
        if (++at_work[static_cast<std::size_t>(hand)] > 1) crowded = true;
        ++done[static_cast<std::size_t>(part)];
        --at_work[static_cast<std::size_t>(hand)];
      }));
      for (const std::atomic<int>& count : done) ASSERT_EQ(count, 1);
      EXPECT_FALSE(crowded);
    }
  }
}

// Each part waits for the others, which therefore are at other hands.
TEST(crew_of_threads, does_parts_at_the_same_time) {
  constexpr int hands = 3;
  crew c(hands);
  std::atomic<int> begun = 0;
  std::array<std::atomic<int>, hands> parts_of_hand{};
  EXPECT_TRUE(c.run(hands, [&](const int hand, int) {
    ++parts_of_hand[static_cast<std::size_t>(hand)];
    ++begun;
    while (begun < hands) std::this_thread::yield();
  }));
  for (const std::atomic<int>& count : parts_of_hand) EXPECT_EQ(count, 1);
}

// A hand begins with its own half of the parts, and does those of the other half that the other hand has not come to.
TEST(crew_of_threads, begins_with_parts_of_its_own) {
  crew c(2);
  for (int job = 0; job < 2; ++job) {
    std::array<std::atomic<int>, 4> hand_of{-1, -1, -1, -1};
    EXPECT_TRUE(c.run(4, [&](const int hand, const int part) {
      const auto wait_for = [&](const std::size_t other) {
        for (int i = 0; i < 3000 && hand_of[other] < 0; ++i) std::this_thread::sleep_for(1ms);
      };
      hand_of[static_cast<std::size_t>(part)] = hand;
      if (part == 0) wait_for(2);
      if (part == 2) wait_for(3);
    }));
    EXPECT_EQ(hand_of[0], 0);
    EXPECT_EQ(hand_of[1], 0);
    EXPECT_EQ(hand_of[2], 1);
    EXPECT_EQ(hand_of[3], 0);
  }
}

// The caller's own part is short, and the other one, which has begun, is not.
TEST(crew_of_threads, ends_a_job_when_its_last_part_is_done) {
  crew c(2);
  for (int job = 0; job < 5; ++job) {
    std::atomic<int> begun = 0, done = 0;
    EXPECT_TRUE(c.run(2, [&](const int hand, int) {
      ++begun;
      while (begun < 2) std::this_thread::yield();
      if (hand != 0) std::this_thread::sleep_for(5ms);
      ++done;
    }));
    EXPECT_EQ(done, 2);
  }
}

TEST(crew_of_threads, refuses_a_second_job_meanwhile) {
  crew c(2);
  std::atomic<bool> begun = false, may_end = false;
  std::thread first([&] {
    c.run(1, [&](int, int) {
      begun = true;
      while (!may_end) std::this_thread::yield();
    });
  });
  while (!begun) std::this_thread::yield();
  std::atomic<int> called = 0;
  EXPECT_FALSE(c.run(4, [&](int, int) { ++called; }));
  EXPECT_EQ(called, 0);
  may_end = true;
  first.join();
  EXPECT_TRUE(c.run(4, [&](int, int) { ++called; }));
  EXPECT_EQ(called, 4);
}

TEST(crew_of_threads, wakes_after_a_long_sleep) {
  crew c(3);
  std::atomic<int> called = 0;
  for (int job = 0; job < 3; ++job) {
    std::this_thread::sleep_for(10ms);
    EXPECT_TRUE(c.run(8, [&](int, int) { ++called; }));
  }
  EXPECT_EQ(called, 24);
}

}  // namespace
}  // namespace morvane::tests
