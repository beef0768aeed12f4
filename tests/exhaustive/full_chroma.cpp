// All colours to 4:4:4, and every sample of 4:4:4 with every alpha over black, on every backend.
#include <array>
#include <cstddef>
#include <cstdint>

#include "exhaustive/colors.h"
#include "exhaustive/over_black.h"

namespace morvane::tests {
namespace {

class exhaustive_full_chroma : public on_each_backend {};
INSTANTIATE_TEST_SUITE_P(backend, exhaustive_full_chroma, all_backends(), backend_name);

void blue_differences(image_conversion* convert, const rgb_layout& layout, ycbcr_rule rule) {
  std::array<std::uint8_t, 4 * byte_values> result{};
  all_colors(layout, 1, any_alpha, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 4 * byte_values, result.data(), 4 * byte_values, byte_values, 1);
    for (int b = 0; b < 256; ++b)
      if (const int cb = result[static_cast<std::size_t>(4 * b + 1)]; cb != rule(r, g, b).cb) {
        ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got Cb " << cb << ", expected "
                      << rule(r, g, b).cb;
        return false;
      }
    return true;
  });
}

// Rows of one pixel, which hold its luma and Cr: Cr first, then Cb and luma.
void luma_and_red_differences(image_conversion* convert, const rgb_layout& layout, ycbcr_rule rule) {
  std::array<std::uint8_t, 8 * byte_values> result{};
  all_colors(layout, 1, any_alpha, [&](const std::uint8_t* pixels, int r, int g) {
    convert(pixels, 4, result.data(), 8, 1, byte_values);
    for (int b = 0; b < 256; ++b) {
      const std::uint8_t* p = result.data() + 8 * b;
      if (ycbcr{p[2], p[1], p[0]} == rule(r, g, b)) continue;
      ADD_FAILURE() << "R " << r << " G " << g << " B " << b << ": got " << int{p[0]} << " " << int{p[1]} << " "
                    << int{p[2]};
      return false;
    }
    return true;
  });
}

TEST_P(exhaustive_full_chroma, all_colors_through_the_601_matrix_to_444) {
  blue_differences(&fc::bgra_601::ycbcra, blue_first, to_601);
  blue_differences(&fc::rgbx_601::crcbyx, red_first, to_601);
  luma_and_red_differences(&fc::bgra_601::ycbcra, blue_first, to_601);
}

TEST_P(exhaustive_full_chroma, all_colors_through_the_709_matrix_to_444) {
  blue_differences(&fc::bgrx_709::ycbcrx, blue_first, to_709);
  blue_differences(&fc::rgba_709::crcbya, red_first, to_709);
  luma_and_red_differences(&fc::rgba_709::ycbcra, red_first, to_709);
}

void composite(image_conversion* convert, const pairs_in_row& pairs, std::uint8_t* video, bool luma_first) {
  std::array<std::uint8_t, 8 * byte_values> pixels{};
  for (std::size_t i = 0; i < byte_values; ++i) {
    const composed_pair& p = pairs[i];
    const std::array<int, 8> luma_cb_cr_alpha = {p.uyvy[1], p.uyvy[0], p.uyvy[2], p.alpha[0],
                                                 p.uyvy[3], 3,         4,         p.alpha[1]};
    for (std::size_t k = 0; k < 8; ++k)
      pixels[8 * i + (luma_first || k % 2 != 0 ? k : k ^ 2)] = low_byte(luma_cb_cr_alpha[k]);
  }
  convert(pixels.data(), 8 * byte_values, video, 4 * byte_values, 2 * byte_values, 1);
}

TEST_P(exhaustive_full_chroma, all_samples_of_444_with_all_alphas_over_black) {
  all_samples_with_all_alphas(
      [](const pairs_in_row& pairs, std::uint8_t* video) { composite(&fc::ycbcra::uyvy, pairs, video, true); });
  all_samples_with_all_alphas(
      [](const pairs_in_row& pairs, std::uint8_t* video) { composite(&fc::vuya::uyvy, pairs, video, false); });
}

}  // namespace
}  // namespace morvane::tests
