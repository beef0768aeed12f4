// The public interface of Morvane: every conversion, fill, copy and predicate of the library.
//
// A conversion is a free function named after its formats: `uyvy::yuy2` reads `uyvy` and writes `yuy2`. It takes the
// source planes, the destination planes and the size of the image:
// - A plane is a pointer to the first byte of its first row and a stride, the signed number of bytes from one row to
//   the next. A negative stride steps upwards through a bottom-up image. No alignment is needed anywhere.
// - `xres` and `yres` are the size in pixels. A size below one converts nothing.
//
// Nothing is checked or reported, nothing is allocated, and no state is kept: calls may run on any number of threads,
// also on bands of rows of one image. Only the bytes of the image are touched, never the padding between rows, except
// where a function says that it writes past a row.
//
// The planes of a call must not overlap: what a destination holds that shares bytes with another plane is undefined,
// and differs between processors. Some functions say that planes may overlap. Their pixels or pairs are then converted
// one after the other along each line, and all of one is read before any of it is written, unless the function says
// otherwise.
//
// When every stride equals the tight width of its plane, the image is converted as one line of xres * yres pixels. It
// shows only where a function treats the end of a line apart from its rest; those functions say how.
//
// The layouts, a byte a column, lowest address first:
//
//   uyvy      Cb Y0 Cr Y1              a pair of pixels; video range: Y 16..235, Cb and Cr 16..240 around 128
//   yuy2      Y0 Cb Y1 Cr              a pair of pixels
//   v210      6 pixels in 16 bytes     four little-endian 32-bit words of three 10-bit samples each, at bits 0, 10
//                                      and 20: Cb0 Y0 Cr0 | Y1 Cb1 Y2 | Cr1 Y3 Cb2 | Y4 Cr2 Y5
//   bgra      B G R A                  alpha 255 is opaque
//   rgba      R G B A
//   bgrx      B G R x                  x is ignored when read
//   rgbx      R G B x
//   bgr       B G R                    three bytes a pixel
//   y         Y                        a plane of luma
//   alpha     A                        a plane of alpha, of bytes or of 16-bit words
//   ycbcra    Y Cb Cr A                ycbcrx: Y Cb Cr x
//   vuya      Cr Cb Y A                vuyx: Cr Cb Y x
//
// Formats of more than 8 bits stand with their functions further below.
//
// Matrices are those of ITU-R BT.601 and BT.709 for video range, in integers; the formulas stand with each function.
// `>>` in a formula is a floor division by a power of two, also of a negative value.
#ifndef PROCESSING_MORVANE_PROCESSING_MORVANE_H
#define PROCESSING_MORVANE_PROCESSING_MORVANE_H

#include <cstdint>

#define MORVANE_API __attribute__((visibility("default")))

namespace Processing::Morvane {

// Any `int` may stand for a colour space: 601 selects BT.601, every other value BT.709.
enum e_ycbcr_color_space : int { ccir_601 = 601, ccir_709 = 709 };

namespace format_conversion {

// True when the address of every pointer and every stride is a multiple of 16. The library needs no alignment; the
// answer tells a caller whether its planes start every row on a 16-byte boundary.
MORVANE_API bool is_aligned(const void* ptr0, int stride0);
MORVANE_API bool is_aligned(const void* ptr0, int stride0, const void* ptr1, int stride1);
MORVANE_API bool is_aligned(const void* ptr0, int stride0, const void* ptr1, int stride1, const void* ptr2,
                            int stride2);

// The same test of 16 bytes under the name that callers on other processors use.
MORVANE_API bool is_aligned_avx2(const void* ptr0, int stride0);
MORVANE_API bool is_aligned_avx2(const void* ptr0, int stride0, const void* ptr1, int stride1);
MORVANE_API bool is_aligned_avx2(const void* ptr0, int stride0, const void* ptr1, int stride1, const void* ptr2,
                                 int stride2);

// Fills.
namespace black {

// Black video: Cb = Cr = 128, Y = 16. Writes 2 * xres bytes a row, so a row of odd width ends with a Cb and a Y.
MORVANE_API void uyvy(uint8_t* p_dst_uyvy, int dst_uyvy_stride, int xres, int yres);

// A constant alpha plane: every sample becomes the low 8 bits (or, for 16-bit samples, the low 16 bits) of bg_value.
MORVANE_API void alpha(uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, int bg_value);
MORVANE_API void alpha(uint16_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, int bg_value);

}  // namespace black

// Copies of an image from one set of strides to another.
//
// The copies of formats with alpha also answer whether the image is opaque: when p_alpha_is_all_255 is not null it
// receives true if the fourth byte of every pixel is 255, and false otherwise. The whole image is copied either way,
// and an image without pixels counts as opaque.

namespace y {

MORVANE_API void y(const uint8_t* p_src_y, int src_y_stride, uint8_t* p_dst_y, int dst_y_stride, int xres, int yres);

}  // namespace y

namespace ycbcra {

MORVANE_API void ycbcra(const uint8_t* p_src_ycbcra, int src_ycbcra_stride, uint8_t* p_dst_ycbcra,
                        int dst_ycbcra_stride, int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace ycbcra

namespace ycbcrx {

MORVANE_API void ycbcrx(const uint8_t* p_src_ycbcrx, int src_ycbcrx_stride, uint8_t* p_dst_ycbcrx,
                        int dst_ycbcrx_stride, int xres, int yres);

}  // namespace ycbcrx

namespace vuya {

MORVANE_API void vuya(const uint8_t* p_src_vuya, int src_vuya_stride, uint8_t* p_dst_vuya, int dst_vuya_stride,
                      int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace vuya

namespace vuyx {

MORVANE_API void vuyx(const uint8_t* p_src_vuyx, int src_vuyx_stride, uint8_t* p_dst_vuyx, int dst_vuyx_stride,
                      int xres, int yres);

}  // namespace vuyx

// 10-bit packed 4:2:2 to 8 bits.
namespace v210 {

// Each 10-bit sample keeps its upper eight bits (value >> 2, no rounding).
//
// A line of n pixels writes its first 2 * ((n - 1) / 2) pixels: the last pair of an even count and the last pixel of
// an odd count stay unwritten. Row by row this holds for every row; an image with tight strides is one line, so only
// the last pair of the image stays unwritten. A caller that wants whole rows converts rows that are one group of six
// pixels wider. The tight stride of `v210` is xres * 16 / 6 bytes, which is whole only for multiples of three pixels.
MORVANE_API void uyvy(const uint8_t* p_src_v210, int src_v210_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace v210

namespace yuy2 {

// Exactly uyvy::yuy2: exchanging the bytes twice restores them.
MORVANE_API void uyvy(const uint8_t* p_src_yuy2, int src_yuy2_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace yuy2

// Video to video and to packed RGB.
namespace uyvy {

MORVANE_API void uyvy(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

// Exchanges the two bytes of every pixel, a last odd pixel included. The planes may overlap; of each pixel the first
// byte of the destination is then written before the first byte of the source is read.
MORVANE_API void yuy2(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_yuy2, int dst_yuy2_stride,
                      int xres, int yres);

// To `bgr`. Both pixels of a pair take the pair's Cb and Cr. Each byte is clamp(t >> 8, 0, 255) of
//
//   BT.601   B = 298 Y + 517 Cb - 70635              BT.709   B = 299 Y + 541 Cb - 73695
//            G = 298 Y -  99 Cb - 207 Cr + 34680              G = 298 Y -  54 Cb - 136 Cr + 19635
//            R = 298 Y + 409 Cr - 56865                       R = 298 Y + 459 Cr - 63240
//
// in which the offsets 16 and 128 and the rounding are folded into the constants.
//
// A line of odd width completes its last pair: it reads the pair's four bytes, two past the line, and writes the
// pair's six, three past the line.
//
// The image counts as tight when dst_bgr_stride is 4 * xres, not 3 * xres. With that stride, and a tight source, more
// than one row is converted as one line whose pixels follow each other without padding, three bytes apart; every other
// stride is a stride, 3 * xres included.
MORVANE_API void bgr(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgr, int dst_bgr_stride, int xres,
                     int yres, e_ycbcr_color_space color_space);
MORVANE_API void bgr_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgr, int dst_bgr_stride,
                         int xres, int yres);
MORVANE_API void bgr_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgr, int dst_bgr_stride,
                         int xres, int yres);

// To 32-bit RGB: the matrices of uyvy::bgr, with 255 in the fourth byte. Each row converts its whole pairs; the last
// pixel of an odd width is neither read nor written.
//
// On Apple systems the platform's vImage does these conversions, and those of bgrx_601, bgrx_709, rgbx_601 and rgbx_709
// to uyvy: with the same matrices in its own arithmetic, and with its own treatment of odd widths and other sizes.
MORVANE_API void bgra(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                      int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void bgra_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                          int xres, int yres);
MORVANE_API void bgra_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                          int xres, int yres);
MORVANE_API void rgba(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                      int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void rgba_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                          int xres, int yres);
MORVANE_API void rgba_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                          int xres, int yres);
MORVANE_API void bgrx(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                      int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void bgrx_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                          int xres, int yres);
MORVANE_API void bgrx_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                          int xres, int yres);
MORVANE_API void rgbx(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                      int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void rgbx_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                          int xres, int yres);
MORVANE_API void rgbx_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                          int xres, int yres);

}  // namespace uyvy

// RGB. The 4:2:2 chroma of a pair is sampled, never averaged: U comes from the even pixel alone, V from the odd one.
//
// The direct matrices, of `bgrx` and `rgbx`:
//
//   BT.601   U  = (-38 R - 75 G + 112 B + 32768) >> 8    BT.709   U  = (-26 R - 87 G + 112 B + 32768) >> 8
//            V  = (112 R - 94 G -  18 B + 32768) >> 8             V  = (112 R - 102 G - 10 B + 32768) >> 8
//            Y  = ( 33 R + 64 G +  13 B +  2048) >> 7             Y  = ( 23 R + 79 G +   8 B +  2048) >> 7

namespace bgra {

MORVANE_API void bgra(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                      int xres, int yres, bool* p_alpha_is_all_255);

// Composites over black with BT.709. With A the pixel's own alpha,
//
//   Y = ((((23 R + 80 G + 8 B) * A) >> 8) + 2048) >> 7
//   C = ((((-26 R - 87 G + 112 B) * A) >> 8) + 32768) >> 8
//
// U is the C of the even pixel and V the C of the odd one: V carries the blue difference, as U does, and no red
// difference is written. The green weight is 80 here. An opaque pixel keeps 255 / 256 of its weight.
//
// Only whole pairs are converted; the last pixel of an odd line is neither read nor written. The planes may overlap.
MORVANE_API void uyvy(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace bgra

namespace bgra_601 {

MORVANE_API void bgra_601(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                          int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace bgra_601

namespace bgra_709 {

MORVANE_API void bgra_709(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_bgra, int dst_bgra_stride,
                          int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace bgra_709

namespace rgba {

MORVANE_API void rgba(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                      int xres, int yres, bool* p_alpha_is_all_255);

// bgra::uyvy for the other byte order.
MORVANE_API void uyvy(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace rgba

namespace rgba_601 {

MORVANE_API void rgba_601(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                          int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace rgba_601

namespace rgba_709 {

MORVANE_API void rgba_709(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_rgba, int dst_rgba_stride,
                          int xres, int yres, bool* p_alpha_is_all_255);

}  // namespace rgba_709

// The `::uyvy` functions of the next six namespaces use the direct matrix: BT.709, or BT.601 in the namespaces that
// end in _601. They convert whole pairs; the last pixel of an odd line is neither read nor written. `bgrx::uyvy` and
// `rgbx::uyvy` take a tight image as one line, in which pairs may span two rows; the suffixed ones always convert row
// by row. Planes may overlap in `bgrx::uyvy` and `rgbx::uyvy`, not in the suffixed ones.

namespace bgrx {

MORVANE_API void bgrx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                      int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace bgrx

namespace bgrx_601 {

MORVANE_API void bgrx_601(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                          int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace bgrx_601

namespace bgrx_709 {

MORVANE_API void bgrx_709(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_bgrx, int dst_bgrx_stride,
                          int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace bgrx_709

namespace rgbx {

MORVANE_API void rgbx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                      int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace rgbx

namespace rgbx_601 {

MORVANE_API void rgbx_601(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                          int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace rgbx_601

namespace rgbx_709 {

MORVANE_API void rgbx_709(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_rgbx, int dst_rgbx_stride,
                          int xres, int yres);
MORVANE_API void uyvy(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace rgbx_709

namespace bgr {

// Copies 4 * xres bytes a row although a pixel takes three. With a stride of 3 * xres each row also writes the first
// xres bytes of the next, which the next row then replaces; the last row reads and writes xres bytes past the image, so
// both planes must leave that much room.
MORVANE_API void bgr(const uint8_t* p_src_bgr, int src_bgr_stride, uint8_t* p_dst_bgr, int dst_bgr_stride, int xres,
                     int yres);

// BT.709 with 8 bits of luma precision; the offsets are added after the shift:
//
//   U = ((-26 R -  87 G + 112 B) >> 8) + 128      of the even pixel
//   V = ((112 R - 102 G -  10 B) >> 8) + 128      of the odd pixel
//   Y = (( 47 R + 157 G +  16 B) >> 8) + 16
//
// A line of odd width completes its last pair: it reads the three bytes after the line as the second pixel and writes
// the pair's four bytes, two past the line.
MORVANE_API void uyvy(const uint8_t* p_src_bgr, int src_bgr_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride, int xres,
                      int yres);

}  // namespace bgr

namespace bgr_601 {

// The copy of bgr::bgr.
MORVANE_API void bgr_601(const uint8_t* p_src_bgr, int src_bgr_stride, uint8_t* p_dst_bgr, int dst_bgr_stride, int xres,
                         int yres);

}  // namespace bgr_601

namespace bgr_709 {

// The copy of bgr::bgr.
MORVANE_API void bgr_709(const uint8_t* p_src_bgr, int src_bgr_stride, uint8_t* p_dst_bgr, int dst_bgr_stride, int xres,
                         int yres);

}  // namespace bgr_709

// Planar, semi-planar and luma.
//
//   y_uv      a plane of luma and a plane of interleaved chroma, Cb Cr, one sample of each for two pixels
//   y_u_v     planes of luma, Cb and Cr
//
// In 4:2:2 every image row has a chroma row; in 4:2:0 two image rows share one. 4:2:0 chroma is that of the upper row
// as it is; on the way back to 4:2:2 every chroma row is repeated. Nothing is averaged or interpolated.

namespace uyvy {

// Whole pairs only: the last pixel of an odd line is neither read nor written. The planes may overlap; then the bytes
// of a pair are read and written one by one, those of luma before those of chroma. To 4:2:0 the image goes row by row
// and chroma has (yres + 1) / 2 rows, of which row k comes from image row 2k; a band of an image must begin at an even
// row.
//
// uyvy::y_u_v_422 takes an image as one line when the strides of both chroma planes are half that of luma and the
// others are tight. At an odd width the chroma of that line is longer than its rows: yres * xres / 2 samples. So bands
// of odd width that are converted at once need wider chroma strides.
MORVANE_API void y_uv_422(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride,
                          uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);
MORVANE_API void y_uv_420(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride,
                          uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);
MORVANE_API void y_u_v_422(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride,
                           uint8_t* p_dst_u, int dst_u_stride, uint8_t* p_dst_v, int dst_v_stride, int xres, int yres);
MORVANE_API void y_u_v_420(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride,
                           uint8_t* p_dst_u, int dst_u_stride, uint8_t* p_dst_v, int dst_v_stride, int xres, int yres);

// Luma alone. With key_color_alpha_rescale, luma Y of video range is stretched to a key of full range:
// clamp((301 Y - 5117) >> 8, 0, 255), so 17 and below give 0, and 234 and above give 255. A line of odd width completes
// its last pair: it reads two bytes past the line and writes one.
MORVANE_API void y(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride, int xres,
                   int yres, bool key_color_alpha_rescale);

// Y Cb Cr 255 for every pixel, with the chroma of its pair. A line of odd width completes its last pair: it reads two
// bytes past the line and writes four.
MORVANE_API void ycbcrx(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);

}  // namespace uyvy

namespace y {

// Samples to 16 bits: value * 256.
MORVANE_API void y16(const uint8_t* p_src_y, int src_y_stride, uint16_t* p_dst_y, int dst_y_stride, int xres, int yres);

// Grey video: every luma byte after a chroma byte of 128. With alpha_rescale, luma of full range is brought to video
// range: ((220 Y) >> 8) + 16.
MORVANE_API void uyvy(const uint8_t* p_src_y, int src_y_stride, uint8_t* p_dst_ycbcr, int dst_ycbcr_stride, int xres,
                      int yres, bool alpha_rescale);

}  // namespace y

namespace y16 {

// A copy, or with alpha_rescale 16-bit key luma of video range (4096 to 60160) stretched to full range:
// clamp((1197 Y - 4902912) >> 10, 0, 65535).
MORVANE_API void y16(const uint16_t* p_src_y, int src_y_stride, uint16_t* p_dst_y, int dst_y_stride, int xres, int yres,
                     bool alpha_rescale);

}  // namespace y16

namespace y_uv {

// A copy of a 4:2:0 image: yres rows of luma, and yres / 2 rows of xres / 2 pairs of chroma.
MORVANE_API void y_uv(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_uv, int src_uv_stride,
                      uint8_t* p_dst_y, int dst_y_stride, uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

// To 4:2:2: source chroma row k, xres bytes of it, goes to rows 2k and 2k + 1. With an odd height the last chroma row
// of the destination is not written.
MORVANE_API void y_uv_to422(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_uv, int src_uv_stride,
                            uint8_t* p_dst_y, int dst_y_stride, uint8_t* p_dst_cbcr, int dst_cbcr_stride,
                            int input_xres, int input_yres);

}  // namespace y_uv

namespace y_u_v {

// To semi-planar 4:2:0: luma is copied, and input_yres / 2 rows of xres / 2 samples of Cb and Cr are interleaved. The
// chroma is taken as one line when it has one row, or when dst_cbcr_stride is xres and both chroma strides of the
// source are xres / 2.
MORVANE_API void y_uv(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_u, int src_u_stride,
                      const uint8_t* p_src_v, int src_v_stride, uint8_t* p_dst_y, int dst_y_stride, uint8_t* p_dst_cbcr,
                      int dst_cbcr_stride, int xres, int input_yres);

// To semi-planar 4:2:2: source chroma row k goes to rows 2k and 2k + 1. With an odd height the last chroma row of the
// destination is not written.
MORVANE_API void y_uv_to422(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_u, int src_u_stride,
                            const uint8_t* p_src_v, int src_v_stride, uint8_t* p_dst_y, int dst_y_stride,
                            uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int input_yres);

}  // namespace y_u_v

// Chroma alone, to 16 bits (value * 256) and to 4:2:2 by repeating rows. The 16-bit destination may also be given by a
// byte pointer, of any address.

namespace cb_cr_8_420 {

// xres is the number of Cb samples in a row, yres the number of source rows.
MORVANE_API void cbcr_16_422(const uint8_t* p_src_cb, int src_cb_stride, const uint8_t* p_src_cr, int src_cr_stride,
                             uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);
MORVANE_API void cbcr_16_422(const uint8_t* p_src_cb, int src_cb_stride, const uint8_t* p_src_cr, int src_cr_stride,
                             uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

}  // namespace cb_cr_8_420

namespace cb_cr_16_422 {

// Interleaves xres words of Cb and of Cr in each of yres rows.
MORVANE_API void cbcr_16_422(const uint16_t* p_src_cb, int src_cb_stride, const uint16_t* p_src_cr, int src_cr_stride,
                             uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

}  // namespace cb_cr_16_422

namespace cbcr_8_420 {

// xres is the length of a source row in bytes, yres the number of source rows. An odd length is rounded up to a whole
// pair: one byte past the row is read, and a whole pair is written.
MORVANE_API void cbcr_16_422(const uint8_t* p_src_cbcr, int src_cbcr_stride, uint16_t* p_dst_cbcr, int dst_cbcr_stride,
                             int xres, int yres);
MORVANE_API void cbcr_16_422(const uint8_t* p_src_cbcr, int src_cbcr_stride, uint8_t* p_dst_cbcr, int dst_cbcr_stride,
                             int xres, int yres);

}  // namespace cbcr_8_420

// RGB to 4:4:4 YCbCr, with the direct matrices above; unsuffixed namespaces are BT.709. The layouts are
//
//   ycbcra    Y Cb Cr A                crcbya    Cr Cb Y A
//   ycbcrx    Y Cb Cr x                crcbyx    Cr Cb Y x
//
// Cb and the fourth byte (alpha as it is, or x = 255) are those of their pixel. Luma and Cr are not: in every line,
// only those of the last pixel are stored, and they are stored in the first pixel. Bytes 0 and 2 of all other pixels
// keep what they held; they are read and written again, so no other thread may write them meanwhile. In the first pixel
// of a line, byte 0 takes Y and byte 2 Cr in ycbcra and crcbya, and byte 0 takes Cr and byte 2 Y in ycbcrx and crcbyx.
// A line of one pixel has it the other way round in ycbcra and ycbcrx.
//
// A tight image is one line.

namespace bgra_601 {

MORVANE_API void ycbcra(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace bgra_601

namespace rgba_601 {

MORVANE_API void ycbcra(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace rgba_601

namespace bgrx_601 {

MORVANE_API void ycbcrx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace bgrx_601

namespace rgbx_601 {

MORVANE_API void ycbcrx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace rgbx_601

namespace bgra_709 {

MORVANE_API void ycbcra(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace bgra_709

namespace rgba_709 {

MORVANE_API void ycbcra(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace rgba_709

namespace bgrx_709 {

MORVANE_API void ycbcrx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace bgrx_709

namespace rgbx_709 {

MORVANE_API void ycbcrx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace rgbx_709

namespace bgra {

MORVANE_API void ycbcra(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace bgra

namespace rgba {

MORVANE_API void ycbcra(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride,
                        int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride,
                        int xres, int yres);

}  // namespace rgba

namespace bgrx {

MORVANE_API void ycbcrx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_bgrx, int src_bgrx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace bgrx

namespace rgbx {

MORVANE_API void ycbcrx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_ycbcrx, int dst_ycbcrx_stride,
                        int xres, int yres);
MORVANE_API void crcbyx(const uint8_t* p_src_rgbx, int src_rgbx_stride, uint8_t* p_dst_crcbyx, int dst_crcbyx_stride,
                        int xres, int yres);

}  // namespace rgbx

// RGB with alpha to video with a key: a plane of uyvy, by the direct matrices, and a plane of alpha as it is. Colour is
// not premultiplied. Whole pairs only: the last pixel of an odd line is neither read nor written. The destinations may
// overlap the source, not each other; of a pair uyvy is written before alpha.
//
// When p_alpha_all_255 is not null it receives whether all alpha that was converted is 255; the alpha of a last odd
// pixel does not count. The whole image is converted either way.

namespace bgra {

MORVANE_API void uyvy_a(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace bgra

namespace bgra_601 {

MORVANE_API void uyvy_a(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace bgra_601

namespace bgra_709 {

MORVANE_API void uyvy_a(const uint8_t* p_src_bgra, int src_bgra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace bgra_709

namespace rgba {

MORVANE_API void uyvy_a(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace rgba

namespace rgba_601 {

MORVANE_API void uyvy_a(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace rgba_601

namespace rgba_709 {

MORVANE_API void uyvy_a(const uint8_t* p_src_rgba, int src_rgba_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace rgba_709

// Video with a key.
//
//   ya_uv     a plane of luma and alpha, Y A, and a plane of interleaved chroma, Cb Cr, one sample of each for two
//   pixels
//
// These lines complete the last pair of an odd width, reading and writing all of it, except those to RGB, which leave
// the last pixel out.

namespace uyvy {

// The luma and chroma of a fill with the luma of a second image as alpha; with key_color_alpha_rescale that luma is
// stretched as uyvy::y does it. Each line converts its first pair alone: one pair a row, or one pair of the whole image
// when all strides are tight.
MORVANE_API void ya_uv(const uint8_t* p_src0_uyvy, int src0_uyvy_stride, const uint8_t* p_src1_uyvy,
                       int src1_uyvy_stride, uint8_t* p_dst_ya, int dst_ya_stride, uint8_t* p_dst_cbcr,
                       int dst_cbcr_stride, int xres, int yres, bool key_color_alpha_rescale);

}  // namespace uyvy

namespace uyvy_a {

// Copies of the samples.
MORVANE_API void ya_uv(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                       uint8_t* p_dst_ya, int dst_ya_stride, uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres,
                       int yres);

// Both pixels of a pair take its chroma.
MORVANE_API void ycbcra(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                        int src_alpha_stride, uint8_t* p_dst_ycbcra, int dst_ycbcra_stride, int xres, int yres);
MORVANE_API void crcbya(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                        int src_alpha_stride, uint8_t* p_dst_crcbya, int dst_crcbya_stride, int xres, int yres);

// Composites over black: 16 + (((Y - 16) * (A + 1)) >> 8) and 128 + (((C - 128) * (A + 1)) >> 8). Cb takes the alpha of
// the even pixel and Cr that of the odd one.
MORVANE_API void uyvy(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                      uint8_t* p_dst_uyvy, int dst_uyvy_stride, int xres, int yres);

// To RGB with the alpha of its plane. The matrix has 6 fractional bits: with u = Cb - 128, v = Cr - 128 and
// y = 74 Y - 1192, each byte is clamp(t >> 6, 0, 255) of
//
//   BT.601   B = y + 128 u                            BT.709   B = y + 128 u
//            G = y -  25 u -  52 v                             G = y -  14 u -  34 v
//            R = y + 102 v                                     R = y + 115 v
//
// Both pixels of a pair take its chroma.
MORVANE_API void bgra(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                      uint8_t* p_dst_bgra, int dst_bgra_stride, int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void bgra_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                          int src_alpha_stride, uint8_t* p_dst_bgra, int dst_bgra_stride, int xres, int yres);
MORVANE_API void bgra_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                          int src_alpha_stride, uint8_t* p_dst_bgra, int dst_bgra_stride, int xres, int yres);
MORVANE_API void rgba(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                      uint8_t* p_dst_rgba, int dst_rgba_stride, int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void rgba_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                          int src_alpha_stride, uint8_t* p_dst_rgba, int dst_rgba_stride, int xres, int yres);
MORVANE_API void rgba_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, const uint8_t* p_src_alpha,
                          int src_alpha_stride, uint8_t* p_dst_rgba, int dst_rgba_stride, int xres, int yres);

}  // namespace uyvy_a

// From 4:4:4 to video: chroma is that of the even pixel. With alpha, `::uyvy` composites over black as uyvy_a::uyvy
// does, and `::uyvy_a` copies the samples and alpha; p_alpha_all_255, when not null, receives whether all alpha that
// was written is 255, that of a completed pair included.

namespace ycbcra {

MORVANE_API void uyvy(const uint8_t* p_src_ycbcra, int src_ycbcra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);
MORVANE_API void uyvy_a(const uint8_t* p_src_ycbcra, int src_ycbcra_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace ycbcra

namespace vuya {

MORVANE_API void uyvy(const uint8_t* p_src_vuya, int src_vuya_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);
MORVANE_API void uyvy_a(const uint8_t* p_src_vuya, int src_vuya_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                        uint8_t* p_dst_alpha, int dst_alpha_stride, int xres, int yres, bool* p_alpha_all_255);

}  // namespace vuya

namespace ycbcrx {

MORVANE_API void uyvy(const uint8_t* p_src_ycbcrx, int src_ycbcrx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace ycbcrx

namespace vuyx {

MORVANE_API void uyvy(const uint8_t* p_src_vuyx, int src_vuyx_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

}  // namespace vuyx

// Planar RGB and luminance.

namespace uyvy {

// To planes of R, G and B of one common stride, with the matrix of uyvy_a::bgra. Whole pairs only: the last pixel of an
// odd line is neither read nor written.
MORVANE_API void r_g_b(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                       uint8_t* p_dst_b, int dst_stride, int xres, int yres, e_ycbcr_color_space color_space);
MORVANE_API void r_g_b_601(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                           uint8_t* p_dst_b, int dst_stride, int xres, int yres);
MORVANE_API void r_g_b_709(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_r, uint8_t* p_dst_g,
                           uint8_t* p_dst_b, int dst_stride, int xres, int yres);

}  // namespace uyvy

namespace L {

// B = G = R = L and alpha 255.
MORVANE_API void bgra(const uint8_t* p_src_L, int src_L_stride, uint8_t* p_dst_bgra, int dst_bgra_stride, int xres,
                      int yres);

}  // namespace L

// 16 bits.
//
// Samples are unsigned little-endian words. They hold an 8-bit video value v as 256 v, so luma runs from 4096 to 60160
// and zero chroma is 32768; a 10-bit value sits in the upper ten bits. Strides count bytes, and a plane may begin at
// any address: where a function takes its 16-bit planes by byte pointers, also at an odd one.
//
//   p216      a plane of luma, and one of chroma: Cb Cr, two words for a pair of pixels. Both planes take 2 * xres
//             bytes a row.
//   p010      as p216, but 4:2:0: yres / 2 rows of chroma
//   pa16      as p216, with a third plane of alpha: a word a pixel, 65535 is opaque
//   ya_uv     in 16 bits: a plane of Y A, two words a pixel, and the chroma plane of p216
//   vuya_16   Cb Cr Y A: four words a pixel. Its Cb comes first, unlike that of the 8-bit vuya and of vuya_f32.
//   vuya_f32  Cr Cb Y A: four 32-bit floats a pixel, Y and A from 0 to 1, Cb and Cr from -0.5 to 0.5
//
// 8 bits become 16 as 256 v for luma and chroma, and as 257 a for alpha; 16 bits become 8 by dropping the low byte.
// The functions that convert pairs complete the last pair of a line of odd width: they read and write both its pixels,
// one of which lies past the line. The others are exact at every width.

namespace uyvy {

// Whole pairs.
MORVANE_API void p216(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint16_t* p_dst_y, int dst_y_stride,
                      uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);
MORVANE_API void p216(const uint8_t* p_src_uyvy, int src_uyvy_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

}  // namespace uyvy

namespace y_uv {

// From 4:2:0: luma as y::y16 does it, and every chroma row, xres bytes of it, to two rows. The height must be even;
// with an odd one the chroma of one row more is read and written.
MORVANE_API void p216(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_uv, int src_uv_stride,
                      uint16_t* p_dst_y, int dst_y_stride, uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres,
                      int yres);
MORVANE_API void p216(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_uv, int src_uv_stride,
                      uint8_t* p_dst_y, int dst_y_stride, uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

}  // namespace y_uv

namespace ycbcra {

// Whole pairs; chroma is that of the even pixel alone. When p_alpha_all_255 is not null it receives whether all alpha
// was 255, that of a completed pair included. An image without pixels counts as opaque.
MORVANE_API void pa16(const uint8_t* p_src_ycbcra, int src_ycbcra_stride, uint16_t* p_dst_y, int dst_y_stride,
                      uint16_t* p_dst_cbcr, int dst_cbcr_stride, uint16_t* p_dst_alpha, int dst_alpha_stride, int xres,
                      int yres, bool* p_alpha_all_255);
MORVANE_API void pa16(const uint8_t* p_src_ycbcra, int src_ycbcra_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, uint8_t* p_dst_alpha, int dst_alpha_stride, int xres,
                      int yres, bool* p_alpha_all_255);

}  // namespace ycbcra

namespace p216 {

// The upper byte of every word. Exact at odd widths.
MORVANE_API void uyvy(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                      uint8_t* p_dst_uyvy, int dst_uyvy_stride, int xres, int yres);

// To 4:2:0: luma as it is, and chroma rows 0, 2, 4... as they are. The height must be even.
MORVANE_API void p010(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                      uint16_t* p_dst_y, int dst_y_stride, uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres,
                      int yres);

// To R G B 255 with the matrix of ITU-R BT.2020, from the upper byte of every word. With y = 74 Y - 1192,
// u = Cb - 128 and v = Cr - 128 of these bytes:
//   R = y + 107 v, G = y - (12 u + 42 v), B = y + 137 u, each clamp(t >> 6, 0, 255)
// Whole pairs of every row; the last pixel of an odd row is neither read nor written.
MORVANE_API void rgbx_2020(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_uv, int src_uv_stride,
                           uint8_t* p_dst_rgbx, int dst_rgbx_stride, int xres, int yres);

}  // namespace p216

namespace pa16 {

// Luma and alpha side by side; exact at odd widths. The chroma plane is copied as it is, before luma: with equal
// strides as one run of yres * dst_cbcr_stride bytes, which takes the padding of every row along; row by row where
// dst_cbcr_stride is the greater one; and not at all where it is the smaller one, or where a common stride is negative.
MORVANE_API void ya_uv(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                       const uint16_t* p_src_a, int src_a_stride, uint16_t* p_dst_ya, int dst_ya_stride,
                       uint16_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

// Whole pairs; both pixels take the pair's chroma.
MORVANE_API void vuya_16(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                         const uint16_t* p_src_a, int src_a_stride, uint16_t* p_dst_vuya, int dst_vuya_stride, int xres,
                         int yres);

// Whole pairs; both pixels take the pair's chroma. In single precision, every division a division:
//   Y = min((max(Y, 4096) - 4096) / 56064, 1), A = A / 65535
//   Cb and Cr = min((max(C, 4096) - 4096) / 57344 - 0.5, 0.5)
MORVANE_API void vuya_f32(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                          const uint16_t* p_src_a, int src_a_stride, uint8_t* p_dst_vuya, int dst_vuya_stride, int xres,
                          int yres);
MORVANE_API void vuya_f32(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_cbcr, int src_cbcr_stride,
                          const uint8_t* p_src_a, int src_a_stride, uint8_t* p_dst_vuya, int dst_vuya_stride, int xres,
                          int yres);

// Over black, whole pairs. With the alpha A of the sample's own pixel for luma, and that of the pair's even pixel for
// both Cb and Cr:
//   Y = 4096 + ((Y - 4096) * (A + 1) >> 16), C = 32768 + ((C - 32768) * (A + 1) >> 16)
MORVANE_API void p216(const uint16_t* p_src_y, int src_y_stride, const uint16_t* p_src_cbcr, int src_cbcr_stride,
                      const uint16_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);
MORVANE_API void p216(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_cbcr, int src_cbcr_stride,
                      const uint8_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

}  // namespace pa16

// The 10-bit formats of Matrox cards. A 10-bit value t is 64 t in 16 bits; of 16 bits the low six are dropped.
//
//   yuyv_matrox_10     4:2:2, 40 bytes for 16 pixels: the upper eight bits of 32 samples, Y0 Cb Y1 Cr for each pair,
//                      then a byte for each pair with the lower two bits of its samples:
//                        bits 7 6: Cr   5 4: Y1   3 2: Cb   1 0: Y0
//                      A last group of fewer pixels keeps these places; its other bytes are not touched.
//   yua_yva_matrox_10  4:2:2 with a key, a little-endian 32-bit word a pixel:
//                        bits 31 30: zero   29...20: A   19...10: Cb of even pixels, Cr of odd ones   9...0: Y
//
// The 16-bit planes of p216, pa16 and alpha_u16 are given by byte pointers. A tight yuyv_matrox_10 stride is
// xres * 40 / 16 bytes. yuyv_matrox_10 is read and written in whole pairs, completed at odd widths; yua_yva_matrox_10
// pixel by pixel.

namespace yuyv_matrox_10 {

// Every even luma sample keeps only its lower two bits, in bits 7 and 6 of the word: its upper byte is left out. Row by
// row.
MORVANE_API void p216(const uint8_t* p_src_yuyv, int src_yuyv_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, int xres, int yres);

// The upper eight bits of every sample.
MORVANE_API void uyvy(const uint8_t* p_src_yuyv, int src_yuyv_stride, uint8_t* p_dst_uyvy, int dst_uyvy_stride,
                      int xres, int yres);

// Fills with black: luma 64, chroma 512. Row by row.
MORVANE_API void black(uint8_t* p_dst_yuyv, int dst_yuyv_stride, int xres, int yres);

}  // namespace yuyv_matrox_10

namespace p216 {

MORVANE_API void yuyv_matrox_10(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_cbcr,
                                int src_cbcr_stride, uint8_t* p_dst_yuyv, int dst_yuyv_stride, int xres, int yres);

}  // namespace p216

namespace pa16 {

// Over black, as pa16::p216, then packed; but the lower two bits of Cr are those of Cb.
MORVANE_API void yuyv_matrox_10(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_cbcr,
                                int src_cbcr_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                                uint8_t* p_dst_yuyv, int dst_yuyv_stride, int xres, int yres);

// The upper ten bits of every sample.
MORVANE_API void yua_yva_matrox_10(const uint8_t* p_src_y, int src_y_stride, const uint8_t* p_src_cbcr,
                                   int src_cbcr_stride, const uint8_t* p_src_alpha, int src_alpha_stride,
                                   uint8_t* p_dst_yua_yva, int dst_yua_yva_stride, int xres, int yres);

}  // namespace pa16

namespace yua_yva_matrox_10 {

MORVANE_API void pa16(const uint8_t* p_src_yua_yva, int src_yua_yva_stride, uint8_t* p_dst_y, int dst_y_stride,
                      uint8_t* p_dst_cbcr, int dst_cbcr_stride, uint8_t* p_dst_a, int dst_a_stride, int xres, int yres);

}  // namespace yua_yva_matrox_10

namespace alpha_u16 {

// A key as a picture: alpha as luma, without a change of range, and neutral chroma.
MORVANE_API void yuyv_matrox_10(const uint8_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_yuyv,
                                int dst_yuyv_stride, int xres, int yres);

}  // namespace alpha_u16

// Depths of alpha and luma. The source is a plane of bytes or of 16-bit words; the number in a name such as
// alpha_10u16 is that of the low bits of the word which hold the value. Exact at odd widths.

namespace alpha {

// 257 a: the byte in both halves of the word.
MORVANE_API void alpha_u16(const uint8_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_alpha, int dst_alpha_stride,
                           int xres, int yres);

}  // namespace alpha

namespace alpha_u16 {

// The upper byte.
MORVANE_API void alpha(const uint16_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_alpha, int dst_alpha_stride,
                       int xres, int yres);

}  // namespace alpha_u16

namespace alpha_10u16 {

// (a << 6) + (a >> 4), modulo 65536: a value above 1023 wraps.
MORVANE_API void alpha_u16(const uint8_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_alpha, int dst_alpha_stride,
                           int xres, int yres);

}  // namespace alpha_10u16

namespace alpha_12u16 {

// (a << 4) + (a >> 8), modulo 65536: a value above 4095 wraps.
MORVANE_API void alpha_u16(const uint8_t* p_src_alpha, int src_alpha_stride, uint8_t* p_dst_alpha, int dst_alpha_stride,
                           int xres, int yres);

}  // namespace alpha_12u16

namespace y_10u16 {

// y >> 2, modulo 256: a value above 1023 wraps.
MORVANE_API void y(const uint16_t* p_src_y, int src_y_stride, uint8_t* p_dst_y, int dst_y_stride, int xres, int yres);

}  // namespace y_10u16

namespace bgra64 {

// The alpha of pixels of four 16-bit words, B G R A.
MORVANE_API void alpha16(const uint8_t* p_src_bgra64, int src_bgra64_stride, uint8_t* p_dst_alpha, int dst_alpha_stride,
                         int xres, int yres);

}  // namespace bgra64

}  // namespace format_conversion

namespace sum_absolute_differences {

// The sum of |a - b| over all bytes of two images of xres * yres bytes, exact.
MORVANE_API uint64_t difference(const uint8_t* p_src_data, int src_stride, const uint8_t* p_dst_data, int dst_stride,
                                int xres, int yres);

}  // namespace sum_absolute_differences

}  // namespace Processing::Morvane

#endif
