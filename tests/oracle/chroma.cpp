// Expectations: planes of chroma that are interleaved, and luma with alpha, which are interleaved in the same way.
#include "parts.h"

namespace morvane::tests::oracle {
namespace {

void interleave(const std::uint8_t* cb, const std::uint8_t* cr, std::uint8_t* cbcr, int pairs) {
  for (int k = 0; k < pairs; ++k) {
    cbcr[2 * k] = cb[k];
    cbcr[2 * k + 1] = cr[k];
  }
}

void interleave_words(const std::uint8_t* first, const std::uint8_t* second, std::uint8_t* both, int words) {
  for (int k = 0; k < words; ++k) {
    copy(first + 2 * k, both + 4 * k, 2);
    copy(second + 2 * k, both + 4 * k + 2, 2);
  }
}

void y_u_v_to_y_uv(const call& c) {
  copy_luma(c);
  if (c.xres < 2 || c.yres < 2) return;
  const int half = c.xres / 2;
  const int rows = c.yres / 2;
  if (c.source.stride[1] == half && c.source.stride[2] == half && c.destination.stride[1] == c.xres)
    interleave(c.source.data[1], c.source.data[2], c.destination.data[1], rows * half);
  else
    for (int row = 0; row < rows; ++row)
      interleave(read_row(c, 1, row), read_row(c, 2, row), written_row(c, 1, row), half);
}

void y_u_v_to_y_uv_422(const call& c) {
  copy_luma(c);
  for (int row = 0; row < c.yres / 2 * 2; ++row)
    interleave(read_row(c, 1, row / 2), read_row(c, 2, row / 2), written_row(c, 1, row), c.xres / 2);
}

// Chroma alone: xres counts samples of each component.

void cb_cr_8_420_to_16_422(const call& c) {
  for (int row = 0; row < 2 * c.yres; ++row)
    for (int k = 0; k < c.xres; ++k) {
      put_word(written_row(c, 0, row) + 4 * k, read_row(c, 0, row / 2)[k] * 256U);
      put_word(written_row(c, 0, row) + 4 * k + 2, read_row(c, 1, row / 2)[k] * 256U);
    }
}

void cb_cr_16_422_interleaved(const call& c) {
  for (int row = 0; row < c.yres; ++row)
    interleave_words(read_row(c, 0, row), read_row(c, 1, row), written_row(c, 0, row), c.xres);
}

void pa16_to_ya_uv(const call& c) {
  if (c.xres < 1 || c.yres < 1) return;
  const int read = c.source.stride[1];
  const int written = c.destination.stride[1];
  if (read == written)
    copy(c.source.data[1], c.destination.data[1], std::ptrdiff_t{c.yres} * written);
  else if (written > read)
    for (int row = 0; row < c.yres; ++row) copy(read_row(c, 1, row), written_row(c, 1, row), 2 * c.xres);
  for (int row = 0; row < c.yres; ++row)
    interleave_words(read_row(c, 0, row), read_row(c, 2, row), written_row(c, 0, row), c.xres);
}

constexpr entry entries[] = {
    {"y_u_v::y_uv", "y_uv_420", y_u_v_to_y_uv},
    {"y_u_v::y_uv_to422", "y_uv_422", y_u_v_to_y_uv_422},
    {"cb_cr_8_420::cbcr_16_422", "cbcr_16_422", cb_cr_8_420_to_16_422},
    {"cb_cr_16_422::cbcr_16_422", "cbcr_16_422", cb_cr_16_422_interleaved},
    {"pa16::ya_uv", "ya_uv_16", pa16_to_ya_uv},
};

}  // namespace

std::span<const entry> expectations_of_chroma() {
  return entries;
}

}  // namespace morvane::tests::oracle
