// The frames that conversions and copies take in turn.
#include "measure/ring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "measure/caches.h"

namespace morvane::bench {
namespace {

constexpr size small{64, 16};

format_pair pair_named(std::string_view name) {
  return pairs_named(name).front();
}

const std::uint8_t* start_of(const morvane_picture& p) {
  return static_cast<const std::uint8_t*>(p.data[0]);
}

TEST(last_level_cache, is_larger_than_the_smallest_there_are) {
  EXPECT_GE(last_level_cache(), 128 * 1024);
}

TEST(rings, exceed_the_last_cache_twice) {
  EXPECT_GE(bytes_beyond_caches(), 2 * last_level_cache());
}

TEST(rings, move_as_many_bytes_as_are_wanted) {
  constexpr std::int64_t wanted = std::int64_t{64} << 20;
  for (const format_pair& p : all_pairs()) {
    const std::int64_t moved = bytes_moved(p, full_hd);
    const int count = frames_that_move(wanted, p, full_hd);
    EXPECT_GE(count, 4) << p.name();
    EXPECT_GE(count * moved, wanted) << p.name();
    EXPECT_TRUE(count == 4 || (count - 1) * moved < wanted) << p.name();
  }
}

TEST(rings, have_four_frames_at_least) {
  EXPECT_EQ(frames_that_move(1, pair_named("uyvy:bgra"), small), 4);
}

TEST(rings, take_no_more_than_a_limit_of_memory) {
  constexpr std::int64_t limit = std::int64_t{512} << 20;
  for (const format_pair& p : pairs_named("uyvy:bgra,y:y16,bgra64:y16")) {
    const int count = frames_that_move(std::int64_t{1} << 40, p, full_hd);
    const auto half = static_cast<std::int64_t>(ring::bytes_for(p, full_hd, count));
    const auto half_with_one_more = static_cast<std::int64_t>(ring::bytes_for(p, full_hd, count + 1));
    EXPECT_LE(2 * half, limit) << p.name();
    EXPECT_GT(2 * half_with_one_more, limit) << p.name();
  }
}

TEST(rings, begin_again_after_the_last_frame) {
  const format_pair p = pair_named("uyvy:bgra");
  const arena memory(ring::bytes_for(p, small, 3));
  ring frames(memory, p, small, 3);
  for (const int expected : {0, 1, 2, 0, 1, 2, 0}) EXPECT_EQ(frames.next(), expected);
}

// Whether the frames lie behind each other within the memory, none of them over its neighbour, and half a page from
// source to destination.
void expect_apart(const format_pair& p) {
  constexpr int count = 4;
  const std::size_t half = ring::bytes_for(p, small, count);
  const arena memory(half);
  const ring frames(memory, p, small, count);
  const auto moved = static_cast<std::ptrdiff_t>(frames.bytes_of_a_frame());
  for (int i = 0; i < count; ++i) {
    const std::uint8_t* source = start_of(frames.source(i));
    const std::uint8_t* destination = start_of(frames.destination(i));
    EXPECT_EQ(std::abs(destination - source) % 4096, 2048);
    const std::uint8_t* next_source = i + 1 < count ? start_of(frames.source(i + 1)) : memory.source() + half;
    const std::uint8_t* next_destination =
        i + 1 < count ? start_of(frames.destination(i + 1)) : memory.destination() + half;
    const auto source_bytes = p.source->frame_bytes(small.xres, small.yres);
    const auto destination_bytes = p.destination->frame_bytes(small.xres, small.yres);
    EXPECT_GE(next_source - source, std::max<std::ptrdiff_t>(source_bytes, moved / 2));
    EXPECT_GE(next_destination - destination, std::max<std::ptrdiff_t>(destination_bytes, moved / 2));
  }
}

TEST(rings, have_frames_of_their_own_memory) {
  for (const format_pair& p : all_pairs()) {
    SCOPED_TRACE(p.name());
    expect_apart(p);
  }
}

TEST(rings, copy_as_many_bytes_as_a_conversion_moves) {
  const format_pair p = pair_named("uyvy:bgra");
  constexpr std::ptrdiff_t half = 64 * 16 * (2 + 4) / 2;
  const arena memory(ring::bytes_for(p, small, 2));
  const ring frames(memory, p, small, 2);
  EXPECT_EQ(frames.bytes_of_a_frame(), 2 * half);
  const std::uint8_t* from = start_of(frames.source(1));
  auto* to = static_cast<std::uint8_t*>(frames.destination(1).data[0]);
  std::memset(to, 0, 64 * 16 * 4);
  const std::vector<std::uint8_t> other(start_of(frames.destination(0)), start_of(frames.destination(0)) + half);
  frames.copy(1);
  EXPECT_TRUE(std::equal(from, from + half, to));
  EXPECT_TRUE(std::all_of(to + half, to + 64 * 16 * 4, [](std::uint8_t byte) { return byte == 0; }));
  EXPECT_TRUE(std::equal(other.begin(), other.end(), start_of(frames.destination(0))));
}

TEST(noise, has_contents_that_the_format_can_have) {
  const format_pair p = pair_named("y_10u16:y");
  const arena memory(ring::bytes_for(p, small, 3));
  const ring frames(memory, p, small, 3);
  noise().fill_sources(frames);
  for (int i = 0; i < 3; ++i) {
    const std::uint8_t* bytes = start_of(frames.source(i));
    for (int at = 1; at < 64 * 16 * 2; at += 2) ASSERT_LT(bytes[at], 4) << i;
    EXPECT_GT(std::count_if(bytes, bytes + 64 * 16 * 2, [](std::uint8_t b) { return b > 100; }), 100) << i;
  }
}

TEST(noise, is_made_anew_for_another_format_or_size) {
  const arena memory(1 << 16);
  noise kept;
  for (const auto& [name, each] : {std::pair("uyvy:y", small), std::pair("y:y", small), std::pair("y:y", size{32, 16}),
                                   std::pair("uyvy:y", small), std::pair("uyvy:uyvy", small)}) {
    const ring frames(memory, pair_named(name), each);
    const auto bytes = static_cast<std::size_t>(frames.source_layout().bytes);
    noise().fill_sources(frames);
    const std::vector<std::uint8_t> expected(frames.source_memory(0), frames.source_memory(0) + bytes);
    std::memset(frames.source_memory(0), 0, bytes);
    kept.fill_sources(frames);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), frames.source_memory(0))) << name;
  }
}

}  // namespace
}  // namespace morvane::bench
