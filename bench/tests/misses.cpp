// Every comparison with a target: what just reaches it, and what just falls short.
#include "report/misses.h"

#include <gtest/gtest.h>

#include "made_up.h"

namespace morvane::bench {
namespace {

constexpr const char* name = "uyvy::bgra_709";

std::vector<miss> misses_of(std::vector<measurement> all, const targets& aims = made_up_targets()) {
  return misses(made_up_results(std::move(all)), aims);
}

// Reaches `share` of memcpy.
measurement ours(double share, const place& where = {in_cache}) {
  return made_up(name, made_up_backends.back(), where, 1000 / share);
}

// Expects a single miss, and answers it.
miss expect_one(const std::vector<miss>& found, const std::string& target, double reached, double wanted) {
  EXPECT_EQ(found.size(), 1);
  const miss result = found.empty() ? miss() : found.front();
  EXPECT_EQ(result.row, name);
  EXPECT_EQ(result.target, target);
  EXPECT_NEAR(result.reached, reached, 1e-9);
  EXPECT_NEAR(result.wanted, wanted, 1e-9);
  return result;
}

TEST(misses, share_of_memcpy_has_a_target_at_each_size) {
  const double wanted[] = {0.5, 0.7, 0.9};
  for (std::size_t s = 0; s < sizes.size(); ++s) {
    EXPECT_TRUE(misses_of({ours(wanted[s] + 0.01, {sizes[s]})}).empty());
    const miss m =
        expect_one(misses_of({ours(wanted[s] - 0.01, {sizes[s]})}), "of memcpy", wanted[s] - 0.01, wanted[s]);
    EXPECT_EQ(m.where.nominal, sizes[s]);
  }
}

TEST(misses, share_of_memcpy_is_that_of_the_widest_backend_and_tight_planes) {
  EXPECT_TRUE(misses_of({made_up(name, made_up_backends.front(), {in_cache}, 9000)}).empty());
  EXPECT_TRUE(misses_of({ours(0.1, {in_cache, shape::padded})}).empty());
}

TEST(misses, less_than_noise_has_noise_as_its_reason) {
  EXPECT_EQ(expect_one(misses_of({ours(0.48)}), "of memcpy", 0.48, 0.5).why, "noise");
  EXPECT_EQ(expect_one(misses_of({ours(0.46)}), "of memcpy", 0.46, 0.5).why, "speed");
}

TEST(misses, other_libraries_may_not_be_faster) {
  EXPECT_TRUE(misses_of({ours(1), made_up_peer(name, "libyuv", {in_cache}, 980)}).empty());
  expect_one(misses_of({ours(1), made_up_peer(name, "libyuv", {in_cache}, 960)}), "of libyuv", 0.96, 0.97);
  expect_one(misses_of({ours(1, {ultra_hd}), made_up_peer(name, "OpenCV", {ultra_hd}, 500)}), "of OpenCV", 0.5, 0.97);
}

TEST(misses, some_rows_must_be_several_times_as_fast_as_a_library) {
  targets aims = made_up_targets();
  aims.libraries = {{.about = {.rows = {name}}, .library = "libyuv", .nominal = in_cache, .least = 3}};
  EXPECT_TRUE(misses_of({ours(1), made_up_peer(name, "libyuv", {in_cache}, 3010)}, aims).empty());
  expect_one(misses_of({ours(1), made_up_peer(name, "libyuv", {in_cache}, 2500)}, aims), "of libyuv", 2.5, 3);
  EXPECT_TRUE(misses_of({ours(1), made_up_peer(name, "swscale", {in_cache}, 1000)}, aims).empty());
  EXPECT_TRUE(misses_of({ours(1, {full_hd}), made_up_peer(name, "libyuv", {full_hd}, 1000)}, aims).empty());
}

TEST(misses, no_narrower_backend_may_be_faster) {
  for (const place& where : all_places())
    for (const char* backend : {"plain", "wide"}) {
      EXPECT_TRUE(misses_of({ours(1, where), made_up(name, backend, where, 980)}).empty());
      expect_one(misses_of({ours(1, where), made_up(name, backend, where, 960)}), std::string("of ") + backend, 0.96,
                 0.97);
    }
}

TEST(misses, other_shapes_are_held_against_tight_planes) {
  for (const shape memory : {shape::padded, shape::odd, shape::unaligned}) {
    EXPECT_TRUE(misses_of({ours(1, {full_hd}), ours(0.96, {full_hd, memory})}).empty());
    const miss m = expect_one(misses_of({ours(1, {full_hd}), ours(0.94, {full_hd, memory})}), "of tight", 0.94, 0.95);
    EXPECT_EQ(m.where.memory, memory);
  }
}

TEST(misses, short_rows_are_held_against_long_ones) {
  const place long_rows{in_cache, shape::padded};
  const place rows_of_64{short_rows, shape::padded};
  EXPECT_TRUE(misses_of({ours(1, long_rows), ours(0.61, rows_of_64)}).empty());
  const miss m = expect_one(misses_of({ours(1, long_rows), ours(0.4, rows_of_64)}), "of rows of 1920", 0.4, 0.6);
  EXPECT_EQ(m.why, "short rows");
}

TEST(misses, a_row_that_touches_next_to_nothing_has_no_target) {
  EXPECT_TRUE(misses_of({made_up("uyvy::ya_uv", made_up_backends.back(), {in_cache}, 1e9)}).empty());
}

}  // namespace
}  // namespace morvane::bench
