#include "rules/background.h"

#include "rules/colour.h"
#include "rules/layout.h"

namespace morvane::tests::rules {

int over(int sample, int alpha, int background) {
  const std::int64_t sum = std::int64_t{sample} * alpha + std::int64_t{background} * (65535 - alpha);
  return static_cast<int>((sum + 32767) / 65535);
}

namespace {

// A sample of chroma has the alpha of the pixel that its column and row begin at.
void lay_channel_over(grid& g, const grid& alpha, sampling of, int background) {
  for (int y = 0; y < g.height; ++y)
    for (int x = 0; x < g.width; ++x) g.set(x, y, over(g.at(x, y), alpha.at(x * of.columns, y * of.rows), background));
}

}  // namespace

void lay_over(samples& s, const picture& p, bool is_video, const rgb8& background) {
  const format& f = format_of(p.format);
  const grid& alpha = s[channel::a];
  const rgb full = {background.r * 257, background.g * 257, background.b * 257};
  if (f.has(channel::y)) {
    const span own = span_of(range_of(p), f.color_bits());
    const ycbcr color = ycbcr_of(full, from_rgb_of(p.of, own), own, form::wide);
    lay_channel_over(s[channel::y], alpha, {1, 1}, color.y);
    lay_channel_over(s[channel::cb], alpha, f.chroma, color.cb);
    lay_channel_over(s[channel::cr], alpha, f.chroma, color.cr);
  } else {
    lay_channel_over(s[channel::r], alpha, {1, 1}, is_video ? video_of_full(full.r) : full.r);
    lay_channel_over(s[channel::g], alpha, {1, 1}, is_video ? video_of_full(full.g) : full.g);
    lay_channel_over(s[channel::b], alpha, {1, 1}, is_video ? video_of_full(full.b) : full.b);
  }
}

}  // namespace morvane::tests::rules
