// The line kernels of planes, 4:4:4 and alpha under their own names, in all combinations of their alignment parameters,
// on every backend.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "format_conversion_line.h"
#include "format_conversion_line_bgra.h"
#include "format_conversion_line_bgra_ycbcrx.h"
#include "format_conversion_line_r_g_b.h"
#include "kernel_lines.h"
#include "support.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class plane_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, plane_kernel, all_backends(), backend_name);

TEST_P(plane_kernel, line_uyvy_to_planes) {
  expect_all_alignments({"uyvy::y_uv_422", "y_uv_422"}, MORVANE_TEST_KERNEL(1, 2, line::uyvy::y_uv, true));
  expect_all_alignments({"uyvy::y_u_v_422", "y_u_v_422"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::y_u_v, true));
  expect_all_alignments({"uyvy::y", "y", 0}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::y, false));
  expect_all_alignments({"uyvy::y", "y", 1}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::y, true));
  expect_all_alignments({"uyvy::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::ycbcrx));
}

// A lower row has no chroma; the planes of chroma may be null.
TEST_P(plane_kernel, line_uyvy_to_planes_without_chroma) {
  const memory source = random_memory(1);
  for (int pixels = 0; pixels <= widest; ++pixels) {
    std::array<std::uint8_t, widest> semi_planar{}, planar{}, wanted{};
    const std::uint8_t* uyvy = source[0].bytes.data();
    line::uyvy::y_uv<true, true, false>(uyvy, semi_planar.data(), nullptr, pixels);
    line::uyvy::y_u_v<true, false, false>(uyvy, planar.data(), nullptr, nullptr, pixels);
    for (int i = 0; i < pixels / 2 * 2; ++i) wanted[static_cast<std::size_t>(i)] = uyvy[2 * i + 1];
    ASSERT_EQ(semi_planar, wanted) << pixels;
    ASSERT_EQ(planar, wanted) << pixels;
  }
}

TEST_P(plane_kernel, line_of_luma) {
  expect_all_alignments({"y::uyvy", "uyvy", 0}, MORVANE_TEST_KERNEL(1, 1, line::y::uyvy, false));
  expect_all_alignments({"y::uyvy", "uyvy", 1}, MORVANE_TEST_KERNEL(1, 1, line::y::uyvy, true));
  expect_all_alignments({"y::y16", "y16", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::y::y16));
  expect_all_alignments({"y16::y16", "y16", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::y16::y16, false));
  expect_all_alignments({"y16::y16", "y16", 1, true}, MORVANE_TEST_KERNEL(1, 1, line::y16::y16, true));
}

TEST_P(plane_kernel, line_y_in_two_rows) {
  const memory source = random_memory(1);
  for (int pixels = 0; pixels <= widest; ++pixels) {
    std::array<std::uint8_t, widest + 1> upper{}, lower{}, wanted{};
    std::copy_n(source[0].bytes.begin(), pixels, wanted.begin());
    line::y::y_x2(source[0].bytes.data(), upper.data(), lower.data(), pixels);
    ASSERT_EQ(upper, wanted) << pixels;
    ASSERT_EQ(lower, wanted) << pixels;
  }
}

TEST_P(plane_kernel, line_of_chroma) {
  expect_all_alignments({"cb_cr_8_420::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    std::uint8_t* const upper = c.destination.data[0];
    line::u_v::uv16_x2<s, d>(c.source.data[0], c.source.data[1], words(upper), words(upper + row_stride), c.xres);
  });
  expect_all_alignments({"cb_cr_16_422::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    line::u_v::uv<s, d>(words(c.source.data[0]), words(c.source.data[1]), words(c.destination.data[0]), c.xres);
  });
  expect_all_alignments({"cbcr_8_420::cbcr_16_422", "cbcr_16_422", 0, true}, []<bool s, bool d>(const call& c) {
    std::uint8_t* const upper = c.destination.data[0];
    line::uv::uv16_x2<s, d>(c.source.data[0], words(upper), words(upper + row_stride), c.xres);
  });
}

TEST_P(plane_kernel, line_of_chroma_in_bytes) {
  const memory source = random_memory(1);
  for (const std::size_t offset : {0U, 3U})
    for (int pairs = 0; pairs <= widest; ++pairs) {
      std::array<std::uint8_t, 2 * widest + 8> one{}, upper{}, lower{}, wanted{};
      const std::uint8_t* cb = source[0].bytes.data() + offset;
      const std::uint8_t* cr = source[1].bytes.data() + offset;
      for (std::size_t i = 0; i < 2 * static_cast<std::size_t>(pairs); ++i)
        wanted[offset + i] = i % 2 == 0 ? cb[i / 2] : cr[i / 2];
      line::u_v::uv<false, false>(cb, cr, one.data() + offset, pairs);
      line::u_v::uv_x2<false, false>(cb, cr, upper.data() + offset, lower.data() + offset, pairs);
      ASSERT_EQ(one, wanted) << pairs;
      ASSERT_EQ(upper, wanted) << pairs;
      ASSERT_EQ(lower, wanted) << pairs;
    }
}

TEST_P(plane_kernel, line_rgba_and_bgra_ycbcra) {
  using namespace line::rgba_and_bgra;
  expect_all_alignments({"bgra_601::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, false, false, false));
  expect_all_alignments({"bgra_601::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, false, false, true));
  expect_all_alignments({"rgba_601::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, false, true, false));
  expect_all_alignments({"rgba_601::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, false, true, true));
  expect_all_alignments({"bgra_709::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, true, false, false));
  expect_all_alignments({"bgra_709::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, true, false, true));
  expect_all_alignments({"rgba_709::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, true, true, false));
  expect_all_alignments({"rgba_709::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, ycbcra, true, true, true));
}

TEST_P(plane_kernel, line_rgba_and_bgra_ycbcrx) {
  using namespace line::rgba_and_bgra;
  expect_all_alignments({"bgrx_601::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, false, false, false));
  expect_all_alignments({"bgrx_601::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, false, false, true));
  expect_all_alignments({"rgbx_601::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, false, true, false));
  expect_all_alignments({"rgbx_601::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, false, true, true));
  expect_all_alignments({"bgrx_709::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, true, false, false));
  expect_all_alignments({"bgrx_709::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, true, false, true));
  expect_all_alignments({"rgbx_709::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, true, true, false));
  expect_all_alignments({"rgbx_709::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, ycbcrx, true, true, true));
}

TEST_P(plane_kernel, line_of_444_by_its_short_names) {
  expect_all_alignments({"bgra_601::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::ycbcra_601));
  expect_all_alignments({"bgra_709::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::ycbcra_709));
  expect_all_alignments({"bgra_601::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::crcbya_601));
  expect_all_alignments({"bgra_709::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::crcbya_709));
  expect_all_alignments({"rgba_601::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, line::rgba::ycbcra_601));
  expect_all_alignments({"rgba_709::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(1, 1, line::rgba::ycbcra_709));
  expect_all_alignments({"rgba_601::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, line::rgba::crcbya_601));
  expect_all_alignments({"rgba_709::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(1, 1, line::rgba::crcbya_709));
  expect_all_alignments({"bgrx_601::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::ycbcrx_601));
  expect_all_alignments({"bgrx_709::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::ycbcrx_709));
  expect_all_alignments({"bgrx_601::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::crcbyx_601));
  expect_all_alignments({"bgrx_709::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::crcbyx_709));
  expect_all_alignments({"rgbx_601::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::ycbcrx_601));
  expect_all_alignments({"rgbx_709::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::ycbcrx_709));
  expect_all_alignments({"rgbx_601::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::crcbyx_601));
  expect_all_alignments({"rgbx_709::crcbyx", "crcbyx"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::crcbyx_709));
}

TEST_P(plane_kernel, line_rgba_and_bgra_uyvy_a) {
  using line::rgba_and_bgra::uyvy_a;
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, false, true, false));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, false, true, true));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, true, true, false));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, true, true, true));
}

TEST_P(plane_kernel, line_of_uyvy_a_by_its_short_names) {
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_601_a));
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_601_a_ex));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_709_a));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_709_a_ex));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_601_a));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_601_a_ex));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_709_a));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_709_a_ex));
}

TEST_P(plane_kernel, line_without_tracking_is_always_opaque) {
  const memory source = random_memory(1);
  memory got = random_memory(2);
  const std::uint8_t* s = source[0].bytes.data();
  std::uint8_t* uyvy = got[0].bytes.data();
  std::uint8_t* alpha = got[1].bytes.data();
  for (int pixels = 0; pixels <= widest; ++pixels) {
    EXPECT_TRUE((line::rgba_and_bgra::uyvy_a<true, true, true, false, true>(s, uyvy, alpha, pixels)));
    EXPECT_TRUE((line::ycbcra::uyvy_a<true, true, false>(s, uyvy, alpha, pixels)));
    EXPECT_TRUE((line::vuya::uyvy_a<true, true, false>(s, uyvy, alpha, pixels)));
  }
}

TEST_P(plane_kernel, line_uyvy_a_rgba_and_bgra) {
  using line::uyvy_a::rgba_and_bgra;
  expect_all_alignments({"uyvy_a::bgra_601", "bgra"}, MORVANE_TEST_KERNEL(2, 1, rgba_and_bgra, false, false));
  expect_all_alignments({"uyvy_a::rgba_601", "rgba"}, MORVANE_TEST_KERNEL(2, 1, rgba_and_bgra, false, true));
  expect_all_alignments({"uyvy_a::bgra_709", "bgra"}, MORVANE_TEST_KERNEL(2, 1, rgba_and_bgra, true, false));
  expect_all_alignments({"uyvy_a::rgba_709", "rgba"}, MORVANE_TEST_KERNEL(2, 1, rgba_and_bgra, true, true));
  expect_all_alignments({"uyvy_a::bgra_601", "bgra"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::bgra_601));
  expect_all_alignments({"uyvy_a::rgba_601", "rgba"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::rgba_601));
  expect_all_alignments({"uyvy_a::bgra_709", "bgra"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::bgra_709));
  expect_all_alignments({"uyvy_a::rgba_709", "rgba"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::rgba_709));
}

TEST_P(plane_kernel, line_uyvy_ya_uv) {
  expect_all_alignments({"uyvy::ya_uv", "ya_uv", 0}, MORVANE_TEST_KERNEL(2, 2, line::uyvy::ya_uv, false));
  expect_all_alignments({"uyvy::ya_uv", "ya_uv", 1}, MORVANE_TEST_KERNEL(2, 2, line::uyvy::ya_uv, true));
}

TEST_P(plane_kernel, line_uyvy_a) {
  expect_all_alignments({"uyvy_a::ya_uv", "ya_uv"}, MORVANE_TEST_KERNEL(2, 2, line::uyvy_a::ya_uv));
  expect_all_alignments({"uyvy_a::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::uyvy));
  expect_all_alignments({"uyvy_a::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::ycbcra));
  expect_all_alignments({"uyvy_a::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::crcbya));
}

TEST_P(plane_kernel, line_of_444_to_uyvy) {
  expect_all_alignments({"ycbcra::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::ycbcra::uyvy));
  expect_all_alignments({"ycbcrx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::ycbcrx::uyvy));
  expect_all_alignments({"vuya::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::vuya::uyvy));
  expect_all_alignments({"vuyx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::vuyx::uyvy));
}

TEST_P(plane_kernel, line_of_444_to_uyvy_a) {
  expect_all_alignments({"ycbcra::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::ycbcra::uyvy_a, true));
  expect_all_alignments({"ycbcra::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::ycbcra::uyvy_a_ex));
  expect_all_alignments({"vuya::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::vuya::uyvy_a, true));
  expect_all_alignments({"vuya::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::vuya::uyvy_a_ex));
}

TEST_P(plane_kernel, line_uyvy_r_g_b) {
  expect_all_alignments({"uyvy::r_g_b_601", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b, false));
  expect_all_alignments({"uyvy::r_g_b_709", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b, true));
  expect_all_alignments({"uyvy::r_g_b_601", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b_601));
  expect_all_alignments({"uyvy::r_g_b_709", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b_709));
}

TEST_P(plane_kernel, line_L_bgra) {
  expect_all_alignments({"L::bgra", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::L::bgra));
}

}  // namespace
}  // namespace morvane::tests
