#include "measure/pair_jobs.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "measure/second_thread.h"

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

// Some of the pictures, and what a thread needs to convert them.
class share_of_work {
 public:
  share_of_work(std::shared_ptr<const plan> p, const pictures& all, int first, int last)
      : plan_(std::move(p)), all_(all), first_(first), last_(last), scratch_(plan_->scratch_bytes()) {}

  void operator()() {
    for (int i = first_; i < last_; ++i)
      plan_->run(all_.source(i), all_.destination(i), scratch_.data(), scratch_.size());
  }

 private:
  std::shared_ptr<const plan> plan_;
  pictures all_;
  int first_;
  int last_;
  std::vector<std::uint8_t> scratch_;
};

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

job convert_all(const pictures& all, filter chroma) {
  const auto p = std::make_shared<plan>(all.from(), all.to(), options{.filter = chroma});
  return share_of_work(p, all, 0, all.count());
}

job convert_all_on_two_threads(const pictures& all) {
  const auto p = std::make_shared<plan>(all.from(), all.to());
  const int half = all.count() / 2;
  const auto other = std::make_shared<second_thread>(share_of_work(p, all, half, all.count()));
  return [first = share_of_work(p, all, 0, half), other]() mutable {
    other->start();
    first();
    other->wait();
  };
}

job convert_by_swscale(const pictures& all, resampling chroma) {
  return swscale_job(for_swscale(*all.formats().source, all.source(0)),
                     for_swscale(*all.formats().destination, all.destination(0)), all.from().width, all.from().height,
                     chroma);
}

job convert_one_pixel(const format_pair& p) {
  const description from = describe(*p.source, {1, 1});
  const description to = describe(*p.destination, {1, 1});
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
