// The line kernels of RGB to video, under their own names.
#include "format_conversion_line_bgr.h"
#include "format_conversion_line_bgra.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class rgb_to_video_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, rgb_to_video_kernel, all_backends(), backend_name);

TEST_P(rgb_to_video_kernel, line_rgba_and_bgra_uyvy_over_black) {
  expect_all_alignments({"bgra::uyvy", "uyvy"},
                        MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, true, true, false));
  expect_all_alignments({"rgba::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, true, true, true));
}

TEST_P(rgb_to_video_kernel, line_rgba_and_bgra_uyvy_direct) {
  expect_all_alignments({"bgrx_709::uyvy", "uyvy"},
                        MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, false, true, false));
  expect_all_alignments({"rgbx_709::uyvy", "uyvy"},
                        MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, false, true, true));
  expect_all_alignments({"bgrx_601::uyvy", "uyvy"},
                        MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, false, false, false));
  expect_all_alignments({"rgbx_601::uyvy", "uyvy"},
                        MORVANE_TEST_KERNEL(1, 1, line::rgba_and_bgra::uyvy, false, false, true));
}

TEST_P(rgb_to_video_kernel, line_bgrx_uyvy_and_line_rgbx_uyvy) {
  expect_all_alignments({"bgrx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::uyvy_709));
  expect_all_alignments({"rgbx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::uyvy_709));
  expect_all_alignments({"bgrx_601::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::bgrx::uyvy_601));
  expect_all_alignments({"rgbx_601::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::rgbx::uyvy_601));
}

TEST_P(rgb_to_video_kernel, line_bgr_uyvy) {
  expect_all_alignments({"bgr::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::bgr::uyvy, true));
  expect_all_alignments({"bgr::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::bgr::uyvy_709));
}

TEST_P(rgb_to_video_kernel, line_rgba_and_bgra_uyvy_a) {
  using line::rgba_and_bgra::uyvy_a;
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, false, true, false));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, false, true, true));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, true, true, false));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, uyvy_a, true, true, true));
}

TEST_P(rgb_to_video_kernel, line_of_uyvy_a_by_its_short_names) {
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_601_a));
  expect_all_alignments({"bgra_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_601_a_ex));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_709_a));
  expect_all_alignments({"bgra_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::bgra::uyvy_709_a_ex));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_601_a));
  expect_all_alignments({"rgba_601::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_601_a_ex));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_709_a));
  expect_all_alignments({"rgba_709::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::rgba::uyvy_709_a_ex));
}

TEST_P(rgb_to_video_kernel, line_without_tracking_is_always_opaque) {
  const memory source = random_memory(1);
  memory got;
  for (int pixels = 0; pixels <= widest; ++pixels)
    EXPECT_TRUE((line::rgba_and_bgra::uyvy_a<true, true, true, false, true>(source[0].bytes.data(), got[0].bytes.data(),
                                                                            got[1].bytes.data(), pixels)));
}

}  // namespace
}  // namespace morvane::tests
