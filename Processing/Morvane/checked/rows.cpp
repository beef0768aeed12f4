#include "rows.h"

#include <cstring>

#include "../backend/dispatch.h"
#include "../kernel/lines_stored.h"

namespace Processing::Morvane::checked {

namespace {

using backend::line_of;

// Cb and Cr of a row.
struct chroma_lines {
  uint16_t* cb = nullptr;
  uint16_t* cr = nullptr;
};

// What a row passes through. Each line has room for whole groups, and for a margin on both sides.
struct lines_of_way {
  component_lines read;   // of the source
  component_lines keyed;  // of another row, whose alpha a row of chroma needs
  component_lines rgb;
  component_lines ycbcr;
  chroma_lines cached[3];  // rows of chroma of a 4:2:0 source
  chroma_lines between;    // of a row between them
  chroma_lines doubled;
  chroma_lines halved;
  chroma_lines upper;  // of the upper one of two rows
  uint16_t* alpha_of_pairs = nullptr;
  uint16_t* ones = nullptr;
};

constexpr int64_t margin = 32;  // in samples; a cache line
constexpr int64_t line_count = 2 * component_count + 2 * 4 + 7 * 2 + 2;
constexpr int64_t alignment = 64;

int64_t line_samples(const way& w) {
  return (int64_t{w.from.width} + 31) / 32 * 32 + 2 * margin;
}

class rows_of_way {
 public:
  rows_of_way(const way& w, const morvane_picture& source, const morvane_picture& destination, void* scratch)
      : way_(w), source_(source), destination_(destination) {
    const auto at = reinterpret_cast<uintptr_t>(scratch);
    next_ = reinterpret_cast<uint16_t*>((at + alignment - 1) / alignment * alignment);
    for (uint16_t*& line : lines_.read.of) line = new_line();
    for (uint16_t*& line : lines_.keyed.of) line = new_line();
    for (int i = first; i <= alpha; ++i) {
      lines_.rgb.of[i] = new_line();
      lines_.ycbcr.of[i] = new_line();
    }
    for (chroma_lines* pair : {&lines_.cached[0], &lines_.cached[1], &lines_.cached[2], &lines_.between,
                               &lines_.doubled, &lines_.halved, &lines_.upper})
      *pair = {new_line(), new_line()};
    lines_.alpha_of_pairs = new_line();
    lines_.ones = new_line();
    fill(lines_.ones, static_cast<int>(line_samples(w) - 2 * margin), 65535);
  }

  void convert(const int first_row, const int rows) {
    for (int row = first_row; row < first_row + rows; ++row) {
      component_lines made = make(row);
      if (way_.to.half_height && way_.to.has_chroma) write_half_rows(row, made, row + 1 == way_.from.height);
      write(row, 1, made);
    }
  }

 private:
  const way& way_;
  const morvane_picture& source_;
  const morvane_picture& destination_;
  lines_of_way lines_;
  uint16_t* next_;
  int cached_[3] = {-1, -1, -1};

  uint16_t* new_line() {
    uint16_t* line = next_ + margin;
    next_ += line_samples(way_);
    return line;
  }
  static void fill(uint16_t* line, const int count, const uint16_t value) {
    kernel::fill_line k{};
    k.value = value;
    line_of<kernel::fill_line>()(line, count, k);
  }
  static void scale(uint16_t* line, const int count, const kernel::scale_line& by) {
    line_of<kernel::scale_line>()(line, count, by);
  }
  static void copy(uint16_t* to, const uint16_t* from, const int count) {
    std::memcpy(to, from, static_cast<size_t>(count) * sizeof *to);
  }
  static void set_margin(uint16_t* line, const int count) {
    line[-1] = line[0];
    line[count] = line[count - 1];
  }

  int samples_of(const shape& s, const int component) const {
    const bool is_chroma = s.has_chroma && (component == second || component == third);
    return is_chroma ? s.chroma_width() : s.width;
  }

  // Reading.

  // The planes that have a row for so many rows of the image.
  void read_planes(const int row, const int image_rows, const component_lines& to) const {
    for (size_t i = 0; i < way_.from.plane_count; ++i) {
      const stored_plane& p = way_.from.planes[i];
      if (p.layout->image_rows != image_rows) continue;
      const auto* plane = static_cast<const uint8_t*>(source_.data[i]);
      read_row(p, plane + source_.stride[i] * row, way_.from.width, to);
      widen(p, to);
    }
  }
  void widen(const stored_plane& p, const component_lines& lines) const {
    for (const component i : {first, second, third, alpha}) {
      if (!p.has(i)) continue;
      const int count = samples_of(way_.from, i);
      if (p.layout->upper_bits != 0) {
        kernel::keep_upper_bits k{};
        k.bits = p.layout->upper_bits;
        line_of<kernel::keep_upper_bits>()(lines.of[i], count, k);
      }
      if (p.layout->depth() == 16 || !fills_words(way_.from, i)) continue;
      kernel::repeat_upper_bits k{};
      k.bits = p.layout->depth();
      line_of<kernel::repeat_upper_bits>()(lines.of[i], count, k);
    }
  }
  // Whether the largest sample of a component stands for 65535.
  static bool fills_words(const shape& s, const int component) {
    if (component == alpha) return true;
    return s.colour == model::luminance || (s.colour == model::rgb && s.full_range);
  }

  void over_background(uint16_t* line, const uint16_t* by, const int count, const int component) const {
    kernel::line_over_background k{};
    k.background = way_.behind.of[component];
    line_of<kernel::line_over_background>()(by, line, count, k);
  }
  // Alpha where the samples of chroma are.
  const uint16_t* alpha_for_chroma(const uint16_t* of_pixels) {
    if (!way_.from.half_width) return of_pixels;
    line_of<kernel::first_of_pairs>()(of_pixels, lines_.alpha_of_pairs, way_.from.chroma_width());
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
    if (way_.how.filter == chroma_filter::nearest) {
      copy(lines_.between.cb, near.cb, count);
      copy(lines_.between.cr, near.cr, count);
      return lines_.between;
    }
    const int beside = row % 2 == 0 ? nearest - 1 : nearest + 1;
    const int rows = way_.from.chroma_height();
    const chroma_lines far = chroma_row(beside < 0 ? 0 : beside < rows ? beside : rows - 1);
    line_of<kernel::between_lines>()(near.cb, far.cb, lines_.between.cb, count);
    line_of<kernel::between_lines>()(near.cr, far.cr, lines_.between.cr, count);
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
    if (way_.how.filter == chroma_filter::nearest) return line_of<kernel::repeat_samples>()(line, to, count);
    if (way_.how.siting == kernel::siting::left)
      return line_of<kernel::double_samples<kernel::siting::left>>()(line, to, count);
    line_of<kernel::double_samples<kernel::siting::center>>()(line, to, count);
  }
  void halve_line(uint16_t* line, uint16_t* to) const {
    const int count = way_.to.chroma_width();
    set_margin(line, way_.to.width);
    if (way_.how.filter == chroma_filter::nearest) return line_of<kernel::first_of_pairs>()(line, to, count);
    if (way_.how.siting == kernel::siting::left)
      return line_of<kernel::halve_samples<kernel::siting::left>>()(line, to, count);
    line_of<kernel::halve_samples<kernel::siting::center>>()(line, to, count);
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

  void to_rgb(const uint16_t* luma, const chroma_lines& c) const {
    const auto& [r, g, b, a, rest] = lines_.rgb.of;
    const int width = way_.from.width;
    if (way_.narrow)
      line_of<kernel::ycbcr_lines_to_rgb_narrow>()(luma, c.cb, c.cr, r, g, b, width, way_.narrow_to);
    else
      line_of<kernel::ycbcr_lines_to_rgb_wide>()(luma, c.cb, c.cr, r, g, b, width, way_.wide_to);
  }
  void from_rgb(const uint16_t* const (&rgb)[3]) const {
    const auto& [y, cb, cr, a, rest] = lines_.ycbcr.of;
    const int width = way_.from.width;
    if (way_.narrow)
      line_of<kernel::rgb_lines_to_ycbcr_narrow>()(rgb[0], rgb[1], rgb[2], y, cb, cr, width, way_.narrow_from);
    else
      line_of<kernel::rgb_lines_to_ycbcr_wide>()(rgb[0], rgb[1], rgb[2], y, cb, cr, width, way_.wide_from);
  }

  chroma_lines source_chroma(const int row) {
    const int width = way_.from.width;
    if (way_.reads_chroma) return doubled(chroma_of(row));
    fill(lines_.doubled.cb, width, 32768);
    fill(lines_.doubled.cr, width, 32768);
    return lines_.doubled;
  }

  // The row in the components and columns of the destination.
  component_lines make(const int row) {
    read_planes(row, 1, lines_.read);
    if (way_.reads_chroma && !way_.from.half_height)
      finish_chroma({lines_.read.of[second], lines_.read.of[third]}, lines_.read.of[alpha]);
    finish_pixels(lines_.read);
    component_lines made = lines_.read;
    made.of[unused] = lines_.ones;
    if (way_.to.has_alpha && !way_.from.has_alpha) fill(made.of[alpha], way_.to.width, 65535);
    if (way_.from.colour == model::alpha) return made;
    if (way_.has_to_rgb || way_.from.colour == model::rgb || way_.from.colour == model::luminance)
      make_of_rgb(row, made);
    else if (way_.to.has_chroma && !way_.keeps_half_rows)
      set_chroma(made, in_columns_of_destination(source_chroma(row)));
    return made;
  }
  static void set_chroma(component_lines& made, const chroma_lines& c) {
    made.of[second] = c.cb;
    made.of[third] = c.cr;
  }
  void make_of_rgb(const int row, component_lines& made) {
    const bool is_grey = way_.from.colour == model::luminance;
    const uint16_t* rgb[] = {made.of[first], made.of[is_grey ? first : second], made.of[is_grey ? first : third]};
    if (way_.has_to_rgb) {
      to_rgb(made.of[first], source_chroma(row));
      for (int i = first; i <= third; ++i) rgb[i] = lines_.rgb.of[i];
    }
    if (way_.has_luminance) {
      made.of[first] = lines_.ycbcr.of[first];
      line_of<kernel::rgb_lines_to_luminance>()(rgb[0], rgb[1], rgb[2], made.of[first], way_.from.width,
                                                way_.luminance);
    } else if (way_.has_from_rgb) {
      from_rgb(rgb);
      made.of[first] = lines_.ycbcr.of[first];
      if (way_.to.has_chroma)
        set_chroma(made, in_columns_of_destination({lines_.ycbcr.of[second], lines_.ycbcr.of[third]}));
    } else if (way_.to.colour == model::rgb) {
      take_rgb(rgb, made);
    }
  }
  void take_rgb(const uint16_t* const (&rgb)[3], component_lines& made) const {
    for (int i = first; i <= third; ++i) {
      if (rgb[i] != lines_.rgb.of[i]) copy(lines_.rgb.of[i], rgb[i], way_.to.width);
      made.of[i] = lines_.rgb.of[i];
      if (way_.narrows_rgb) scale(made.of[i], way_.to.width, way_.rgb_range);
    }
  }

  // Writing.

  // Rows of chroma of a 4:2:0 destination: of the upper row, or of both.
  void write_half_rows(const int row, component_lines& made, const bool is_last) {
    const bool is_upper = row % 2 == 0;
    const int count = way_.to.chroma_width();
    component_lines out = made;
    if (!is_upper && (way_.keeps_half_rows || way_.how.filter == chroma_filter::nearest)) return;
    if (way_.keeps_half_rows) {
      const chroma_lines kept = chroma_row(row / 2);
      set_chroma(out, lines_.between);
      copy(out.of[second], kept.cb, count);
      copy(out.of[third], kept.cr, count);
    } else if (way_.how.filter == chroma_filter::linear) {
      if (is_upper) {
        copy(lines_.upper.cb, made.of[second], count);
        copy(lines_.upper.cr, made.of[third], count);
        if (!is_last) return;
      }
      set_chroma(out, lines_.between);
      line_of<kernel::average_of_lines>()(lines_.upper.cb, made.of[second], out.of[second], count);
      line_of<kernel::average_of_lines>()(lines_.upper.cr, made.of[third], out.of[third], count);
    }
    write(row / 2, 2, out);
  }
  void write(const int row, const int image_rows, const component_lines& lines) const {
    for (size_t i = 0; i < way_.to.plane_count; ++i) {
      const stored_plane& p = way_.to.planes[i];
      if (p.layout->image_rows != image_rows) continue;
      narrow(p, lines);
      auto* plane = static_cast<uint8_t*>(destination_.data[i]);
      write_row(p, plane + destination_.stride[i] * row, way_.to.width, lines);
    }
  }
  void narrow(const stored_plane& p, const component_lines& lines) const {
    for (const component i : {first, second, third, alpha}) {
      if (!p.has(i)) continue;
      const int stored_samples = p.groups(way_.to.width) * p.samples[i];
      repeat_last(lines.of[i], samples_of(way_.to, i), stored_samples);
      if (p.layout->depth() == 16) continue;
      if (fills_words(way_.to, i)) {
        kernel::scale_to_bits k{};
        k.bits = p.layout->depth();
        line_of<kernel::scale_to_bits>()(lines.of[i], stored_samples, k);
      } else {
        kernel::round_to_bits k{};
        k.bits = p.layout->depth();
        line_of<kernel::round_to_bits>()(lines.of[i], stored_samples, k);
      }
    }
  }
  // Up to the end of the last group.
  static void repeat_last(uint16_t* line, const int count, const int stored_samples) {
    for (int i = count; i < stored_samples; ++i) line[i] = line[count - 1];
  }
};

}  // namespace

int64_t scratch_bytes(const way& w) {
  return line_count * line_samples(w) * static_cast<int64_t>(sizeof(uint16_t)) + alignment;
}

void convert_rows(const way& w, const morvane_picture& source, const morvane_picture& destination, const int first,
                  const int rows, void* scratch) {
  rows_of_way(w, source, destination, scratch).convert(first, rows);
}

}  // namespace Processing::Morvane::checked
