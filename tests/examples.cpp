// Single statements about the library's behaviour with their numbers, one test each, on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "byte_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

using namespace Processing::Morvane;
namespace fc = Processing::Morvane::format_conversion;

class example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, example, all_backends(), backend_name);

// Alignment.

alignas(64) const std::uint8_t aligned_memory[256]{};

TEST(alignment, holds_for_pointer_and_stride_that_are_multiples_of_16) {
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 16));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 0));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, -48));
  EXPECT_TRUE(fc::is_aligned(aligned_memory + 16, 32, aligned_memory + 96, 48));
  EXPECT_TRUE(fc::is_aligned(aligned_memory, 16, aligned_memory + 16, 32, aligned_memory + 48, 1920));
}

TEST(alignment, fails_for_a_stride_of_8) {
  EXPECT_FALSE(fc::is_aligned(aligned_memory, 8));
}

TEST(alignment, fails_for_every_odd_stride) {
  for (int stride = -33; stride < 34; stride += 2) EXPECT_FALSE(fc::is_aligned(aligned_memory, stride));
}

TEST(alignment, fails_when_one_of_several_pointers_or_strides_is_off) {
  const std::uint8_t* p = aligned_memory;
  for (int off = 1; off < 16; ++off) {
    EXPECT_FALSE(fc::is_aligned(p + off, 16, p, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16 + off, p, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p + off, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16 - off, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16, p + off, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, 16, p, off));
    EXPECT_FALSE(fc::is_aligned(p + off, 16, p, 16));
    EXPECT_FALSE(fc::is_aligned(p, 16, p, off));
  }
}

TEST(alignment, has_the_same_answer_under_both_names) {
  const std::uint8_t* p = aligned_memory;
  for (int offset = 0; offset < 64; ++offset)
    for (int stride = -40; stride <= 40; ++stride) {
      EXPECT_EQ(fc::is_aligned(p + offset, stride), fc::is_aligned_avx2(p + offset, stride));
      EXPECT_EQ(fc::is_aligned(p, 16, p + offset, stride), fc::is_aligned_avx2(p, 16, p + offset, stride));
      EXPECT_EQ(fc::is_aligned(p, 16, p, 32, p + offset, stride),
                fc::is_aligned_avx2(p, 16, p, 32, p + offset, stride));
    }
  EXPECT_TRUE(fc::is_aligned_avx2(p + 16, 16));
}

// Sizes, strides and passes.

TEST_P(example, no_rows_with_padded_strides_write_nothing) {
  for (const int yres : {0, -3}) {
    bytes destination = filled(64, 77);
    const bytes source = counted(64);
    fc::uyvy::yuy2(source.data(), 10, destination.data(), 12, 4, yres);
    EXPECT_EQ(destination, filled(64, 77));
  }
}

TEST_P(example, one_row_with_padded_strides_converts_its_pixels_only) {
  const bytes source = counted(100);
  bytes destination = filled(100, 77);
  fc::uyvy::yuy2(source.data(), 64, destination.data(), 32, 5, 1);
  EXPECT_EQ(part(destination, 0, 10), (bytes{source[1], source[0], source[3], source[2], source[5], source[4],
                                             source[7], source[6], source[9], source[8]}));
  EXPECT_EQ(part(destination, 10, 90), filled(90, 77));
}

TEST_P(example, a_tight_image_gives_the_same_bytes_as_its_rows) {
  const bytes source = counted(2 * 40 * 5);
  bytes whole(source.size());
  bytes in_rows(source.size());
  fc::uyvy::yuy2(source.data(), 80, whole.data(), 80, 40, 5);
  for (std::size_t row = 0; row < 5; ++row)
    fc::uyvy::yuy2(source.data() + 80 * row, 80, in_rows.data() + 80 * row, 80, 40, 1);
  EXPECT_EQ(whole, in_rows);
}

TEST_P(example, a_negative_stride_converts_a_bottom_up_image) {
  const bytes source = counted(3 * 8);
  bytes upright(24);
  bytes flipped(24);
  fc::uyvy::yuy2(source.data(), 8, upright.data(), 8, 4, 3);
  fc::uyvy::yuy2(source.data() + 16, -8, flipped.data(), 8, 4, 3);
  for (std::size_t row = 0; row < 3; ++row) EXPECT_EQ(part(flipped, 8 * row, 8), part(upright, 16 - 8 * row, 8));
}

// Fills.

// Long lines are filled by an operation of the processor, whole cache lines of them at once.
TEST_P(example, long_lines_of_black_at_every_place_of_a_cache_line) {
  constexpr std::size_t margin = 64;
  constexpr std::uint8_t around = 99;
  for (const int pixels : {1023, 1024, 1025, 1055, 1056, 1057, 3000})
    for (std::size_t place = 0; place < 64; ++place) {
      const std::size_t length = 2 * static_cast<std::size_t>(pixels);
      bytes wanted(margin + place + length + margin, around);
      for (std::size_t i = 0; i < length; ++i) wanted[margin + place + i] = i % 2 == 0 ? 128 : 16;
      bytes destination(wanted.size(), around);
      fc::black::uyvy(destination.data() + margin + place, 2 * pixels, pixels, 1);
      ASSERT_EQ(destination, wanted) << pixels << " pixels at " << place;
    }
}

TEST_P(example, black_of_3x2_in_rows_of_8_bytes_leaves_the_last_two_bytes) {
  bytes destination = filled(16, 77);
  fc::black::uyvy(destination.data(), 8, 3, 2);
  EXPECT_EQ(destination, (bytes{128, 16, 128, 16, 128, 16, 77, 77, 128, 16, 128, 16, 128, 16, 77, 77}));
}

TEST_P(example, alpha_of_300_is_44_in_bytes) {
  bytes destination(70);
  fc::black::alpha(destination.data(), 35, 35, 2, 300);
  EXPECT_EQ(destination, filled(70, 44));
}

TEST_P(example, alpha_of_300_is_300_in_words) {
  std::vector<std::uint16_t> destination(70);
  fc::black::alpha(destination.data(), 70, 35, 2, 300);
  EXPECT_EQ(destination, std::vector<std::uint16_t>(70, 300));
}

TEST_P(example, negative_alpha_keeps_its_low_bits) {
  bytes of_bytes(33);
  fc::black::alpha(of_bytes.data(), 33, 33, 1, -2);
  EXPECT_EQ(of_bytes, filled(33, 254));
  std::vector<std::uint16_t> of_words(33);
  fc::black::alpha(of_words.data(), 66, 33, 1, -2);
  EXPECT_EQ(of_words, std::vector<std::uint16_t>(33, 65534));
}

TEST_P(example, fills_without_pixels_write_nothing) {
  for (const auto& [xres, yres] : {std::pair{0, 3}, {3, 0}, {-1, 3}, {3, -1}, {-2, -2}}) {
    bytes destination = filled(32, 77);
    std::vector<std::uint16_t> words(16, 77);
    fc::black::uyvy(destination.data() + 16, 2 * xres, xres, yres);
    fc::black::alpha(destination.data() + 16, xres, xres, yres, 1);
    fc::black::alpha(words.data() + 8, 2 * xres, xres, yres, 1);
    EXPECT_EQ(destination, filled(32, 77));
    EXPECT_EQ(words, std::vector<std::uint16_t>(16, 77));
  }
}

// Copies.

TEST_P(example, a_copy_of_luma_copies_every_byte) {
  const bytes source = counted(21);
  bytes destination(21);
  fc::y::y(source.data(), 7, destination.data(), 7, 7, 3);
  EXPECT_EQ(destination, source);
}

TEST_P(example, a_copy_of_bgr_copies_four_bytes_for_each_pixel) {
  for (const auto copy : {&fc::bgr::bgr, &fc::bgr_601::bgr_601, &fc::bgr_709::bgr_709}) {
    const bytes source = counted(40);
    bytes destination = filled(40, 77);
    copy(source.data(), 12, destination.data(), 12, 4, 2);
    EXPECT_EQ(part(destination, 0, 28), part(source, 0, 28));  // two rows of 16 bytes, 12 apart
    EXPECT_EQ(part(destination, 28, 12), filled(12, 77));
  }
}

using reporting_copy = void(const std::uint8_t*, int, std::uint8_t*, int, int, int, bool*);
constexpr reporting_copy* reporting_copies[] = {&fc::bgra::bgra,     &fc::bgra_601::bgra_601, &fc::bgra_709::bgra_709,
                                                &fc::rgba::rgba,     &fc::rgba_601::rgba_601, &fc::rgba_709::rgba_709,
                                                &fc::ycbcra::ycbcra, &fc::vuya::vuya};

bytes opaque_picture(std::size_t pixels) {
  bytes result = counted(4 * pixels);
  for (std::size_t i = 0; i < pixels; ++i) result[4 * i + 3] = 255;
  return result;
}

TEST_P(example, a_copy_reports_an_opaque_image) {
  for (const auto copy : reporting_copies) {
    const bytes source = opaque_picture(60);
    bytes destination(source.size());
    bool opaque = false;
    copy(source.data(), 80, destination.data(), 80, 20, 3, &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(destination, source);
  }
}

TEST_P(example, a_copy_reports_a_single_alpha_of_254_wherever_it_is_and_copies_all) {
  for (const auto copy : reporting_copies)
    for (std::size_t pixel = 0; pixel < 60; ++pixel) {
      bytes source = opaque_picture(60);
      source[4 * pixel + 3] = 254;
      bytes destination(source.size());
      bool opaque = true;
      copy(source.data(), 80, destination.data(), 80, 20, 3, &opaque);
      EXPECT_FALSE(opaque) << "pixel " << pixel;
      EXPECT_EQ(destination, source);
    }
}

TEST_P(example, a_copy_does_not_look_at_padding_for_its_report) {
  bytes source = filled(2 * 40, 0);
  for (std::size_t row = 0; row < 2; ++row)
    for (std::size_t i = 0; i < 9; ++i) source[40 * row + 4 * i + 3] = 255;
  bytes destination(source.size());
  bool opaque = false;
  fc::bgra::bgra(source.data(), 40, destination.data(), 40, 9, 2, &opaque);
  EXPECT_TRUE(opaque);
}

TEST_P(example, a_copy_without_pixels_reports_opaque) {
  for (const auto copy : reporting_copies)
    for (const auto& [xres, yres] : {std::pair{4, 0}, {0, 4}, {4, -1}, {0, 0}}) {
      const bytes source(64);
      bytes destination = filled(64, 77);
      bool opaque = false;
      copy(source.data(), 4 * xres, destination.data(), 4 * xres, xres, yres, &opaque);
      EXPECT_TRUE(opaque);
      EXPECT_EQ(destination, filled(64, 77));
    }
}

TEST_P(example, a_copy_that_is_not_asked_for_a_report_copies) {
  for (const auto copy : reporting_copies) {
    const bytes source = counted(4 * 35);
    bytes destination(source.size());
    copy(source.data(), 28, destination.data(), 28, 7, 5, nullptr);
    EXPECT_EQ(destination, source);
  }
}

// Reorders.

TEST_P(example, uyvy_becomes_yuy2_by_exchanging_bytes) {
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, {128, 16, 128, 16}, 2, 4), (bytes{16, 128, 16, 128}));
}

TEST_P(example, exchanging_twice_restores) {
  const bytes source = counted(2 * 77);
  const bytes once = convert_row(&fc::uyvy::yuy2, source, 77, source.size());
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, once, 77, source.size()), source);
  EXPECT_EQ(convert_row(&fc::yuy2::uyvy, once, 77, source.size()), source);
}

TEST_P(example, yuy2_to_uyvy_is_uyvy_to_yuy2) {
  const bytes source = counted(2 * 50);
  EXPECT_EQ(convert_row(&fc::yuy2::uyvy, source, 50, 100), convert_row(&fc::uyvy::yuy2, source, 50, 100));
}

TEST_P(example, a_single_pixel_exchanges_its_two_bytes) {
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, {1, 2, 3, 4}, 1, 4), (bytes{2, 1, 77, 77}));
}

TEST_P(example, the_33rd_pixel_is_exchanged_like_the_others) {
  const bytes source = counted(66);
  const bytes result = convert_row(&fc::uyvy::yuy2, source, 33, 66);
  for (std::size_t i = 0; i < 66; ++i) EXPECT_EQ(result[i], source[i ^ 1]);
}

TEST_P(example, exchanging_in_place_leaves_the_second_byte_of_each_pixel_twice) {
  bytes image = counted(2 * 100);
  const bytes before = image;
  fc::uyvy::yuy2(image.data(), 200, image.data(), 200, 100, 1);
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(image[2 * i], before[2 * i + 1]);
    EXPECT_EQ(image[2 * i + 1], before[2 * i + 1]);
  }
}

bytes little_endian(std::initializer_list<std::uint32_t> words) {
  bytes result;
  for (const std::uint32_t w : words)
    for (int shift = 0; shift < 32; shift += 8) result.push_back(static_cast<std::uint8_t>(w >> shift));
  return result;
}

const bytes v210_group = little_endian({0x20010200, 0x08020080, 0x20010200, 0x08020080});
const bytes v210_group_in_uyvy = {128, 16, 128, 32, 32, 32, 128, 16, 128, 32, 32, 32};

TEST_P(example, a_v210_group_becomes_twelve_bytes) {
  const bytes result = convert_row(&fc::v210::uyvy, repeated(v210_group, 2), 7, 24);
  EXPECT_EQ(part(result, 0, 12), v210_group_in_uyvy);
}

TEST_P(example, v210_samples_keep_their_upper_eight_bits) {
  for (const auto& [sample, byte] : {std::pair{1023U, 255}, {64U, 16}, {512U, 128}, {515U, 128}}) {
    const std::uint32_t word = sample | sample << 10 | sample << 20;
    const bytes result = convert_row(&fc::v210::uyvy, little_endian({word, word, word, word}), 6, 12);
    EXPECT_EQ(part(result, 0, 8), filled(8, static_cast<std::uint8_t>(byte)));
  }
}

TEST_P(example, six_v210_pixels_leave_their_last_pair_unwritten) {
  const bytes result = convert_row(&fc::v210::uyvy, v210_group, 6, 12);
  EXPECT_EQ(part(result, 0, 8), part(v210_group_in_uyvy, 0, 8));
  EXPECT_EQ(part(result, 8, 4), filled(4, 77));
}

TEST_P(example, seven_v210_pixels_write_one_full_group_and_no_more) {
  const bytes result = convert_row(&fc::v210::uyvy, repeated(v210_group, 2), 7, 24);
  EXPECT_EQ(part(result, 0, 12), v210_group_in_uyvy);
  EXPECT_EQ(part(result, 12, 12), filled(12, 77));
}

TEST_P(example, two_v210_pixels_write_nothing) {
  EXPECT_EQ(convert_row(&fc::v210::uyvy, v210_group, 2, 12), filled(12, 77));
}

TEST_P(example, a_tight_v210_image_leaves_only_its_very_last_pair_unwritten) {
  bytes destination = filled(48, 77);
  const bytes source = repeated(v210_group, 4);
  fc::v210::uyvy(source.data(), 32, destination.data(), 24, 12, 2);
  const bytes whole = repeated(v210_group_in_uyvy, 4);
  EXPECT_EQ(part(destination, 0, 44), part(whole, 0, 44));
  EXPECT_EQ(part(destination, 44, 4), filled(4, 77));
}

TEST_P(example, a_padded_v210_image_leaves_the_last_pair_of_each_row_unwritten) {
  bytes destination = filled(48, 77);
  const bytes source = repeated(v210_group, 6);
  fc::v210::uyvy(source.data(), 48, destination.data(), 24, 12, 2);
  const bytes row = repeated(v210_group_in_uyvy, 2);
  for (std::size_t y = 0; y < 2; ++y) {
    EXPECT_EQ(part(destination, 24 * y, 20), part(row, 0, 20));
    EXPECT_EQ(part(destination, 24 * y + 20, 4), filled(4, 77));
  }
}

// RGB to uyvy.

const bytes red_bgrx = {0, 0, 255, 9};
const bytes black_bgrx = {0, 0, 0, 9};

TEST_P(example, red_through_the_direct_matrix_gives_102_and_61_as_even_pixel_and_239_and_61_as_odd) {
  for (const auto convert : {&fc::bgrx::uyvy, &fc::bgrx_709::uyvy}) {
    const bytes even = convert_row(convert, joined(red_bgrx, black_bgrx), 2, 4);
    EXPECT_EQ(even, (bytes{102, 61, 128, 16}));
    const bytes odd = convert_row(convert, joined(black_bgrx, red_bgrx), 2, 4);
    EXPECT_EQ(odd, (bytes{128, 16, 239, 61}));
  }
}

TEST_P(example, red_first_formats_give_the_same_video) {
  for (const auto convert : {&fc::rgbx::uyvy, &fc::rgbx_709::uyvy})
    EXPECT_EQ(convert_row(convert, {255, 0, 0, 9, 255, 0, 0, 9}, 2, 4), (bytes{102, 61, 239, 61}));
}

TEST_P(example, red_with_bt601_gives_81_90_and_239) {
  EXPECT_EQ(convert_row(&fc::bgrx_601::uyvy, repeated(red_bgrx, 2), 2, 4), (bytes{90, 81, 239, 81}));
  EXPECT_EQ(convert_row(&fc::rgbx_601::uyvy, {255, 0, 0, 9, 255, 0, 0, 9}, 2, 4), (bytes{90, 81, 239, 81}));
}

TEST_P(example, white_over_black_gives_luma_236_and_chroma_127) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    EXPECT_EQ(convert_row(convert, filled(8, 255), 2, 4), (bytes{127, 236, 127, 236}));
}

TEST_P(example, red_over_black_gives_the_blue_difference_twice) {
  EXPECT_EQ(convert_row(&fc::bgra::uyvy, {0, 0, 255, 255, 0, 0, 255, 255}, 2, 4), (bytes{102, 61, 102, 61}));
  EXPECT_EQ(convert_row(&fc::rgba::uyvy, {255, 0, 0, 255, 255, 0, 0, 255}, 2, 4), (bytes{102, 61, 102, 61}));
}

TEST_P(example, a_transparent_pixel_is_black) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    for (const bytes& color : {bytes{255, 255, 255, 0}, {10, 200, 30, 0}, {255, 0, 255, 0}})
      EXPECT_EQ(convert_row(convert, repeated(color, 40), 40, 80), repeated({128, 16}, 40));
}

TEST_P(example, half_transparent_white_gives_luma_126_and_chroma_127) {
  for (const auto convert : {&fc::bgra::uyvy, &fc::rgba::uyvy})
    EXPECT_EQ(convert_row(convert, repeated({255, 255, 255, 128}, 2), 2, 4), (bytes{127, 126, 127, 126}));
}

TEST_P(example, bgr_white_gives_235_127_and_128) {
  EXPECT_EQ(convert_row(&fc::bgr::uyvy, filled(6, 255), 2, 4), (bytes{127, 235, 128, 235}));
}

TEST_P(example, bgr_red_gives_62_102_and_239) {
  EXPECT_EQ(convert_row(&fc::bgr::uyvy, {0, 0, 255, 0, 0, 255}, 2, 4), (bytes{102, 62, 239, 62}));
}

TEST_P(example, three_pixels_write_one_pair_from_32_bit_rgb_and_two_from_bgr) {
  const bytes of_bgrx = convert_row(&fc::bgrx::uyvy, counted(12), 3, 12);
  EXPECT_NE(part(of_bgrx, 0, 4), filled(4, 77));
  EXPECT_EQ(part(of_bgrx, 4, 8), filled(8, 77));
  const bytes of_bgr = convert_row(&fc::bgr::uyvy, repeated({0, 0, 255}, 4), 3, 12);
  EXPECT_EQ(part(of_bgr, 0, 8), repeated({102, 62, 239, 62}, 2));
  EXPECT_EQ(part(of_bgr, 8, 4), filled(4, 77));
}

TEST_P(example, u_comes_from_the_first_pixel_alone_and_v_from_the_second) {
  const bytes green = {0, 255, 0, 9};
  const bytes blue = {255, 0, 0, 9};
  const bytes green_blue = convert_row(&fc::bgrx::uyvy, joined(green, blue), 2, 4);
  const bytes green_green = convert_row(&fc::bgrx::uyvy, joined(green, green), 2, 4);
  const bytes blue_blue = convert_row(&fc::bgrx::uyvy, joined(blue, blue), 2, 4);
  EXPECT_EQ(green_blue[0], green_green[0]);
  EXPECT_EQ(green_blue[2], blue_blue[2]);
}

TEST_P(example, a_tight_image_of_odd_width_pairs_pixels_across_rows_but_not_in_the_suffixed_forms) {
  const bytes source = repeated(red_bgrx, 6);
  bytes destination = filled(12, 77);
  fc::bgrx::uyvy(source.data(), 12, destination.data(), 6, 3, 2);
  EXPECT_EQ(destination, repeated({102, 61, 239, 61}, 3));
  destination = filled(12, 77);
  fc::bgrx_709::uyvy(source.data(), 12, destination.data(), 6, 3, 2);
  EXPECT_EQ(destination, (bytes{102, 61, 239, 61, 77, 77, 102, 61, 239, 61, 77, 77}));
}

// uyvy to RGB.

const bytes black_pair = {128, 16, 128, 16};

TEST_P(example, video_black_is_slightly_off_zero) {
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, black_pair, 2, 6), repeated({1, 1, 0}, 2));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, black_pair, 2, 6), repeated({1, 0, 1}, 2));
}

TEST_P(example, video_white_is_white) {
  const bytes white_pair = {128, 235, 128, 235};
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, white_pair, 2, 6), filled(6, 255));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, white_pair, 2, 6), filled(6, 255));
}

TEST_P(example, an_odd_bgr_row_completes_its_last_pair) {
  const bytes result = convert_row(&fc::uyvy::bgr_601, repeated(black_pair, 2), 3, 20);
  EXPECT_EQ(part(result, 0, 12), repeated({1, 1, 0}, 4));
  EXPECT_EQ(part(result, 12, 8), filled(8, 77));
}

TEST_P(example, no_pixels_write_no_bgr) {
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_601, black_pair, 0, 8), filled(8, 77));
  EXPECT_EQ(convert_row(&fc::uyvy::bgr_709, black_pair, -5, 8), filled(8, 77));
  bytes destination = filled(40, 77);
  fc::uyvy::bgr_709(repeated(black_pair, 4).data(), 8, destination.data(), 20, 2, -1);
  EXPECT_EQ(destination, filled(40, 77));
}

TEST_P(example, a_bgr_stride_of_four_bytes_a_pixel_packs_the_rows) {
  const bytes source = repeated(black_pair, 4);
  bytes destination = filled(32, 77);
  fc::uyvy::bgr_601(source.data(), 8, destination.data(), 16, 4, 2);
  EXPECT_EQ(part(destination, 0, 24), repeated({1, 1, 0}, 8));
  EXPECT_EQ(part(destination, 24, 8), filled(8, 77));
}

template <class Convert>
bytes with_color_space(Convert convert, int color_space, std::size_t pixel_bytes) {
  const bytes source = counted(2 * 50);
  bytes destination(pixel_bytes * 50);
  convert(source.data(), 100, destination.data(), static_cast<int>(pixel_bytes * 50), 50, 1,
          static_cast<e_ycbcr_color_space>(color_space));
  return destination;
}

TEST_P(example, every_color_space_but_601_is_709) {
  const auto expect = [](auto by_argument, image_conversion* bt601, image_conversion* bt709, std::size_t pixel_bytes) {
    const bytes source = counted(2 * 50);
    const bytes result_601 = convert_row(bt601, source, 50, pixel_bytes * 50);
    const bytes result_709 = convert_row(bt709, source, 50, pixel_bytes * 50);
    EXPECT_NE(result_601, result_709);
    EXPECT_EQ(with_color_space(by_argument, 601, pixel_bytes), result_601);
    for (const int other : {709, 0, 2020, -601})
      EXPECT_EQ(with_color_space(by_argument, other, pixel_bytes), result_709);
  };
  expect(&fc::uyvy::bgr, &fc::uyvy::bgr_601, &fc::uyvy::bgr_709, 3);
  expect(&fc::uyvy::bgra, &fc::uyvy::bgra_601, &fc::uyvy::bgra_709, 4);
  expect(&fc::uyvy::rgba, &fc::uyvy::rgba_601, &fc::uyvy::rgba_709, 4);
  expect(&fc::uyvy::bgrx, &fc::uyvy::bgrx_601, &fc::uyvy::bgrx_709, 4);
  expect(&fc::uyvy::rgbx, &fc::uyvy::rgbx_601, &fc::uyvy::rgbx_709, 4);
}

TEST_P(example, bgrx_output_is_bgra_output_with_255_in_the_fourth_byte) {
  const bytes source = counted(2 * 50);
  for (const auto& [with_alpha, without] : {std::pair{&fc::uyvy::bgra_601, &fc::uyvy::bgrx_601},
                                            {&fc::uyvy::bgra_709, &fc::uyvy::bgrx_709},
                                            {&fc::uyvy::rgba_601, &fc::uyvy::rgbx_601},
                                            {&fc::uyvy::rgba_709, &fc::uyvy::rgbx_709}}) {
    const bytes result = convert_row(with_alpha, source, 50, 200);
    EXPECT_EQ(result, convert_row(without, source, 50, 200));
    for (std::size_t i = 3; i < 200; i += 4) EXPECT_EQ(result[i], 255);
  }
}

TEST_P(example, the_last_pixel_of_an_odd_row_is_left_out_of_32_bit_rgb) {
  const bytes result = convert_row(&fc::uyvy::bgra_601, repeated(black_pair, 2), 3, 12);
  EXPECT_EQ(part(result, 0, 8), repeated({1, 1, 0, 255}, 2));
  EXPECT_EQ(part(result, 8, 4), filled(4, 77));
}

}  // namespace
}  // namespace morvane::tests
