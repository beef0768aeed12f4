// The line kernels of packed 4:2:2, of the planes that it is split into, and of copies, under their own names.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "format_conversion_line.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class planes_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, planes_kernel, all_backends(), backend_name);

TEST_P(planes_kernel, line_uyvy_yuy2) {
  expect_all_alignments({"uyvy::yuy2", "yuy2"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::yuy2));
}

TEST_P(planes_kernel, line_uyvy_to_planes) {
  expect_all_alignments({"uyvy::y_uv_422", "y_uv_422"}, MORVANE_TEST_KERNEL(1, 2, line::uyvy::y_uv, true));
  expect_all_alignments({"uyvy::y_u_v_422", "y_u_v_422"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::y_u_v, true));
  expect_all_alignments({"uyvy::y", "y", 0}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::y, false));
}

// A lower row has no chroma; the planes of chroma may be null.
TEST_P(planes_kernel, line_uyvy_to_planes_without_chroma) {
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

TEST_P(planes_kernel, line_of_luma) {
  expect_all_alignments({"y::uyvy", "uyvy", 0}, MORVANE_TEST_KERNEL(1, 1, line::y::uyvy, false));
  expect_all_alignments({"y16::y16", "y16", 0, true}, MORVANE_TEST_KERNEL(1, 1, line::y16::y16, false));
}

TEST_P(planes_kernel, line_y_in_two_rows) {
  const memory source = random_memory(1);
  for (int pixels = 0; pixels <= widest; ++pixels) {
    std::array<std::uint8_t, widest + 1> upper{}, lower{}, wanted{};
    std::copy_n(source[0].bytes.begin(), pixels, wanted.begin());
    line::y::y_x2(source[0].bytes.data(), upper.data(), lower.data(), pixels);
    ASSERT_EQ(upper, wanted) << pixels;
    ASSERT_EQ(lower, wanted) << pixels;
  }
}

TEST_P(planes_kernel, line_bgra_bgra_copies) {
  expect_all_alignments({"bgra::bgra", "bgra"}, []<bool s, bool d>(const call& c) {
    line::bgra::bgra<s, d, false>(c.source.data[0], c.destination.data[0], c.xres);
  });
  expect_all_alignments({"bgra::bgra", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::bgra, true));
  expect_all_alignments({"bgra::bgra", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::bgra::bgra_ex));
}

TEST_P(planes_kernel, line_bgra_bgra_answers_whether_the_line_is_opaque) {
  memory source = random_memory(1);
  memory got;
  std::uint8_t* const s = source[0].bytes.data();
  std::uint8_t* const d = got[0].bytes.data();
  for (std::size_t i = 3; i < source[0].bytes.size(); i += 4) s[i] = 255;
  for (int pixels = 0; pixels <= widest; ++pixels)
    for (int transparent = -1; transparent < pixels; ++transparent) {
      if (transparent >= 0) s[4 * transparent + 3] = 254;
      const bool opaque = transparent < 0;
      ASSERT_EQ((line::bgra::bgra<true, true, true>(s, d, pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra<false, true, true>(s, d, pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra_ex<true, false>(s, d, pixels)), opaque);
      ASSERT_EQ((line::bgra::bgra_ex<false, false>(s, d, pixels)), opaque);
      if (transparent >= 0) s[4 * transparent + 3] = 255;
    }
}

}  // namespace
}  // namespace morvane::tests
