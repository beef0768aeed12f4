// The cases of a sweep: over sizes, strides, offsets, places and contents.
#include <algorithm>
#include <iterator>

#include "checker/checker.h"
#include "options.h"

namespace morvane::tests {

using catalogue::plane;

namespace {

constexpr int widest = 110;  // two vector steps of 48 pixels and some

// What the case of that number takes of `count` possible things: scattered, so that no two choices go hand in hand.
enum class choice : std::uint32_t {
  strides,
  source_padding,
  destination_padding,
  offset,
  pattern,
  argument,
  report,
  thinning
};

std::uint32_t pick(std::uint32_t number, choice what, std::size_t count) {
  std::uint32_t h = number * 0x9e3779b1U + static_cast<std::uint32_t>(what) * 0x85ebca6bU;
  h = (h ^ h >> 15) * 0x2c1b3c6dU;
  h = (h ^ h >> 12) * 0x297a2d39U;
  return (h ^ h >> 15) % static_cast<std::uint32_t>(count);
}

// How the planes of both sides are stored, row after row. `almost_tight`: with a stride that is the tight one of
// another format or, where pixels are no whole bytes, is tight but for the bits of a byte. `unlike`: each plane in its
// own way, tight or padded, up or down.
enum class rows { tight, padded, aligned, almost_tight, unlike };

struct stride_choice {
  rows source, destination;
  int source_sign, destination_sign;
};

constexpr stride_choice stride_choices[] = {
    {rows::tight, rows::tight, 1, 1},        {rows::padded, rows::padded, 1, 1},
    {rows::aligned, rows::aligned, 1, 1},    {rows::tight, rows::padded, 1, 1},
    {rows::padded, rows::tight, 1, 1},       {rows::tight, rows::almost_tight, 1, 1},
    {rows::tight, rows::tight, -1, -1},      {rows::padded, rows::tight, -1, 1},
    {rows::tight, rows::aligned, 1, -1},     {rows::tight, rows::tight, -1, 1},
    {rows::padded, rows::padded, -1, -1},    {rows::almost_tight, rows::almost_tight, 1, 1},
    {rows::unlike, rows::unlike, 1, 1},      {rows::tight, rows::unlike, 1, 1},
    {rows::almost_tight, rows::tight, 1, 1},
};

// A rounded source beside a tight destination: of interest where sources can be tight but for the bits of a byte.
bool is_for_parts(const stride_choice& c) {
  return c.source == rows::almost_tight && c.destination == rows::tight;
}

int stride_of(rows kind, const plane& p, int xres, std::uint32_t number, choice what) {
  constexpr int paddings[] = {1, 2, 3, 4, 6, 20, 37, 64};
  const int tight = tight_stride(p, xres);
  const int least = static_cast<int>(row_extent(p, xres));
  switch (kind) {
    case rows::padded:
      return std::max(tight, least) + paddings[pick(number, what, std::size(paddings))];
    case rows::aligned:
      return (least + 31) / 16 * 16;
    case rows::almost_tight:
      if (in_parts(p)) return xres * p.group_bytes / p.group_pixels;
      return 4 * xres < least ? tight : 4 * xres;
    case rows::unlike: {
      const std::uint32_t way = pick(number, choice::strides, 8);
      const int stride = stride_of(way % 2 == 0 ? rows::tight : rows::padded, p, xres, number, what);
      return way < 6 ? stride : -stride;
    }
    case rows::tight:
      break;
  }
  return tight;
}

}  // namespace

test_case checker::case_of(int xres, int yres, std::size_t strides, std::uint32_t number) const {
  constexpr int color_spaces[] = {601, 709, 0, 2020, -601};
  constexpr int values[] = {0, 16, 255, 300, -1, -300, 256, 65535, 70000, 0x1234};
  constexpr content for_reports[] = {content::opaque, content::one_less, content::random};
  constexpr content usual[] = {content::random, content::random,     content::random, content::extremes,
                               content::random, content::thresholds, content::zeros,  content::ones};
  const stride_choice& chosen = stride_choices[strides];
  test_case c;
  c.xres = xres;
  c.yres = yres;
  c.seed = number;
  for (std::size_t i = 0; i < sources_.size(); ++i)
    c.source[i].stride = chosen.source_sign * stride_of(chosen.source, *sources_[i].format, pixels(c),
                                                        number + static_cast<std::uint32_t>(i), choice::source_padding);
  for (std::size_t i = 0; i < destinations_.size(); ++i)
    c.destination[i].stride =
        chosen.destination_sign * stride_of(chosen.destination, *destinations_[i].format, pixels(c),
                                            number + static_cast<std::uint32_t>(i), choice::destination_padding);
  if (row_.one_stride)
    for (std::size_t i = 0; i < destinations_.size(); ++i)
      c.destination[i].stride = c.destination[destinations_.size() - 1].stride;
  const bool reports = row_.extra == catalogue::argument::opacity;
  c.pattern = reports ? for_reports[pick(number, choice::pattern, std::size(for_reports))]
                      : usual[pick(number, choice::pattern, std::size(usual))];
  if (row_.extra == catalogue::argument::color_space)
    c.argument = color_spaces[pick(number, choice::argument, std::size(color_spaces))];
  if (row_.extra == catalogue::argument::value) c.argument = values[pick(number, choice::argument, std::size(values))];
  if (row_.extra == catalogue::argument::rescale) c.argument = static_cast<int>(pick(number, choice::argument, 2));
  if (reports) c.opacity = static_cast<report>(pick(number, choice::report, 3));
  return c;
}

// Every width meets every height, every choice of strides and every place; every width also meets all offsets. The
// rest (paddings, contents, arguments) is scattered over the cases. Thinned: a part of the cases, of all widths or of
// fewer.
void checker::for_each_case(const std::function<bool(const test_case&)>& take) const {
  constexpr placement places[] = {placement::surrounded, placement::at_end, placement::at_start};
  const bool several_planes = sources_.size() > 1 || destinations_.size() > 1;
  const bool reads_parts = !sources_.empty() && in_parts(*sources_[0].format);
  const std::size_t one_in = each_kernel_once() ? 12 : thin() ? 3 : 1;
  std::uint32_t number = 0;
  const auto sizes_and_strides = [&](int xres, int yres) {
    for (std::size_t s = 0; s < std::size(stride_choices); ++s)
      for (const placement where : places) {
        ++number;
        if (!several_planes && stride_choices[s].destination == rows::unlike) continue;
        if (!reads_parts && is_for_parts(stride_choices[s])) continue;
        if (pick(number, choice::thinning, one_in) != 0) continue;
        test_case c = case_of(xres, yres, s, number);
        c.where = where;
        std::uint32_t planes = number;
        for (plane_place& p : c.source) p.offset = static_cast<int>(pick(++planes, choice::offset, 32));
        for (plane_place& p : c.destination) p.offset = static_cast<int>(pick(++planes, choice::offset, 32));
        if (!take(c)) return false;
      }
    return true;
  };
  const auto offsets = [&](int xres) {
    for (int offset = 0; offset < 32; ++offset)
      for (int planes = 0; planes < 3; ++planes) {
        ++number;
        if (pick(number, choice::thinning, one_in) != 0) continue;
        const std::size_t strides = pick(number, choice::strides, std::size(stride_choices));
        test_case c = case_of(xres, 1 + offset % 3, strides, number);
        if (planes != 1)
          for (std::size_t i = 0; i < c.source.size(); ++i)
            c.source[i].offset = (offset + 5 * static_cast<int>(i)) % 32;
        if (planes != 0)
          for (std::size_t i = 0; i < c.destination.size(); ++i)
            c.destination[i].offset = (offset + 11 * static_cast<int>(i)) % 32;
        if (!take(c)) return false;
      }
    return true;
  };
  for (int xres = -1; xres <= widest; ++xres) {
    if (thin_widths() && xres > 18 && xres < widest && xres % 16 > 2 && xres % 16 < 15) continue;
    for (int yres = -2; yres <= 8 / row_.rows_per_yres; ++yres)
      if (!sizes_and_strides(xres, yres)) return;
    if (!offsets(xres)) return;
  }
}

std::vector<std::string> checker::sweep(std::size_t most_failures) {
  std::vector<std::string> failures;
  for_each_case([&](const test_case& c) {
    if (std::string failure = check(c); !failure.empty()) failures.push_back(std::move(failure));
    return failures.size() < most_failures;
  });
  return failures;
}

}  // namespace morvane::tests
