#include "rows.h"

#include <algorithm>

namespace morvane::bench {

namespace {

using catalogue::color_model;
using catalogue::conversion;

// What follows from no field of the catalogue.
constexpr struct {
  std::string_view name;
  kind what;
} exceptions[] = {
    {"uyvy_a::uyvy", kind::weighting}, {"ycbcra::uyvy", kind::weighting},   {"vuya::uyvy", kind::weighting},
    {"pa16::p216", kind::weighting},   {"pa16::vuya_f32", kind::weighting}, {"pa16::yuyv_matrox_10", kind::weighting},
    {"uyvy::ya_uv", kind::nothing},
};

kind kind_of(const conversion& c, bool rescale) {
  for (const auto& e : exceptions)
    if (e.name == c.name) return e.what;
  if (c.colors != catalogue::matrix::none)
    return catalogue::find_format(c.destination)->model == color_model::rgb ? kind::ycbcr_to_rgb : kind::rgb_to_ycbcr;
  if (rescale) return kind::weighting;
  return c.source.empty() || c.source == c.destination ? kind::copy : kind::rearrangement;
}

// What bounds a row, or all conversions of RGB to a format.
struct reason {
  std::string_view name_or_format{};
  std::string_view sentence{};
};

constexpr std::string_view single_bytes =
    "writes two bytes of every four and must leave the others alone, so it stores single bytes: two stores a pixel";
constexpr std::string_view four_for_three = "copies four bytes for every pixel of three";
constexpr std::string_view scaled_sums =
    "about 50 instructions for 32 pixels, because every sum is scaled by alpha before it is cut to a byte";
constexpr std::string_view scaled_samples =
    "every sample is taken apart to 16 bits, moved towards black by its alpha and put together again";
constexpr std::string_view three_byte_pixels =
    "pixels of three bytes have to be squeezed out of or spread to four, across the halves of a register";
constexpr std::string_view lower_bits = "the lower two bits of four samples go to or come from one byte";

constexpr reason reasons[] = {
    {"bgr::bgr", four_for_three},
    {"bgr_601::bgr_601", four_for_three},
    {"bgr_709::bgr_709", four_for_three},
    {"ycbcra", single_bytes},
    {"crcbya", single_bytes},
    {"ycbcrx", single_bytes},
    {"crcbyx", single_bytes},
    {"bgra::uyvy", scaled_sums},
    {"rgba::uyvy", scaled_sums},
    {"ycbcra::uyvy", scaled_samples},
    {"vuya::uyvy", scaled_samples},
    {"bgr::uyvy", three_byte_pixels},
    {"uyvy::bgr", three_byte_pixels},
    {"uyvy::bgr_601", three_byte_pixels},
    {"uyvy::bgr_709", three_byte_pixels},
    {"v210::uyvy", "three shifts and masks for every word, and twelve bytes of sixteen squeezed across the halves"},
    {"pa16::vuya_f32",
     "three true divisions for eight pixels keep the divider busy three times as long as a copy takes"},
    {"pa16::yuyv_matrox_10", "every sample is moved towards black, and its lower two bits go to a byte of their own"},
    {"yuyv_matrox_10::p216", lower_bits},
    {"p216::yuyv_matrox_10", lower_bits},
    {"alpha_u16::yuyv_matrox_10", lower_bits},
    {"uyvy::y(rescale)", "eleven instructions for 32 bytes, because every byte is multiplied in 16 bits"},
    {"alpha_10u16::alpha_u16", "fills the lower bits with the upper ones, where libyuv multiplies only"},
    {"alpha_12u16::alpha_u16", "fills the lower bits with the upper ones, where libyuv multiplies only"},
};

bool is_32_bit_rgb(std::string_view format_name) {
  const catalogue::format& f = *catalogue::find_format(format_name);
  return f.model == color_model::rgb && f.planes[0].group_bytes == 4;
}

bool makes_32_bit_rgb_of_uyvy(const row& r) {
  return r.what == kind::ycbcr_to_rgb && r.conversion->source == "uyvy" && is_32_bit_rgb(r.conversion->destination);
}

}  // namespace

std::vector<row> all_rows() {
  std::vector<row> result;
  for (const conversion* c : all_conversions()) {
    const std::string name = display_name(*c);
    result.push_back({c, false, name, kind_of(*c, false)});
    if (c->extra == catalogue::argument::rescale && result.back().what != kind::nothing)
      result.push_back({c, true, name + "(rescale)", kind_of(*c, true)});
  }
  return result;
}

catalogue::call prepare(const arena& memory, const row& r, const workload& w, bool* opaque) {
  catalogue::call c = memory.prepare(w, opaque);
  if (r.rescale) c.argument = 1;
  return c;
}

const target* target_of(kind what) {
  for (const target& t : targets)
    if (t.what == what) return &t;
  return nullptr;
}

double least_of_libyuv_in_cache(const row& r) {
  const conversion& c = *r.conversion;
  if (r.what == kind::rgb_to_ycbcr && (c.destination == "uyvy" || c.destination == "uyvy_a")) return 3.0;
  if (makes_32_bit_rgb_of_uyvy(r)) return 1.2;
  return least_of_peer;
}

std::string_view explanation(const row& r) {
  for (const reason& e : reasons) {
    const bool by_format = r.what == kind::rgb_to_ycbcr && e.name_or_format == r.conversion->destination;
    if (by_format || e.name_or_format == r.name) return e.sentence;
  }
  if (r.conversion->source.empty())
    return "only writes, which costs a cache more than the reading that is half of a copy";
  if (makes_32_bit_rgb_of_uyvy(r))
    return "57 vector instructions for 32 pixels, 19 cycles on three ports, where a copy takes 6 in cache: all eight "
           "fractional bits are kept";
  return {};
}

}  // namespace morvane::bench
