#include "report/targets.h"

namespace morvane::bench {

namespace {

using catalogue::color_model;
using catalogue::conversion;

// What bounds a row.
struct reason {
  std::string_view name{};
  std::string_view sentence{};
};

constexpr std::string_view four_for_three = "copies four bytes for every pixel of three";
constexpr std::string_view three_byte_pixels =
    "53 vector instructions for 32 pixels with BT.709 and 61 with BT.601, three of them a cycle, where a copy in cache "
    "takes the time of 17: eight to squeeze three bytes out of four";
constexpr std::string_view past_the_caches =
    "OpenCV writes past the caches: faster by itself above 4 MB, slower together with whoever reads the image next";
constexpr std::string_view fills_up = "fills the lower bits with the upper ones, where libyuv multiplies only";

constexpr reason reasons[] = {
    {"bgr::bgr", four_for_three},
    {"bgr_601::bgr_601", four_for_three},
    {"bgr_709::bgr_709", four_for_three},
    {"uyvy::bgr", three_byte_pixels},
    {"uyvy::bgr_601", three_byte_pixels},
    {"uyvy::bgr_709", three_byte_pixels},
    {"pa16::yuyv_matrox_10", "28 vector instructions for 16 pixels, three of them a cycle"},
    {"pa16::vuya_16", "between 0.8 and 1.0 from run to run of the same code"},
    {"bgra64::alpha16", "between 0.8 and 1.0 from run to run of the same code"},
    {"pa16::yua_yva_matrox_10", "between 0.9 and 1.0 from run to run of the same code"},
    {"alpha_u16::alpha",
     "reads two bytes for one that it writes; asking for them ahead gains half of what is missing, but costs rows of "
     "64 "
     "pixels a seventh"},
    {"alpha_10u16::alpha_u16", fills_up},
    {"alpha_12u16::alpha_u16", fills_up},
    {"y_10u16::y", "cuts values beyond ten bits, two instructions of six, where libyuv stops them at 255"},
    {"cb_cr_16_422::cbcr_16_422", past_the_caches},
    {"uyvy::y_uv_422", past_the_caches},
};

bool is_32_bit_rgb(std::string_view format_name) {
  const catalogue::format& f = *catalogue::find_format(format_name);
  return f.model == color_model::rgb && f.planes[0].group_bytes == 4;
}

bool makes_32_bit_rgb_of_uyvy(const row& r) {
  return r.what == kind::ycbcr_to_rgb && r.conversion->source == "uyvy" && is_32_bit_rgb(r.conversion->destination);
}

bool writes_most(const conversion& c) {
  constexpr int side = 64;
  const auto bytes = [](std::string_view format_name) {
    return format_name.empty() ? 0 : catalogue::find_format(format_name)->frame_bytes(side, side);
  };
  return 2 * bytes(c.destination) >= 3 * bytes(c.source);
}

}  // namespace

const target* target_of(const row& r) {
  if (r.conversion->name == "uyvy::ya_uv") return nullptr;
  for (const target& t : targets)
    if (t.what == r.what) return &t;
  return nullptr;
}

double least_of_libyuv_in_cache(const row& r) {
  const conversion& c = *r.conversion;
  if (r.what == kind::rgb_to_ycbcr && (c.destination == "uyvy" || c.destination == "uyvy_a")) return 3.0;
  if (makes_32_bit_rgb_of_uyvy(r)) return 1.2;
  return least_of_peer;
}

std::string_view explanation(const row& r) {
  for (const reason& e : reasons)
    if (e.name == r.name) return e.sentence;
  const conversion& c = *r.conversion;
  if (c.source.empty()) return "only writes, which costs a cache more than the reading that is half of a copy";
  if (r.what == kind::copy) return "calls memcpy, row by row or at once";
  if (makes_32_bit_rgb_of_uyvy(r))
    return "47 vector instructions for 32 pixels with BT.709 and 55 with BT.601, three of them a cycle: all eight "
           "fractional bits are kept, where libyuv keeps six";
  if (r.what == kind::rgb_to_ycbcr) {
    if (catalogue::find_format(c.destination)->planes[0].group_pixels == 1)
      return "also reads the destination, half of which it leaves as it was";
    return "32 vector instructions for 32 pixels, 36 with alpha, three of them a cycle: half the time of libyuv, a "
           "third of "
           "which would be that of a copy";
  }
  if (writes_most(c)) return "writes more than it reads, which costs a cache more than a copy";
  return {};
}

std::string_view explanation_of_short_rows(const row& r) {
  if (r.name == "v210::uyvy")
    return "64 pixels are ten groups and two thirds, which two vectors of eight groups convert";
  return "64 pixels take little longer than the call that converts them";
}

}  // namespace morvane::bench
