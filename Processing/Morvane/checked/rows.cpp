#include "rows.h"

#include <algorithm>
#include <initializer_list>

#include "../backend/dispatch.h"
#include "columns.h"
#include "row_lines.h"

namespace Processing::Morvane::checked {

namespace {

using backend::line_of;
using kernel::siting;

bool is_grey(const shape& s) {
  return s.colour == model::luminance || (s.colour == model::ycbcr && !s.has_chroma);
}

// A row of chroma of a 4:2:0 source that is kept, and the column up to which it has been read.
struct kept_row {
  int row = -1;
  int end = 0;
};

class rows_of_way {
 public:
  rows_of_way(const way& w, const morvane_picture& source, const morvane_picture& destination, void* scratch)
      : way_(w),
        source_(source),
        destination_(destination),
        needs_(needs_of(w)),
        doubles_linearly_(w.doubles_columns && w.filters_chroma()),
        lines_(row_lines_in(scratch, w, needs_)) {}

  void convert(const int first_row, const int rows) {
    const int width = way_.from.width;
    const int ahead = columns_ahead();
    for (int row = first_row; row < first_row + rows; ++row) {
      for (int column = 0; column < width; column += piece_.made) {
        piece_ = piece_from(column, row, width, ahead);
        convert_piece();
      }
    }
  }

 private:
  const way& way_;
  const morvane_picture& source_;
  const morvane_picture& destination_;
  const row_needs needs_;
  const bool doubles_linearly_;
  row_lines lines_;
  kept_row kept_[3];
  piece piece_;

  void convert_piece() {
    const component_lines made = make();
    if (needs_.half_rows) write_half_rows(made);
    write(piece_.row, 1, made);
  }
  // Whole groups with the next sample of chroma.
  int columns_ahead() const {
    int result = 0;
    for (size_t i = 0; i < way_.from.plane_count; ++i)
      if (doubles_linearly_) result = std::max({result, 2, way_.from.planes[i].layout->group_pixels});
    return result;
  }

  // A step of a piece.
  template <class Kernel, class... Argument>
  static void run(const Argument... arguments) {
    line_of<Kernel>()(arguments...);
  }
  static void scale(uint16_t* line, const int count, const kernel::scale_line& by) {
    run<kernel::scale_line>(line, count, by);
  }
  // Filters look beyond the ends of a line, where its samples are repeated.
  void repeat_ends(uint16_t* line, const int count) const {
    if (piece_.is_first) line[-1] = line[0];
    if (piece_.is_last) line[count] = line[count - 1];
  }
  // The next piece begins where this one ends.
  static void keep_last(uint16_t* line, const int count) { line[-1] = line[count - 1]; }
  columns all_read() const { return {0, piece_.read}; }
  int chroma_made() const { return way_.to.chroma_samples(piece_.made); }
  // Of the source, for the columns that are made.
  int chroma_used() const { return way_.from.chroma_samples(piece_.made); }

  // Reading.

  // The planes that have a row for so many rows of the image.
  void read_planes(const int row, const int image_rows, const component_lines& to, const columns& c) const {
    const component_lines lines = lines_from(to, way_.from, c.begin);
    for (size_t i = 0; i < way_.from.plane_count; ++i) {
      const stored_plane& p = way_.from.planes[i];
      if (p.layout->image_rows != image_rows || !is_wanted(p)) continue;
      const auto* plane = static_cast<const uint8_t*>(source_.data[i]);
      const uint8_t* at = plane + source_.stride[i] * row + p.layout->row_bytes(piece_.first_column + c.begin);
      read_row(p, at, c.count(), lines, fills_words(way_.from));
    }
  }
  bool is_wanted(const stored_plane& p) const {
    const bool chroma = way_.reads_chroma || !way_.from.has_chroma;
    const auto wants = [&](const component c) { return p.has(c) && needs_.components[c]; };
    return wants(first) || (wants(alpha) && needs_.alpha) || (wants(second) && chroma) || (wants(third) && chroma);
  }

  void over_background(uint16_t* line, const uint16_t* by, const columns& c, const int component) const {
    kernel::line_over_background k{};
    k.background = way_.behind.of[component];
    run<kernel::line_over_background>(by + c.begin, line + c.begin, c.count(), k);
  }
  // Alpha where the samples of chroma are.
  const uint16_t* alpha_for_chroma(const uint16_t* of_pixels, const columns& c) {
    if (!way_.from.half_width) return of_pixels;
    run<kernel::first_of_pairs>(of_pixels + 2 * c.begin, lines_.alpha_of_pairs + c.begin, c.count());
    return lines_.alpha_of_pairs;
  }
  void finish_chroma(const chroma_lines& lines, const uint16_t* alpha_of_pixels, const columns& c) {
    if (way_.composites) {
      const uint16_t* by = alpha_for_chroma(alpha_of_pixels, c);
      over_background(lines.cb, by, c, second);
      over_background(lines.cr, by, c, third);
    }
    if (!way_.scales_range) return;
    scale(lines.cb + c.begin, c.count(), way_.chroma_range);
    scale(lines.cr + c.begin, c.count(), way_.chroma_range);
  }
  void finish_pixels(const component_lines& lines) {
    const int count = piece_.read;
    const bool is_rgb = way_.from.colour == model::rgb;
    const int last = is_rgb ? third : first;
    if (way_.from.colour == model::chroma || way_.from.colour == model::alpha) return;
    for (int i = first; i <= last; ++i) {
      if (way_.widens_rgb) scale(lines.of[i], count, way_.rgb_range);
      if (way_.composites) over_background(lines.of[i], lines.of[alpha], all_read(), i);
    }
    if (way_.scales_range) scale(lines.of[first], count, way_.luma_range);
  }

  // A row of chroma of a 4:2:0 source, from the piece on. Three rows are kept, because neighbours are asked for again.
  chroma_lines chroma_row(const int row) {
    const int place = row % 3;
    const chroma_lines lines = lines_.kept[place].from(way_.from.chroma_samples(piece_.first_column));
    kept_row& kept = kept_[place];
    if (kept.row != row) kept = {row, 0};
    const columns c = {kept.end - piece_.first_column, piece_.read};
    if (c.count() <= 0) return lines;
    kept.end = piece_.first_column + piece_.read;
    component_lines to = lines_.keyed;
    to.of[second] = lines.cb;
    to.of[third] = lines.cr;
    read_planes(row, 2, to, c);
    if (way_.composites) read_planes(2 * row, 1, lines_.keyed, c);
    finish_chroma(lines, lines_.keyed.of[alpha], chroma_samples(way_.from, c));
    return lines;
  }
  chroma_lines chroma_between_rows() {
    const chroma_lines near = chroma_row(piece_.row / 2);
    if (!way_.filters_chroma()) return near;
    const chroma_lines far = chroma_row(way_.from.chroma_row_beside(piece_.row));
    const int count = way_.from.chroma_samples(piece_.read);
    run<kernel::between_lines>(near.cb, near.cr, far.cb, far.cr, lines_.between.cb, lines_.between.cr, count);
    return lines_.between;
  }
  chroma_lines chroma_of_row() {
    if (way_.from.half_height) return chroma_between_rows();
    return {lines_.read.of[second], lines_.read.of[third]};
  }

  // Filtering along rows.

  // Calls run.operator()<siting>().
  template <class Run>
  void with_siting(const Run run) const {
    if (way_.how.siting == siting::left)
      run.template operator()<siting::left>();
    else
      run.template operator()<siting::center>();
  }
  // The same where lines have a sample before the first one and behind the last one.
  template <class Run>
  void with_ends(const chroma_lines& lines, const int count, const Run run) const {
    for (uint16_t* line : {lines.cb, lines.cr}) repeat_ends(line, count);
    with_siting(run);
    for (uint16_t* line : {lines.cb, lines.cr}) keep_last(line, count);
  }
  chroma_lines doubled(const chroma_lines& from) const {
    const chroma_lines& to = lines_.doubled;
    const int count = chroma_used();
    if (!way_.doubles_columns) return from;
    if (!way_.filters_chroma())
      run<kernel::repeat_samples>(from.cb, from.cr, to.cb, to.cr, count);
    else
      with_ends(from, count,
                [&]<siting at>() { run<kernel::double_samples<at>>(from.cb, from.cr, to.cb, to.cr, count); });
    return to;
  }
  // That of an upper row is made where it is kept.
  chroma_lines halved() const { return is_kept_as_upper() ? upper() : lines_.halved; }
  chroma_lines in_columns_of_destination(const chroma_lines& from) const {
    if (!way_.halves_columns) return from;
    const chroma_lines to = halved();
    const int count = chroma_made();
    if (!way_.filters_chroma()) {
      run<kernel::first_of_pairs>(from.cb, to.cb, count);
      run<kernel::first_of_pairs>(from.cr, to.cr, count);
    } else {
      with_ends(from, piece_.made,
                [&]<siting at>() { run<kernel::halve_samples<at>>(from.cb, from.cr, to.cb, to.cr, count); });
    }
    return to;
  }

  // Colour.

  template <class Kernel>
  void to_rgb(const typename Kernel::coefficients& by, const uint16_t* luma, const chroma_lines& chroma,
              const int count) const {
    const auto& [r, g, b, a, rest] = lines_.rgb.of;
    Kernel k{};
    static_cast<typename Kernel::coefficients&>(k) = by;
    run<Kernel>(luma, chroma.cb, chroma.cr, r, g, b, count, k);
  }
  // With chroma of every second pixel, unless that is doubled before.
  template <class Kernel>
  void to_rgb(const typename Kernel::coefficients& by, uint16_t* luma, const chroma_lines& chroma) const {
    if (!doubles_linearly_) return to_rgb<Kernel>(by, luma, doubled(chroma), piece_.made);
    const int pairs = chroma_used();
    repeat_ends(luma, piece_.made);  // the last pair may be one pixel
    with_ends(chroma, pairs,
              [&]<siting at>() { to_rgb<kernel::line_pairs_to_rgb<Kernel, at>>(by, luma, chroma, pairs); });
  }
  void to_rgb(uint16_t* luma, const chroma_lines& chroma) const {
    if (way_.narrow)
      to_rgb<kernel::ycbcr_lines_to_rgb_narrow>(way_.narrow_to, luma, chroma);
    else
      to_rgb<kernel::ycbcr_lines_to_rgb_wide>(way_.wide_to, luma, chroma);
  }
  void to_grey(const uint16_t* luma, uint16_t* grey) const {
    if (way_.narrow) {
      kernel::luma_line_to_grey_narrow k{};
      static_cast<kernel::narrow_coefficients_to_rgb&>(k) = way_.narrow_to;
      run<kernel::luma_line_to_grey_narrow>(luma, grey, piece_.made, k);
    } else {
      kernel::luma_line_to_grey_wide k{};
      static_cast<kernel::wide_coefficients_to_rgb&>(k) = way_.wide_to;
      run<kernel::luma_line_to_grey_wide>(luma, grey, piece_.made, k);
    }
  }
  // Luma, and chroma for the columns of the destination.
  template <class Matrix>
  chroma_lines from_rgb(const Matrix& by, const component_lines& rgb) const {
    const auto& [r, g, b, a, rest] = rgb.of;
    const auto& [y, cb, cr, no_alpha, none] = lines_.ycbcr.of;
    run<Matrix>(r, g, b, y, cb, cr, piece_.made, by);
    return in_columns_of_destination({cb, cr});
  }
  chroma_lines pairs_from_rgb(const component_lines& rgb) const {
    const auto& [r, g, b, a, rest] = rgb.of;
    const chroma_lines to = halved();
    kernel::rgb_line_pairs_to_ycbcr_narrow k{};
    k.matrix = way_.narrow_from;
    for (uint16_t* line : {r, g, b}) repeat_ends(line, piece_.made);
    run<decltype(k)>(r, g, b, lines_.ycbcr.of[first], to.cb, to.cr, chroma_made(), k);
    for (uint16_t* line : {r, g, b}) keep_last(line, piece_.made);
    return to;
  }
  chroma_lines from_rgb(const component_lines& rgb) const {
    if (needs_.halves_in_matrix) return pairs_from_rgb(rgb);
    return way_.narrow ? from_rgb(way_.narrow_from, rgb) : from_rgb(way_.wide_from, rgb);
  }
  template <class Kernel>
  void to_one(const component_lines& rgb, const Kernel& k) const {
    const auto& [r, g, b, a, rest] = rgb.of;
    run<Kernel>(r, g, b, lines_.ycbcr.of[first], piece_.made, k);
  }
  void to_luma(const component_lines& rgb) const {
    if (way_.narrow) {
      kernel::rgb_lines_to_luma_narrow k{};
      k.of = way_.narrow_from.of;
      return to_one(rgb, k);
    }
    kernel::rgb_lines_to_luminance k{};
    k.r = way_.wide_from.of.y_r;
    k.g = way_.wide_from.of.y_g;
    k.b = way_.wide_from.of.y_b;
    k.bottom = way_.wide_from.of.black;
    to_one(rgb, k);
  }

  // The lines of the destination's components, of which a piece is made.
  component_lines make() {
    read_planes(piece_.row, 1, lines_.read, all_read());
    if (way_.reads_chroma && needs_.components[second] && !way_.from.half_height)
      finish_chroma({lines_.read.of[second], lines_.read.of[third]}, lines_.read.of[alpha],
                    chroma_samples(way_.from, all_read()));
    finish_pixels(lines_.read);
    component_lines made = lines_.read;
    made.of[unused] = lines_.ones;
    if (!way_.from.has_alpha) made.of[alpha] = lines_.ones;
    if (way_.from.colour == model::alpha) return made;
    if (way_.has_to_rgb || way_.from.colour == model::rgb || way_.from.colour == model::luminance)
      make_of_rgb(made);
    else if (needs_.chroma && !way_.reads_chroma)
      set_chroma(made, neutral());
    else if (needs_.chroma && !way_.keeps_half_rows)
      set_chroma(made, in_columns_of_destination(doubled(chroma_of_row())));
    return made;
  }
  static void set_chroma(component_lines& made, const chroma_lines& c) {
    made.of[second] = c.cb;
    made.of[third] = c.cr;
  }
  chroma_lines neutral() const { return {lines_.neutral, lines_.neutral}; }

  // Of grey, red, green and blue are one line, its luminance is the same, and its chroma is neutral: the matrices have
  // coefficients that add up.
  void make_of_rgb(component_lines& made) {
    if (way_.has_to_rgb && is_grey(way_.from)) {
      to_grey(made.of[first], lines_.rgb.of[first]);
      made.of[first] = lines_.rgb.of[first];
    } else if (way_.has_to_rgb) {
      to_rgb(made.of[first], chroma_of_row());
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
    to_one(made, way_.luminance);
    made.of[first] = lines_.ycbcr.of[first];
  }
  void make_ycbcr(component_lines& made) const {
    const bool has_chroma = way_.to.has_chroma && !is_grey(way_.from);
    if (has_chroma) {
      set_chroma(made, from_rgb(made));
    } else {
      to_luma(made);
      set_chroma(made, neutral());
    }
    made.of[first] = lines_.ycbcr.of[first];
  }
  void narrow_range(const component_lines& made) const {
    scale(made.of[first], piece_.made, way_.rgb_range);
    if (is_grey(way_.from)) return;
    scale(made.of[second], piece_.made, way_.rgb_range);
    scale(made.of[third], piece_.made, way_.rgb_range);
  }

  // Writing.

  // Rows of chroma of a 4:2:0 destination: of the upper row, or of both.
  void write_half_rows(const component_lines& made) {
    const bool is_upper = piece_.row % 2 == 0;
    const bool is_neutral = made.of[second] == lines_.neutral;
    component_lines out = made;
    if (!needs_.average_of_rows || is_neutral) {
      if (!is_upper) return;
      if (way_.keeps_half_rows) set_chroma(out, chroma_row(piece_.row / 2));
    } else if (!is_upper) {
      set_chroma(out, average_with_upper({made.of[second], made.of[third]}));
    } else if (is_kept_as_upper()) {
      return keep_as_upper({made.of[second], made.of[third]});
    }
    write(piece_.row / 2, 2, out);
  }
  chroma_lines upper() const { return lines_.upper.from(way_.to.chroma_samples(piece_.first_column)); }
  bool is_kept_as_upper() const {
    return needs_.average_of_rows && piece_.row % 2 == 0 && piece_.row + 1 < way_.from.height;
  }
  void keep_as_upper(const chroma_lines& made) const {
    if (made.cb == upper().cb) return;
    std::copy_n(made.cb, chroma_made(), upper().cb);
    std::copy_n(made.cr, chroma_made(), upper().cr);
  }
  chroma_lines average_with_upper(const chroma_lines& lower) const {
    const auto& [cb, cr] = lines_.averaged;
    run<kernel::average_of_lines>(upper().cb, upper().cr, lower.cb, lower.cr, cb, cr, chroma_made());
    return lines_.averaged;
  }
  void write(const int row, const int image_rows, const component_lines& lines) const {
    for (size_t i = 0; i < way_.to.plane_count; ++i) {
      const stored_plane& p = way_.to.planes[i];
      if (p.layout->image_rows != image_rows || way_.is_direct(i)) continue;
      if (piece_.is_last) fill_groups(p, lines);
      auto* plane = static_cast<uint8_t*>(destination_.data[i]);
      uint8_t* at = plane + destination_.stride[i] * row + p.layout->row_bytes(piece_.first_column);
      write_row(p, at, piece_.made, lines, fills_words(way_.to));
    }
  }
  // Each component repeats its last sample up to the end of the last group.
  void fill_groups(const stored_plane& p, const component_lines& lines) const {
    for (const component i : {first, second, third, alpha})
      if (p.has(i)) repeat_last(lines.of[i], way_.to.samples_of(i, piece_.made), p.groups(piece_.made) * p.samples[i]);
  }
  static void repeat_last(uint16_t* line, const int count, const int stored_samples) {
    for (int i = count; i < stored_samples; ++i) line[i] = line[count - 1];
  }
};

}  // namespace

int64_t scratch_bytes(const way& w) {
  return bytes_of_row_lines(w);
}

void convert_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                  const int rows, void* scratch) {
  rows_of_way(w, source, destination, scratch).convert(first, rows);
}

}  // namespace Processing::Morvane::checked
