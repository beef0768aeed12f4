// What libyuv offers for the rows of the benchmark. Its BGRA is called ARGB, and its matrix is BT.601 where none is
// named.
#include "peers/peers.h"

#if defined(MORVANE_WITH_LIBYUV)
#include <libyuv.h>
#endif

namespace morvane::bench {

#if defined(MORVANE_WITH_LIBYUV)

namespace {

using catalogue::call;

const std::uint16_t* words(const std::uint8_t* bytes) {
  return reinterpret_cast<const std::uint16_t*>(bytes);
}

std::uint16_t* words(std::uint8_t* bytes) {
  return reinterpret_cast<std::uint16_t*>(bytes);
}

// Its strides of 16-bit planes count samples.
int in_words(int stride) {
  return stride / 2;
}

template <int bytes_per_pixel>
void copy_plane(const call& c) {
  libyuv::CopyPlane(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0],
                    bytes_per_pixel * c.xres, c.yres);
}

void copy_luma(const call& c) {
  copy_plane<1>(c);
}

void argb_copy(const call& c) {
  libyuv::ARGBCopy(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres,
                   c.yres);
}

void copy_plane_16(const call& c) {
  libyuv::CopyPlane_16(words(c.source.data[0]), in_words(c.source.stride[0]), words(c.destination.data[0]),
                       in_words(c.destination.stride[0]), c.xres, c.yres);
}

void black_uyvy(const call& c) {
  libyuv::ARGBRect(c.destination.data[0], c.destination.stride[0], 0, 0, c.xres / 2, c.yres, 0x10801080);
}

void set_plane(const call& c) {
  libyuv::SetPlane(c.destination.data[0], c.destination.stride[0], c.xres, c.yres,
                   static_cast<std::uint32_t>(c.argument));
}

void set_plane_of_words(const call& c) {
  libyuv::ARGBRect(c.destination.data[0], c.destination.stride[0], 0, 0, c.xres / 2, c.yres,
                   0x10001U * static_cast<std::uint32_t>(c.argument));
}

void swap_uv_plane(const call& c) {
  libyuv::SwapUVPlane(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres,
                      c.yres);
}

void argb_to_uyvy(const call& c) {
  libyuv::ARGBToUYVY(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres,
                     c.yres);
}

void argb_to_uyvy_and_alpha(const call& c) {
  argb_to_uyvy(c);
  libyuv::ARGBExtractAlpha(c.source.data[0], c.source.stride[0], c.destination.data[1], c.destination.stride[1], c.xres,
                           c.yres);
}

void uyvy_to_argb(const call& c) {
  libyuv::UYVYToARGB(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres,
                     c.yres);
}

void uyvy_and_alpha_to_argb(const call& c) {
  uyvy_to_argb(c);
  libyuv::ARGBCopyYToAlpha(c.source.data[1], c.source.stride[1], c.destination.data[0], c.destination.stride[0], c.xres,
                           c.yres);
}

void uyvy_to_y_uv(const call& c) {
  libyuv::SplitUVPlane(c.source.data[0], c.source.stride[0], c.destination.data[1], c.destination.stride[1],
                       c.destination.data[0], c.destination.stride[0], c.xres, c.yres);
}

void uyvy_to_nv12(const call& c) {
  libyuv::UYVYToNV12(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0],
                     c.destination.data[1], c.destination.stride[1], c.xres, c.yres);
}

template <auto function>
void uyvy_to_planes(const call& c) {
  function(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.destination.data[1],
           c.destination.stride[1], c.destination.data[2], c.destination.stride[2], c.xres, c.yres);
}

void uyvy_to_y(const call& c) {
  libyuv::UYVYToY(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres, c.yres);
}

// The scale of 16 bits is 65536. The code for x86-64 takes its lower 16 bits alone; with one less it comes within one
// of the result.
#if defined(__x86_64__)
constexpr int to_16_bits = 65535;
#else
constexpr int to_16_bits = 65536;
#endif

void widen_plane(const call& c, std::size_t p, int rows, int stride, int offset) {
  libyuv::Convert8To16Plane(c.source.data[p], c.source.stride[p], words(c.destination.data[p] + offset),
                            in_words(stride), to_16_bits, c.xres, rows);
}

void widen(const call& c) {
  widen_plane(c, 0, c.yres, c.destination.stride[0], 0);
}

// Every row of plane `p` to two rows.
void widen_twice(const call& c, std::size_t p, int rows) {
  const int stride = c.destination.stride[p];
  widen_plane(c, p, rows, 2 * stride, 0);
  widen_plane(c, p, rows, 2 * stride, stride);
}

void widen_chroma_twice(const call& c) {
  widen_twice(c, 0, c.yres);
}

void nv12_to_p216(const call& c) {
  widen(c);
  widen_twice(c, 1, c.yres / 2);
}

// `scale` / 65536 of every sample.
template <int scale>
void narrow(const call& c) {
  libyuv::Convert16To8Plane(words(c.source.data[0]), in_words(c.source.stride[0]), c.destination.data[0],
                            c.destination.stride[0], scale, c.xres, c.yres);
}

template <int bits>
void to_upper_bits(const call& c) {
  libyuv::ConvertToMSBPlane_16(words(c.source.data[0]), in_words(c.source.stride[0]), words(c.destination.data[0]),
                               in_words(c.destination.stride[0]), c.xres, c.yres, bits);
}

void nv12_copy(const call& c) {
  libyuv::NV12Copy(c.source.data[0], c.source.stride[0], c.source.data[1], c.source.stride[1], c.destination.data[0],
                   c.destination.stride[0], c.destination.data[1], c.destination.stride[1], c.xres, c.yres);
}

void nv12_to_nv16(const call& c) {
  copy_luma(c);
  for (int odd = 0; odd < 2; ++odd)
    libyuv::CopyPlane(c.source.data[1], c.source.stride[1], c.destination.data[1] + odd * c.destination.stride[1],
                      2 * c.destination.stride[1], c.xres, c.yres / 2);
}

void i420_to_nv12(const call& c) {
  libyuv::I420ToNV12(c.source.data[0], c.source.stride[0], c.source.data[1], c.source.stride[1], c.source.data[2],
                     c.source.stride[2], c.destination.data[0], c.destination.stride[0], c.destination.data[1],
                     c.destination.stride[1], c.xres, c.yres);
}

void i420_to_nv16(const call& c) {
  copy_luma(c);
  for (int odd = 0; odd < 2; ++odd)
    libyuv::MergeUVPlane(c.source.data[1], c.source.stride[1], c.source.data[2], c.source.stride[2],
                         c.destination.data[1] + odd * c.destination.stride[1], 2 * c.destination.stride[1], c.xres / 2,
                         c.yres / 2);
}

void merge_uv_plane_16(const call& c) {
  libyuv::MergeUVPlane_16(words(c.source.data[0]), in_words(c.source.stride[0]), words(c.source.data[1]),
                          in_words(c.source.stride[1]), words(c.destination.data[0]), in_words(c.destination.stride[0]),
                          c.xres, c.yres, 16);
}

void p216_to_p010(const call& c) {
  copy_plane_16(c);
  libyuv::CopyPlane_16(words(c.source.data[1]), 2 * in_words(c.source.stride[1]), words(c.destination.data[1]),
                       in_words(c.destination.stride[1]), c.xres, c.yres / 2);
}

void j400_to_argb(const call& c) {
  libyuv::J400ToARGB(c.source.data[0], c.source.stride[0], c.destination.data[0], c.destination.stride[0], c.xres,
                     c.yres);
}

using enum agreement;

constexpr stateless_peer table[] = {
    {"black::uyvy", "ARGBRect", same_bytes, black_uyvy},
    {"black::alpha(alpha)", "SetPlane", same_bytes, set_plane},
    {"black::alpha(alpha_u16)", "ARGBRect", same_bytes, set_plane_of_words},
    {"y::y", "CopyPlane", same_bytes, copy_plane<1>},
    {"uyvy::uyvy", "CopyPlane", same_bytes, copy_plane<2>},
    {"bgr::bgr bgr_601::bgr_601 bgr_709::bgr_709", "CopyPlane", same_bytes, copy_plane<3>},
    {copies_of_four_bytes, "ARGBCopy", same_bytes, argb_copy},
    {"y16::y16", "CopyPlane_16", same_bytes, copy_plane_16},
    {"y_uv::y_uv", "NV12Copy", same_bytes, nv12_copy},
    {"uyvy::yuy2 yuy2::uyvy", "SwapUVPlane", same_bytes, swap_uv_plane},
    {"uyvy::y_uv_422", "SplitUVPlane", same_bytes, uyvy_to_y_uv},
    {"uyvy::y_uv_420", "UYVYToNV12", other_algorithm, uyvy_to_nv12},
    {"uyvy::y_u_v_422", "UYVYToI422", same_bytes, uyvy_to_planes<libyuv::UYVYToI422>},
    {"uyvy::y_u_v_420", "UYVYToI420", other_algorithm, uyvy_to_planes<libyuv::UYVYToI420>},
    {"uyvy::y", "UYVYToY", same_bytes, uyvy_to_y},
    {"y::y16", "Convert8To16Plane", close, widen},
    {"y_uv::y_uv_to422", "CopyPlane, three times", same_bytes, nv12_to_nv16},
    {"y_u_v::y_uv", "I420ToNV12", same_bytes, i420_to_nv12},
    {"y_u_v::y_uv_to422", "CopyPlane, MergeUVPlane twice", same_bytes, i420_to_nv16},
    {"cb_cr_16_422::cbcr_16_422", "MergeUVPlane_16", same_bytes, merge_uv_plane_16},
    {"cbcr_8_420::cbcr_16_422", "Convert8To16Plane, twice", close, widen_chroma_twice},
    {"L::bgra", "J400ToARGB", same_bytes, j400_to_argb},
    {"bgrx::uyvy bgrx_601::uyvy bgrx_709::uyvy", "ARGBToUYVY", other_algorithm, argb_to_uyvy},
    {"bgra::uyvy_a bgra_601::uyvy_a bgra_709::uyvy_a", "ARGBToUYVY, ARGBExtractAlpha", other_algorithm,
     argb_to_uyvy_and_alpha},
    {"uyvy::bgra_601 uyvy::bgrx_601", "UYVYToARGB", close, uyvy_to_argb},
    {"uyvy::bgra uyvy::bgra_709 uyvy::bgrx uyvy::bgrx_709", "UYVYToARGB", other_algorithm, uyvy_to_argb},
    {"uyvy_a::bgra_601", "UYVYToARGB, ARGBCopyYToAlpha", close, uyvy_and_alpha_to_argb},
    {"uyvy_a::bgra uyvy_a::bgra_709", "UYVYToARGB, ARGBCopyYToAlpha", other_algorithm, uyvy_and_alpha_to_argb},
    {"y_uv::p216", "Convert8To16Plane, three times", close, nv12_to_p216},
    {"p216::p010", "CopyPlane_16, twice", same_bytes, p216_to_p010},
    {"alpha::alpha_u16", "Convert8To16Plane", close, widen},
    {"alpha_u16::alpha", "Convert16To8Plane", same_bytes, narrow<256>},
    {"alpha_10u16::alpha_u16", "ConvertToMSBPlane_16", close, to_upper_bits<10>},
    {"alpha_12u16::alpha_u16", "ConvertToMSBPlane_16", close, to_upper_bits<12>},
    {"y_10u16::y", "Convert16To8Plane", same_bytes, narrow<16384>},
};

}  // namespace

std::vector<peer> libyuv_peers() {
  return peers_of("libyuv", table);
}

#else

std::vector<peer> libyuv_peers() {
  return {};
}

#endif

}  // namespace morvane::bench
