#include "measure/pair_jobs.h"

#include <memory>
#include <vector>

namespace morvane::bench {

namespace {

swscale_planes planes_of(const morvane_picture& p) {
  swscale_planes result;
  for (std::size_t i = 0; i < result.data.size(); ++i) {
    result.data[i] = static_cast<std::uint8_t*>(p.data[i]);
    result.stride[i] = static_cast<int>(p.stride[i]);
  }
  return result;
}

}  // namespace

job convert_next(ring& frames, const options& how) {
  const auto p = std::make_shared<const plan>(frames.from(), frames.to(), how);
  const auto scratch = std::make_shared<std::vector<std::uint8_t>>(p->scratch_bytes());
  return [&frames, p, scratch] {
    const int i = frames.next();
    p->run(frames.source(i), frames.destination(i), scratch->data(), scratch->size());
  };
}

job copy_next(ring& frames) {
  return [&frames] { frames.copy(frames.next()); };
}

job convert_next_by_swscale(ring& frames, resampling chroma) {
  return [&frames,
          convert = swscale_between(*frames.formats().source, *frames.formats().destination, frames.each(), chroma)] {
    const int i = frames.next();
    convert(planes_of(frames.source(i)), planes_of(frames.destination(i)));
  };
}

job convert_tiny_picture(const format_pair& p) {
  const description from{.format = p.source->id, .width = tiny.xres, .height = tiny.yres};
  const description to{.format = p.destination->id, .width = tiny.xres, .height = tiny.yres};
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
