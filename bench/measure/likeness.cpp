#include "measure/likeness.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace morvane::bench {

namespace {

constexpr int step_of_8_bits = 256;

template <class Byte>
catalogue::planes<Byte> planes_of(const morvane_picture& p) {
  catalogue::planes<Byte> result;
  for (std::size_t i = 0; i < result.data.size(); ++i) {
    result.data[i] = static_cast<Byte*>(p.data[i]);
    result.stride[i] = static_cast<int>(p.stride[i]);
  }
  return result;
}

// Something to do with a pair in which libraries differ.
struct way {
  morvane::filter chroma{};
  morvane::siting where{};
  morvane::matrix colors{};
};

constexpr way ways[] = {
    {filter::nearest, siting::left, morvane::matrix::bt709},  {filter::linear, siting::left, morvane::matrix::bt709},
    {filter::linear, siting::center, morvane::matrix::bt709}, {filter::nearest, siting::left, morvane::matrix::bt601},
    {filter::linear, siting::left, morvane::matrix::bt601},   {filter::linear, siting::center, morvane::matrix::bt601}};

description with_matrix(description d, morvane::matrix colors, const catalogue::format& f) {
  if (f.model == catalogue::color_model::ycbcr) d.matrix = colors;
  return d;
}

void convert_by(const way& w, const ring& frames) {
  const format_pair& p = frames.formats();
  plan(with_matrix(frames.from(), w.colors, *p.source), with_matrix(frames.to(), w.colors, *p.destination),
       {.filter = w.chroma, .siting = w.where})
      .run(frames.source(0), frames.destination(0));
}

// A result, and its samples as words of 16 bits, whatever way the format stores them.
struct result {
  std::vector<std::uint8_t> bytes{};
  std::vector<std::uint16_t> samples{};
};

result result_of(const ring& frames) {
  const bool is_rgb = frames.formats().destination->model == catalogue::color_model::rgb;
  description deep = frames.to();
  deep.format = format_named(is_rgb ? "bgra64" : "vuya_16");
  image all(deep);
  convert(frames.to(), frames.destination(0), deep, all.picture(), {.filter = filter::nearest});
  result found;
  const auto* const first = static_cast<const std::uint8_t*>(frames.destination(0).data[0]);
  found.bytes.assign(first, first + frames.destination_layout().bytes);
  found.samples.resize(all.bytes() / sizeof(std::uint16_t));
  std::memcpy(found.samples.data(), all.data(), found.samples.size() * sizeof(std::uint16_t));
  return found;
}

struct difference {
  std::int64_t sum = 0;
  int greatest = 0;
};

difference between(const result& a, const result& b) {
  difference found;
  for (std::size_t i = 0; i < a.samples.size(); ++i) {
    const int d = std::abs(int{a.samples[i]} - int{b.samples[i]});
    found.sum += d;
    found.greatest = std::max(found.greatest, d);
  }
  return found;
}

agreement label_of(const result& a, const result& b, const difference& d) {
  if (a.bytes == b.bytes) return agreement::same_bytes;
  return agreement_at(std::max(1, (d.greatest + step_of_8_bits - 1) / step_of_8_bits));
}

// Bytes that no result leaves.
void forget_result(const ring& frames) {
  std::memset(frames.destination(0).data[0], 0xA5, static_cast<std::size_t>(frames.destination_layout().bytes));
}

}  // namespace

catalogue::call call_of(const ring& frames, int i) {
  catalogue::call c;
  c.source = planes_of<const std::uint8_t>(frames.source(i));
  c.destination = planes_of<std::uint8_t>(frames.destination(i));
  c.xres = frames.each().xres;
  c.yres = frames.each().yres;
  return c;
}

likeness likeness_of(const arena& memory, const format_pair& p, const pair_peer& other) {
  const ring frames(memory, p, in_cache);
  noise().fill_sources(frames);
  forget_result(frames);
  other.prepare(in_cache)(call_of(frames, 0));
  const result theirs = result_of(frames);

  likeness found{};
  std::int64_t least = -1;
  for (const way& w : ways) {
    forget_result(frames);
    convert_by(w, frames);
    const result ours = result_of(frames);
    const difference d = between(ours, theirs);
    if (least >= 0 && d.sum >= least) continue;
    least = d.sum;
    found = {label_of(ours, theirs, d), w.chroma,
             static_cast<double>(d.sum) / static_cast<double>(ours.samples.size()) / step_of_8_bits};
  }
  return found;
}

}  // namespace morvane::bench
