#include "rows.h"

#include <array>
#include <utility>

#include "../backend/dispatch.h"

namespace Processing::Morvane::checked {

namespace {

using backend::line_of;

// Cb and Cr of a row.
struct chroma_lines {
  uint16_t* cb = nullptr;
  uint16_t* cr = nullptr;
};

// What a row passes through. Each line has room for whole groups, and for a margin on both sides. Lines that a way does
// not need are null, so that those that it needs are few and lie together in the nearest cache.
struct lines_of_way {
  component_lines read;   // of the source
  component_lines keyed;  // of another row, whose alpha a row of chroma needs
  component_lines rgb;
  component_lines ycbcr;
  chroma_lines cached[3];  // rows of chroma of a 4:2:0 source
  chroma_lines between;    // of a row between them
  chroma_lines doubled;
  chroma_lines halved;
  chroma_lines read_before;    // of the row before, which a row of a 4:2:0 destination is made of as well
  chroma_lines halved_before;  // the same
  chroma_lines averaged;
  uint16_t* alpha_of_pairs = nullptr;
  uint16_t* neutral = nullptr;  // chroma of grey
  uint16_t* ones = nullptr;
};

constexpr int64_t margin = 32;  // in samples; a cache line
constexpr int64_t most_lines = 2 * component_count + 2 * 4 + 9 * 2 + 3;
constexpr int64_t alignment = 64;

int64_t line_samples(const way& w) {
  return (int64_t{w.from.width} + 31) / 32 * 32 + 2 * margin;
}

bool is_grey(const shape& s) {
  return s.colour == model::luminance || (s.colour == model::ycbcr && !s.has_chroma);
}

// Memory that will soon be read or written. It is asked for in advance, a little before each step, because while lines
// are computed nothing else keeps the memory busy.
class expected_memory {
 public:
  void forget() { count_ = at_ = 0; }
  void add(const void* row, const int64_t bytes) {
    const auto* begin = static_cast<const uint8_t*>(row);
    if (count_ < ranges_.size()) ranges_[count_++] = {begin, begin + bytes};
  }
  void ask_for_some() {
    for (int64_t left = some * cache_line; left > 0 && at_ < count_;) {
      range& r = ranges_[at_];
      const uint8_t* const end = r.end - r.next < left ? r.end : r.next + left;
      for (const uint8_t* p = r.next; p < end; p += cache_line) __builtin_prefetch(p);
      left -= end - r.next;
      r.next = end;
      if (end == r.end) ++at_;
    }
  }

 private:
  static constexpr int64_t cache_line = 64;
  static constexpr int some = 32;  // cache lines
  struct range {
    const uint8_t* next;
    const uint8_t* end;
  };
  std::array<range, 2 * MORVANE_MAX_PLANES> ranges_;
  size_t count_ = 0;
  size_t at_ = 0;
};

class rows_of_way {
 public:
  rows_of_way(const way& w, const morvane_picture& source, const morvane_picture& destination, void* scratch)
      : way_(w), source_(source), destination_(destination) {
    const auto at = reinterpret_cast<uintptr_t>(scratch);
    next_ = reinterpret_cast<uint16_t*>((at + alignment - 1) / alignment * alignment);
    find_needed();
    find_lines();
  }

  void convert(const int first_row, const int rows) {
    for (int row = first_row; row < first_row + rows; ++row) {
      expect_rows(row, first_row + rows);
      if (has_half_rows()) keep_row_before();
      const component_lines made = make(row);
      if (has_half_rows()) write_half_rows(row, made, row + 1 == way_.from.height);
      write(row, 1, made);
    }
  }

 private:
  const way& way_;
  const morvane_picture& source_;
  const morvane_picture& destination_;
  lines_of_way lines_;
  uint16_t* next_;
  chroma_lines upper_;  // of the row before
  std::array<bool, component_count> needed_{};
  int cached_[3] = {-1, -1, -1};
  mutable expected_memory expected_;  // changes no result

  // A step of a row.
  template <class Kernel, class... Argument>
  void run(const Argument... arguments) const {
    expected_.ask_for_some();
    line_of<Kernel>()(arguments...);
  }
  // What this row will write, and what the next one will read. Rows of chroma of a 4:2:0 picture are written with the
  // lower one of two rows of the image, and read a pair ahead.
  void expect_rows(const int row, const int end) const {
    expected_.forget();
    for (size_t i = 0; i < way_.to.plane_count; ++i) {
      const stored_plane& p = way_.to.planes[i];
      if (p.layout->image_rows == 1 || row % 2 == 1)
        expect(p, destination_.data[i], destination_.stride[i], row, way_.to.width);
    }
    for (size_t i = 0; i < way_.from.plane_count; ++i) {
      const stored_plane& p = way_.from.planes[i];
      const int ahead = row + p.layout->image_rows;
      if (is_wanted(p) && ahead < end && (p.layout->image_rows == 1 || row % 2 == 0))
        expect(p, source_.data[i], source_.stride[i], ahead, way_.from.width);
    }
    expected_.ask_for_some();
  }
  void expect(const stored_plane& p, const void* data, const int64_t stride, const int row, const int width) const {
    expected_.add(static_cast<const uint8_t*>(data) + stride * (row / p.layout->image_rows),
                  int64_t{p.groups(width)} * p.layout->group_bytes);
  }

  // Which components of the source are read: all where something is computed, else those of planes that are
  // made of lines.
  void find_needed() {
    if (computes(way_)) return needed_.fill(true);
    for (size_t i = 0; i < way_.to.plane_count; ++i)
      for (size_t c = 0; c < needed_.size(); ++c)
        if (!way_.is_direct(i) && way_.to.planes[i].samples[c] > 0) needed_[c] = true;
  }
  bool makes_chroma() const { return way_.to.has_chroma && (needed_[second] || needed_[third]); }
  bool has_half_rows() const { return way_.to.half_height && makes_chroma(); }
  bool needs_alpha() const { return way_.composites || (way_.from.has_alpha && way_.to.has_alpha); }

  void find_lines() {
    for (const component i : {first, second, third}) lines_.read.of[i] = new_line();
    if (needs_alpha()) lines_.read.of[alpha] = new_line();
    lines_.read.of[unused] = new_line();
    if (way_.from.half_height) find_lines_between_rows();
    if (way_.doubles_columns) lines_.doubled = new_chroma();
    for (const component i : {first, second, third}) {
      if (way_.has_to_rgb) lines_.rgb.of[i] = new_line();
      if (way_.has_from_rgb) lines_.ycbcr.of[i] = new_line();
    }
    if (way_.has_luminance) lines_.ycbcr.of[first] = new_line();
    if (way_.halves_columns) lines_.halved = new_chroma();
    if (has_half_rows()) {
      lines_.read_before = new_chroma();
      lines_.halved_before = new_chroma();
      lines_.averaged = new_chroma();
    }
    if (way_.composites) lines_.alpha_of_pairs = new_line();
    lines_.neutral = new_line(32768);
    lines_.ones = new_line(65535);
  }
  void find_lines_between_rows() {
    for (chroma_lines& c : lines_.cached) c = new_chroma();
    lines_.between = new_chroma();
    if (way_.composites)
      for (uint16_t*& line : lines_.keyed.of) line = new_line();
    lines_.keyed.of[unused] = lines_.read.of[unused];
  }
  uint16_t* new_line() {
    uint16_t* line = next_ + margin;
    next_ += line_samples(way_);
    return line;
  }
  uint16_t* new_line(const uint16_t value) {
    kernel::fill_line k{};
    k.value = value;
    uint16_t* line = new_line();
    line_of<kernel::fill_line>()(line, static_cast<int>(line_samples(way_) - 2 * margin), k);
    return line;
  }
  chroma_lines new_chroma() {
    uint16_t* cb = new_line();
    return {cb, new_line()};
  }
  void scale(uint16_t* line, const int count, const kernel::scale_line& by) const {
    run<kernel::scale_line>(line, count, by);
  }
  static void set_margin(uint16_t* line, const int count) {
    line[-1] = line[0];
    line[count] = line[count - 1];
  }

  // Reading.

  // The planes that have a row for so many rows of the image.
  void read_planes(const int row, const int image_rows, const component_lines& to) const {
    for (size_t i = 0; i < way_.from.plane_count; ++i) {
      const stored_plane& p = way_.from.planes[i];
      if (p.layout->image_rows != image_rows) continue;
      const auto* plane = static_cast<const uint8_t*>(source_.data[i]);
      if (is_wanted(p)) read_row(p, plane + source_.stride[i] * row, way_.from.width, to, fills_words(way_.from));
    }
  }
  bool is_wanted(const stored_plane& p) const {
    return (p.has(first) && needed_[first]) || (p.has(alpha) && needed_[alpha] && needs_alpha()) ||
           (p.has(second) && needed_[second] && (way_.reads_chroma || !way_.from.has_chroma)) ||
           (p.has(third) && needed_[third] && (way_.reads_chroma || !way_.from.has_chroma));
  }

  void over_background(uint16_t* line, const uint16_t* by, const int count, const int component) const {
    kernel::line_over_background k{};
    k.background = way_.behind.of[component];
    run<kernel::line_over_background>(by, line, count, k);
  }
  // Alpha where the samples of chroma are.
  const uint16_t* alpha_for_chroma(const uint16_t* of_pixels) {
    if (!way_.from.half_width) return of_pixels;
    run<kernel::first_of_pairs>(of_pixels, lines_.alpha_of_pairs, way_.from.chroma_width());
    return lines_.alpha_of_pairs;
  }
  void finish_chroma(const chroma_lines& c, const uint16_t* alpha_of_pixels) {
    const int count = way_.from.chroma_width();
    if (way_.composites) {
      const uint16_t* by = alpha_for_chroma(alpha_of_pixels);
      over_background(c.cb, by, count, second);
      over_background(c.cr, by, count, third);
    }
    if (!way_.scales_range) return;
    scale(c.cb, count, way_.chroma_range);
    scale(c.cr, count, way_.chroma_range);
  }
  void finish_pixels(const component_lines& lines) {
    const int width = way_.from.width;
    const bool is_rgb = way_.from.colour == model::rgb;
    const int last = is_rgb ? third : first;
    if (way_.from.colour == model::chroma || way_.from.colour == model::alpha) return;
    for (int i = first; i <= last; ++i) {
      if (way_.widens_rgb) scale(lines.of[i], width, way_.rgb_range);
      if (way_.composites) over_background(lines.of[i], lines.of[alpha], width, i);
    }
    if (way_.scales_range) scale(lines.of[first], width, way_.luma_range);
  }

  // A row of chroma of a 4:2:0 source; three of them are kept, because neighbours are asked for again.
  chroma_lines chroma_row(const int row) {
    const int place = row % 3;
    const chroma_lines lines = lines_.cached[place];
    if (cached_[place] == row) return lines;
    cached_[place] = row;
    component_lines to = lines_.keyed;
    to.of[second] = lines.cb;
    to.of[third] = lines.cr;
    read_planes(row, 2, to);
    if (way_.composites) read_planes(2 * row, 1, lines_.keyed);
    finish_chroma(lines, lines_.keyed.of[alpha]);
    return lines;
  }
  chroma_lines chroma_between(const int row) {
    const int nearest = row / 2;
    const int count = way_.from.chroma_width();
    const chroma_lines near = chroma_row(nearest);
    if (way_.how.filter == chroma_filter::nearest) return near;
    const int beside = row % 2 == 0 ? nearest - 1 : nearest + 1;
    const int rows = way_.from.chroma_height();
    const chroma_lines far = chroma_row(beside < 0 ? 0 : beside < rows ? beside : rows - 1);
    run<kernel::between_lines>(near.cb, far.cb, lines_.between.cb, count);
    run<kernel::between_lines>(near.cr, far.cr, lines_.between.cr, count);
    return lines_.between;
  }
  chroma_lines chroma_of(const int row) {
    if (way_.from.half_height) return chroma_between(row);
    return {lines_.read.of[second], lines_.read.of[third]};
  }

  // Filtering along rows.

  void double_line(uint16_t* line, uint16_t* to) const {
    const int count = way_.from.chroma_width();
    set_margin(line, count);
    if (way_.how.filter == chroma_filter::nearest) return run<kernel::repeat_samples>(line, to, count);
    if (way_.how.siting == kernel::siting::left)
      return run<kernel::double_samples<kernel::siting::left>>(line, to, count);
    run<kernel::double_samples<kernel::siting::center>>(line, to, count);
  }
  void halve_line(uint16_t* line, uint16_t* to) const {
    const int count = way_.to.chroma_width();
    set_margin(line, way_.to.width);
    if (way_.how.filter == chroma_filter::nearest) return run<kernel::first_of_pairs>(line, to, count);
    if (way_.how.siting == kernel::siting::left)
      return run<kernel::halve_samples<kernel::siting::left>>(line, to, count);
    run<kernel::halve_samples<kernel::siting::center>>(line, to, count);
  }
  chroma_lines in_columns_of_destination(const chroma_lines& c) const {
    if (!way_.halves_columns) return c;
    halve_line(c.cb, lines_.halved.cb);
    halve_line(c.cr, lines_.halved.cr);
    return lines_.halved;
  }
  chroma_lines doubled(const chroma_lines& c) const {
    if (!way_.doubles_columns) return c;
    double_line(c.cb, lines_.doubled.cb);
    double_line(c.cr, lines_.doubled.cr);
    return lines_.doubled;
  }

  // Colour.

  template <class Kernel>
  void to_rgb(const typename Kernel::coefficients& by, const uint16_t* luma, const chroma_lines& c,
              const int count) const {
    const auto& [r, g, b, a, rest] = lines_.rgb.of;
    Kernel k{};
    static_cast<typename Kernel::coefficients&>(k) = by;
    run<Kernel>(luma, c.cb, c.cr, r, g, b, count, k);
  }
  // With chroma of every second pixel, unless that is doubled before.
  template <class Kernel>
  void to_rgb(const typename Kernel::coefficients& by, uint16_t* luma, const chroma_lines& c) const {
    using kernel::siting;
    if (!way_.doubles_columns || way_.how.filter == chroma_filter::nearest)
      return to_rgb<Kernel>(by, luma, doubled(c), way_.from.width);
    const int pairs = way_.from.chroma_width();
    set_margin(c.cb, pairs);
    set_margin(c.cr, pairs);
    set_margin(luma, way_.from.width);  // the last pair may be one pixel
    if (way_.how.siting == siting::left)
      to_rgb<kernel::line_pairs_to_rgb<Kernel, siting::left>>(by, luma, c, pairs);
    else
      to_rgb<kernel::line_pairs_to_rgb<Kernel, siting::center>>(by, luma, c, pairs);
  }
  void to_rgb(uint16_t* luma, const chroma_lines& c) const {
    if (way_.narrow)
      to_rgb<kernel::ycbcr_lines_to_rgb_narrow>(way_.narrow_to, luma, c);
    else
      to_rgb<kernel::ycbcr_lines_to_rgb_wide>(way_.wide_to, luma, c);
  }
  void to_grey(const uint16_t* luma, uint16_t* grey) const {
    if (way_.narrow) {
      kernel::luma_line_to_grey_narrow k{};
      static_cast<kernel::narrow_coefficients_to_rgb&>(k) = way_.narrow_to;
      run<kernel::luma_line_to_grey_narrow>(luma, grey, way_.from.width, k);
    } else {
      kernel::luma_line_to_grey_wide k{};
      static_cast<kernel::wide_coefficients_to_rgb&>(k) = way_.wide_to;
      run<kernel::luma_line_to_grey_wide>(luma, grey, way_.from.width, k);
    }
  }
  void from_rgb(const component_lines& rgb) const {
    const auto& [r, g, b, a, rest] = rgb.of;
    const auto& [y, cb, cr, no_alpha, none] = lines_.ycbcr.of;
    const int width = way_.from.width;
    if (way_.narrow)
      run<kernel::rgb_lines_to_ycbcr_narrow>(r, g, b, y, cb, cr, width, way_.narrow_from);
    else
      run<kernel::rgb_lines_to_ycbcr_wide>(r, g, b, y, cb, cr, width, way_.wide_from);
  }
  void to_luminance(const component_lines& rgb, const kernel::rgb_lines_to_luminance& by) const {
    run<kernel::rgb_lines_to_luminance>(rgb.of[first], rgb.of[second], rgb.of[third], lines_.ycbcr.of[first],
                                        way_.from.width, by);
  }
  void to_luma(const component_lines& rgb) const {
    if (way_.narrow) {
      kernel::rgb_lines_to_luma_narrow k{};
      k.of = way_.narrow_from.of;
      return run<kernel::rgb_lines_to_luma_narrow>(rgb.of[first], rgb.of[second], rgb.of[third], lines_.ycbcr.of[first],
                                                   way_.from.width, k);
    }
    kernel::rgb_lines_to_luminance k{};
    k.r = way_.wide_from.of.y_r;
    k.g = way_.wide_from.of.y_g;
    k.b = way_.wide_from.of.y_b;
    k.bottom = way_.wide_from.of.black;
    to_luminance(rgb, k);
  }

  // The row in the components and columns of the destination.
  component_lines make(const int row) {
    read_planes(row, 1, lines_.read);
    if (way_.reads_chroma && needed_[second] && !way_.from.half_height)
      finish_chroma({lines_.read.of[second], lines_.read.of[third]}, lines_.read.of[alpha]);
    finish_pixels(lines_.read);
    component_lines made = lines_.read;
    made.of[unused] = lines_.ones;
    if (!way_.from.has_alpha) made.of[alpha] = lines_.ones;
    if (way_.from.colour == model::alpha) return made;
    if (way_.has_to_rgb || way_.from.colour == model::rgb || way_.from.colour == model::luminance)
      make_of_rgb(row, made);
    else if (makes_chroma() && !way_.reads_chroma)
      set_chroma(made, neutral());
    else if (makes_chroma() && !way_.keeps_half_rows)
      set_chroma(made, in_columns_of_destination(doubled(chroma_of(row))));
    return made;
  }
  static void set_chroma(component_lines& made, const chroma_lines& c) {
    made.of[second] = c.cb;
    made.of[third] = c.cr;
  }
  chroma_lines neutral() const { return {lines_.neutral, lines_.neutral}; }

  // Of grey, red, green and blue are one line, its luminance is the same, and its chroma is neutral: the matrices have
  // coefficients that add up.
  void make_of_rgb(const int row, component_lines& made) {
    if (way_.has_to_rgb && is_grey(way_.from)) {
      to_grey(made.of[first], lines_.rgb.of[first]);
      made.of[first] = lines_.rgb.of[first];
    } else if (way_.has_to_rgb) {
      to_rgb(made.of[first], chroma_of(row));
      for (const component i : {first, second, third}) made.of[i] = lines_.rgb.of[i];
    }
    if (is_grey(way_.from)) set_chroma(made, {made.of[first], made.of[first]});
    if (way_.has_luminance)
      make_luminance(made);
    else if (way_.has_from_rgb)
      make_ycbcr(made);
    else if (way_.narrows_rgb)
      narrow_range(made);
  }
  void make_luminance(component_lines& made) const {
    if (is_grey(way_.from)) return;
    to_luminance(made, way_.luminance);
    made.of[first] = lines_.ycbcr.of[first];
  }
  void make_ycbcr(component_lines& made) const {
    const bool has_chroma = way_.to.has_chroma && !is_grey(way_.from);
    if (has_chroma)
      from_rgb(made);
    else
      to_luma(made);
    made.of[first] = lines_.ycbcr.of[first];
    if (has_chroma)
      set_chroma(made, in_columns_of_destination({lines_.ycbcr.of[second], lines_.ycbcr.of[third]}));
    else
      set_chroma(made, neutral());
  }
  void narrow_range(const component_lines& made) const {
    scale(made.of[first], way_.to.width, way_.rgb_range);
    if (is_grey(way_.from)) return;
    scale(made.of[second], way_.to.width, way_.rgb_range);
    scale(made.of[third], way_.to.width, way_.rgb_range);
  }

  // Writing.

  // The lines of chroma of this row must not be those of the row before.
  void keep_row_before() {
    std::swap(lines_.read.of[second], lines_.read_before.cb);
    std::swap(lines_.read.of[third], lines_.read_before.cr);
    std::swap(lines_.halved, lines_.halved_before);
  }
  // Rows of chroma of a 4:2:0 destination: of the upper row, or of both.
  void write_half_rows(const int row, const component_lines& made, const bool is_last) {
    const bool is_upper = row % 2 == 0;
    component_lines out = made;
    if (way_.keeps_half_rows || way_.how.filter == chroma_filter::nearest) {
      if (!is_upper) return;
      if (way_.keeps_half_rows) set_chroma(out, chroma_row(row / 2));
    } else {
      if (is_upper) upper_ = {made.of[second], made.of[third]};
      if (is_upper && !is_last) return;
      if (!is_upper) set_chroma(out, average(upper_, {made.of[second], made.of[third]}));
    }
    write(row / 2, 2, out);
  }
  chroma_lines average(const chroma_lines& upper, const chroma_lines& lower) const {
    if (lower.cb == lines_.neutral) return lower;
    const int count = way_.to.chroma_width();
    run<kernel::average_of_lines>(upper.cb, lower.cb, lines_.averaged.cb, count);
    run<kernel::average_of_lines>(upper.cr, lower.cr, lines_.averaged.cr, count);
    return lines_.averaged;
  }
  void write(const int row, const int image_rows, const component_lines& lines) const {
    for (size_t i = 0; i < way_.to.plane_count; ++i) {
      const stored_plane& p = way_.to.planes[i];
      if (p.layout->image_rows != image_rows || way_.is_direct(i)) continue;
      fill_groups(p, lines);
      auto* plane = static_cast<uint8_t*>(destination_.data[i]);
      write_row(p, plane + destination_.stride[i] * row, way_.to.width, lines, fills_words(way_.to));
    }
  }
  // Each component repeats its last sample up to the end of the last group.
  void fill_groups(const stored_plane& p, const component_lines& lines) const {
    for (const component i : {first, second, third, alpha})
      if (p.has(i)) repeat_last(lines.of[i], way_.to.samples_of(i), p.groups(way_.to.width) * p.samples[i]);
  }
  static void repeat_last(uint16_t* line, const int count, const int stored_samples) {
    for (int i = count; i < stored_samples; ++i) line[i] = line[count - 1];
  }
};

}  // namespace

int64_t scratch_bytes(const way& w) {
  return most_lines * line_samples(w) * static_cast<int64_t>(sizeof(uint16_t)) + alignment;
}

void convert_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                  const int rows, void* scratch) {
  rows_of_way(w, source, destination, scratch).convert(first, rows);
}

}  // namespace Processing::Morvane::checked
