#include "shape.h"

#include <algorithm>

namespace Processing::Morvane::checked {

namespace {

using catalogue::color_model;

model model_of(const catalogue::format& f) {
  switch (f.model) {
    case color_model::ycbcr:
      return model::ycbcr;
    case color_model::rgb:
      return model::rgb;
    case color_model::luma:
      return f.planes[0].components == "L" ? model::luminance : model::ycbcr;
    case color_model::chroma:
      return model::chroma;
    case color_model::alpha:
      return model::alpha;
  }
  return model::ycbcr;
}

void set_planes(shape& s) {
  s.plane_count = s.format->plane_count();
  for (size_t i = 0; i < s.plane_count; ++i) {
    const catalogue::plane& p = s.format->planes[i];
    s.planes[i] = stored(p);
    s.depth = std::max(s.depth, p.depth());
    s.exact_bits = std::max(s.exact_bits, p.exact_bits());
    if (s.planes[i].has(alpha)) s.alpha_depth = p.depth_of_alpha();
    if (s.colour == model::rgb || !s.planes[i].has(second)) continue;
    s.has_chroma = true;
    s.half_width = 2 * s.planes[i].samples[second] == p.group_pixels;
    s.half_height = p.image_rows == 2;
  }
}

bool has_floats(const catalogue::format& f) {
  return catalogue::is_float(f.planes[0].sample);
}

problem colour(const morvane_description& d, const char* name, shape& s) {
  if (d.matrix != 0 && d.matrix != 601 && d.matrix != 709 && d.matrix != 2020)
    return wrong(MORVANE_OPTION, part(name, "matrix").text, d.matrix, 709, "is %d, not 601, 709, 2020 or 0",
                 static_cast<int>(d.matrix));
  if (d.range < MORVANE_RANGE_DEFAULT || d.range > MORVANE_FULL)
    return wrong(MORVANE_OPTION, part(name, "range").text, d.range, MORVANE_VIDEO,
                 "is %d, not 1 (video), 2 (full) or 0", static_cast<int>(d.range));
  if (d.matrix != 0) s.matrix = d.matrix;
  const bool is_rgb = s.colour == model::rgb;
  s.full_range = d.range == MORVANE_RANGE_DEFAULT ? is_rgb : d.range == MORVANE_FULL;
  if (s.colour == model::luminance || s.colour == model::alpha) s.full_range = true;
  if (has_floats(*s.format)) s.full_range = is_rgb;
  return none();
}

}  // namespace

bool fills_words(const shape& s) {
  return s.colour == model::luminance || (s.colour == model::rgb && s.full_range);
}

bool is_full(const stored_plane& p, const shape& s) {
  for (const component c : {first, second, third, alpha})
    if (p.has(c) && p.groups(s.width) * p.samples[c] != s.samples_of(c, s.width)) return false;
  return true;
}

const catalogue::format* format_of_id(const int32_t id) {
  for (const catalogue::format& f : catalogue::formats)
    if (f.id == id) return &f;
  return nullptr;
}

problem unknown_format(const char* argument, const int32_t id) {
  return wrong(MORVANE_UNKNOWN_FORMAT, argument, id, 0, "is %d, which no format has as its id", static_cast<int>(id));
}

problem describe(const morvane_description* description, const char* name, shape& result) {
  if (description == nullptr) return wrong(MORVANE_NULL, name, 0, 0, "is null");
  const morvane_description& d = *description;
  if (const problem p = check_size(part(name, "struct_size").text, d.struct_size, sizeof d); is_wrong(p)) return p;
  result = {};
  result.format = format_of_id(d.format);
  if (result.format == nullptr) return unknown_format(part(name, "format").text, d.format);
  if (d.width < 1)
    return wrong(MORVANE_SIZE, part(name, "width").text, d.width, 1, "is %d, and must be at least 1",
                 static_cast<int>(d.width));
  if (d.height < 1)
    return wrong(MORVANE_SIZE, part(name, "height").text, d.height, 1, "is %d, and must be at least 1",
                 static_cast<int>(d.height));
  result.width = d.width;
  result.height = d.height;
  result.colour = model_of(*result.format);
  result.has_alpha = result.format->alpha;
  set_planes(result);
  return colour(d, name, result);
}

}  // namespace Processing::Morvane::checked
