#include "way.h"

#include <algorithm>

namespace Processing::Morvane::checked {

namespace {

bool is_pair_of_images(const shape& s) {
  return s.format->plane_count() == 2 && s.format->planes[0].components == s.format->planes[1].components;
}

bool is_colour(const shape& s) {
  return s.colour == model::ycbcr || s.colour == model::rgb || s.colour == model::luminance;
}

// Positions in a row are of int.
problem check_width(const shape& s) {
  constexpr int widest = 1 << 28;
  if (s.width <= widest) return none();
  return wrong(MORVANE_SIZE, "source.width", s.width, widest, "is %d, and at most %d can be converted", s.width,
               widest);
}

problem check_pair(const shape& from, const shape& to, const bool has_via) {
  if (from.width != to.width || from.height != to.height)
    return wrong(MORVANE_NO_WAY, "destination", to.width, from.width,
                 "is of %dx%d pixels and the source of %dx%d; sizes are not changed", to.width, to.height, from.width,
                 from.height);
  if (has_via) return none();
  const bool can = (from.colour == to.colour || (is_colour(from) && is_colour(to))) && !is_pair_of_images(from) &&
                   !is_pair_of_images(to);
  if (!can)
    return wrong(MORVANE_NO_WAY, "destination.format", to.format->id, from.format->id, "%s cannot be made of %s",
                 to.format->name.data(), from.format->name.data());
  return none();
}

void choose_matrices(way& w) {
  const bool from_ycbcr = w.from.colour == model::ycbcr;
  const bool to_ycbcr = w.to.colour == model::ycbcr;
  w.has_to_rgb = from_ycbcr && (!to_ycbcr || w.from.matrix != w.to.matrix);
  w.has_from_rgb = to_ycbcr && (!from_ycbcr || w.has_to_rgb);
  w.has_luminance = w.to.colour == model::luminance && w.from.colour != model::luminance;
  w.narrow = is_narrow(w.from, w.to);
  if (w.has_to_rgb) {
    w.narrow_to = narrow_to_rgb(w.from);
    w.wide_to = wide_to_rgb(w.from);
  }
  if (w.has_from_rgb) {
    w.narrow_from = narrow_to_ycbcr(w.to);
    w.wide_from = wide_to_ycbcr(w.to);
  }
  if (w.has_luminance) w.luminance = to_luminance(w.to);
}

void choose_ranges(way& w) {
  const bool video_from = w.from.colour == model::rgb && !w.from.full_range;
  const bool video_to = w.to.colour == model::rgb && !w.to.full_range;
  w.widens_rgb = video_from && !video_to;
  w.narrows_rgb = video_to && !video_from;
  if (w.widens_rgb) w.rgb_range = video_to_full();
  if (w.narrows_rgb) w.rgb_range = full_to_video();
  const bool of_video = w.from.colour == model::ycbcr || w.from.colour == model::chroma;
  w.scales_range = of_video && !w.has_to_rgb && ranges_differ(w.from, w.to);
  if (!w.scales_range) return;
  w.luma_range = luma_between(w.from, w.to);
  w.chroma_range = chroma_between(w.from, w.to);
}

void choose_sampling(way& w) {
  w.reads_chroma = w.from.has_chroma && (w.has_to_rgb || w.to.has_chroma);
  const bool matrix = w.has_to_rgb || w.has_from_rgb;
  const bool makes_chroma = w.to.has_chroma && (w.reads_chroma || w.has_from_rgb);
  w.keeps_half_rows = !matrix && w.reads_chroma && w.from.half_height && w.to.half_height;
  w.doubles_rows = w.reads_chroma && w.from.half_height && !w.keeps_half_rows;
  w.doubles_columns = w.reads_chroma && w.from.half_width && (w.has_to_rgb || !w.to.half_width);
  w.halves_columns = makes_chroma && w.to.half_width && (w.has_from_rgb || !w.from.half_width);
  w.halves_rows = makes_chroma && w.to.half_height && !w.keeps_half_rows;
}

std::string sampling_of(const shape& s) {
  return s.half_height ? "4:2:0" : s.half_width ? "4:2:2" : "4:4:4";
}

std::string bits_of(const shape& s) {
  return std::to_string(s.depth);
}

// They hold ten bits of all numbers from 0 to 1.
bool has_half_floats(const shape& s) {
  return s.format->planes[0].sample == catalogue::sample_type::f16;
}

std::string range_of(const shape& s) {
  return s.full_range ? "full" : "video";
}

std::string matrix_of(const shape& s) {
  return "BT." + std::to_string(s.matrix);
}

// Those that make the samples of the destination.
std::vector<std::string> steps_of_samples(const way& w) {
  const std::string from(w.from.format->name), to(w.to.format->name);
  if (w.by != nullptr) return {from + " to " + to + " by " + std::string(w.by->name)};
  if (copies_all(w)) return {"copy rows of " + to};
  std::vector<std::string> steps;
  const auto add = [&](const bool is_done, const std::string& step) {
    if (is_done) steps.push_back(step);
  };
  add(!w.needs_lines(), "rearrange " + from + " as " + to);
  add(w.needs_lines(), "read " + from);
  const std::string target = w.has_to_rgb ? "4:4:4" : sampling_of(w.to);
  add(w.widens_rgb, "RGB to full range");
  add(w.composites, "over the background");
  add(w.scales_range, range_of(w.from) + " to " + range_of(w.to) + " range of " + bits_of(w.to) + " bits");
  add(w.doubles_rows || w.doubles_columns, "chroma " + sampling_of(w.from) + " to " + target);
  add(w.has_to_rgb, matrix_of(w.from) + " to RGB");
  add(w.has_luminance, "luminance by " + matrix_of(w.to));
  add(w.has_from_rgb, "RGB to " + matrix_of(w.to));
  add(w.halves_columns || w.halves_rows,
      "chroma " + (w.has_from_rgb ? "4:4:4" : sampling_of(w.from)) + " to " + sampling_of(w.to));
  add(w.narrows_rgb, "RGB to video range");
  add(w.needs_lines(), "write " + to);
  return steps;
}

}  // namespace

bool computes(const way& w) {
  return w.composites || w.scales_range || w.widens_rgb || w.narrows_rgb || w.has_to_rgb || w.has_from_rgb ||
         w.has_luminance;
}

bool way::needs_lines() const {
  for (size_t i = 0; i < to.plane_count; ++i)
    if (!is_direct(i)) return true;
  return false;
}

bool copies_all(const way& w) {
  return std::all_of(w.copy_of.begin(), w.copy_of.begin() + static_cast<ptrdiff_t>(w.to.plane_count),
                     [](const int original) { return original >= 0; });
}

problem find_way(const shape& from, const shape& to, const choices& how, way& result) {
  if (const problem p = check_pair(from, to, how.has_via); is_wrong(p)) return p;
  if (const problem p = check_width(from); is_wrong(p)) return p;
  way w{};
  w.from = from;
  w.to = to;
  w.how = how;
  choose_matrices(w);
  choose_ranges(w);
  choose_sampling(w);
  w.composites = how.has_background && from.has_alpha && !to.has_alpha && is_colour(from);
  if (w.composites)
    w.behind = background_in(from, how.background, from.colour == model::rgb && !from.full_range && !w.widens_rgb);
  result = w;
  return none();
}

std::vector<std::string> steps_of(const way& w) {
  std::vector<std::string> steps = steps_of_samples(w);
  if (w.streams) steps.emplace_back("store past the caches");
  return steps;
}

std::vector<std::string> losses_of(const way& w) {
  std::vector<std::string> losses;
  if (w.is_via && !w.by->irregular.empty()) losses.emplace_back(w.by->irregular);
  const auto add = [&](const bool is_lost, const std::string& loss) {
    if (is_lost) losses.push_back(loss);
  };
  const bool to_grey = w.to.colour == model::luminance || (w.to.colour == model::ycbcr && !w.to.has_chroma);
  const bool from_grey = w.from.colour == model::luminance || (w.from.colour == model::ycbcr && !w.from.has_chroma);
  add(w.to.depth < w.from.depth, bits_of(w.from) + " to " + bits_of(w.to) + " bits");
  add(has_half_floats(w.to) && !has_half_floats(w.from) && w.from.depth > 10, bits_of(w.from) + " bits to half floats");
  add(w.to.has_alpha && w.to.alpha_depth < std::min(w.from.alpha_depth, w.to.depth),
      "alpha to " + std::to_string(w.to.alpha_depth) + " bits");
  add(w.halves_columns || w.halves_rows,
      "chroma " + (w.has_from_rgb || !w.reads_chroma ? "4:4:4" : sampling_of(w.from)) + " to " + sampling_of(w.to));
  add(to_grey && !from_grey, "colour dropped");
  add(w.from.has_alpha && !w.to.has_alpha, w.composites ? "alpha over the background" : "alpha dropped");
  return losses;
}

}  // namespace Processing::Morvane::checked
