// The line kernels of video to RGB, under their own names.
#include "format_conversion_line.h"
#include "format_conversion_line_bgra.h"
#include "format_conversion_line_p216.h"
#include "format_conversion_line_r_g_b.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class video_to_rgb_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, video_to_rgb_kernel, all_backends(), backend_name);

TEST_P(video_to_rgb_kernel, line_uyvy_bgr) {
  expect_all_alignments({"uyvy::bgr_601", "bgr"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::bgr, false));
  expect_all_alignments({"uyvy::bgr_709", "bgr"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::bgr, true));
  expect_all_alignments({"uyvy::bgr_601", "bgr"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::bgr_601));
  expect_all_alignments({"uyvy::bgr_709", "bgr"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::bgr_709));
}

TEST_P(video_to_rgb_kernel, line_uyvy_rgba_and_bgra) {
  expect_all_alignments({"uyvy::bgra_601", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::rgba_and_bgra, false, false));
  expect_all_alignments({"uyvy::bgra_709", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::rgba_and_bgra, true, false));
  expect_all_alignments({"uyvy::rgba_601", "rgba"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::rgba_and_bgra, false, true));
  expect_all_alignments({"uyvy::rgba_709", "rgba"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::rgba_and_bgra, true, true));
}

TEST_P(video_to_rgb_kernel, line_uyvy_a_rgba_and_bgra) {
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

TEST_P(video_to_rgb_kernel, line_uyvy_r_g_b) {
  expect_all_alignments({"uyvy::r_g_b_601", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b, false));
  expect_all_alignments({"uyvy::r_g_b_709", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b, true));
  expect_all_alignments({"uyvy::r_g_b_601", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b_601));
  expect_all_alignments({"uyvy::r_g_b_709", "r_g_b"}, MORVANE_TEST_KERNEL(1, 3, line::uyvy::r_g_b_709));
}

TEST_P(video_to_rgb_kernel, line_p216_rgbx_2020) {
  expect_all_alignments({"p216::rgbx_2020", "rgbx"}, MORVANE_TEST_KERNEL(2, 1, line::P216::rgbx_2020));
}

TEST_P(video_to_rgb_kernel, line_L_bgra) {
  expect_all_alignments({"L::bgra", "bgra"}, MORVANE_TEST_KERNEL(1, 1, line::L::bgra));
}

}  // namespace
}  // namespace morvane::tests
