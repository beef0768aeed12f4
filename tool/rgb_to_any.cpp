// Ways from RGB with alpha, found by what the checked interface tells of formats.
#include "rgb_to_any.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

#include "chain.h"
#include "errors.h"
#include "names.h"

namespace morvane::tool {

namespace {

bool becomes(const format_info& from, const format_info& to) {
  const auto small = [](const format_info& f) {
    return morvane::description{.format = f.format, .width = 2, .height = 2};
  };
  try {
    const morvane::plan plan(small(from), small(to));
    return true;
  } catch (const morvane::error& e) {
    if (e.code() != MORVANE_NO_WAY) throw;
    return false;
  }
}

// Planes of whole bytes or words have only one way to hold their samples, so that planes with the same samples are the
// same.
bool fills_words(const plane_info& p) {
  const int samples = std::accumulate(std::begin(p.samples), std::end(p.samples), 0);
  return !p.is_float && samples * p.bits == 8 * p.group_bytes;
}

bool is_same(const plane_info& a, const plane_info& b) {
  return std::string_view(a.components) == b.components && a.bits == b.bits && a.group_bytes == b.group_bytes &&
         a.group_pixels == b.group_pixels && a.image_rows == b.image_rows && fills_words(a) && fills_words(b);
}

// The planes of `whole` that are those of `f`, in their order; none where it lacks one of them.
std::vector<std::size_t> planes_within(const format_info& whole, const format_info& f) {
  std::vector<std::size_t> found;
  const std::span<const plane_info> all = planes_of(whole);
  for (const plane_info& p : planes_of(f)) {
    const auto same = std::find_if(all.begin(), all.end(), [&](const plane_info& of) { return is_same(of, p); });
    if (same == all.end()) return {};
    found.push_back(static_cast<std::size_t>(same - all.begin()));
  }
  return found;
}

// A format that RGB becomes, and one of the same model as the wanted one whose planes it has.
struct carrier {
  const format_info* whole = nullptr;
  const format_info* part = nullptr;
  std::vector<std::size_t> planes;  // of the whole
};

std::int64_t bytes_of(const format_info& f) {
  return morvane::lay_out({.format = f.format, .width = 64, .height = 64}).bytes;
}

carrier carrier_of(const format_info& wanted) {
  carrier best;
  for (const format_info& part : all_formats()) {
    // More bytes are more bits or more samples.
    if (part.model != wanted.model || (best.part != nullptr && bytes_of(part) <= bytes_of(*best.part))) continue;
    for (const format_info& whole : all_formats()) {
      std::vector<std::size_t> planes = planes_within(whole, part);
      if (planes.empty() || !becomes(rgb_to_begin_with(), whole) || !becomes(part, wanted)) continue;
      best = {&whole, &part, std::move(planes)};
      break;
    }
  }
  if (best.part == nullptr) throw std::logic_error(text("nothing that RGB becomes has the planes of ", wanted.name));
  return best;
}

morvane::description of_format(const format_info& f, morvane::description d) {
  d.format = f.format;
  return d;
}

morvane::description rgb_of_size(const morvane::description& d) {
  return {.format = rgb_to_begin_with().format, .width = d.width, .height = d.height};
}

// Red, green and blue become what alpha is.
void take_alpha_as_grey(const image& source, image& grey) {
  constexpr std::size_t word = 2;
  constexpr std::size_t pixel = 4 * word;
  constexpr std::size_t alpha = 3 * word;
  for (int y = 0; y < source.size().height; ++y) {
    const std::uint8_t* from = source.row(0, y);
    std::uint8_t* to = grey.row(0, y);
    for (int x = 0; x < source.size().width; ++x, from += pixel, to += pixel) {
      for (std::size_t at = 0; at < alpha; at += word) std::memcpy(to + at, from + alpha, word);
      std::memset(to + alpha, 0xff, word);
    }
  }
}

}  // namespace

const format_info& rgb_to_begin_with() {
  return format_named("bgra64");
}

rgb_to_any::rgb_to_any(const morvane::description& result, const morvane::options& how) {
  const format_info& f = info_of(result.format);
  if (const format_info* image = format_of_each_image(f))
    add_images(of_format(*image, result), how);
  else if (becomes(rgb_to_begin_with(), f))
    steps_.push_back({{place::source}, {place::result}, plan_between(rgb_of_size(result), result, how)});
  else
    add_part_of_whole(result, how);
}

void rgb_to_any::add_images(const morvane::description& image, const morvane::options& how) {
  const morvane::description rgb = rgb_of_size(image);
  steps_.push_back({{place::source}, {place::result, {0}}, plan_between(rgb, image, how)});
  steps_.push_back({{place::between}, {place::result, {1}}, plan_between(rgb, image, how)});
  between_of_ = rgb;
  between_is_key_ = true;
}

void rgb_to_any::add_part_of_whole(const morvane::description& result, const morvane::options& how) {
  carrier by = carrier_of(info_of(result.format));
  between_of_ = of_format(*by.whole, result);
  const morvane::description carried = of_format(*by.part, result);
  steps_.push_back({{place::source}, {place::between}, plan_between(rgb_of_size(result), *between_of_, how)});
  steps_.push_back({{place::between, std::move(by.planes)}, {place::result}, plan_between(carried, result, how)});
}

std::int64_t rgb_to_any::scratch_bytes() const {
  std::size_t bytes = 0;
  for (const step& s : steps_) bytes = std::max(bytes, s.plan.scratch_bytes());
  return static_cast<std::int64_t>(bytes);
}

std::int64_t rgb_to_any::memory() const {
  const auto size = [](const morvane::description& d) { return extent{d.width, d.height}; };
  const std::int64_t between = between_of_ ? image::bytes_of(info_of(between_of_->format), size(*between_of_)) : 0;
  return between + scratch_bytes();
}

void rgb_to_any::run(const image& source, const image& result) {
  if (between_of_ && !between_) between_.emplace(info_of(between_of_->format), source.size());
  scratch_.resize(static_cast<std::size_t>(scratch_bytes()));
  if (between_is_key_) take_alpha_as_grey(source, *between_);
  for (const step& s : steps_)
    s.plan.run(picture_of(s.from, source, result), picture_of(s.to, source, result), scratch_.data(), scratch_.size());
}

morvane_picture rgb_to_any::picture_of(const part& p, const image& source, const image& result) const {
  const image& of = p.of == place::source ? source : p.of == place::result ? result : *between_;
  const morvane_picture all = of.picture();
  if (p.planes.empty()) return all;
  morvane_picture some{};
  some.struct_size = sizeof some;
  for (std::size_t i = 0; i < p.planes.size(); ++i) {
    some.data[i] = all.data[p.planes[i]];
    some.stride[i] = all.stride[p.planes[i]];
    some.bytes[i] = all.bytes[p.planes[i]];
  }
  return some;
}

}  // namespace morvane::tool
