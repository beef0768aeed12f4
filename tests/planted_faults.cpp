// Is the checker awake? Each test plants one fault around or in place of an 8-bit conversion and expects a report of
// it.
#include "planted_faults.h"

#include <cstddef>
#include <cstdint>

namespace morvane::tests {
namespace {

using catalogue::call;
namespace fc = Processing::Morvane::format_conversion;
namespace backend = Processing::Morvane::backend;

void right(const call& c) {
  row_of("uyvy::yuy2", "yuy2").convert(c);
}

std::uint8_t* last_row(const call& c) {
  return c.destination.data[0] + std::ptrdiff_t{c.yres - 1} * c.destination.stride[0];
}

// An address behind the first row's pixels that no row covers, for images whose rows go downwards.
template <int distance>
void written_behind_last_row(const call& c) {
  right(c);
  if (has_pixels(c) && c.destination.stride[0] > 0) last_row(c)[2 * c.xres + distance - 1] ^= 255;
}

void written_before_image(const call& c) {
  right(c);
  if (has_pixels(c) && c.destination.stride[0] > 0) c.destination.data[0][-1] ^= 255;
}

void written_into_padding(const call& c) {
  right(c);
  if (has_pixels(c) && c.yres > 1 && c.destination.stride[0] > 2 * c.xres) c.destination.data[0][2 * c.xres] ^= 255;
}

void read_behind_source(const call& c) {
  right(c);
  const volatile std::uint8_t* end =
      c.source.data[0] + std::ptrdiff_t{c.yres - 1} * c.source.stride[0] + std::ptrdiff_t{2} * c.xres;
  if (has_pixels(c) && c.source.stride[0] > 0) static_cast<void>(*end);
}

void read_before_source(const call& c) {
  right(c);
  const volatile std::uint8_t* before = c.source.data[0] - 1;
  if (has_pixels(c) && c.source.stride[0] > 0) static_cast<void>(*before);
}

void last_pair_left_out(const call& c) {
  call shorter = c;
  shorter.xres -= 2;
  right(shorter);
}

template <bool (*when)(const call&)>
void first_byte_wrong(const call& c) {
  right(c);
  if (has_pixels(c) && when(c)) c.destination.data[0][0] ^= 1;
}

bool both_aligned(const call& c) {
  return fc::is_aligned(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0]);
}
bool strides_negative(const call& c) {
  return c.source.stride[0] < 0 && c.destination.stride[0] < 0;
}
bool offset_31(const call& c) {
  return reinterpret_cast<std::uintptr_t>(c.source.data[0]) % 32 == 31;
}
bool eight_rows(const call& c) {
  return c.yres == 8;
}
bool beyond_100_pixels(const call& c) {
  return c.xres > 100;
}
bool on_the_last_backend(const call&) {
  return backend::chosen() == backend::available().back();
}

void source_changed(const call& c) {
  right(c);
  if (has_pixels(c)) const_cast<std::uint8_t*>(c.source.data[0])[0] ^= 1;
}

void written_without_rows(const call& c) {
  right(c);
  if (c.yres == 0) c.destination.data[0][-1] ^= 1;
}

void crash(const call& c) {
  static const fenced_memory memory(1);
  right(c);
  if (c.xres == 33) memory.bytes().data()[memory.bytes().size()] = 0;
}

// uyvy::bgr_601 with 518 in place of 517.
void coefficient_off_by_one(const call& c) {
  row_of("uyvy::bgra_601", "bgra").convert(c);
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres / 2 * 2; ++x) {
      const std::uint8_t* pair = c.source.data[0] + std::ptrdiff_t{y} * c.source.stride[0] + x / 2 * 4;
      const int t = (298 * pair[x % 2 == 0 ? 1 : 3] + 518 * pair[0] - 70635) >> 8;
      c.destination.data[0][std::ptrdiff_t{y} * c.destination.stride[0] + x * 4] =
          static_cast<std::uint8_t>(t < 0     ? 0
                                    : t > 255 ? 255
                                              : t);
    }
}

void report_inverted(const call& c) {
  row_of("bgra::bgra", "bgra").convert(c);
  if (c.opaque != nullptr) *c.opaque = !*c.opaque;
}

void report_ignores_last_pixel(const call& c) {
  row_of("bgra::bgra", "bgra").convert(c);
  if (c.opaque == nullptr || !has_pixels(c)) return;
  call shorter = c;
  shorter.xres -= 1;
  row_of("bgra::bgra", "bgra").convert(shorter);
}

void report_not_stored(const call& c) {
  call without = c;
  without.opaque = nullptr;
  row_of("bgra::bgra", "bgra").convert(without);
}

// Conversions of several planes.

void lower_row_writes_chroma(const call& c) {
  row_of("uyvy::y_uv_420", "y_uv_420").convert(c);
  for (int y = 1; y < c.yres; y += 2)
    for (int i = 0; i < c.xres / 2 * 2; ++i)
      row_of_plane(c, 1, y / 2)[i] = c.source.data[0][std::ptrdiff_t{y} * c.source.stride[0] + 2 * i];
}

void last_upper_row_without_chroma(const call& c) {
  call even = c;
  even.yres = c.yres / 2 * 2;
  row_of("uyvy::y_u_v_420", "y_u_v_420").convert(even);
  if (even.yres == c.yres || !has_pixels(c)) return;
  for (int k = 0; k < c.xres / 2 * 2; ++k)
    row_of_plane(c, 0, even.yres)[k] = c.source.data[0][std::ptrdiff_t{even.yres} * c.source.stride[0] + 2 * k + 1];
}

void stride_of_cb_for_cr(const call& c) {
  call wrong = c;
  wrong.destination.stride[2] = c.destination.stride[1];
  row_of("uyvy::y_u_v_420", "y_u_v_420").convert(wrong);
}

void one_line_although_chroma_is_padded(const call& c) {
  call wrong = c;
  if (c.source.stride[0] == 2 * c.xres && c.destination.stride[0] == c.xres) wrong.destination.stride[1] = c.xres;
  row_of("uyvy::y_uv_422", "y_uv_422").convert(wrong);
}

void one_chroma_row_too_many_read(const call& c) {
  row_of("y_uv::y_uv", "y_uv_420").convert(c);
  const volatile std::uint8_t* next = c.source.data[1] + std::ptrdiff_t{c.yres / 2} * c.source.stride[1];
  if (has_pixels(c) && c.yres % 2 != 0 && c.source.stride[1] > 0) static_cast<void>(*next);
}

void half_a_pair_read(const call& c) {
  row_of("y_u_v::y_uv", "y_uv_420").convert(c);
  const volatile std::uint8_t* last_row = c.source.data[1] + std::ptrdiff_t{c.yres / 2 - 1} * c.source.stride[1];
  if (c.xres > 1 && c.xres % 2 != 0 && c.yres > 1 && c.source.stride[1] > 0) static_cast<void>(last_row[c.xres / 2]);
}

void later_pixel_touched(const call& c) {
  row_of("bgra_601::ycbcra", "ycbcra").convert(c);
  if (has_pixels(c) && c.xres > 1) c.destination.data[0][4] ^= 1;
}

void key_threshold_off_by_one(const call& c) {
  row_of("uyvy::y", "y").convert(c);
  if (c.argument == 0) return;
  for (int y = 0; y < c.yres; ++y)
    for (int x = 0; x < c.xres; ++x)
      if (row_of_plane(c, 0, y)[x] == 253) row_of_plane(c, 0, y)[x] = 255;
}

void key_stretch_of_copies(const call& c) {
  call wrong = c;
  wrong.argument = 1;
  row_of("uyvy::ya_uv", "ya_uv").convert(wrong);
}

template <bool (*when)(const call&)>
void report_of_completed_pair(const call& c) {
  row_of("ycbcra::uyvy_a", "uyvy_a").convert(c);
  if (c.opaque != nullptr && has_pixels(c) && when(c)) *c.opaque = true;
}

bool one_odd_row(const call& c) {
  return c.xres % 2 != 0 && c.yres == 1 && c.source.data[0][4 * c.xres + 3] != 255;
}

void report_with_last_odd_pixel(const call& c) {
  row_of("bgra::uyvy_a", "uyvy_a").convert(c);
  if (c.opaque == nullptr || c.xres < 1 || c.xres % 2 == 0) return;
  for (int y = 0; y < c.yres; ++y)
    if (c.source.data[0][std::ptrdiff_t{y} * c.source.stride[0] + 4 * c.xres - 1] != 255) *c.opaque = false;
}

void colors_exchanged_between_planes(const call& c) {
  call wrong = c;
  wrong.destination.data[0] = c.destination.data[2];
  wrong.destination.data[2] = c.destination.data[0];
  row_of("uyvy::r_g_b_709", "r_g_b").convert(wrong);
}

constexpr fault faults[] = {
    {"byte_behind_the_image", "uyvy::yuy2", "yuy2", written_behind_last_row<1>, "destination plane"},
    {"byte_far_behind_the_image", "uyvy::yuy2", "yuy2", written_behind_last_row<200>, "destination plane"},
    {"byte_before_the_image", "uyvy::yuy2", "yuy2", written_before_image, "destination plane"},
    {"byte_of_padding", "uyvy::yuy2", "yuy2", written_into_padding, "destination plane"},
    {"read_behind_the_source", "uyvy::yuy2", "yuy2", read_behind_source, "crashed"},
    {"read_before_the_source", "uyvy::yuy2", "yuy2", read_before_source, "crashed"},
    {"last_pair_left_out", "uyvy::yuy2", "yuy2", last_pair_left_out, "destination plane"},
    {"wrong_when_both_aligned", "uyvy::yuy2", "yuy2", first_byte_wrong<both_aligned>, "address % 32 = "},
    {"wrong_with_negative_strides", "uyvy::yuy2", "yuy2", first_byte_wrong<strides_negative>, "stride -"},
    {"wrong_at_offset_31", "uyvy::yuy2", "yuy2", first_byte_wrong<offset_31>, "address % 32 = 31"},
    {"wrong_with_eight_rows", "uyvy::yuy2", "yuy2", first_byte_wrong<eight_rows>, "x8,"},
    {"wrong_beyond_100_pixels", "uyvy::yuy2", "yuy2", first_byte_wrong<beyond_100_pixels>, "(row 0, byte 0)"},
    {"wrong_on_one_backend", "uyvy::yuy2", "yuy2", first_byte_wrong<on_the_last_backend>, "backend "},
    {"source_changed", "uyvy::yuy2", "yuy2", source_changed, "source plane"},
    {"written_without_rows", "uyvy::yuy2", "yuy2", written_without_rows, "x0,"},
    {"crash", "uyvy::yuy2", "yuy2", crash, "crashed"},
    {"coefficient_off_by_one", "uyvy::bgra_601", "bgra", coefficient_off_by_one, "destination plane"},
    {"report_inverted", "bgra::bgra", "bgra", report_inverted, "opacity report"},
    {"report_ignores_last_pixel", "bgra::bgra", "bgra", report_ignores_last_pixel, "opacity report"},
    {"report_not_stored", "bgra::bgra", "bgra", report_not_stored, "opacity report"},
    {"lower_row_writes_chroma", "uyvy::y_uv_420", "y_uv_420", lower_row_writes_chroma, "destination plane cbcr"},
    {"last_upper_row_without_chroma", "uyvy::y_u_v_420", "y_u_v_420", last_upper_row_without_chroma, "plane cb"},
    {"stride_of_cb_for_cr", "uyvy::y_u_v_420", "y_u_v_420", stride_of_cb_for_cr, "destination plane cr"},
    {"one_line_although_chroma_is_padded", "uyvy::y_uv_422", "y_uv_422", one_line_although_chroma_is_padded, "cbcr"},
    {"one_chroma_row_too_many_read", "y_uv::y_uv", "y_uv_420", one_chroma_row_too_many_read, "crashed"},
    {"half_a_pair_read", "y_u_v::y_uv", "y_uv_420", half_a_pair_read, "crashed"},
    {"later_pixel_touched", "bgra_601::ycbcra", "ycbcra", later_pixel_touched, "byte 4"},
    {"key_threshold_off_by_one", "uyvy::y", "y", key_threshold_off_by_one, "expected 253, got 255"},
    {"key_stretch_of_copies", "uyvy::ya_uv", "ya_uv", key_stretch_of_copies, "argument 0"},
    {"completed_pair_not_in_report", "ycbcra::uyvy_a", "uyvy_a", report_of_completed_pair<one_odd_row>,
     "opacity report"},
    {"report_with_last_odd_pixel", "bgra::uyvy_a", "uyvy_a", report_with_last_odd_pixel, "opacity report"},
    {"colors_exchanged_between_planes", "uyvy::r_g_b_709", "r_g_b", colors_exchanged_between_planes, "plane r"},
};

class planted_fault : public testing::TestWithParam<fault> {};

TEST_P(planted_fault, is_reported) {
  expect_report(GetParam());
}

INSTANTIATE_TEST_SUITE_P(checker, planted_fault, testing::ValuesIn(faults), fault_name);

}  // namespace
}  // namespace morvane::tests
