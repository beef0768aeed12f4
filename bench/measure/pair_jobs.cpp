#include "measure/pair_jobs.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace morvane::bench {

namespace {

// As wide as the registers, so that other libraries find what they like best.
constexpr std::int64_t alignment = 64;

description describe(const catalogue::format& f, const size& s) {
  return {.format = f.id, .width = s.xres, .height = s.yres};
}

// A format with everything that a source of this kind may hold.
format fullest_like(const catalogue::format& f) {
  switch (f.model) {
    case catalogue::color_model::alpha:
      return format_named("alpha_u16");
    case catalogue::color_model::chroma:
      return format_named("cbcr_16_422");
    case catalogue::color_model::ycbcr:
    case catalogue::color_model::rgb:
    case catalogue::color_model::luma:
      break;
  }
  return format_named("bgra64");
}

void fill_with_noise(std::uint8_t* memory, std::int64_t bytes) {
  std::mt19937_64 random(1);
  for (std::int64_t i = 0; i + 8 <= bytes; i += 8) {
    const std::uint64_t noise = random();
    std::memcpy(memory + i, &noise, sizeof noise);
  }
}

swscale_picture for_swscale(const catalogue::format& f, const morvane_picture& p) {
  swscale_picture result{.format = &f};
  for (std::size_t i = 0; i < result.planes.data.size(); ++i) {
    result.planes.data[i] = static_cast<std::uint8_t*>(p.data[i]);
    result.planes.stride[i] = static_cast<int>(p.stride[i]);
  }
  return result;
}

}  // namespace

pictures::pictures(const arena& memory, const format_pair& p, const size& each, int count)
    : pair_(p),
      source_(memory.source()),
      destination_(memory.destination()),
      from_(describe(*p.source, each)),
      to_(describe(*p.destination, each)),
      source_layout_(lay_out(from_, alignment)),
      destination_layout_(lay_out(to_, alignment)),
      count_(count) {
}

std::int64_t pictures::bytes_of(const morvane_layout& layout) {
  return (layout.bytes + alignment - 1) / alignment * alignment;
}

std::size_t pictures::bytes_for(const size& each, int count) {
  std::int64_t most = 0;
  for (const catalogue::format& f : catalogue::formats)
    most = std::max(most, bytes_of(lay_out(describe(f, each), alignment)));
  return static_cast<std::size_t>(most * count);
}

void pictures::fill_sources() const {
  description full = from_;
  full.format = fullest_like(*pair_.source);
  const morvane_layout layout = lay_out(full, alignment);
  fill_with_noise(destination_, layout.bytes);
  for (int i = 0; i < count_; ++i) convert(full, picture_in(destination_, layout), from_, source(i));
}

job convert_all(const pictures& all, const options& how) {
  const auto p = std::make_shared<const plan>(all.from(), all.to(), how);
  const auto scratch = std::make_shared<std::vector<std::uint8_t>>(p->scratch_bytes());
  return [all, p, scratch] {
    for (int i = 0; i < all.count(); ++i) p->run(all.source(i), all.destination(i), scratch->data(), scratch->size());
  };
}

job convert_by_swscale(const pictures& all, resampling chroma) {
  return swscale_job(for_swscale(*all.formats().source, all.source(0)),
                     for_swscale(*all.formats().destination, all.destination(0)), all.from().width, all.from().height,
                     chroma);
}

job convert_tiny_picture(const format_pair& p) {
  const description from = describe(*p.source, tiny);
  const description to = describe(*p.destination, tiny);
  struct state {
    plan way;
    image source;
    image destination;
    std::vector<std::uint8_t> scratch;
  };
  const auto s = std::make_shared<state>(state{plan(from, to), image(from), image(to), {}});
  s->scratch.resize(s->way.scratch_bytes());
  return [s, in = s->source.picture(), out = s->destination.picture()] {
    s->way.run(in, out, s->scratch.data(), s->scratch.size());
  };
}

}  // namespace morvane::bench
