// The entry points of video with a key, and of 4:4:4 YCbCr to and from video.
#include "Processing.Morvane.h"
#include "format_conversion_frame.h"
#include "kernel/full_chroma.h"
#include "kernel/key.h"

namespace Processing::Morvane::format_conversion {

void uyvy::ycbcrx(const uint8_t* p_src_uyvy, const int src_uyvy_stride, uint8_t* p_dst_ycbcrx,
                  const int dst_ycbcrx_stride, const int xres, const int yres) {
  convert<kernel::uyvy_to_ycbcrx>(xres, yres, plane{p_src_uyvy, src_uyvy_stride},
                                  plane{p_dst_ycbcrx, dst_ycbcrx_stride});
}

void uyvy::ya_uv(const uint8_t* p_src0_uyvy, const int src0_uyvy_stride, const uint8_t* p_src1_uyvy,
                 const int src1_uyvy_stride, uint8_t* p_dst_ya, const int dst_ya_stride, uint8_t* p_dst_cbcr,
                 const int dst_cbcr_stride, const int xres, const int yres, const bool key_color_alpha_rescale) {
  convert_by<kernel::first_pair_to_ya_uv<kernel::key_range::full>,
             kernel::first_pair_to_ya_uv<kernel::key_range::of_video>>(
      key_color_alpha_rescale, xres, yres, plane{p_src0_uyvy, src0_uyvy_stride}, plane{p_src1_uyvy, src1_uyvy_stride},
      plane{p_dst_ya, dst_ya_stride}, plane{p_dst_cbcr, dst_cbcr_stride});
}

void uyvy_a::ya_uv(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                   const int src_alpha_stride, uint8_t* p_dst_ya, const int dst_ya_stride, uint8_t* p_dst_cbcr,
                   const int dst_cbcr_stride, const int xres, const int yres) {
  convert<kernel::uyvy_a_to_ya_uv>(xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
                                   plane{p_dst_ya, dst_ya_stride}, plane{p_dst_cbcr, dst_cbcr_stride});
}

void uyvy_a::uyvy(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                  const int src_alpha_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride, const int xres,
                  const int yres) {
  convert<kernel::uyvy_a_to_uyvy>(xres, yres, plane{p_src_uyvy, src_uyvy_stride}, plane{p_src_alpha, src_alpha_stride},
                                  plane{p_dst_uyvy, dst_uyvy_stride});
}

void uyvy_a::ycbcra(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                    const int src_alpha_stride, uint8_t* p_dst_ycbcra, const int dst_ycbcra_stride, const int xres,
                    const int yres) {
  convert<kernel::uyvy_a_to_444<kernel::sample_order::ycbcr>>(xres, yres, plane{p_src_uyvy, src_uyvy_stride},
                                                              plane{p_src_alpha, src_alpha_stride},
                                                              plane{p_dst_ycbcra, dst_ycbcra_stride});
}

void uyvy_a::crcbya(const uint8_t* p_src_uyvy, const int src_uyvy_stride, const uint8_t* p_src_alpha,
                    const int src_alpha_stride, uint8_t* p_dst_crcbya, const int dst_crcbya_stride, const int xres,
                    const int yres) {
  convert<kernel::uyvy_a_to_444<kernel::sample_order::crcby>>(xres, yres, plane{p_src_uyvy, src_uyvy_stride},
                                                              plane{p_src_alpha, src_alpha_stride},
                                                              plane{p_dst_crcbya, dst_crcbya_stride});
}

void ycbcra::uyvy(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_uyvy,
                  const int dst_uyvy_stride, const int xres, const int yres) {
  convert<kernel::pixels_444_to_uyvy<kernel::sample_order::ycbcr, kernel::background::black>>(
      xres, yres, plane{p_src_ycbcra, src_ycbcra_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void ycbcra::uyvy_a(const uint8_t* p_src_ycbcra, const int src_ycbcra_stride, uint8_t* p_dst_uyvy,
                    const int dst_uyvy_stride, uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres,
                    const int yres, bool* p_alpha_all_255) {
  convert_with_report<kernel::pixels_444_to_uyvy_a<kernel::sample_order::ycbcr, kernel::alpha_report::none>,
                      kernel::pixels_444_to_uyvy_a<kernel::sample_order::ycbcr, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_ycbcra, src_ycbcra_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void vuya::uyvy(const uint8_t* p_src_vuya, const int src_vuya_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::pixels_444_to_uyvy<kernel::sample_order::crcby, kernel::background::black>>(
      xres, yres, plane{p_src_vuya, src_vuya_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void vuya::uyvy_a(const uint8_t* p_src_vuya, const int src_vuya_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                  uint8_t* p_dst_alpha, const int dst_alpha_stride, const int xres, const int yres,
                  bool* p_alpha_all_255) {
  convert_with_report<kernel::pixels_444_to_uyvy_a<kernel::sample_order::crcby, kernel::alpha_report::none>,
                      kernel::pixels_444_to_uyvy_a<kernel::sample_order::crcby, kernel::alpha_report::given>>(
      p_alpha_all_255, xres, yres, plane{p_src_vuya, src_vuya_stride}, plane{p_dst_uyvy, dst_uyvy_stride},
      plane{p_dst_alpha, dst_alpha_stride});
}

void ycbcrx::uyvy(const uint8_t* p_src_ycbcrx, const int src_ycbcrx_stride, uint8_t* p_dst_uyvy,
                  const int dst_uyvy_stride, const int xres, const int yres) {
  convert<kernel::pixels_444_to_uyvy<kernel::sample_order::ycbcr, kernel::background::none>>(
      xres, yres, plane{p_src_ycbcrx, src_ycbcrx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

void vuyx::uyvy(const uint8_t* p_src_vuyx, const int src_vuyx_stride, uint8_t* p_dst_uyvy, const int dst_uyvy_stride,
                const int xres, const int yres) {
  convert<kernel::pixels_444_to_uyvy<kernel::sample_order::crcby, kernel::background::none>>(
      xres, yres, plane{p_src_vuyx, src_vuyx_stride}, plane{p_dst_uyvy, dst_uyvy_stride});
}

}  // namespace Processing::Morvane::format_conversion
