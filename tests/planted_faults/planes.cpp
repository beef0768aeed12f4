// Faults around and in place of conversions of uyvy::yuy2 and other packed and planar 4:2:2, and copies.
#include <cstddef>
#include <cstdint>

#include "planted_faults/faults.h"

namespace morvane::tests {
namespace {

using catalogue::call;
namespace fc = Processing::Morvane::format_conversion;
namespace backend = Processing::Morvane::backend;

void exchanged(const call& c) {
  right("uyvy::yuy2", "yuy2", c);
}

std::uint8_t* last_row(const call& c) {
  return c.destination.data[0] + std::ptrdiff_t{c.yres - 1} * c.destination.stride[0];
}

// An address behind the first row's pixels that no row covers, for images whose rows go downwards.
template <int distance>
void written_behind_last_row(const call& c) {
  exchanged(c);
  if (has_pixels(c) && c.destination.stride[0] > 0) last_row(c)[2 * c.xres + distance - 1] ^= 255;
}

void written_before_image(const call& c) {
  exchanged(c);
  if (has_pixels(c) && c.destination.stride[0] > 0) c.destination.data[0][-1] ^= 255;
}

void written_into_padding(const call& c) {
  exchanged(c);
  if (has_pixels(c) && c.yres > 1 && c.destination.stride[0] > 2 * c.xres) c.destination.data[0][2 * c.xres] ^= 255;
}

void read_behind_source(const call& c) {
  exchanged(c);
  const volatile std::uint8_t* end =
      c.source.data[0] + std::ptrdiff_t{c.yres - 1} * c.source.stride[0] + std::ptrdiff_t{2} * c.xres;
  if (has_pixels(c) && c.source.stride[0] > 0) static_cast<void>(*end);
}

void read_before_source(const call& c) {
  exchanged(c);
  const volatile std::uint8_t* before = c.source.data[0] - 1;
  if (has_pixels(c) && c.source.stride[0] > 0) static_cast<void>(*before);
}

void last_pair_left_out(const call& c) {
  call shorter = c;
  shorter.xres -= 2;
  exchanged(shorter);
}

template <bool (*when)(const call&)>
void first_byte_wrong(const call& c) {
  exchanged(c);
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
  exchanged(c);
  if (has_pixels(c)) const_cast<std::uint8_t*>(c.source.data[0])[0] ^= 1;
}

void written_without_rows(const call& c) {
  exchanged(c);
  if (c.yres == 0) c.destination.data[0][-1] ^= 1;
}

void crash(const call& c) {
  static const fenced_memory memory(1);
  exchanged(c);
  if (c.xres == 33) memory.bytes().data()[memory.bytes().size()] = 0;
}

void report_inverted(const call& c) {
  right("bgra::bgra", "bgra", c);
  if (c.opaque != nullptr) *c.opaque = !*c.opaque;
}

void report_ignores_last_pixel(const call& c) {
  right("bgra::bgra", "bgra", c);
  if (c.opaque == nullptr || !has_pixels(c)) return;
  call shorter = c;
  shorter.xres -= 1;
  right("bgra::bgra", "bgra", shorter);
}

void report_not_stored(const call& c) {
  call without = c;
  without.opaque = nullptr;
  right("bgra::bgra", "bgra", without);
}

void lower_row_writes_chroma(const call& c) {
  right("uyvy::y_uv_420", "y_uv_420", c);
  for (int y = 1; y < c.yres; y += 2)
    for (int i = 0; i < c.xres / 2 * 2; ++i)
      row_of_plane(c, 1, y / 2)[i] = c.source.data[0][std::ptrdiff_t{y} * c.source.stride[0] + 2 * i];
}

void last_upper_row_without_chroma(const call& c) {
  call even = c;
  even.yres = c.yres / 2 * 2;
  right("uyvy::y_u_v_420", "y_u_v_420", even);
  if (even.yres == c.yres || !has_pixels(c)) return;
  for (int k = 0; k < c.xres / 2 * 2; ++k)
    row_of_plane(c, 0, even.yres)[k] = c.source.data[0][std::ptrdiff_t{even.yres} * c.source.stride[0] + 2 * k + 1];
}

void stride_of_cb_for_cr(const call& c) {
  call wrong = c;
  wrong.destination.stride[2] = c.destination.stride[1];
  right("uyvy::y_u_v_420", "y_u_v_420", wrong);
}

void one_line_although_chroma_is_padded(const call& c) {
  call wrong = c;
  if (c.source.stride[0] == 2 * c.xres && c.destination.stride[0] == c.xres) wrong.destination.stride[1] = c.xres;
  right("uyvy::y_uv_422", "y_uv_422", wrong);
}

void one_chroma_row_too_many_read(const call& c) {
  right("y_uv::y_uv", "y_uv_420", c);
  const volatile std::uint8_t* next = c.source.data[1] + std::ptrdiff_t{c.yres / 2} * c.source.stride[1];
  if (has_pixels(c) && c.yres % 2 != 0 && c.source.stride[1] > 0) static_cast<void>(*next);
}

void lower_chroma_rows_kept(const call& c) {
  call lower = c;
  if (c.yres > 1) lower.source.data[1] += c.source.stride[1];
  right("p216::p010", "p010", lower);
}

void chroma_row_for_odd_last_row(const call& c) {
  right("p216::p010", "p010", c);
  if (has_pixels(c) && c.yres % 2 != 0) copy(source_row(c, 1, c.yres - 1), row_of_plane(c, 1, c.yres / 2), 2 * c.xres);
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
    {"report_inverted", "bgra::bgra", "bgra", report_inverted, "opacity report"},
    {"report_ignores_last_pixel", "bgra::bgra", "bgra", report_ignores_last_pixel, "opacity report"},
    {"report_not_stored", "bgra::bgra", "bgra", report_not_stored, "opacity report"},
    {"lower_row_writes_chroma", "uyvy::y_uv_420", "y_uv_420", lower_row_writes_chroma, "destination plane cbcr"},
    {"last_upper_row_without_chroma", "uyvy::y_u_v_420", "y_u_v_420", last_upper_row_without_chroma, "plane cb"},
    {"stride_of_cb_for_cr", "uyvy::y_u_v_420", "y_u_v_420", stride_of_cb_for_cr, "destination plane cr"},
    {"one_line_although_chroma_is_padded", "uyvy::y_uv_422", "y_uv_422", one_line_although_chroma_is_padded, "cbcr"},
    {"one_chroma_row_too_many_read", "y_uv::y_uv", "y_uv_420", one_chroma_row_too_many_read, "crashed"},
    {"lower_chroma_rows_kept", "p216::p010", "p010", lower_chroma_rows_kept, "destination plane cbcr"},
    {"chroma_row_for_odd_last_row", "p216::p010", "p010", chroma_row_for_odd_last_row, "destination plane cbcr"},
};

}  // namespace

std::span<const fault> faults_of_planes() {
  return faults;
}

}  // namespace morvane::tests
