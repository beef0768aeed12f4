// Single statements about copies, packed 4:2:2 and the planes that it is split into, with their numbers, one test each,
// on every backend.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Processing.Morvane.h"
#include "examples/word_rows.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace fc = Processing::Morvane::format_conversion;

class planes_example : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, planes_example, all_backends(), backend_name);

// Sizes, strides and passes.

TEST_P(planes_example, no_rows_with_padded_strides_write_nothing) {
  for (const int yres : {0, -3}) {
    bytes destination = filled(64, 77);
    const bytes source = counted(64);
    fc::uyvy::yuy2(source.data(), 10, destination.data(), 12, 4, yres);
    EXPECT_EQ(destination, filled(64, 77));
  }
}

TEST_P(planes_example, one_row_with_padded_strides_converts_its_pixels_only) {
  const bytes source = counted(100);
  bytes destination = filled(100, 77);
  fc::uyvy::yuy2(source.data(), 64, destination.data(), 32, 5, 1);
  EXPECT_EQ(part(destination, 0, 10), (bytes{source[1], source[0], source[3], source[2], source[5], source[4],
                                             source[7], source[6], source[9], source[8]}));
  EXPECT_EQ(part(destination, 10, 90), filled(90, 77));
}

TEST_P(planes_example, a_tight_image_gives_the_same_bytes_as_its_rows) {
  const bytes source = counted(2 * 40 * 5);
  bytes whole(source.size());
  bytes in_rows(source.size());
  fc::uyvy::yuy2(source.data(), 80, whole.data(), 80, 40, 5);
  for (std::size_t row = 0; row < 5; ++row)
    fc::uyvy::yuy2(source.data() + 80 * row, 80, in_rows.data() + 80 * row, 80, 40, 1);
  EXPECT_EQ(whole, in_rows);
}

TEST_P(planes_example, a_negative_stride_converts_a_bottom_up_image) {
  const bytes source = counted(3 * 8);
  bytes upright(24);
  bytes flipped(24);
  fc::uyvy::yuy2(source.data(), 8, upright.data(), 8, 4, 3);
  fc::uyvy::yuy2(source.data() + 16, -8, flipped.data(), 8, 4, 3);
  for (std::size_t row = 0; row < 3; ++row) EXPECT_EQ(part(flipped, 8 * row, 8), part(upright, 16 - 8 * row, 8));
}

// Copies.

TEST_P(planes_example, a_copy_of_luma_copies_every_byte) {
  const bytes source = counted(21);
  bytes destination(21);
  fc::y::y(source.data(), 7, destination.data(), 7, 7, 3);
  EXPECT_EQ(destination, source);
}

TEST_P(planes_example, a_copy_of_bgr_copies_four_bytes_for_each_pixel) {
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

TEST_P(planes_example, a_copy_reports_an_opaque_image) {
  for (const auto copy : reporting_copies) {
    const bytes source = opaque_picture(60);
    bytes destination(source.size());
    bool opaque = false;
    copy(source.data(), 80, destination.data(), 80, 20, 3, &opaque);
    EXPECT_TRUE(opaque);
    EXPECT_EQ(destination, source);
  }
}

TEST_P(planes_example, a_copy_reports_a_single_alpha_of_254_wherever_it_is_and_copies_all) {
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

TEST_P(planes_example, a_copy_does_not_look_at_padding_for_its_report) {
  bytes source = filled(2 * 40, 0);
  for (std::size_t row = 0; row < 2; ++row)
    for (std::size_t i = 0; i < 9; ++i) source[40 * row + 4 * i + 3] = 255;
  bytes destination(source.size());
  bool opaque = false;
  fc::bgra::bgra(source.data(), 40, destination.data(), 40, 9, 2, &opaque);
  EXPECT_TRUE(opaque);
}

TEST_P(planes_example, a_copy_without_pixels_reports_opaque) {
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

TEST_P(planes_example, a_copy_that_is_not_asked_for_a_report_copies) {
  for (const auto copy : reporting_copies) {
    const bytes source = counted(4 * 35);
    bytes destination(source.size());
    copy(source.data(), 28, destination.data(), 28, 7, 5, nullptr);
    EXPECT_EQ(destination, source);
  }
}

TEST_P(planes_example, a_copy_of_y_uv_with_three_rows_copies_one_row_of_chroma) {
  const bytes y = counted(4 * 3);
  const bytes cbcr = counted(4 * 2, 11);
  bytes to_y(12);
  bytes to_cbcr = filled(8, 77);
  fc::y_uv::y_uv(y.data(), 4, cbcr.data(), 4, to_y.data(), 4, to_cbcr.data(), 4, 4, 3);
  EXPECT_EQ(to_y, y);
  EXPECT_EQ(to_cbcr, joined(part(cbcr, 0, 4), filled(4, 77)));
}

TEST_P(planes_example, a_copy_of_y_uv_copies_whole_pairs_of_chroma) {
  const bytes source = counted(5 * 4);
  bytes y(20);
  bytes cbcr = filled(10, 77);
  fc::y_uv::y_uv(source.data(), 5, source.data(), 5, y.data(), 5, cbcr.data(), 5, 5, 4);
  EXPECT_EQ(cbcr,
            (bytes{source[0], source[1], source[2], source[3], 77, source[5], source[6], source[7], source[8], 77}));
}

TEST_P(planes_example, y_uv_to422_repeats_rows_and_leaves_the_last_of_an_odd_height) {
  const bytes y = counted(4 * 5);
  const bytes cbcr = counted(4 * 3, 11);
  bytes to_y(20);
  bytes to_cbcr = filled(20, 77);
  fc::y_uv::y_uv_to422(y.data(), 4, cbcr.data(), 4, to_y.data(), 4, to_cbcr.data(), 4, 4, 5);
  EXPECT_EQ(to_y, y);
  const bytes first = part(cbcr, 0, 4);
  const bytes second = part(cbcr, 4, 4);
  EXPECT_EQ(to_cbcr, joined(joined(joined(first, first), joined(second, second)), filled(4, 77)));
}

TEST_P(planes_example, p010_takes_chroma_of_rows_0_and_2) {
  const p216_picture source(counted_words(2 * 4), {1, 2, 3, 4, 5, 6, 7, 8});
  p216_picture result(words(8), words(8, 77));
  fc::p216::p010(source.y.data(), 4, source.cbcr.data(), 4, result.y.data(), 4, result.cbcr.data(), 4, 2, 4);
  EXPECT_EQ(result.y, source.y);
  EXPECT_EQ(result.cbcr, (words{1, 2, 5, 6, 77, 77, 77, 77}));
}

TEST_P(planes_example, p010_keeps_the_low_bits_and_the_padding) {
  const words source = {0x1234, 0xffff, 0, 0x8001, 1, 2};
  p216_picture result(words(12, 77), words(6, 77));
  fc::p216::p010(source.data(), 6, source.data(), 6, result.y.data(), 10, result.cbcr.data(), 10, 3, 2);
  EXPECT_EQ(result.y, (words{0x1234, 0xffff, 0, 77, 77, 0x8001, 1, 2, 77, 77, 77, 77}));
  EXPECT_EQ(result.cbcr, (words{0x1234, 0xffff, 0, 77, 77, 77}));
}

TEST_P(planes_example, p010_of_an_odd_height_stops_after_half_of_its_rows) {
  const words source = counted_words(2 * 5);
  for (const int yres : {1, 3, 5}) {
    const auto rows = static_cast<std::size_t>(yres);
    p216_picture result(words(10, 77), words(10, 77));
    fc::p216::p010(source.data(), 4, source.data(), 4, result.y.data(), 4, result.cbcr.data(), 4, 2, yres);
    words y(10, 77), cbcr(10, 77);
    for (std::size_t i = 0; i < 2 * rows; ++i) y[i] = source[i];
    for (std::size_t i = 0; i < rows / 2 * 2; ++i) cbcr[i] = source[i / 2 * 4 + i % 2];
    EXPECT_EQ(result, p216_picture(y, cbcr)) << yres;
  }
}

// Packed 4:2:2.

TEST_P(planes_example, uyvy_becomes_yuy2_by_exchanging_bytes) {
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, {128, 16, 128, 16}, 2, 4), (bytes{16, 128, 16, 128}));
}

TEST_P(planes_example, exchanging_twice_restores) {
  const bytes source = counted(2 * 77);
  const bytes once = convert_row(&fc::uyvy::yuy2, source, 77, source.size());
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, once, 77, source.size()), source);
  EXPECT_EQ(convert_row(&fc::yuy2::uyvy, once, 77, source.size()), source);
}

TEST_P(planes_example, yuy2_to_uyvy_is_uyvy_to_yuy2) {
  const bytes source = counted(2 * 50);
  EXPECT_EQ(convert_row(&fc::yuy2::uyvy, source, 50, 100), convert_row(&fc::uyvy::yuy2, source, 50, 100));
}

TEST_P(planes_example, a_single_pixel_exchanges_its_two_bytes) {
  EXPECT_EQ(convert_row(&fc::uyvy::yuy2, {1, 2, 3, 4}, 1, 4), (bytes{2, 1, 77, 77}));
}

TEST_P(planes_example, the_33rd_pixel_is_exchanged_like_the_others) {
  const bytes source = counted(66);
  const bytes result = convert_row(&fc::uyvy::yuy2, source, 33, 66);
  for (std::size_t i = 0; i < 66; ++i) EXPECT_EQ(result[i], source[i ^ 1]);
}

TEST_P(planes_example, exchanging_in_place_leaves_the_second_byte_of_each_pixel_twice) {
  bytes image = counted(2 * 100);
  const bytes before = image;
  fc::uyvy::yuy2(image.data(), 200, image.data(), 200, 100, 1);
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(image[2 * i], before[2 * i + 1]);
    EXPECT_EQ(image[2 * i + 1], before[2 * i + 1]);
  }
}

// uyvy to planes.

TEST_P(planes_example, a_pair_is_split_into_luma_and_chroma) {
  const bytes source = {128, 16, 128, 235};
  bytes y(2);
  bytes cbcr(2);
  fc::uyvy::y_uv_422(source.data(), 4, y.data(), 2, cbcr.data(), 2, 2, 1);
  EXPECT_EQ(y, (bytes{16, 235}));
  EXPECT_EQ(cbcr, (bytes{128, 128}));
}

TEST_P(planes_example, y_uv_420_of_three_rows_has_the_chroma_of_rows_0_and_2) {
  const bytes source = {1, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15};
  bytes y(6);
  bytes cbcr = filled(6, 77);
  fc::uyvy::y_uv_420(source.data(), 4, y.data(), 2, cbcr.data(), 2, 2, 3);
  EXPECT_EQ(y, (bytes{10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(cbcr, (bytes{1, 2, 5, 6, 77, 77}));
}

TEST_P(planes_example, y_u_v_420_of_three_rows_has_the_chroma_of_rows_0_and_2) {
  const bytes source = {1, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15};
  bytes y(6);
  bytes cb = filled(3, 77);
  bytes cr = filled(3, 77);
  fc::uyvy::y_u_v_420(source.data(), 4, y.data(), 2, cb.data(), 1, cr.data(), 1, 2, 3);
  EXPECT_EQ(y, (bytes{10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(cb, (bytes{1, 5, 77}));
  EXPECT_EQ(cr, (bytes{2, 6, 77}));
}

TEST_P(planes_example, no_rows_of_420_write_nothing) {
  const bytes source = counted(64);
  for (const int yres : {0, -1, -4}) {
    bytes plane = filled(64, 77);
    fc::uyvy::y_uv_420(source.data(), 8, plane.data(), 4, plane.data(), 4, 4, yres);
    fc::uyvy::y_u_v_420(source.data(), 8, plane.data(), 4, plane.data(), 2, plane.data(), 2, 4, yres);
    EXPECT_EQ(plane, filled(64, 77));
  }
}

TEST_P(planes_example, the_fifth_of_five_pixels_is_not_split) {
  const bytes source = counted(12 * 3);
  bytes y = filled(8 * 3, 77);
  bytes cb = filled(4 * 3, 77);
  bytes cr = filled(4 * 3, 77);
  fc::uyvy::y_u_v_422(source.data(), 12, y.data(), 8, cb.data(), 4, cr.data(), 4, 5, 3);
  for (std::size_t row = 0; row < 3; ++row) {
    const bytes s = part(source, 12 * row, 12);
    EXPECT_EQ(part(y, 8 * row, 8), (bytes{s[1], s[3], s[5], s[7], 77, 77, 77, 77}));
    EXPECT_EQ(part(cb, 4 * row, 4), (bytes{s[0], s[4], 77, 77}));
    EXPECT_EQ(part(cr, 4 * row, 4), (bytes{s[2], s[6], 77, 77}));
  }
}

// Three pixels and two rows in tight planes are one line of three pairs; with other strides each row has one pair.
TEST_P(planes_example, y_u_v_422_is_one_line_when_chroma_strides_are_half_that_of_luma) {
  const bytes source = counted(12);
  bytes y(6), cb = filled(6, 77), cr = filled(6, 77);
  fc::uyvy::y_u_v_422(source.data(), 6, y.data(), 3, cb.data(), 1, cr.data(), 1, 3, 2);
  EXPECT_EQ(y, (bytes{source[1], source[3], source[5], source[7], source[9], source[11]}));
  EXPECT_EQ(part(cb, 0, 4), (bytes{source[0], source[4], source[8], 77}));
  EXPECT_EQ(part(cr, 0, 4), (bytes{source[2], source[6], source[10], 77}));

  y = filled(6, 77);
  cb = cr = filled(6, 77);
  fc::uyvy::y_u_v_422(source.data(), 6, y.data(), 3, cb.data(), 1, cr.data(), 2, 3, 2);
  EXPECT_EQ(y, (bytes{source[1], source[3], 77, source[7], source[9], 77}));
  EXPECT_EQ(part(cb, 0, 3), (bytes{source[0], source[6], 77}));
  EXPECT_EQ(part(cr, 0, 4), (bytes{source[2], 77, source[8], 77}));
}

TEST_P(planes_example, luma_of_three_pixels_writes_four_bytes_in_each_row) {
  const bytes source = counted(2 * 10);
  bytes y = filled(12, 77);
  fc::uyvy::y(source.data(), 10, y.data(), 6, 3, 2, false);
  EXPECT_EQ(y, (bytes{source[1], source[3], source[5], source[7], 77, 77, source[11], source[13], source[15],
                      source[17], 77, 77}));
}

}  // namespace
}  // namespace morvane::tests
