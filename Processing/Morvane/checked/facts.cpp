// What the catalogue knows, for those who have the C interface alone.
#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

#include "../catalogue/conversions.h"
#include "layout.h"

namespace checked = Processing::Morvane::checked;
namespace catalogue = morvane::catalogue;
using checked::answer;
using checked::is_wrong;
using checked::problem;

namespace {

std::string lower(const std::string_view word) {
  std::string result(word);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

std::string_view without_prefix(const std::string_view v4l2) {
  constexpr std::string_view prefix = "V4L2_PIX_FMT_";
  return v4l2.starts_with(prefix) ? v4l2.substr(prefix.size()) : v4l2;
}

// Short FourCCs are filled up with blanks.
std::string_view without_blanks(const std::string_view fourcc) {
  return fourcc.substr(0, fourcc.find_last_not_of(' ') + 1);
}

// FFmpeg understands its little-endian names without their end too.
std::string_view without_byte_order(const std::string_view ffmpeg) {
  return ffmpeg.ends_with("le") ? ffmpeg.substr(0, ffmpeg.size() - 2) : ffmpeg;
}

template <class Same>
bool answers_to(const catalogue::format& f, const Same same) {
  const std::string_view names[] = {f.name, without_blanks(f.fourcc), f.ffmpeg,    without_byte_order(f.ffmpeg),
                                    f.v4l2, without_prefix(f.v4l2),   f.gstreamer, f.apple};
  bool answers = std::any_of(std::begin(names), std::end(names),
                             [&](const std::string_view name) { return !name.empty() && same(name); });
  catalogue::each_word(f.also, [&](const std::string_view name) { answers = answers || same(name); });
  return answers;
}

template <class Take>
int32_t each_answering(const catalogue::format& f, const std::string_view name, const bool as_written,
                       const Take take) {
  const bool answers = as_written
                           ? answers_to(f, [&](const std::string_view own) { return own == name; })
                           : answers_to(f, [&](const std::string_view own) { return lower(own) == lower(name); });
  if (answers) take(f);
  return answers ? 1 : 0;
}

int32_t model_number(const catalogue::color_model model) {
  switch (model) {
    case catalogue::color_model::ycbcr:
      return MORVANE_YCBCR;
    case catalogue::color_model::rgb:
      return MORVANE_RGB;
    case catalogue::color_model::luma:
      return MORVANE_LUMA;
    case catalogue::color_model::chroma:
      return MORVANE_CHROMA;
    case catalogue::color_model::alpha:
      return MORVANE_ALPHA;
  }
  return 0;
}

// The literals of the catalogue end with a zero; names that are not there are no literals.
const char* text_of(const std::string_view text) {
  return text.empty() ? "" : text.data();
}

morvane_plane_info plane_info(const catalogue::plane& p) {
  const checked::stored_plane s = checked::stored(p);
  morvane_plane_info info{};
  info.name = text_of(p.name);
  info.components = text_of(p.components);
  std::copy(s.samples.begin(), s.samples.end(), info.samples);
  info.group_bytes = p.group_bytes;
  info.group_pixels = p.group_pixels;
  info.image_rows = p.image_rows;
  info.bits = p.depth();
  info.is_float = catalogue::is_float(p.sample);
  return info;
}

problem describe_format(const morvane_format format, morvane_format_info* info) {
  if (info == nullptr) return checked::wrong(MORVANE_NULL, "info", 0, 0, "is null");
  if (const problem p = checked::check_size("info.struct_size", info->struct_size, sizeof *info); is_wrong(p)) return p;
  const catalogue::format* f = checked::format_of_id(format);
  if (f == nullptr) return checked::unknown_format("format", format);
  morvane_format_info made{};
  made.struct_size = sizeof made;
  made.format = f->id;
  made.name = text_of(f->name);
  made.description = text_of(f->description);
  made.fourcc = text_of(f->fourcc);
  made.ffmpeg = text_of(f->ffmpeg);
  made.v4l2 = text_of(f->v4l2);
  made.gstreamer = text_of(f->gstreamer);
  made.apple = text_of(f->apple);
  made.also = text_of(f->also);
  made.model = model_number(f->model);
  made.has_alpha = f->alpha ? 1 : 0;
  made.width_multiple = f->width_multiple;
  made.height_multiple = f->height_multiple;
  made.plane_count = static_cast<int32_t>(f->plane_count());
  for (size_t i = 0; i < f->plane_count(); ++i) made.planes[i] = plane_info(f->planes[i]);
  *info = made;
  return checked::none();
}

morvane_format id_of(const std::string_view name) {
  const catalogue::format* f = catalogue::find_format(name);
  return f == nullptr ? 0 : f->id;
}

problem describe_entry_point(const int32_t index, morvane_entry_point* entry_point) {
  if (entry_point == nullptr) return checked::wrong(MORVANE_NULL, "entry_point", 0, 0, "is null");
  if (const problem p = checked::check_size("entry_point.struct_size", entry_point->struct_size, sizeof *entry_point);
      is_wrong(p))
    return p;
  const int32_t count = morvane_entry_point_count();
  if (index < 0 || index >= count)
    return checked::wrong(MORVANE_OPTION, "index", index, count, "is %d, not from 0 to %d", static_cast<int>(index),
                          static_cast<int>(count - 1));
  const catalogue::conversion& c = catalogue::conversions[static_cast<size_t>(index)];
  morvane_entry_point made{};
  made.struct_size = sizeof made;
  made.source = id_of(c.source);
  made.destination = id_of(c.destination);
  int32_t* next = made.matrices;
  for (const catalogue::matrix m : catalogue::matrices)
    if (offers(c, m)) *next++ = catalogue::number_of(m);
  made.rescales = c.extra == catalogue::argument::rescale;
  made.reports_opacity = c.extra == catalogue::argument::opacity;
  made.name = text_of(c.name);
  made.irregular = text_of(c.irregular);
  *entry_point = made;
  return checked::none();
}

// By parts, because readers write some samples behind those that they were asked for.
void read_by_parts(const checked::stored_plane& p, const uint8_t* row, const int width,
                   const checked::component_lines& to) {
  constexpr int part = 480;  // pixels; whole groups of every format
  constexpr int margin = 64;
  uint16_t samples[checked::component_count][part + margin];
  for (int first = 0; first < width; first += part) {
    const int pixels = std::min(part, width - first);
    checked::component_lines lines;
    for (size_t i = 0; i < checked::component_count; ++i)
      if (p.samples[i] > 0) lines.of[i] = samples[i];
    const int64_t groups_before = first / p.layout->group_pixels;
    checked::read_row(p, row + groups_before * p.layout->group_bytes, pixels, lines, false);
    for (const int i : {checked::first, checked::second, checked::third, checked::alpha}) {
      const int count = p.samples[static_cast<size_t>(i)];
      if (count > 0) std::copy_n(samples[i], int64_t{count} * p.groups(pixels), to.of[i] + groups_before * count);
    }
  }
}

problem read_row(const morvane_description* description, const morvane_picture* picture, const int32_t plane,
                 const int32_t row, uint16_t* const lines[MORVANE_COMPONENTS], const int64_t room) {
  checked::shape s;
  if (const problem p = checked::describe(description, "description", s); is_wrong(p)) return p;
  if (const problem p = checked::fits(s, picture, "picture"); is_wrong(p)) return p;
  const auto count = static_cast<int32_t>(s.plane_count);
  if (plane < 0 || plane >= count)
    return checked::wrong(MORVANE_OPTION, "plane", plane, count, "is %d, not from 0 to %d", static_cast<int>(plane),
                          static_cast<int>(count - 1));
  const checked::stored_plane& p = s.planes[static_cast<size_t>(plane)];
  const int64_t rows = p.layout->rows(s.height);
  if (row < 0 || row >= rows)
    return checked::wrong(MORVANE_ROWS, "row", row, rows, "is %d, not from 0 to %lld", static_cast<int>(row),
                          static_cast<long long>(rows - 1));
  if (lines == nullptr) return checked::wrong(MORVANE_NULL, "lines", 0, 0, "is null");
  checked::component_lines to;
  for (size_t i = 0; i < MORVANE_X; ++i) {
    const int64_t needed = int64_t{p.samples[i]} * p.groups(s.width);
    if (needed > 0 && lines[i] == nullptr)
      return checked::wrong(MORVANE_NULL, checked::part("lines", i).text, 0, needed, "is null");
    if (needed > room)
      return checked::wrong(MORVANE_SCRATCH, "room", room, needed, "is %lld, and a line has %lld samples",
                            static_cast<long long>(room), static_cast<long long>(needed));
    to.of[i] = lines[i];
  }
  const auto* first = static_cast<const uint8_t*>(picture->data[plane]);
  read_by_parts(p, first + picture->stride[plane] * row, s.width, to);
  return checked::none();
}

}  // namespace

morvane_format morvane_format_named(const char* name) {
  return name == nullptr ? 0 : id_of(name);
}

int32_t morvane_formats_called(const char* name, morvane_format* found, const int32_t room) {
  if (name == nullptr) return 0;
  int32_t count = 0;
  const auto take = [&](const catalogue::format& f) {
    if (found != nullptr && count < room) found[count] = f.id;
    ++count;
  };
  if (const catalogue::format* own = catalogue::find_format(name)) {
    take(*own);
    return count;
  }
  for (const bool as_written : {true, false}) {
    for (const catalogue::format& f : catalogue::formats) each_answering(f, name, as_written, take);
    if (count > 0) break;
  }
  return count;
}

const char* morvane_format_name(const morvane_format format) {
  const catalogue::format* f = checked::format_of_id(format);
  return f == nullptr ? nullptr : f->name.data();
}

int32_t morvane_format_count() {
  return static_cast<int32_t>(catalogue::formats.size());
}

morvane_format morvane_format_at(const int32_t index) {
  if (index < 0 || index >= morvane_format_count()) return 0;
  return catalogue::formats[static_cast<size_t>(index)].id;
}

int32_t morvane_describe_format(const morvane_format format, morvane_format_info* info, morvane_error* error) {
  return answer(describe_format(format, info), error);
}

int32_t morvane_read_row(const morvane_description* description, const morvane_picture* picture, const int32_t plane,
                         const int32_t row, uint16_t* const lines[MORVANE_COMPONENTS], const int64_t room,
                         morvane_error* error) {
  return answer(read_row(description, picture, plane, row, lines, room), error);
}

int32_t morvane_entry_point_count() {
  return static_cast<int32_t>(catalogue::conversions.size());
}

int32_t morvane_describe_entry_point(const int32_t index, morvane_entry_point* entry_point, morvane_error* error) {
  return answer(describe_entry_point(index, entry_point), error);
}
