// Plans that store past the caches: the bytes of those that do not, and nothing but whole cache lines.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "backend/choice.h"
#include "catalogue/conversions.h"
#include "checked/converted.h"
#include "checker/checker.h"
#include "morvane.hpp"
#include "recorder.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;

constexpr std::uint8_t untouched = 0xa5;
constexpr std::int64_t cache_line = 64;

description of(const std::string_view name, const int width, const int height) {
  return {.format = format_named(std::string(name)), .width = width, .height = height};
}

options streaming(options how) {
  how.stores = stores::streaming;
  return how;
}

bool says_that_it_streams(const plan& p) {
  return p.steps().back() == "store past the caches";
}

// A way of each kind.
struct kind_of_way {
  const char* from;
  const char* to;
  options how{};
};

const std::vector<kind_of_way>& kinds_of_ways() {
  static const std::vector<kind_of_way> all = {
      {"bgra", "bgra"},                                   // copied
      {"y_u_v_420", "y_uv_420"},                          // one plane copied, the other rearranged
      {"bgra", "rgba"},                                   // rearranged
      {"yuy2", "y_uv_420", {.filter = filter::nearest}},  // rearranged by two rows
      {"uyvy", "p216"},                                   // an entry point
      {"y_u_v_420", "y_uv_422", {.filter = filter::nearest}},
      {"uyvy", "bgra", {.via = "uyvy::bgra"}},
      {"v210", "uyvy", {.via = "v210::uyvy"}},
      {"p010", "bgra"},  // decoded
      {"y_u_v_420", "bgr"},
      {"y_uv_420", "bgra64"},  // lines
      {"bgra", "y_u_v_a_420"},
      {"p010", "v210"},
      {"bgra", "uyvy", {.siting = siting::center, .background = color{1, 200, 30}}},
  };
  return all;
}

std::string text_of(const kind_of_way& w) {
  return std::string(w.from) + " to " + w.to;
}

// The entry points by name have matrices of their own.
description with_matrix(description d, const options& how) {
  if (how.via == "uyvy::bgra") d.matrix = matrix::bt601;
  return d;
}

// A destination among bytes that belong to nobody: how far behind a cache line it begins, the bytes behind each row,
// and whether its rows go up.
struct place {
  std::int64_t offset = 0;
  std::int64_t padding = 0;
  bool upwards = false;
};

class surrounded {
 public:
  surrounded(const description& d, const place& p) : layout_(lay_out(d)) {
    std::int64_t bytes = 0;
    for (std::int32_t i = 0; i < layout_.plane_count; ++i) {
      morvane_plane_layout& plane = layout_.planes[i];
      plane.stride = plane.row_bytes + p.padding;
      plane.offset = bytes + p.offset;
      bytes = rounded_up(plane.offset + plane.stride * plane.rows + cache_line);
    }
    memory_.assign(static_cast<std::size_t>(bytes + 2 * cache_line), untouched);
    const auto begin = reinterpret_cast<std::uintptr_t>(memory_.data());
    picture_ = picture_in(memory_.data() + (cache_line - static_cast<std::int64_t>(begin % cache_line)), layout_);
    for (std::int32_t i = 0; p.upwards && i < layout_.plane_count; ++i) turn(i);
  }
  surrounded(const surrounded&) = delete;
  surrounded& operator=(const surrounded&) = delete;

  const morvane_picture& picture() const { return picture_; }
  // From the first cache line on.
  std::vector<std::uint8_t> all_bytes() const {
    const auto begin = reinterpret_cast<std::uintptr_t>(memory_.data());
    const auto first = memory_.begin() + (cache_line - static_cast<std::ptrdiff_t>(begin % cache_line));
    return {first, memory_.end() - static_cast<std::ptrdiff_t>(begin % cache_line)};
  }

 private:
  morvane_layout layout_;
  std::vector<std::uint8_t> memory_;
  morvane_picture picture_{};

  static std::int64_t rounded_up(const std::int64_t bytes) {
    return (bytes + cache_line - 1) / cache_line * cache_line;
  }
  void turn(const std::int32_t i) {
    const morvane_plane_layout& plane = layout_.planes[i];
    picture_.data[i] = static_cast<std::uint8_t*>(picture_.data[i]) + plane.stride * (plane.rows - 1);
    picture_.stride[i] = -plane.stride;
  }
};

image source_of(const description& d) {
  image source(d);
  std::uint32_t value = 7;
  std::generate_n(source.data(), source.bytes(), [&] {
    value = value * 1664525U + 1013904223U;
    return static_cast<std::uint8_t>(value >> 24);
  });
  return source;
}

// Bands of so many rows, from the last one on; none for all rows at once.
std::vector<std::uint8_t> converted(const plan& p, image& source, const description& to, const place& at,
                                    const int rows_of_band = 0) {
  const surrounded made(to, at);
  std::vector<std::uint8_t> scratch(p.scratch_bytes());
  const morvane_picture from = source.picture();
  if (rows_of_band == 0) p.run(from, made.picture(), scratch.data(), scratch.size());
  for (int first = (to.height - 1) / std::max(rows_of_band, 1) * rows_of_band; rows_of_band > 0 && first >= 0;
       first -= rows_of_band)
    p.run_rows(from, made.picture(), first, std::min(rows_of_band, to.height - first), scratch.data(), scratch.size());
  return made.all_bytes();
}

// A picture of some kilobytes fits into scratch memory at once, and a larger one takes several turns.
struct extent {
  int width, height;
};
constexpr extent sizes[] = {{70, 6}, {600, 74}, {2, 2}};

TEST(streaming, has_the_same_bytes_at_every_address) {
  for (const kind_of_way& w : kinds_of_ways()) {
    const description from = with_matrix(of(w.from, 70, 6), w.how), to = with_matrix(of(w.to, 70, 6), w.how);
    image source = source_of(from);
    const plan cached(from, to, w.how), streamed(from, to, streaming(w.how));
    ASSERT_TRUE(says_that_it_streams(streamed)) << text_of(w);
    on_every_backend([&](backend::kind k) {
      for (std::int64_t offset = 0; offset < cache_line; ++offset)
        ASSERT_EQ(converted(cached, source, to, {offset}), converted(streamed, source, to, {offset}))
            << text_of(w) << " at " << offset << " on " << backend::name(k);
    });
  }
}

TEST(streaming, has_the_same_bytes_however_rows_lie) {
  for (const kind_of_way& w : kinds_of_ways())
    for (const extent& size : sizes) {
      const description from = with_matrix(of(w.from, size.width, size.height), w.how),
                        to = with_matrix(of(w.to, size.width, size.height), w.how);
      image source = source_of(from);
      const plan cached(from, to, w.how), streamed(from, to, streaming(w.how));
      on_every_backend([&](backend::kind k) {
        for (const place& at :
             {place{0, 0, true}, {0, 64, false}, {0, 64, true}, {2, 26, false}, {17, 33, true}, {63, 1, false}})
          ASSERT_TRUE(converted(cached, source, to, at) == converted(streamed, source, to, at))
              << text_of(w) << ", " << size.width << "x" << size.height << ", " << at.offset << " " << at.padding << " "
              << at.upwards << " on " << backend::name(k);
      });
    }
}

TEST(streaming, has_the_same_bytes_in_bands_and_by_threads) {
  for (const kind_of_way& w : kinds_of_ways())
    for (const auto& [width, height] : {std::pair{603, 75}, {90, 17}}) {
      if (!w.how.via.empty()) continue;
      const description from = of(w.from, width, height), to = of(w.to, width, height);
      image source = source_of(from);
      const plan cached(from, to, w.how), streamed(from, to, streaming(w.how));
      const place at = {5, 3, false};
      const std::vector<std::uint8_t> expected = converted(cached, source, to, at);
      const int unit = streamed.row_granularity();
      EXPECT_EQ(unit, cached.row_granularity());
      for (const int rows : {unit, 3 * unit, 30 * unit})
        ASSERT_TRUE(expected == converted(streamed, source, to, at, rows)) << text_of(w) << ", bands of " << rows;
      options by_threads = streaming(w.how);
      by_threads.threads = 3;
      const plan shared(from, to, by_threads);
      EXPECT_EQ(shared.scratch_bytes(), 3 * streamed.scratch_bytes());
      for (int repetition = 0; repetition < 5; ++repetition)
        ASSERT_TRUE(expected == converted(shared, source, to, at)) << text_of(w) << " by threads";
    }
}

// Of a plan that is recorded and converts nothing: what is stored to the destination, and by which kernels.
struct stores_to_destination {
  std::int64_t copied_lines = 0;
  std::int64_t streamed_units = 0;  // by kernels that are told to stream
  std::int64_t other_units = 0;
  bool ends_with_planes = false;
};

std::size_t kernel_that_copies_lines() {
  const plan copy(of("bgra", 16, 1), of("bgra", 16, 1), streaming({}));
  image source = source_of(of("bgra", 16, 1));
  const surrounded made(of("bgra", 16, 1), {});
  std::set<std::size_t> kernels;
  const auto begin = reinterpret_cast<std::uintptr_t>(made.picture().data[0]);
  const recorder recording([&](const line_call& line) {
    if (line.plane[1] == begin) kernels.insert(line.kernel);
  });
  copy.run(source.picture(), made.picture());
  return kernels.empty() ? number_of_kernels() : *kernels.begin();
}

stores_to_destination recorded(const plan& p, image& source, const description& to) {
  const std::size_t copying = kernel_that_copies_lines();
  const surrounded made(to, {});
  const auto begin = reinterpret_cast<std::uintptr_t>(made.picture().data[0]);
  const auto bytes = static_cast<std::uintptr_t>(lay_out(to).bytes);
  std::vector<std::uint8_t> scratch(p.scratch_bytes());
  const morvane_picture from = source.picture();
  stores_to_destination result;
  const recorder recording([&](const line_call& line) {
    result.ends_with_planes = line.plane[0] != 0;
    const bool stores = std::any_of(line.plane.begin(), line.plane.end(), [&](const std::uintptr_t plane) {
      return plane >= begin && plane < begin + bytes;
    });
    if (!stores) return;
    if (line.kernel == copying) {
      EXPECT_EQ(line.plane[1] % cache_line, 0U);
    }
    (line.kernel == copying ? result.copied_lines
     : line.streams         ? result.streamed_units
                            : result.other_units) += line.count;
  });
  p.run(from, made.picture(), scratch.data(), scratch.size());
  return result;
}

// Rows that are made in one pass need no memory beside the destination.
bool is_one_pass(const plan& cached, const plan& streamed) {
  return streamed.scratch_bytes() == cached.scratch_bytes();
}

// By the kernel that copies them, or by kernels that are told to; the last pair of a row is what others may store.
TEST(streaming, fills_whole_cache_lines) {
  if (!calls_can_be_recorded) GTEST_SKIP() << "calls of line functions are direct";
  std::set<bool> kinds;
  for (const kind_of_way& w : kinds_of_ways()) {
    const description from = with_matrix(of(w.from, 384, 48), w.how), to = with_matrix(of(w.to, 384, 48), w.how);
    image source = source_of(from);
    const plan cached(from, to, w.how), streamed(from, to, streaming(w.how));
    const stores_to_destination ordinary = recorded(cached, source, to), past = recorded(streamed, source, to);
    EXPECT_EQ(ordinary.copied_lines + ordinary.streamed_units, 0) << text_of(w);
    EXPECT_LE(past.other_units, to.height) << text_of(w);
    if (!is_one_pass(cached, streamed)) {
      EXPECT_EQ(past.copied_lines * cache_line, lay_out(to).bytes) << text_of(w);
    }
    EXPECT_GT(past.copied_lines + past.streamed_units, 0) << text_of(w);
    EXPECT_FALSE(past.ends_with_planes) << text_of(w) << " without a fence";
    kinds.insert(past.streamed_units > 0);
    kinds.insert(is_one_pass(cached, streamed));
  }
  EXPECT_EQ(kinds.size(), 2U);
}

TEST(streaming, is_left_out_where_rgb_is_encoded_in_one_pass) {
  for (const char* to : {"y_u_v_420", "uyvy", "p010"}) {
    const plan p(of("bgra", 384, 48), of(to, 384, 48), streaming({}));
    EXPECT_FALSE(says_that_it_streams(p)) << to;
    EXPECT_EQ(p.scratch_bytes(), 0U) << to;
  }
}

// Every entry point by name. What leaves bytes as they are, because it is irregular or because a row ends with a part
// of a group, stores as ever.
void expect_same_bytes_by(const catalogue::conversion& c, const int width, const bool streams) {
  description from = of(c.source, width, 6), to = of(c.destination, width, 6);
  from.matrix = to.matrix = offers(c, catalogue::matrix::bt601)    ? matrix::bt601
                            : offers(c, catalogue::matrix::bt2020) ? matrix::bt2020
                                                                   : matrix::bt709;
  const options how = {.via = std::string(c.name), .allow_irregular = true};
  const plan cached(from, to, how), streamed(from, to, streaming(how));
  EXPECT_EQ(says_that_it_streams(streamed), streams) << c.name;
  image source = source_of(from);
  for (const place& at : {place{}, {1, 7, true}})
    EXPECT_TRUE(converted(cached, source, to, at) == converted(streamed, source, to, at)) << c.name;
}

TEST(streaming, has_the_same_bytes_by_every_entry_point) {
  for (const catalogue::conversion& c : catalogue::conversions) {
    if (c.source.empty()) continue;
    const bool ends_with_part_of_a_group = catalogue::find_format(c.destination)->planes[0].group_pixels > 8;
    expect_same_bytes_by(c, 96, c.irregular.empty());
    expect_same_bytes_by(c, 88, c.irregular.empty() && !ends_with_part_of_a_group);
  }
}

TEST(streaming, is_chosen_by_size_above_a_number_of_bytes) {
  const auto streams = [](const int width, const int height, const stores wanted, const char* from = "y") {
    return says_that_it_streams(plan(of(from, width, height), of("y", width, height), {.stores = wanted}));
  };
  static_assert(MORVANE_MOST_CACHED == 8192 * 8192);
  EXPECT_FALSE(streams(8192, 8192, stores::by_size));
  EXPECT_TRUE(streams(8192, 8193, stores::by_size));
  EXPECT_FALSE(streams(8192, 8193, stores::cached));
  EXPECT_TRUE(streams(1, 1, stores::streaming));
  EXPECT_TRUE(streams(8192, 8194, stores::by_size, "y_uv_422")) << "one plane is copied";
  EXPECT_TRUE(streams(8192, 8194, stores::by_size, "uyvy")) << "bytes are moved";
  EXPECT_FALSE(streams(8192, 8194, stores::by_size, "bgra")) << "luma is computed by lines";
  EXPECT_FALSE(streams(8192, 8194, stores::by_size, "yuyv_matrox_10")) << "by lines";
}

TEST(streaming, is_refused_as_something_else) {
  for (const int wanted : {-1, 3}) {
    try {
      plan(of("uyvy", 4, 4), of("bgra", 4, 4), {.stores = static_cast<stores>(wanted)});
      ADD_FAILURE() << wanted;
    } catch (const error& e) {
      EXPECT_EQ(e.code(), MORVANE_OPTION);
      EXPECT_EQ(e.argument(), "options.stores");
      EXPECT_EQ(e.got(), wanted);
      EXPECT_EQ(e.what(),
                "options.stores is " + std::to_string(wanted) + ", not 0 (cached), 1 (streaming) or 2 (by size)");
    }
  }
}

// Whoever was compiled before there was the choice has a smaller struct, and what lies behind it is nobody's.
TEST(streaming, is_not_read_from_options_without_it) {
  morvane_options how = options{};
  how.struct_size = offsetof(morvane_options, stores);
  how.stores = 77;
  const morvane_description from = of("uyvy", 4, 4), to = of("bgra", 4, 4);
  morvane_plan* made = morvane_plan_create(&from, &to, &how, nullptr);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(morvane_plan_step(made, 100), nullptr);
  for (int i = 0; const char* step = morvane_plan_step(made, i); ++i) EXPECT_STRNE(step, "store past the caches");
  morvane_plan_destroy(made);
}

}  // namespace
}  // namespace morvane::tests
