// The line kernels of 4:4:4, under their own names.
#include <cstdint>

#include "format_conversion_line.h"
#include "format_conversion_line_bgra_ycbcrx.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class full_chroma_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, full_chroma_kernel, all_backends(), backend_name);

TEST_P(full_chroma_kernel, line_rgba_and_bgra_ycbcra) {
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

TEST_P(full_chroma_kernel, line_rgba_and_bgra_ycbcrx) {
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

TEST_P(full_chroma_kernel, line_of_444_by_its_short_names) {
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

TEST_P(full_chroma_kernel, line_to_444) {
  expect_all_alignments({"uyvy::ycbcrx", "ycbcrx"}, MORVANE_TEST_KERNEL(1, 1, line::uyvy::ycbcrx));
  expect_all_alignments({"uyvy_a::ycbcra", "ycbcra"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::ycbcra));
  expect_all_alignments({"uyvy_a::crcbya", "crcbya"}, MORVANE_TEST_KERNEL(2, 1, line::uyvy_a::crcbya));
}

TEST_P(full_chroma_kernel, line_of_444_to_uyvy) {
  expect_all_alignments({"ycbcra::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::ycbcra::uyvy));
  expect_all_alignments({"ycbcrx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::ycbcrx::uyvy));
  expect_all_alignments({"vuya::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::vuya::uyvy));
  expect_all_alignments({"vuyx::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::vuyx::uyvy));
}

TEST_P(full_chroma_kernel, line_of_444_to_uyvy_a) {
  expect_all_alignments({"ycbcra::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::ycbcra::uyvy_a, true));
  expect_all_alignments({"ycbcra::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::ycbcra::uyvy_a_ex));
  expect_all_alignments({"vuya::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::vuya::uyvy_a, true));
  expect_all_alignments({"vuya::uyvy_a", "uyvy_a"}, MORVANE_TEST_KERNEL(1, 2, line::vuya::uyvy_a_ex));
}

TEST_P(full_chroma_kernel, line_without_tracking_is_always_opaque) {
  const memory source = random_memory(1);
  memory got;
  const std::uint8_t* const s = source[0].bytes.data();
  std::uint8_t* const uyvy = got[0].bytes.data();
  std::uint8_t* const alpha = got[1].bytes.data();
  for (int pixels = 0; pixels <= widest; ++pixels) {
    EXPECT_TRUE((line::ycbcra::uyvy_a<true, true, false>(s, uyvy, alpha, pixels)));
    EXPECT_TRUE((line::vuya::uyvy_a<true, true, false>(s, uyvy, alpha, pixels)));
  }
}

}  // namespace
}  // namespace morvane::tests
