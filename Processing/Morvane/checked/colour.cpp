#include "colour.h"

#include <cmath>

#include "../backend/dispatch.h"

namespace Processing::Morvane::checked {

namespace {

using backend::line_of;

struct luma_weights {
  double r, g, b;
};

// Of ITU-R BT.601, BT.709 and BT.2020.
luma_weights weights_of(const int matrix) {
  const double r = matrix == 601 ? 0.299 : matrix == 2020 ? 0.2627 : 0.2126;
  const double b = matrix == 601 ? 0.114 : matrix == 2020 ? 0.0593 : 0.0722;
  return {r, 1 - r - b, b};
}

int nearest(const double value) {
  return static_cast<int>(std::lround(value));
}

struct to_rgb_coefficients {
  int y, r_cr, g_cb, g_cr, b_cb;
};

to_rgb_coefficients to_rgb_of(const shape& ycbcr) {
  const luma_weights k = weights_of(ycbcr.matrix);
  const span s = span_of_samples(ycbcr);
  const double luma = 8192 * 65535.0 / s.luma;
  const double chroma = 8192 * 65535.0 / s.chroma;
  return {nearest(luma), nearest(2 * (1 - k.r) * chroma), nearest(2 * (1 - k.b) * k.b / k.g * chroma),
          nearest(2 * (1 - k.r) * k.r / k.g * chroma), nearest(2 * (1 - k.b) * chroma)};
}

template <class Coefficient>
kernel::rgb_coefficients<Coefficient> from_rgb_of(const int matrix, const span& s) {
  const luma_weights k = weights_of(matrix);
  const double luma = 32768 * (s.luma / 65535.0);
  const double chroma = 32768 * (s.chroma / 65535.0);
  const int y_r = nearest(k.r * luma);
  const int y_b = nearest(k.b * luma);
  const int greatest = nearest(chroma / 2);
  const int cb_r = nearest(k.r / (2 * (1 - k.b)) * chroma);
  const int cr_b = nearest(k.b / (2 * (1 - k.r)) * chroma);
  const auto as = [](const int value) { return static_cast<Coefficient>(value); };
  return {as(y_r),      as(nearest(luma) - y_r - y_b), as(y_b),  as(cb_r), as(greatest - cb_r), as(greatest),
          as(greatest), as(greatest - cr_b),           as(cr_b), s.black};
}

constexpr span video_span = {4096, 56064, 57344};

kernel::scale_line scale_by(const int from, const int to, const double quotient, const int bits) {
  kernel::scale_line result{};
  result.from = from;
  result.to = to;
  result.factor = nearest(quotient * (1 << bits));
  result.bits = bits;
  return result;
}

}  // namespace

span span_of_samples(const shape& s) {
  if (!s.full_range) return video_span;
  const int greatest = ((1 << s.depth) - 1) << (16 - s.depth);
  return {0, greatest, greatest};
}

bool is_narrow(const shape& source, const shape& destination) {
  return source.depth <= 10 && destination.depth <= 10;
}

kernel::ycbcr_lines_to_rgb_narrow narrow_to_rgb(const shape& ycbcr) {
  const to_rgb_coefficients k = to_rgb_of(ycbcr);
  kernel::ycbcr_lines_to_rgb_narrow result{};
  result.y = static_cast<int16_t>(k.y);
  result.r_cr = static_cast<int16_t>(k.r_cr);
  result.g_cb = static_cast<int16_t>(k.g_cb);
  result.g_cr = static_cast<int16_t>(k.g_cr);
  result.b_cb = static_cast<int16_t>(k.b_cb);
  result.black = static_cast<int16_t>(((32768 - span_of_samples(ycbcr).black) * k.y + 16384) >> 15);
  return result;
}

kernel::ycbcr_lines_to_rgb_wide wide_to_rgb(const shape& ycbcr) {
  const to_rgb_coefficients k = to_rgb_of(ycbcr);
  kernel::ycbcr_lines_to_rgb_wide result{};
  result.y = k.y;
  result.r_cr = k.r_cr;
  result.g_cb = k.g_cb;
  result.g_cr = k.g_cr;
  result.b_cb = k.b_cb;
  result.black = span_of_samples(ycbcr).black;
  return result;
}

kernel::rgb_lines_to_ycbcr_narrow narrow_to_ycbcr(const shape& ycbcr) {
  kernel::rgb_lines_to_ycbcr_narrow result{};
  result.of = from_rgb_of<int16_t>(ycbcr.matrix, span_of_samples(ycbcr));
  return result;
}

kernel::rgb_lines_to_ycbcr_wide wide_to_ycbcr(const shape& ycbcr) {
  kernel::rgb_lines_to_ycbcr_wide result{};
  result.of = from_rgb_of<int32_t>(ycbcr.matrix, span_of_samples(ycbcr));
  return result;
}

kernel::rgb_lines_to_luminance to_luminance(const shape& destination) {
  const auto k = from_rgb_of<int32_t>(destination.matrix, full_span);
  kernel::rgb_lines_to_luminance result{};
  result.r = k.y_r;
  result.g = k.y_g;
  result.b = k.y_b;
  return result;
}

bool ranges_differ(const shape& source, const shape& destination) {
  return source.full_range != destination.full_range || (source.full_range && source.depth != destination.depth);
}

kernel::scale_line luma_between(const shape& source, const shape& destination) {
  const span from = span_of_samples(source);
  const span to = span_of_samples(destination);
  return scale_by(from.black, to.black, static_cast<double>(to.luma) / from.luma, 14);
}

kernel::scale_line chroma_between(const shape& source, const shape& destination) {
  const span from = span_of_samples(source);
  const span to = span_of_samples(destination);
  return scale_by(32768, 32768, static_cast<double>(to.chroma) / from.chroma, 14);
}

kernel::scale_line video_to_full() {
  return scale_by(video_span.black, 0, static_cast<double>(full_span.luma) / video_span.luma, 13);
}

kernel::scale_line full_to_video() {
  return scale_by(0, video_span.black, static_cast<double>(video_span.luma) / full_span.luma, 15);
}

background background_in(const shape& s, const uint8_t* rgb, const bool keeps_video_range) {
  background result{};
  for (int i = 0; i < 3; ++i) result.of[i] = static_cast<uint16_t>(257 * rgb[i]);
  if (s.colour == model::ycbcr) {
    const background full = result;
    line_of<kernel::rgb_lines_to_ycbcr_wide>()(&full.of[0], &full.of[1], &full.of[2], &result.of[0], &result.of[1],
                                               &result.of[2], 1, wide_to_ycbcr(s));
  } else if (keeps_video_range) {
    line_of<kernel::scale_line>()(result.of, 3, full_to_video());
  }
  return result;
}

}  // namespace Processing::Morvane::checked
