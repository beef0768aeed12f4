#include "rules/convert.h"

#include <initializer_list>
#include <stdexcept>
#include <string>

#include "rules/background.h"
#include "rules/chroma.h"
#include "rules/colour.h"
#include "rules/layout.h"
#include "rules/samples.h"

namespace morvane::tests::rules {
namespace {

enum class kind { ycbcr, rgb, chroma_alone, alpha_alone, two_pictures };

// Luma alone is YCbCr, and L is RGB.
kind kind_of(const format& f) {
  if (f.name == "uyvy_uyvy") return kind::two_pictures;
  if (f.has(channel::y)) return kind::ycbcr;
  if (f.has(channel::cb)) return kind::chroma_alone;
  if (f.has(channel::r) || f.has(channel::l)) return kind::rgb;
  return kind::alpha_alone;
}

constexpr std::initializer_list<channel> luma_and_chroma = {channel::y, channel::cb, channel::cr};
constexpr std::initializer_list<channel> chroma_channels = {channel::cb, channel::cr};
constexpr std::initializer_list<channel> rgb_channels = {channel::r, channel::g, channel::b};

// A picture, and what follows from its format.
struct side {
  explicit side(const picture& p) : of(p), layout(format_of(p.format)), model(kind_of(layout)), in(range_of(p)) {}

  bool is_video_rgb() const { return model == kind::rgb && in == range::video; }
  bool has_alpha() const { return layout.has(channel::a); }
  int bits() const { return layout.color_bits(); }
  span own_span() const { return span_of(in, bits()); }

  const picture& of;
  const format& layout;
  kind model;
  range in;
};

template <class Change>
void change_all(samples& s, std::initializer_list<channel> which, Change change) {
  for (const channel what : which)
    for (std::uint16_t& word : s[what].words) word = static_cast<std::uint16_t>(change(word));
}

void resample_chroma(samples& s, sampling from, sampling to, const picture& p, const options& asked) {
  for (const channel what : chroma_channels) s[what] = resampled(s[what], from, to, p.width, p.height, asked);
}

void add_grey_chroma(samples& s, const side& source) {
  const picture& p = source.of;
  for (const channel what : chroma_channels)
    s[what] = grid(columns_of(source.layout, what, p.width), rows_of(source.layout, what, p.height), 32768);
}

// Calls change(x, y) for every pixel.
template <class Change>
void each_pixel(const picture& p, Change change) {
  for (int y = 0; y < p.height; ++y)
    for (int x = 0; x < p.width; ++x) change(x, y);
}

void rescale(samples& s, const side& source, const side& destination) {
  const span from = source.own_span();
  const span to = destination.own_span();
  if (from == to) return;
  change_all(s, {channel::y}, [&](int luma) { return luma_in(to, luma, from); });
  change_all(s, chroma_channels, [&](int chroma) { return chroma_in(to, chroma, from); });
}

void ycbcr_to_rgb(samples& s, const side& source, form in, const options& asked) {
  resample_chroma(s, source.layout.chroma, {1, 1}, source.of, asked);
  const span own = source.own_span();
  const to_rgb by = to_rgb_of(source.of.of, own);
  for (const channel what : rgb_channels) s[what] = grid(source.of.width, source.of.height);
  each_pixel(source.of, [&](int x, int y) {
    const ycbcr pixel = {s[channel::y].at(x, y), s[channel::cb].at(x, y), s[channel::cr].at(x, y)};
    const rgb made = rgb_of(pixel, by, own, in);
    s[channel::r].set(x, y, made.r);
    s[channel::g].set(x, y, made.g);
    s[channel::b].set(x, y, made.b);
  });
}

void rgb_to_ycbcr(samples& s, const side& destination, form in, const options& asked) {
  const span own = destination.own_span();
  const from_rgb by = from_rgb_of(destination.of.of, own);
  for (const channel what : luma_and_chroma) s[what] = grid(destination.of.width, destination.of.height);
  each_pixel(destination.of, [&](int x, int y) {
    const rgb pixel = {s[channel::r].at(x, y), s[channel::g].at(x, y), s[channel::b].at(x, y)};
    const ycbcr made = ycbcr_of(pixel, by, own, in);
    s[channel::y].set(x, y, made.y);
    s[channel::cb].set(x, y, made.cb);
    s[channel::cr].set(x, y, made.cr);
  });
  resample_chroma(s, {1, 1}, destination.layout.chroma, destination.of, asked);
}

void rgb_to_luminance(samples& s, const side& destination) {
  s[channel::l] = grid(destination.of.width, destination.of.height);
  each_pixel(destination.of, [&](int x, int y) {
    const rgb pixel = {s[channel::r].at(x, y), s[channel::g].at(x, y), s[channel::b].at(x, y)};
    s[channel::l].set(x, y, luminance_of(pixel, destination.of.of));
  });
}

samples read_completed(const side& source, bool stays_video) {
  samples s = read(source.of);
  if (source.model == kind::ycbcr && !source.layout.has(channel::cb)) add_grey_chroma(s, source);
  if (source.layout.has(channel::l))
    for (const channel what : rgb_channels) s[what] = s[channel::l];
  if (source.is_video_rgb() && !stays_video) change_all(s, rgb_channels, full_of_video);
  return s;
}

void change_color(samples& s, const side& source, const side& destination, const options& asked) {
  const form in = form_of(source.bits(), destination.bits());
  const bool to_ycbcr = destination.model == kind::ycbcr;
  if (source.model == kind::ycbcr && to_ycbcr && source.of.of == destination.of.of) {
    rescale(s, source, destination);
    resample_chroma(s, source.layout.chroma, destination.layout.chroma, source.of, asked);
    return;
  }
  if (source.model == kind::ycbcr) ycbcr_to_rgb(s, source, in, asked);
  if (to_ycbcr) rgb_to_ycbcr(s, destination, in, asked);
  if (destination.layout.has(channel::l) && !source.layout.has(channel::l)) rgb_to_luminance(s, destination);
}

void convert_pictures(const side& source, const side& destination, const options& asked) {
  const bool stays_video = source.is_video_rgb() && destination.is_video_rgb();
  samples s = read_completed(source, stays_video);
  if (source.has_alpha() && !destination.has_alpha() && asked.background)
    lay_over(s, source.of, stays_video, *asked.background);
  if (!source.has_alpha()) s[channel::a] = grid(source.of.width, source.of.height, 65535);
  change_color(s, source, destination, asked);
  if (destination.is_video_rgb() && !stays_video) change_all(s, rgb_channels, video_of_full);
  write(s, destination.of);
}

void convert_chroma(const side& source, const side& destination, const options& asked) {
  samples s = read(source.of);
  rescale(s, source, destination);
  resample_chroma(s, source.layout.chroma, destination.layout.chroma, source.of, asked);
  write(s, destination.of);
}

}  // namespace

bool convertible(std::string_view source, std::string_view destination) {
  const kind from = kind_of(format_of(source));
  const kind to = kind_of(format_of(destination));
  const auto is_whole = [](kind k) { return k == kind::ycbcr || k == kind::rgb; };
  return from == to ? from != kind::two_pictures : is_whole(from) && is_whole(to);
}

void convert(const picture& source, const picture& destination, const options& asked) {
  if (!convertible(source.format, destination.format))
    throw std::invalid_argument(std::string(source.format) + " does not become " + std::string(destination.format));
  if (source.width != destination.width || source.height != destination.height)
    throw std::invalid_argument("pictures of different sizes");
  const side from(source);
  const side to(destination);
  switch (from.model) {
    case kind::alpha_alone:
      return write(read(source), destination);
    case kind::chroma_alone:
      return convert_chroma(from, to, asked);
    default:
      return convert_pictures(from, to, asked);
  }
}

}  // namespace morvane::tests::rules
