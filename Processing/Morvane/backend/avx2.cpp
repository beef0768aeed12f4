// Every kernel compiled for AVX2. This translation unit alone is built with AVX2 instructions.
#include "../vector/avx2.h"

#include "../format_conversion_line.h"
#include "../format_conversion_line_bgr.h"
#include "../format_conversion_line_bgra.h"
#include "../format_conversion_line_bgra_ycbcrx.h"
#include "../format_conversion_line_black.h"
#include "../format_conversion_line_p216.h"
#include "../format_conversion_line_r_g_b.h"
#include "../sum_absolute_differences_inc.h"
#include "../vector/operations.h"
#include "run.h"

namespace Processing::Morvane::backend {

static_assert(format_conversion::vector::backend_with_vectors<format_conversion::vector::avx2>);

template <class Kernel, class Result, class... Argument>
Result on_avx2<Kernel, Result (*)(Argument...)>::line(Argument... arguments) {
  return Kernel::template line<format_conversion::vector::avx2>(arguments...);
}

namespace line = format_conversion::line;

template struct on_avx2<line::black::fill_kernel>;
template struct on_avx2<line::bgra::bgra_kernel>;
template struct on_avx2<line::uyvy::yuy2_kernel>;
template struct on_avx2<line::v210::uyvy_kernel>;

// To uyvy: over black or not, BT.709 or BT.601, RGBA or BGRA.
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<true, true, false>>;
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<true, true, true>>;
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<false, true, false>>;
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<false, true, true>>;
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<false, false, false>>;
template struct on_avx2<line::rgba_and_bgra::uyvy_kernel<false, false, true>>;
template struct on_avx2<line::bgr::uyvy_kernel>;

// From uyvy: BT.709 or BT.601, RGBA or BGRA, bytes a pixel.
template struct on_avx2<line::uyvy::rgb_kernel<false, false, 3>>;
template struct on_avx2<line::uyvy::rgb_kernel<true, false, 3>>;
template struct on_avx2<line::uyvy::rgb_kernel<false, false, 4>>;
template struct on_avx2<line::uyvy::rgb_kernel<false, true, 4>>;
template struct on_avx2<line::uyvy::rgb_kernel<true, false, 4>>;
template struct on_avx2<line::uyvy::rgb_kernel<true, true, 4>>;

// From uyvy to planes.
template struct on_avx2<line::uyvy::y_uv_kernel<false>>;
template struct on_avx2<line::uyvy::y_uv_kernel<true>>;
template struct on_avx2<line::uyvy::y_u_v_kernel<false>>;
template struct on_avx2<line::uyvy::y_u_v_kernel<true>>;
template struct on_avx2<line::uyvy::y_kernel<false>>;
template struct on_avx2<line::uyvy::y_kernel<true>>;
template struct on_avx2<line::uyvy::r_g_b_kernel<false>>;
template struct on_avx2<line::uyvy::r_g_b_kernel<true>>;
template struct on_avx2<line::uyvy::ycbcrx_kernel>;

// Luma and chroma planes.
template struct on_avx2<line::y::y16_kernel>;
template struct on_avx2<line::y::uyvy_kernel<false>>;
template struct on_avx2<line::y::uyvy_kernel<true>>;
template struct on_avx2<line::y16::y16_kernel>;
template struct on_avx2<line::u_v::uv_kernel<1>>;
template struct on_avx2<line::u_v::uv_kernel<2>>;
template struct on_avx2<line::u_v::uv16_kernel>;
template struct on_avx2<line::L::bgra_kernel>;

// RGB to 4:4:4: BT.709 or BT.601, RGBA or BGRA, CrCbY or YCbCr, with alpha or without.
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, false, false, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, false, false, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, false, true, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, false, true, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, true, false, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, true, false, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, true, true, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<false, true, true, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, false, false, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, false, false, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, false, true, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, false, true, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, true, false, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, true, false, true>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, true, true, false>>;
template struct on_avx2<line::rgba_and_bgra::ycbcr_444_kernel<true, true, true, true>>;

// RGB to uyvy and alpha: BT.709 or BT.601, RGBA or BGRA, with a report of opacity or without.
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, false, false>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, false, true>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, false, false>, true>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, false, true>, true>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, true, false>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, true, true>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, true, false>, true>>;
template struct on_avx2<line::uyvy_a_kernel<line::rgba_and_bgra::uyvy_kernel<false, true, true>, true>>;

// uyvy and alpha.
template struct on_avx2<line::uyvy_a::ya_uv_kernel>;
template struct on_avx2<line::uyvy_a::ycbcra_kernel<false>>;
template struct on_avx2<line::uyvy_a::ycbcra_kernel<true>>;
template struct on_avx2<line::uyvy_a::rgba_and_bgra_kernel<false, false>>;
template struct on_avx2<line::uyvy_a::rgba_and_bgra_kernel<false, true>>;
template struct on_avx2<line::uyvy_a::rgba_and_bgra_kernel<true, false>>;
template struct on_avx2<line::uyvy_a::rgba_and_bgra_kernel<true, true>>;
template struct on_avx2<line::uyvy_a::uyvy_kernel>;

// 4:4:4 to uyvy: over black or not; with alpha, with a report of opacity or without.
template struct on_avx2<line::of_444::uyvy_kernel<line::of_444::ycbcr, false>>;
template struct on_avx2<line::of_444::uyvy_kernel<line::of_444::ycbcr, true>>;
template struct on_avx2<line::uyvy_a_kernel<line::of_444::uyvy_kernel<line::of_444::ycbcr, false>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::of_444::uyvy_kernel<line::of_444::ycbcr, false>, true>>;
template struct on_avx2<line::of_444::uyvy_kernel<line::of_444::crcby, false>>;
template struct on_avx2<line::of_444::uyvy_kernel<line::of_444::crcby, true>>;
template struct on_avx2<line::uyvy_a_kernel<line::of_444::uyvy_kernel<line::of_444::crcby, false>, false>>;
template struct on_avx2<line::uyvy_a_kernel<line::of_444::uyvy_kernel<line::of_444::crcby, false>, true>>;

// 16 bits.
template struct on_avx2<line::uyvy::p216_kernel>;
template struct on_avx2<line::ycbcra::pa16_kernel<false>>;
template struct on_avx2<line::ycbcra::pa16_kernel<true>>;
template struct on_avx2<line::P216::p216_to_p208_kernel<false>>;
template struct on_avx2<line::P216::p216_to_p208_kernel<true>>;
template struct on_avx2<line::P216::rgbx_2020_kernel>;
template struct on_avx2<line::pa16::vuya_16_kernel>;
template struct on_avx2<line::pa16::vuya_f32_kernel>;
template struct on_avx2<line::pa16::p216_kernel>;

// 10-bit card formats.
template struct on_avx2<line::black::yuyv_matrox_10_kernel>;
template struct on_avx2<line::P216::yuyv_matrox_10_kernel>;
template struct on_avx2<line::pa16::yuyv_matrox_10_kernel>;
template struct on_avx2<line::pa16::yua_yva_matrox_10_kernel>;
template struct on_avx2<line::yuyv_matrox_10::p216_kernel>;
template struct on_avx2<line::yuyv_matrox_10::uyvy_kernel>;
template struct on_avx2<line::yua_yva_matrox_10::pa16_kernel>;
template struct on_avx2<line::alpha_u16::yuyv_matrox_10_kernel>;

// Depths.
template struct on_avx2<line::depth::to_byte_kernel<2>>;
template struct on_avx2<line::depth::to_byte_kernel<8>>;
template struct on_avx2<line::depth::from_low_bits_kernel<10>>;
template struct on_avx2<line::depth::from_low_bits_kernel<12>>;
template struct on_avx2<line::depth::repeat_byte_kernel>;
template struct on_avx2<line::depth::fourth_word_kernel>;

template struct on_avx2<sum_absolute_differences::line::difference_kernel>;

}  // namespace Processing::Morvane::backend
