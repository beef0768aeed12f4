// morvane show: one frame of any format as a picture.
#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

#include "commands.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "output.h"
#include "picture.h"
#include "png_file.h"
#include "samples.h"

namespace morvane::tool {

namespace {

bool same_letters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// The samples of one plane that are to be shown: those of one component, or all of them.
struct selection {
  std::size_t plane = 0;
  std::string component;  // empty for all

  bool takes(const std::string& name) const { return component.empty() || component == name; }
};

// By the name of a component, of a plane, or of both: "Cb", "key", "key.Y".
std::optional<selection> find_selection(const format_info& f, std::string_view name) {
  for (std::size_t p = 0; p < planes_of(f).size(); ++p)
    for (const std::string& component : components_of(f.planes[p]))
      if (same_letters(component, name) || same_letters(text(f.planes[p].name, '.', component), name))
        return selection{p, component};
  for (std::size_t p = 0; p < planes_of(f).size(); ++p)
    if (same_letters(f.planes[p].name, name)) return selection{p, {}};
  return std::nullopt;
}

[[noreturn]] void unknown_plane(const format_info& f, const std::string& name) {
  std::vector<std::string> names;
  const auto add = [&](const std::string& word) {
    if (std::find(names.begin(), names.end(), word) == names.end()) names.push_back(word);
  };
  for (std::size_t p = 0; p < planes_of(f).size(); ++p) {
    for (const std::string& component : components_of(f.planes[p])) add(component);
    add(std::string(f.planes[p].name));
  }
  wrong_arguments(f.name, " has no plane or component ", name, "; it has ", joined(names));
}

// The selected samples of a group, in storage order.
std::vector<stored_sample> selected_samples(const plane_info& plane, const selection& wanted) {
  std::vector<stored_sample> samples = stored_samples(plane);
  std::erase_if(samples, [&](const stored_sample& s) { return !wanted.takes(s.component); });
  return samples;
}

// Those of a row that stand inside the picture, in eight bits.
std::vector<std::uint8_t> shades(const sample_lines& lines, const plane_info& plane,
                                 const std::vector<stored_sample>& selected, int width) {
  std::vector<std::uint8_t> result;
  for (int group = 0; group * plane.group_pixels < width; ++group)
    for (const stored_sample& s : selected)
      if (group * plane.group_pixels + s.pixel < width)
        result.push_back(
            static_cast<std::uint8_t>(lines.line(s.line)[group * plane.samples[s.line] + s.position] >> 8));
  return result;
}

// The selected samples as grey, a pixel each.
picture grey(const image& source, const selection& wanted) {
  const plane_info& plane = source.plane(wanted.plane);
  const int width = source.size().width;
  const std::vector<stored_sample> selected = selected_samples(plane, wanted);
  sample_lines lines(plane, width);
  std::vector<std::uint8_t> samples;
  int shown_width = 0;
  for (int y = 0; y < source.rows(wanted.plane); ++y) {
    lines.read(source, wanted.plane, y);
    const std::vector<std::uint8_t> row = shades(lines, plane, selected, width);
    samples.insert(samples.end(), row.begin(), row.end());
    shown_width = static_cast<int>(row.size());
  }
  picture result({shown_width, source.rows(wanted.plane)}, 1);
  result.samples = std::move(samples);
  return result;
}

int checker(int x, int y) {
  constexpr int light = 255;
  constexpr int dark = 204;
  return (x / 8 + y / 8) % 2 == 0 ? light : dark;
}

picture over_checkerboard(const image& rgba) {
  picture result(rgba.size(), 3);
  for (int y = 0; y < result.size.height; ++y)
    for (int x = 0; x < result.size.width; ++x) {
      const std::uint8_t* pixel = rgba.row(0, y) + std::ptrdiff_t{4} * x;
      const int a = pixel[3];
      for (int c = 0; c < 3; ++c)
        result.pixel(x, y)[c] = static_cast<std::uint8_t>((pixel[c] * a + checker(x, y) * (255 - a) + 127) / 255);
    }
  return result;
}

// Two images in one convert to nothing: the first is shown.
const format_info& convertible(const format_info& f) {
  const format_info* image = format_of_each_image(f);
  return image != nullptr ? *image : f;
}

void read_frame(frame_source& source, image& into) {
  if (!source.read(into)) io_failure("there is no frame to show");
}

description described(const format_info& f, extent size) {
  return {.format = f.format, .width = size.width, .height = size.height};
}

picture colored(frame_source& source, morvane::matrix matrix, morvane::range range) {
  image frame = source.blank();
  read_frame(source, frame);
  image rgba(format_named("rgba"), source.size());
  description from = described(convertible(source.format()), source.size());
  from.matrix = matrix;
  if (source.format().model == MORVANE_YCBCR) from.range = range;
  morvane::convert(from, frame.picture(), described(rgba.format(), rgba.size()), rgba.picture());
  return over_checkerboard(rgba);
}

picture grey(frame_source& source, const selection& wanted) {
  image frame(source.format(), source.size());
  read_frame(source, frame);
  return grey(frame, wanted);
}

picture picture_of(frame_source& source, const show_options& o) {
  const format_info& f = source.format();
  if (!o.plane.empty()) {
    const std::optional<selection> wanted = find_selection(f, o.plane);
    if (!wanted) unknown_plane(f, o.plane);
    return grey(source, *wanted);
  }
  switch (f.model) {
    case MORVANE_LUMA:
    case MORVANE_ALPHA:
      return grey(source, {});
    case MORVANE_CHROMA:
      wrong_arguments(f.name, " is chroma without luma and makes no picture; --plane shows a plane or component of it");
    case MORVANE_YCBCR:
    case MORVANE_RGB:
      break;
  }
  return colored(source, parse_matrix("--matrix", o.matrix), parse_range("--range", o.range));
}

}  // namespace

void show(const show_options& o) {
  if (!names_png(o.output) && o.output != "-") wrong_arguments("the picture is a PNG: ", o.output, " must end in .png");
  const auto source = open_source({o.input, o.format, o.size, o.strides, o.frame});
  const picture result = picture_of(*source, o);
  output_file file(o.output);
  write_png(file.stream(), file.name(), result);
  file.commit();
}

}  // namespace morvane::tool
