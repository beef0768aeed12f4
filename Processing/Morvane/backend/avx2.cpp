// Every kernel compiled for AVX2. This translation unit alone is built with AVX2 instructions.
#include "../vector/avx2.h"

#include "../format_conversion_line.h"
#include "../format_conversion_line_bgr.h"
#include "../format_conversion_line_bgra.h"
#include "../format_conversion_line_black.h"
#include "../vector/operations.h"
#include "run.h"

namespace Processing::Morvane::backend {

static_assert(format_conversion::vector::backend_with_vectors<format_conversion::vector::avx2>);

template <class Kernel>
line_function<Kernel> on_avx2<Kernel>::line() {
  return &Kernel::template line<format_conversion::vector::avx2>;
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

}  // namespace Processing::Morvane::backend
