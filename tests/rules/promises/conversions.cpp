// Whole pictures: which become which, examples by hand, and what holds for every pair of formats.
#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "options.h"
#include "rules/convert.h"
#include "rules/layout.h"
#include "rules/promises/pictures.h"

namespace morvane::tests::rules {
namespace {

std::vector<std::string_view> names_from(std::string_view source) {
  std::vector<std::string_view> names;
  for (const std::string_view name : format_names())
    if (convertible(source, name)) names.push_back(name);
  return names;
}

TEST(rules_conversions, alpha_and_chroma_keep_to_themselves) {
  using names = std::vector<std::string_view>;
  EXPECT_EQ(names_from("alpha"), (names{"alpha", "alpha_10u16", "alpha_12u16", "alpha_u16"}));
  EXPECT_EQ(names_from("cbcr_8_420"), (names{"cb_cr_8_420", "cbcr_8_420", "cb_cr_16_422", "cbcr_16_422"}));
  EXPECT_EQ(names_from("uyvy_uyvy"), names{});
  EXPECT_EQ(names_from("uyvy").size(), format_names().size() - 9);
  EXPECT_EQ(names_from("L"), names_from("uyvy"));
}

TEST(rules_conversions, what_cannot_be_is_refused) {
  stored_picture uyvy("uyvy", 2, 1);
  stored_picture alpha("alpha", 2, 1);
  stored_picture wider("uyvy", 4, 1);
  EXPECT_THROW(convert(uyvy.of(), alpha.of(), {}), std::invalid_argument);
  EXPECT_THROW(convert(uyvy.of(), wider.of(), {}), std::invalid_argument);
}

// Cb of a picture of three by three, of which the format says how much is stored.
ints cb_from_420(filter by, siting at) {
  stored_picture source("y_u_v_420", 3, 3, 128);
  source.put(1, {10, 20, 30, 40});
  stored_picture destination("ycbcrx", 3, 3);
  convert(source.of(), destination.of(), {.chroma_filter = by, .chroma_siting = at});
  ints cb;
  const ints bytes = destination.bytes(0);
  for (std::size_t i = 1; i < bytes.size(); i += 4) cb.push_back(bytes[i]);
  return cb;
}

TEST(rules_conversions, chroma_up_by_hand) {
  const ints nearest = {10, 10, 20, 10, 10, 20, 30, 30, 40};
  EXPECT_EQ(cb_from_420(filter::linear, siting::left), (ints{10, 15, 20, 15, 20, 25, 25, 30, 35}));
  EXPECT_EQ(cb_from_420(filter::linear, siting::center), (ints{10, 13, 18, 15, 18, 23, 25, 28, 33}));
  EXPECT_EQ(cb_from_420(filter::nearest, siting::left), nearest);
  EXPECT_EQ(cb_from_420(filter::nearest, siting::center), nearest);
}

ints cb_to_420(filter by, siting at) {
  stored_picture source("ycbcrx", 3, 3);
  const ints cb = {10, 20, 30, 40, 50, 60, 70, 80, 91};
  for (std::size_t i = 0; i < cb.size(); ++i) source.plane(0)[4 * i + 1] = static_cast<std::uint8_t>(cb[i]);
  stored_picture destination("y_u_v_420", 3, 3);
  convert(source.of(), destination.of(), {.chroma_filter = by, .chroma_siting = at});
  return destination.bytes(1);
}

TEST(rules_conversions, chroma_down_by_hand) {
  EXPECT_EQ(cb_to_420(filter::linear, siting::left), (ints{28, 43, 73, 88}));
  EXPECT_EQ(cb_to_420(filter::linear, siting::center), (ints{30, 45, 75, 91}));
  EXPECT_EQ(cb_to_420(filter::nearest, siting::left), (ints{10, 30, 70, 91}));
  EXPECT_EQ(cb_to_420(filter::nearest, siting::center), (ints{10, 30, 70, 91}));
}

TEST(rules_conversions, one_pixel_by_hand) {
  for (const filter by : {filter::linear, filter::nearest})
    for (const siting at : {siting::left, siting::center}) {
      const options asked = {.chroma_filter = by, .chroma_siting = at};
      stored_picture source("y_uv_420", 1, 1);
      source.put(0, {63});
      source.put(1, {102, 240});
      stored_picture bgra("bgra", 1, 1);
      convert(source.of(), bgra.of(), asked);
      EXPECT_EQ(bgra.bytes(0), (ints{0, 1, 255, 255}));
      bgra.put(0, {0, 0, 255, 7});
      stored_picture uyvy("uyvy", 1, 1);
      convert(bgra.of(), uyvy.of(), asked);
      EXPECT_EQ(uyvy.bytes(0), (ints{102, 63, 240, 63}));
    }
}

TEST(rules_conversions, an_image_without_chroma_is_grey) {
  stored_picture y("y", 3, 1);
  y.put(0, {16, 126, 235});
  stored_picture uyvy("uyvy", 3, 1);
  convert(y.of(), uyvy.of(), {});
  EXPECT_EQ(uyvy.bytes(0), (ints{128, 16, 128, 126, 128, 235, 128, 235}));
  stored_picture rgba("rgba", 3, 1);
  convert(y.of(), rgba.of(), {});
  EXPECT_EQ(rgba.bytes(0), (ints{0, 0, 0, 255, 128, 128, 128, 255, 255, 255, 255, 255}));
  stored_picture back("y", 3, 1);
  convert(rgba.of(), back.of(), {});
  EXPECT_EQ(back.bytes(0), y.bytes(0));
}

TEST(rules_conversions, luminance_is_of_full_range) {
  stored_picture y("y", 3, 1);
  y.put(0, {16, 126, 235});
  stored_picture luminance("L", 3, 1);
  convert(y.of(), luminance.of(), {});
  EXPECT_EQ(luminance.bytes(0), (ints{0, 128, 255}));
  stored_picture r_g_b("r_g_b", 3, 1);
  r_g_b.of().in = range::video;
  convert(luminance.of(), r_g_b.of(), {});
  for (const std::size_t plane : {0U, 1U, 2U}) EXPECT_EQ(r_g_b.bytes(plane), y.bytes(0));

  stored_picture green("rgbx", 1, 1);
  green.put(0, {0, 255, 0, 0});
  stored_picture of_709("L", 1, 1);
  convert(green.of(), of_709.of(), {});
  EXPECT_EQ(of_709.bytes(0), ints{182});
  of_709.of().of = matrix::bt601;
  convert(green.of(), of_709.of(), {});
  EXPECT_EQ(of_709.bytes(0), ints{150});
}

TEST(rules_conversions, full_range_of_any_depth_has_all_numbers) {
  stored_picture y("y", 3, 1);
  y.of().in = range::full;
  y.put(0, {0, 100, 255});
  stored_picture luminance("L", 3, 1);
  convert(y.of(), luminance.of(), {});
  EXPECT_EQ(luminance.bytes(0), (ints{0, 100, 255}));
  stored_picture y16("y16", 3, 1);
  y16.of().in = range::full;
  convert(y.of(), y16.of(), {});
  EXPECT_EQ(y16.words(0), (ints{0, 25700, 65535}));
  y16.of().in = range::video;
  convert(y.of(), y16.of(), {});
  EXPECT_EQ(y16.words(0), (ints{4096, 26082, 60160}));
}

TEST(rules_conversions, chroma_alone_is_filtered_and_has_a_range) {
  stored_picture source("cbcr_8_420", 2, 3);
  source.put(0, {16, 128, 240, 136});
  stored_picture destination("cb_cr_16_422", 2, 3);
  convert(source.of(), destination.of(), {});
  EXPECT_EQ(destination.words(0), (ints{4096, 18432, 47104}));
  EXPECT_EQ(destination.words(1), (ints{32768, 33280, 34304}));
  destination.of().in = range::full;
  destination.of().of = matrix::bt2020;
  convert(source.of(), destination.of(), {});
  EXPECT_EQ(destination.words(0).front(), 1);
  EXPECT_EQ(destination.words(1).front(), 32768);
}

TEST(rules_conversions, alpha_alone_has_all_numbers) {
  stored_picture source("alpha", 3, 1);
  source.put(0, {0, 128, 255});
  stored_picture words("alpha_u16", 3, 1);
  convert(source.of(), words.of(), {});
  EXPECT_EQ(words.words(0), (ints{0, 32896, 65535}));
  stored_picture twelve("alpha_12u16", 3, 1);
  convert(source.of(), twelve.of(), {});
  EXPECT_EQ(twelve.words(0), (ints{0, 2055, 4095}));
}

// The words of floats.
ints words_of(std::initializer_list<float> floats) {
  ints words;
  for (const float value : floats) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    words.push_back(static_cast<int>(bits & 0xffff));
    words.push_back(static_cast<int>(bits >> 16));
  }
  return words;
}

TEST(rules_conversions, floats_are_of_video_range) {
  stored_picture source("pa16", 1, 1);
  source.put_words(0, {60160});
  source.put_words(1, {32768, 61440});
  source.put_words(2, {65535});
  stored_picture floats("vuya_f32", 1, 1);
  floats.of().in = range::full;
  convert(source.of(), floats.of(), {});
  EXPECT_EQ(floats.words(0), words_of({0.5F, 0, 1, 1}));

  // White of 16 bits lacks one.
  source.of().in = range::full;
  source.put_words(0, {65535});
  source.put_words(1, {32768, 65535});
  convert(source.of(), floats.of(), {});
  EXPECT_EQ(floats.words(0), words_of({57343.0F / 57344.0F - 0.5F, 0, 56063.0F / 56064.0F, 1}));
}

TEST(rules_conversions, luminance_has_no_range) {
  stored_picture luminance("L", 1, 1, 100);
  luminance.of().in = range::video;
  stored_picture bgr("bgr", 1, 1);
  convert(luminance.of(), bgr.of(), {});
  EXPECT_EQ(bgr.bytes(0), (ints{100, 100, 100}));
}

TEST(rules_conversions, rgb_that_stays_of_video_range_keeps_what_is_beyond_white) {
  stored_picture bgra("bgra", 1, 1);
  bgra.of().in = range::video;
  bgra.put(0, {3, 128, 250, 9});
  stored_picture words("bgra64", 1, 1);
  words.of().in = range::video;
  convert(bgra.of(), words.of(), {});
  EXPECT_EQ(words.words(0), (ints{3 * 256, 128 * 256, 250 * 256, 9 * 257}));
  words.of().in = range::full;
  convert(bgra.of(), words.of(), {});
  EXPECT_EQ(words.words(0)[0], 0);
  EXPECT_EQ(words.words(0)[2], 65535);
}

// An opaque pixel of yua_yva_matrox_10, and the one that completes its pair.
ints words_of_yua_yva(int y, int cb, int cr) {
  constexpr int opaque = 1023 << 4;
  return {y | (cb << 10 & 0xffff), cb >> 6 | opaque, y | (cr << 10 & 0xffff), cr >> 6 | opaque};
}

// Colours that the two forms of a matrix give other numbers, in pictures of 8 bits and of 10, 16 and 10.
TEST(rules_conversions, the_form_is_that_of_the_deeper_picture) {
  stored_picture rgba("rgba", 1, 1);
  rgba.put(0, {201, 99, 7, 255});
  stored_picture words("vuya_16", 1, 1);
  convert(rgba.of(), words.of(), {});
  EXPECT_EQ(words.words(0), (ints{19796, 45185, 29169, 65535}));

  rgba.put(0, {127, 137, 56, 255});
  stored_picture ten("yua_yva_matrox_10", 1, 1);
  convert(rgba.of(), ten.of(), {});
  EXPECT_EQ(ten.words(0), words_of_yua_yva(507, 374, 508));

  ten.put_words(0, words_of_yua_yva(400, 300, 700));
  stored_picture bgra64("bgra64", 1, 1);
  convert(ten.of(), bgra64.of(), {});
  EXPECT_EQ(bgra64.words(0), (ints{0, 21605, 46792, 65535}));
}

TEST(rules_conversions, of_another_matrix_go_through_rgb) {
  stored_picture source("ycbcrx", 2, 1);
  source.put(0, {63, 102, 240, 0, 180, 128, 128, 0});
  stored_picture destination("ycbcrx", 2, 1);
  destination.of().of = matrix::bt601;
  convert(source.of(), destination.of(), {});
  EXPECT_EQ(destination.bytes(0), (ints{82, 90, 240, 255, 180, 128, 128, 255}));
}

struct size {
  int width, height;
};

constexpr size sizes[] = {{1, 1}, {2, 1}, {1, 2}, {3, 3}, {7, 5}, {19, 2}};

// Calls take(source, destination, size) for all formats of which the one becomes the other, at one size in turn.
template <class Take>
void every_pair(Take take) {
  std::size_t number = 0;
  for (const std::string_view source : format_names())
    for (const std::string_view destination : names_from(source)) {
      const size& s = sizes[number++ % std::size(sizes)];
      if (thin() && s.width > 3) continue;
      SCOPED_TRACE(std::string(source) + " to " + std::string(destination) + ", " + std::to_string(s.width) + "x" +
                   std::to_string(s.height));
      take(source, destination, s);
    }
}

// Two pictures of a plane that was filled with 0x00 and 0xff: the same within its groups, and as it was outside.
void expect_groups_alone(stored_picture& zeros, stored_picture& ones, std::size_t plane) {
  const picture& p = zeros.of();
  const auto used = static_cast<std::size_t>(row_bytes(format_of(p.format), plane, p.width));
  const auto stride = static_cast<std::size_t>(p.stride[plane]);
  for (std::size_t i = 0; i < zeros.plane(plane).size(); ++i) {
    const std::uint8_t zero = zeros.plane(plane)[i];
    const std::uint8_t one = ones.plane(plane)[i];
    if (i % stride < used)
      ASSERT_EQ(zero, one) << i;
    else
      ASSERT_TRUE(zero == 0x00 && one == 0xff) << i;
  }
}

TEST(rules_conversions, write_whole_groups_and_nothing_else) {
  every_pair([](std::string_view from, std::string_view to, const size& s) {
    stored_picture source(from, s.width, s.height, 0, 3);
    source.fill_at_random(1);
    stored_picture zeros(to, s.width, s.height, 0x00, 5);
    stored_picture ones(to, s.width, s.height, 0xff, 5);
    convert(source.of(), zeros.of(), {});
    convert(source.of(), ones.of(), {});
    for (std::size_t plane = 0; plane < format_of(to).planes.size(); ++plane) expect_groups_alone(zeros, ones, plane);
  });
}

// Once written, a picture is stored as its format stores it.
TEST(rules_conversions, to_the_same_format_change_nothing) {
  for (const std::string_view name : format_names()) {
    if (!convertible(name, name)) continue;
    for (const size& s : sizes) {
      stored_picture source(name, s.width, s.height);
      source.fill_at_random(2);
      stored_picture once(name, s.width, s.height);
      stored_picture twice(name, s.width, s.height);
      convert(source.of(), once.of(), {});
      convert(once.of(), twice.of(), {});
      for (std::size_t plane = 0; plane < 4; ++plane) EXPECT_EQ(once.bytes(plane), twice.bytes(plane)) << name;
    }
  }
}

int bits_of_alpha(const format& f) {
  for (const group& g : f.planes)
    for (const field& sample : g.fields)
      if (sample.what == channel::a) return sample.bits();
  return 0;
}

// Whether a format has room for all that a picture of another holds.
bool holds_all_of(const format& other, const format& f) {
  for (std::size_t i = 0; i < channels; ++i)
    if (other.has(static_cast<channel>(i)) && !f.has(static_cast<channel>(i))) return false;
  const bool has_color = !convertible(other.name, "alpha");
  const bool same_chroma = other.chroma == f.chroma || !other.has(channel::cb);
  return same_chroma && has_color && !f.has_floats() && f.color_bits() >= other.color_bits() &&
         bits_of_alpha(f) >= bits_of_alpha(other);
}

TEST(rules_conversions, to_a_format_with_room_for_all_come_back) {
  every_pair([](std::string_view from, std::string_view to, const size& s) {
    if (!holds_all_of(format_of(from), format_of(to))) return;
    stored_picture source(from, s.width, s.height);
    source.fill_at_random(3);
    stored_picture first(from, s.width, s.height);
    convert(source.of(), first.of(), {});
    stored_picture there(to, s.width, s.height);
    convert(first.of(), there.of(), {});
    stored_picture back(from, s.width, s.height);
    convert(there.of(), back.of(), {});
    for (std::size_t plane = 0; plane < 4; ++plane) EXPECT_EQ(first.bytes(plane), back.bytes(plane));
  });
}

}  // namespace
}  // namespace morvane::tests::rules
