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

// One sentence for the conversions to or from `format`, or for the one of this name.
struct reason {
  std::string_view name_or_format{};
  std::string_view sentence{};
};

constexpr reason reasons[] = {
    {"bgr::bgr", "copies four bytes for every pixel of three"},
    {"bgr_601::bgr_601", "copies four bytes for every pixel of three"},
    {"bgr_709::bgr_709", "copies four bytes for every pixel of three"},
    {"ycbcra", "writes two bytes of every four and must leave the others alone, so it stores single bytes"},
    {"crcbya", "writes two bytes of every four and must leave the others alone, so it stores single bytes"},
    {"ycbcrx", "writes two bytes of every four and must leave the others alone, so it stores single bytes"},
    {"crcbyx", "writes two bytes of every four and must leave the others alone, so it stores single bytes"},
};

bool is_32_bit_rgb(std::string_view format_name) {
  const catalogue::format& f = *catalogue::find_format(format_name);
  return f.model == color_model::rgb && f.planes[0].group_bytes == 4;
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
  if (r.what == kind::ycbcr_to_rgb && c.source == "uyvy" && is_32_bit_rgb(c.destination)) return 1.2;
  return least_of_peer;
}

std::string_view explanation(const row& r) {
  for (const reason& e : reasons) {
    const bool by_format = r.what == kind::rgb_to_ycbcr && e.name_or_format == r.conversion->destination;
    if (by_format || e.name_or_format == r.name) return e.sentence;
  }
  return {};
}

}  // namespace morvane::bench
