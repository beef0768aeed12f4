// The line kernels of the 10-bit formats of cards, under their own names.
#include "format_conversion_line.h"
#include "format_conversion_line_p216.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;

class card_10_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, card_10_kernel, all_backends(), backend_name);

TEST_P(card_10_kernel, line_v210_uyvy) {
  expect_all_alignments({"v210::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::v210::uyvy));
}

TEST_P(card_10_kernel, line_to_yuyv_matrox_10) {
  constexpr auto name = "yuyv_matrox_10";
  expect_all_alignments({"p216::yuyv_matrox_10", name}, MORVANE_TEST_KERNEL(2, 1, line::P216::yuyv_matrox_10));
  expect_all_alignments({"pa16::yuyv_matrox_10", name}, MORVANE_TEST_KERNEL(3, 1, line::pa16::yuyv_matrox_10));
  expect_all_alignments({"alpha_u16::yuyv_matrox_10", name},
                        MORVANE_TEST_KERNEL(1, 1, line::alpha_u16::yuyv_matrox_10));
}

TEST_P(card_10_kernel, line_yuyv_matrox_10) {
  expect_all_alignments({"yuyv_matrox_10::p216", "p216"}, MORVANE_TEST_KERNEL(1, 2, line::yuyv_matrox_10::p216));
  expect_all_alignments({"yuyv_matrox_10::uyvy", "uyvy"}, MORVANE_TEST_KERNEL(1, 1, line::yuyv_matrox_10::uyvy));
}

TEST_P(card_10_kernel, line_of_yua_yva_matrox_10) {
  expect_all_alignments({"pa16::yua_yva_matrox_10", "yua_yva_matrox_10"},
                        MORVANE_TEST_KERNEL(3, 1, line::pa16::yua_yva_matrox_10));
  expect_all_alignments({"yua_yva_matrox_10::pa16", "pa16"}, MORVANE_TEST_KERNEL(1, 3, line::yua_yva_matrox_10::pa16));
}

}  // namespace
}  // namespace morvane::tests
