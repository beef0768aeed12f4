// Faults around and in place of conversions of planes of chroma that are interleaved.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;

void half_a_pair_read(const call& c) {
  right("y_u_v::y_uv", "y_uv_420", c);
  const volatile std::uint8_t* last_row = c.source.data[1] + std::ptrdiff_t{c.yres / 2 - 1} * c.source.stride[1];
  if (c.xres > 1 && c.xres % 2 != 0 && c.yres > 1 && c.source.stride[1] > 0) static_cast<void>(last_row[c.xres / 2]);
}

// Copies chroma as given, in place of the library.
template <bool (*in_rows)(const call&)>
void ya_uv_with_own_chroma(const call& c) {
  if (!in_rows(c)) return right("pa16::ya_uv", "ya_uv_16", c);
  call luma_alone = c;
  luma_alone.source.stride[1] = c.destination.stride[1] + 1;
  right("pa16::ya_uv", "ya_uv_16", luma_alone);
  if (has_pixels(c))
    for (int y = 0; y < c.yres; ++y) copy(source_row(c, 1, y), row_of_plane(c, 1, y), 2 * c.xres);
}

bool strides_are_equal(const call& c) {
  return c.source.stride[1] == c.destination.stride[1] && c.source.stride[1] > 0;
}

bool strides_are_equal_and_negative(const call& c) {
  return c.source.stride[1] == c.destination.stride[1] && c.source.stride[1] < 0;
}

bool written_stride_is_smaller(const call& c) {
  return c.destination.stride[1] < c.source.stride[1];
}

constexpr fault faults[] = {
    {"half_a_pair_read", "y_u_v::y_uv", "y_uv_420", half_a_pair_read, "crashed"},
    {"padding_of_chroma_left_out", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<strides_are_equal>,
     "destination plane cbcr"},
    {"chroma_copied_upwards", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<strides_are_equal_and_negative>,
     "destination plane cbcr"},
    {"chroma_copied_to_smaller_stride", "pa16::ya_uv", "ya_uv_16", ya_uv_with_own_chroma<written_stride_is_smaller>,
     "destination plane cbcr"},
};

}  // namespace

std::span<const fault> faults_of_chroma() {
  return faults;
}

}  // namespace morvane::tests
