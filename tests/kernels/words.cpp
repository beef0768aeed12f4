// The line kernels of planes of 16 bits, under their own names.
#include <cstddef>
#include <cstdint>

#include "format_conversion_line.h"
#include "format_conversion_line_p216.h"
#include "kernels/lines.h"

namespace morvane::tests {
namespace {

namespace line = Processing::Morvane::format_conversion::line;
using catalogue::call;

class words_kernel : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, words_kernel, all_backends(), backend_name);

TEST_P(words_kernel, line_uyvy_p216) {
  expect_all_alignments({"uyvy::p216", "p216"}, MORVANE_TEST_KERNEL(1, 2, line::uyvy::p216));
}

TEST_P(words_kernel, line_ycbcra_pa16) {
  expect_all_alignments({"ycbcra::pa16", "pa16"}, MORVANE_TEST_KERNEL(1, 3, line::ycbcra::pa16, true));
  expect_all_alignments({"ycbcra::pa16", "pa16"}, MORVANE_TEST_KERNEL(1, 3, line::ycbcra::pa16_ex));
}

TEST_P(words_kernel, line_ycbcra_pa16_answers_whether_the_line_is_opaque) {
  memory source = random_memory(1);
  memory got;
  std::uint8_t* const s = source[0].bytes.data();
  std::uint8_t* const y = got[0].bytes.data();
  std::uint8_t* const cbcr = got[1].bytes.data();
  std::uint8_t* const alpha = got[2].bytes.data();
  for (std::size_t i = 3; i < source[0].bytes.size(); i += 4) s[i] = 255;
  for (int pixels = 0; pixels <= widest; ++pixels)
    for (int transparent = -1; transparent < pixels + 2; ++transparent) {
      if (transparent >= 0) s[4 * transparent + 3] = 254;
      const bool opaque = transparent < 0 || transparent >= (pixels + 1) / 2 * 2;
      ASSERT_EQ((line::ycbcra::pa16<true, true, true>(s, y, cbcr, alpha, pixels)), opaque) << pixels << transparent;
      ASSERT_EQ((line::ycbcra::pa16_ex<false, true>(s, y, cbcr, alpha, pixels)), opaque) << pixels << transparent;
      ASSERT_TRUE((line::ycbcra::pa16<true, false, false>(s, y, cbcr, alpha, pixels)));
      if (transparent >= 0) s[4 * transparent + 3] = 255;
    }
}

TEST_P(words_kernel, line_ycbcra_pa16_without_tracking_writes_the_same) {
  const memory source = random_memory(1);
  const std::uint8_t* const s = source[0].bytes.data() + 5;
  for (int pixels = 0; pixels <= widest; ++pixels) {
    memory got = random_memory(2);
    memory wanted = got;
    line::ycbcra::pa16<false, false, false>(s, got[0].bytes.data(), got[1].bytes.data(), got[2].bytes.data(), pixels);
    line::ycbcra::pa16<false, false, true>(s, wanted[0].bytes.data(), wanted[1].bytes.data(), wanted[2].bytes.data(),
                                           pixels);
    for (const std::size_t plane : {0U, 1U, 2U}) ASSERT_EQ(got[plane].bytes, wanted[plane].bytes) << pixels;
  }
}

// The upper bytes of luma and chroma, luma first.
void upper_bytes_luma_first(const call& c) {
  for (int i = 0; i < c.xres; ++i) {
    c.destination.data[0][2 * i] = c.source.data[0][2 * i + 1];
    c.destination.data[0][2 * i + 1] = c.source.data[1][2 * i + 1];
  }
}

TEST_P(words_kernel, line_p216_uyvy) {
  expect_all_alignments({"p216::uyvy", "uyvy", 0, true}, MORVANE_TEST_KERNEL(2, 1, line::P216::uyvy));
  expect_all_alignments({"p216::uyvy", "uyvy", 0, true}, MORVANE_TEST_KERNEL(2, 1, line::P216::p216_to_p208, false));
  expect_all_alignments({"p216_to_p208", "yuy2", 0, true, &upper_bytes_luma_first},
                        MORVANE_TEST_KERNEL(2, 1, line::P216::p216_to_p208, true));
}

TEST_P(words_kernel, line_pa16_vuya_16) {
  expect_all_alignments({"pa16::vuya_16", "vuya_16", 0, true}, MORVANE_TEST_KERNEL(3, 1, line::pa16::vuya_16));
}

TEST_P(words_kernel, line_pa16_vuya_f32) {
  expect_all_alignments({"pa16::vuya_f32", "vuya_f32"}, MORVANE_TEST_KERNEL(3, 1, line::pa16::vuya_f32));
}

TEST_P(words_kernel, line_pa16_p216) {
  expect_all_alignments({"pa16::p216", "p216"}, MORVANE_TEST_KERNEL(3, 2, line::pa16::p216));
}

}  // namespace
}  // namespace morvane::tests
