// Ways without lines: what they make is what the rules say, and they are taken. Entry points by name do what they do.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "backend/choice.h"
#include "catalogue/conversions.h"
#include "catalogue/layout.h"
#include "checked/converted.h"
#include "checked/variants.h"
#include "checker/checker.h"
#include "morvane.hpp"
#include "rules/convert.h"
#include "rules/promises/pictures.h"

namespace morvane::tests {
namespace {

namespace backend = Processing::Morvane::backend;
using morvane::name_of;

description of(const std::string_view name, const int width, const int height) {
  return {.format = format_named(std::string(name)), .width = width, .height = height};
}

std::string step_of(const description& from, const description& to, const options& how) {
  return plan(from, to, how).steps().front();
}

bool is_short_cut(const std::string& step) {
  return step.starts_with("copy rows") || step.starts_with("rearrange") || step.find(" by ") != std::string::npos;
}

// Samples at random, or of few values, so that all of a picture's extremes meet.
void fill(rules::stored_picture& picture, const std::uint32_t seed) {
  picture.fill_at_random(seed);
  if (seed % 2 == 0) return;
  for (std::size_t i = 0; i < 4; ++i)
    for (std::uint8_t& byte : picture.plane(i)) byte = byte < 128 ? 0 : 255;
}

// The number says which of two pictures is padded.
void expect_bytes_of_the_rules(const description& from, const description& to, const options& how,
                               const std::uint32_t number) {
  const std::string source_name(name_of(from.format)), destination_name(name_of(to.format));
  const rules::options asked = {how.filter == filter::nearest ? rules::filter::nearest : rules::filter::linear,
                                how.siting == siting::center ? rules::siting::center : rules::siting::left,
                                {}};
  const plan p(from, to, how);
  for (std::uint32_t seed = 0; seed < 2; ++seed) {
    const int padding = (seed + number) % 2 == 0 ? 0 : 8;
    rules::stored_picture source(source_name, from.width, from.height, 0, padding);
    rules::stored_picture expected(destination_name, to.width, to.height, 0xa5, padding);
    fill(source, seed);
    rules::convert(source.of(), expected.of(), asked);
    on_every_backend([&](backend::kind k) {
      rules::stored_picture made(destination_name, to.width, to.height, 0xa5, padding);
      p.run(planes_of(source), planes_of(made));
      for (std::size_t i = 0; i < 4; ++i)
        ASSERT_TRUE(made.plane(i) == expected.plane(i))
            << p.steps().front() << ", plane " << i << ", seed " << seed << " on " << backend::name(k);
    });
  }
}

template <class Take>
void each_pair(const int width, const int height, const Take& take) {
  for (const catalogue::format& from : catalogue::formats)
    for (const catalogue::format& to : catalogue::formats)
      if (rules::convertible(from.name, to.name)) take(of(from.name, width, height), of(to.name, width, height));
}

TEST(short_cuts, have_the_bytes_of_the_rules) {
  std::uint32_t number = 0;
  for (const options& how : {options{}, options{.filter = filter::nearest, .siting = siting::center}})
    each_pair(48, 4, [&](const description& from, const description& to) {
      if (!is_short_cut(step_of(from, to, how))) return;
      expect_bytes_of_the_rules(from, to, how, ++number);
      description other_from = from, other_to = to;
      if (number % 3 == 0) other_from.width = other_to.width = 240;
      if (number % 3 == 1) other_from.height = other_to.height = 5;
      expect_bytes_of_the_rules(other_from, other_to, how, number);
    });
}

// Tight rows beside padded ones, and rows up beside rows down, all at addresses of words: both pictures alike, and in
// one other way.
TEST(short_cuts, have_the_bytes_of_the_rules_however_both_pictures_lie) {
  constexpr int tight_down = 21, tight_up = 28, padded_down = 5, padded_up = 16;
  constexpr int lies[] = {tight_down, tight_up, padded_down, padded_up};
  rooms in;
  std::size_t number = 0;
  each_pair(48, 4, [&](const description& from, const description& to) {
    for (const std::size_t linear_or_nearest : {std::size_t{0}, std::size_t{1}}) {
      const variant& as = variants()[linear_or_nearest];
      const options how = {.filter = linear_or_nearest == 0 ? filter::linear : filter::nearest};
      if (!is_short_cut(step_of(from, to, how))) continue;
      ++number;
      for (const std::size_t apart : {std::size_t{0}, 1 + number % 3})
        for (std::size_t i = 0; i < std::size(lies); ++i) {
          const int destination = lies[(i + apart) % std::size(lies)];
          const conversion_case c = {name_of(from.format), name_of(to.format), as, 48, 4, lies[i], destination};
          ASSERT_EQ(expectation_of_pair(in, c).wrong_with_one_run(), "") << text_of(c);
        }
    }
  });
}

// What all pairs take with one filter.
struct taken {
  std::set<std::string> entry_points;
  int copies = 0, rearranged = 0;
};

taken taken_with(const options& how) {
  taken result;
  each_pair(48, 4, [&](const description& from, const description& to) {
    const std::string step = step_of(from, to, how);
    if (step.starts_with("copy rows")) ++result.copies;
    if (step.starts_with("rearrange")) ++result.rearranged;
    const std::size_t by = step.find(" by ");
    if (by != std::string::npos) result.entry_points.insert(step.substr(by + 4));
  });
  return result;
}

// So that none is lost: entry points, formats whose rows are copied, and formats whose bytes are rearranged.
TEST(short_cuts, are_taken) {
  const taken linear = taken_with({}), nearest = taken_with({.filter = filter::nearest});
  EXPECT_EQ(linear.entry_points.size(), 13U);
  EXPECT_EQ(nearest.entry_points.size(), 30U);
  EXPECT_EQ(linear.copies, 101);
  EXPECT_EQ(nearest.copies, 101);
  EXPECT_EQ(linear.rearranged, 1320);
  EXPECT_EQ(nearest.rearranged, 1543);
  EXPECT_TRUE(linear.entry_points.contains("uyvy::yuy2"));
}

// With the nearest filter rows of chroma are repeated and dropped; with the linear one they are averaged, unless bytes
// become words or words bytes.
TEST(short_cuts, have_chroma_of_other_rows) {
  using texts = std::vector<std::string>;
  const std::pair<const char*, const char*> up[] = {
      {"y_u_v_420", "yuy2"}, {"y_uv_420", "uyvy"}, {"y_uv_420", "y_u_v_422"}, {"p010", "p216"}};
  const auto keeps_bytes = [](const std::string_view from, const std::string_view to) {
    return from != "uyvy" || to != "p010";
  };
  const std::pair<const char*, const char*> down[] = {
      {"yuy2", "y_u_v_420"}, {"yuy2", "y_uv_420"}, {"y_uv_422", "y_u_v_420"}, {"uyvy", "p010"}};
  const auto expect = [&](const auto& pairs, const std::string& chroma) {
    for (const auto& [from_name, to_name] : pairs)
      for (const siting where : {siting::left, siting::center}) {
        const description from = of(from_name, 48, 5), to = of(to_name, 48, 5);
        const plan p(from, to, {.filter = filter::nearest, .siting = where});
        EXPECT_EQ(p.steps(), (texts{std::string("rearrange ") + from_name + " as " + to_name, chroma}));
        EXPECT_EQ(is_short_cut(step_of(from, to, {.siting = where})), keeps_bytes(from_name, to_name))
            << from_name << " to " << to_name;
      }
  };
  expect(up, "chroma 4:2:0 to 4:2:2");
  expect(down, "chroma 4:2:2 to 4:2:0");
  EXPECT_EQ(plan(of("yuy2", 48, 5), of("y_u_v_420", 48, 5), {.filter = filter::nearest}).losses(),
            texts{"chroma 4:2:2 to 4:2:0"});
  EXPECT_FALSE(is_short_cut(step_of(of("p010", 48, 5), of("uyvy", 48, 5), {.filter = filter::nearest})));
}

TEST(short_cuts, are_not_taken_where_something_is_computed) {
  EXPECT_TRUE(is_short_cut(step_of(of("uyvy", 4, 4), of("yuy2", 4, 4), {})));
  description full = of("yuy2", 4, 4);
  full.range = range::full;
  EXPECT_FALSE(is_short_cut(step_of(of("uyvy", 4, 4), full, {})));
  description other_matrix = of("yuy2", 4, 4);
  other_matrix.matrix = matrix::bt601;
  EXPECT_FALSE(is_short_cut(step_of(of("uyvy", 4, 4), other_matrix, {})));
  EXPECT_FALSE(is_short_cut(step_of(of("uyvy", 3, 4), of("yuy2", 3, 4), {})));
  EXPECT_FALSE(is_short_cut(step_of(of("uyvy", 3, 4), of("uyvy", 3, 4), {})));
  EXPECT_TRUE(is_short_cut(step_of(of("y_uv_420", 5, 3), of("y_uv_420", 5, 3), {})));
  EXPECT_FALSE(is_short_cut(step_of(of("vuya_f32", 4, 4), of("vuya_f32", 4, 4), {})));
  EXPECT_EQ(step_of(of("bgrx", 4, 4), of("bgrx", 4, 4), {}), "rearrange bgrx as bgrx");
}

// Words become bytes or words of fewer bits, where the largest one does not stand for 65535.
TEST(short_cuts, round_words) {
  for (const auto& [from, to] :
       {std::pair{"y16", "y"}, {"p216", "y_uv_422"}, {"p010", "y_u_v_420"}, {"y16", "p010"}, {"pa16", "y_uv_422"}})
    EXPECT_EQ(step_of(of(from, 48, 5), of(to, 48, 5), {}), std::string("rearrange ") + from + " as " + to);
  for (const auto& [from, to] : {std::pair{"alpha_u16", "alpha"}, {"ya_uv_16", "ya_uv"}, {"bgra64", "bgra"}})
    EXPECT_FALSE(is_short_cut(step_of(of(from, 48, 5), of(to, 48, 5), {}))) << from << " to " << to;
}

// Samples in the lower bits of words, where all words of a row are moved alike.
TEST(short_cuts, move_words) {
  for (const auto& [from, to] : {std::pair{"y_u_v_420_10u16", "p010"},
                                 {"p010", "y_u_v_420_10u16"},
                                 {"p216", "y_u_v_422_12u16"},
                                 {"y_u_v_422_10u16", "y_u_v_422_12u16"},
                                 {"y_10u16", "y"},
                                 {"y", "y_10u16"},
                                 {"y_u_v_420", "y_u_v_420_10u16"}})
    EXPECT_EQ(step_of(of(from, 48, 5), of(to, 48, 5), {}), std::string("rearrange ") + from + " as " + to);
  for (const auto& [from, to] : {std::pair{"y_u_v_a_422_10u16", "pa16"}, {"y_u_v_420_12u16", "p216"}})
    EXPECT_FALSE(is_short_cut(step_of(of(from, 48, 5), of(to, 48, 5), {}))) << from << " to " << to;
}

std::vector<std::uint8_t> bytes_of(const image& i) {
  return {i.data(), i.data() + i.bytes()};
}

// Of bands that begin between two rows of chroma and end there, in any order.
TEST(short_cuts, have_the_same_bytes_in_every_band) {
  for (const char* to_name : {"y_uv_422", "yuy2", "y_u_v_422", "p216"}) {
    const description from = of("y_uv_420", 16, 8), to = of(to_name, 16, 8);
    const plan p(from, to, {.filter = filter::nearest});
    ASSERT_TRUE(is_short_cut(p.steps().front())) << to_name;
    ASSERT_EQ(p.row_granularity(), 1);
    image source(from), whole(to), banded(to);
    for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i * 37 + i / 16);
    p.run(source.picture(), whole.picture());
    std::vector<std::uint8_t> scratch(p.scratch_bytes());
    for (const auto& [first, rows] : {std::pair{5, 3}, {0, 1}, {1, 4}})
      p.run_rows(source.picture(), banded.picture(), first, rows, scratch.data(), scratch.size());
    EXPECT_EQ(bytes_of(whole), bytes_of(banded)) << to_name;
  }
}

// Of a picture whose first byte is at an odd address.
TEST(short_cuts, have_the_same_bytes_at_every_address) {
  const description from = of("y_uv_420", 16, 8), to = of("y_uv_422", 16, 8);
  const plan p(from, to, {.filter = filter::nearest});
  ASSERT_TRUE(is_short_cut(p.steps().front()));
  image source(from), even(to), odd(to);
  for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i * 37 + i / 16);
  p.run(source.picture(), even.picture());
  std::vector<std::uint8_t> moved(source.bytes() + 1);
  std::copy(source.data(), source.data() + source.bytes(), moved.begin() + 1);
  p.run(picture_in(moved.data() + 1, source.layout()), odd.picture());
  EXPECT_EQ(bytes_of(even), bytes_of(odd));
}

// By name.

std::string refusal_of(const description& from, const description& to, const options& how) {
  try {
    plan(from, to, how);
  } catch (const error& e) {
    EXPECT_EQ(e.code(), MORVANE_VIA);
    return e.what();
  }
  return "nothing";
}

TEST(named_entry_points, are_refused_where_they_do_not_suit) {
  const description uyvy = of("uyvy", 4, 4), bgra = of("bgra", 4, 4), y = of("y", 4, 4);
  EXPECT_EQ(refusal_of(uyvy, y, {.via = "uyvy::z"}),
            "options.via is \"uyvy::z\", which no entry point has as its name");
  EXPECT_EQ(refusal_of(uyvy, y, {.via = "uyvy::yuy2"}),
            "options.via is \"uyvy::yuy2\", which does not convert between these formats");
  EXPECT_EQ(refusal_of(of("bgr", 4, 4), of("bgr", 4, 4), {.via = "bgr::bgr"}),
            "options.via is \"bgr::bgr\", which copies four bytes for every three-byte pixel, so each row writes past "
            "its end");
  EXPECT_EQ(refusal_of(uyvy, bgra, {.via = "uyvy::bgra_601"}),
            "options.via is \"uyvy::bgra_601\", which does not have the matrix BT.709");
  EXPECT_EQ(refusal_of(uyvy, of("yuy2", 4, 4), {.via = "uyvy::yuy2", .rescale = true}),
            "options.rescale is set, and uyvy::yuy2 does not stretch luma");
  EXPECT_EQ(refusal_of(of("uyvy", 3, 4), of("y", 3, 4), {.via = "uyvy::y"}),
            "options.via is \"uyvy::y\", which needs a width that is a multiple of 2, not 3");
}

// What an entry point makes of rows that have room, each for itself, or two where they share chroma.
std::vector<std::uint8_t> called(const catalogue::conversion& c, const image& source, const description& from,
                                 const description& to, const int matrix) {
  constexpr std::int64_t stride = 2048;
  const catalogue::format& source_format = *catalogue::find_format(c.source);
  const catalogue::format& destination_format = *catalogue::find_format(c.destination);
  const auto wide = [](std::size_t, std::int64_t) { return stride; };
  const catalogue::layout in = lay_out(source_format, from.width, from.height, wide);
  const catalogue::layout out = lay_out(destination_format, to.width, to.height, wide);
  std::vector<std::uint8_t> in_bytes(static_cast<std::size_t>(in.bytes) + stride);
  std::vector<std::uint8_t> out_bytes(static_cast<std::size_t>(out.bytes) + stride);
  for (std::int32_t i = 0; i < source.layout().plane_count; ++i)
    for (std::int64_t row = 0; row < source.layout().planes[i].rows; ++row)
      std::copy_n(source.data() + source.layout().planes[i].offset + source.layout().planes[i].stride * row,
                  source.layout().planes[i].row_bytes,
                  in_bytes.data() + in.planes[static_cast<std::size_t>(i)].offset + stride * row);
  const int group = c.margin_pixels > 0 ? source_format.planes[0].group_pixels : 1;
  const int width = (from.width + group - 1) / group * group + c.margin_pixels;
  catalogue::call call;
  call.source = in.at(static_cast<const std::uint8_t*>(in_bytes.data()));
  call.destination = out.at(out_bytes.data());
  call.xres = width / c.pixels_per_xres;
  call.yres = from.height / c.rows_per_yres;
  call.argument = c.extra == catalogue::argument::color_space ? matrix : 0;
  c.convert(call);
  std::vector<std::uint8_t> result;
  const morvane_layout tight = lay_out(to);
  for (std::int32_t i = 0; i < tight.plane_count; ++i)
    for (std::int64_t row = 0; row < tight.planes[i].rows; ++row) {
      const auto begin = out_bytes.begin() + out.planes[static_cast<std::size_t>(i)].offset + stride * row;
      result.insert(result.end(), begin, begin + tight.planes[i].row_bytes);
      result.resize(result.size() + static_cast<std::size_t>(tight.planes[i].stride - tight.planes[i].row_bytes));
    }
  return result;
}

TEST(named_entry_points, convert_as_they_do_when_they_are_called) {
  int compared = 0;
  for (const catalogue::conversion& c : catalogue::conversions) {
    if (c.source.empty()) continue;
    SCOPED_TRACE(c.name);
    const int matrix_number = offers(c, catalogue::matrix::bt601)    ? 601
                              : offers(c, catalogue::matrix::bt2020) ? 2020
                                                                     : 709;
    description from = of(c.source, 44, 6), to = of(c.destination, 44, 6);
    from.matrix = to.matrix = matrix{matrix_number};
    image source(from), made(to);
    for (std::size_t i = 0; i < source.bytes(); ++i)
      source.data()[i] = static_cast<std::uint8_t>((i * 2654435761U >> 13) % 63);
    const plan p(from, to, {.via = std::string(c.name), .allow_irregular = true});
    EXPECT_EQ(p.steps(),
              std::vector{std::string(c.source) + " to " + std::string(c.destination) + " by " + std::string(c.name)});
    p.run(source.picture(), made.picture());
    EXPECT_EQ(std::vector<std::uint8_t>(made.data(), made.data() + made.bytes()),
              called(c, source, from, to, matrix_number));
    ++compared;
  }
  EXPECT_GT(compared, 130);
}

TEST(named_entry_points, touch_nothing_behind_rows) {
  const description d = of("bgr", 5, 4);
  const morvane_layout padded = lay_out(d, 16);
  const plan p(d, d, {.via = "bgr::bgr", .allow_irregular = true});
  EXPECT_EQ(p.losses().size(), 1U);
  image source(d, 16);
  for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i);
  std::vector<std::uint8_t> made(static_cast<std::size_t>(padded.bytes), 0xa5);
  p.run(source.picture(), picture_in(made.data(), padded));
  for (std::size_t i = 0; i < made.size(); ++i)
    EXPECT_EQ(made[i], i % 16 < 15 ? static_cast<std::uint8_t>(i) : 0xa5) << i;
}

// This one copies whole rows of chroma with what lies between them, where it is called for more than rows of a picture.
TEST(named_entry_points, copy_nothing_between_rows) {
  const description from = of("pa16", 6, 3), to = of("ya_uv_16", 6, 3);
  const morvane_layout padded = lay_out(to, 32);
  const plan p(from, to, {.via = "pa16::ya_uv"});
  image tight(from), spread(from, 64), expected(to);
  for (std::int32_t i = 0; i < 3; ++i)
    for (std::int64_t byte = 0; byte < 3 * 12; ++byte) {
      const morvane_plane_layout& in = tight.layout().planes[i];
      const morvane_plane_layout& out = spread.layout().planes[i];
      tight.data()[in.offset + byte] = spread.data()[out.offset + byte / 12 * out.stride + byte % 12] =
          static_cast<std::uint8_t>(byte * 7 + i);
    }
  p.run(tight.picture(), expected.picture());
  std::vector<std::uint8_t> made(static_cast<std::size_t>(padded.bytes) + 64, 0xa5);
  p.run(spread.picture(), picture_in(made.data(), padded));
  for (std::int64_t row = 0; row < 3; ++row) {
    const std::uint8_t* chroma = made.data() + padded.planes[1].offset + padded.planes[1].stride * row;
    EXPECT_TRUE(std::equal(chroma, chroma + 12, expected.data() + expected.layout().planes[1].offset + 12 * row));
    EXPECT_EQ(std::count(chroma + 12, chroma + padded.planes[1].stride, 0xa5), padded.planes[1].stride - 12) << row;
  }
}

// The same one leaves chroma as it is where it is given rows that go up.
TEST(named_entry_points, reach_rows_that_go_up) {
  const description from = of("pa16", 6, 3), to = of("ya_uv_16", 6, 3);
  const plan p(from, to, {.via = "pa16::ya_uv"});
  image source(from), straight(to), turned(to);
  for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i * 7 + 1);
  p.run(source.picture(), straight.picture());
  morvane_picture upwards = turned.picture();
  for (std::int32_t i = 0; i < 2; ++i) {
    upwards.data[i] = static_cast<std::uint8_t*>(upwards.data[i]) + 2 * upwards.stride[i];
    upwards.stride[i] = -upwards.stride[i];
  }
  p.run(source.picture(), upwards);
  for (std::int32_t i = 0; i < 2; ++i) {
    const morvane_plane_layout& plane = straight.layout().planes[i];
    for (std::int64_t row = 0; row < 3; ++row) {
      const std::uint8_t* expected = straight.data() + plane.offset + plane.stride * row;
      const std::uint8_t* made = turned.data() + plane.offset + plane.stride * (2 - row);
      EXPECT_TRUE(std::equal(expected, expected + plane.row_bytes, made)) << "plane " << i << ", row " << row;
    }
  }
}

// Threads of a plan.

TEST(plans_with_threads, have_the_same_bytes) {
  const options linear, nearest = {.filter = filter::nearest};
  for (const auto& [from_name, to_name, how] : {std::tuple{"y_uv_420", "bgra", linear},
                                                {"bgra", "y_uv_420", linear},
                                                {"uyvy", "yuy2", linear},
                                                {"bgra", "bgra", linear},
                                                {"p010", "v210", linear},
                                                {"yuy2", "y_u_v_420", nearest},
                                                {"y_u_v_420", "yuy2", nearest}})
    for (const int height : {1, 2, 3, 17, 64}) {
      const description from = of(from_name, 90, height), to = of(to_name, 90, height);
      image source(from), alone(to);
      for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i * i / 7);
      plan(from, to, how).run(source.picture(), alone.picture());
      for (const int threads : {2, 5}) {
        options by_threads = how;
        by_threads.threads = threads;
        const plan shared(from, to, by_threads);
        std::vector<std::uint8_t> scratch(shared.scratch_bytes());
        for (int repetition = 0; repetition < 3; ++repetition) {
          image made(to);
          shared.run(source.picture(), made.picture(), scratch.data(), scratch.size());
          EXPECT_EQ(bytes_of(alone), bytes_of(made)) << from_name << height;
        }
      }
    }
}

// Until the second thread has come to a part and left something in its memory.
TEST(plans_with_threads, have_scratch_memory_each) {
  const description from = of("y_uv_420", 1000, 600), to = of("bgra64", 1000, 600);
  image source(from), alone(to), made(to);
  for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i * i / 7);
  plan(from, to).run(source.picture(), alone.picture());
  const plan shared(from, to, {.threads = 2});
  constexpr std::uint8_t untouched = 0xa5;
  std::vector<std::uint8_t> scratch(shared.scratch_bytes(), untouched);
  const auto second = scratch.begin() + static_cast<std::ptrdiff_t>(scratch.size() / 2);
  int runs = 0;
  do shared.run(source.picture(), made.picture(), scratch.data(), scratch.size());
  while (std::count(second, scratch.end(), untouched) == scratch.end() - second && ++runs < 2000);
  EXPECT_LT(runs, 2000);
  EXPECT_TRUE(std::equal(alone.data(), alone.data() + alone.bytes(), made.data()));
}

TEST(plans_with_threads, are_run_by_other_threads_at_once) {
  const description from = of("uyvy", 64, 32), to = of("bgra", 64, 32);
  image source(from), alone(to);
  for (std::size_t i = 0; i < source.bytes(); ++i) source.data()[i] = static_cast<std::uint8_t>(i);
  plan(from, to).run(source.picture(), alone.picture());
  const plan shared(from, to, {.threads = 3});
  const morvane_picture in = source.picture();
  std::vector<std::thread> callers;
  for (int caller = 0; caller < 4; ++caller)
    callers.emplace_back([&] {
      for (int repetition = 0; repetition < 20; ++repetition) {
        image made(to);
        shared.run(in, made.picture());
        EXPECT_TRUE(std::equal(alone.data(), alone.data() + alone.bytes(), made.data()));
      }
    });
  for (std::thread& t : callers) t.join();
}

TEST(plans_with_threads, are_refused_with_too_many) {
  for (const int threads : {-1, 257}) {
    try {
      plan(of("uyvy", 4, 4), of("bgra", 4, 4), {.threads = threads});
      ADD_FAILURE() << threads;
    } catch (const error& e) {
      EXPECT_EQ(e.code(), MORVANE_OPTION);
      EXPECT_EQ(e.argument(), "options.threads");
      EXPECT_EQ(e.got(), threads);
    }
  }
}

}  // namespace
}  // namespace morvane::tests
