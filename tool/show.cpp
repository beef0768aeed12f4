// morvane show: one frame of any format as a picture.
#include <algorithm>
#include <cctype>
#include <iterator>

#include "commands.h"
#include "errors.h"
#include "frames.h"
#include "names.h"
#include "output.h"
#include "picture.h"
#include "pipeline.h"
#include "png_file.h"
#include "route.h"
#include "samples.h"
#include "workers.h"

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

// The selected samples of a row that stand inside the picture, by their numbers.
std::vector<std::size_t> taken_samples(const sample_layout& layout, const selection& wanted, int width) {
  std::vector<std::size_t> taken;
  for (std::size_t i = 0; i < layout.row_samples(width); ++i)
    if (layout.pixel(i) < width && wanted.takes(layout.component(i))) taken.push_back(i);
  return taken;
}

// The selected samples as grey, a pixel each, in eight bits.
picture grey(const image& source, const selection& wanted) {
  const sample_layout layout(source.format(), wanted.plane);
  const int width = source.size().width;
  const std::vector<std::size_t> taken = taken_samples(layout, wanted, width);
  picture result({static_cast<int>(taken.size()), source.rows(wanted.plane)}, 1);
  std::vector<std::uint32_t> samples;
  for (int y = 0; y < result.size.height; ++y) {
    layout.read(source.row(wanted.plane, y), width, samples);
    for (std::size_t x = 0; x < taken.size(); ++x)
      *result.pixel(static_cast<int>(x), y) = layout.shade(taken[x], samples[taken[x]]);
  }
  return result;
}

// Puts the selected samples, in eight bits, at every step-th byte of the rows from an offset on, each at the first
// pixel it belongs to.
void gather(const image& source, const selection& wanted, image& into, std::size_t offset, std::size_t step) {
  const plane_info& plane = source.plane(wanted.plane);
  const sample_layout layout(source.format(), wanted.plane);
  const int width = source.size().width;
  const std::vector<std::size_t> taken = taken_samples(layout, wanted, width);
  std::vector<std::uint32_t> samples;
  for (int y = 0; y < source.size().height; ++y) {
    layout.read(source.row(wanted.plane, y / plane.image_rows), width, samples);
    std::uint8_t* row = into.row(0, y) + offset;
    for (const std::size_t i : taken)
      row[static_cast<std::size_t>(layout.pixel(i)) * step] = layout.shade(i, samples[i]);
  }
}

void gather(const image& source, image& into) {
  const std::vector<std::string> components = components_of(into.plane(0));
  for (std::size_t i = 0; i < components.size(); ++i)
    if (const std::optional<selection> wanted = find_selection(source.format(), components[i]))
      gather(source, *wanted, into, i, components.size());
}

// The format with a byte of every component for every pixel which the samples of another can be gathered into. Video's
// leads to RGB by conversions that take the chroma of a pair's first pixel.
const format_info& gathered_format(const format_info& f) {
  const bool rgb = f.model == MORVANE_RGB;
  return format_named(rgb ? f.has_alpha ? "bgra" : "bgrx" : f.has_alpha ? "ycbcra" : "ycbcrx");
}

int checker(int x, int y) {
  constexpr int light = 255;
  constexpr int dark = 204;
  return (x / 8 + y / 8) % 2 == 0 ? light : dark;
}

picture over_checkerboard(const picture& colors) {
  picture result(colors.size, 3);
  for (int y = 0; y < colors.size.height; ++y)
    for (int x = 0; x < colors.size.width; ++x) {
      const std::uint8_t* pixel = colors.pixel(x, y);
      const int a = pixel[3];
      for (int c = 0; c < 3; ++c)
        result.pixel(x, y)[c] = static_cast<std::uint8_t>((pixel[c] * a + checker(x, y) * (255 - a) + 127) / 255);
    }
  return result;
}

void read_frame(frame_source& source, image& into) {
  if (!source.read(into)) io_failure("there is no frame to show");
}

picture colored(frame_source& source, int matrix) {
  const format_info& f = source.format();
  const std::optional<route> direct = find_route_to_rgb(f, matrix);
  const route way = direct ? *direct : find_route_to_rgb(gathered_format(f), matrix).value();
  workers hands(1);
  pipeline line(way, padded_size(source.size(), way), hands);
  if (direct) {
    read_frame(source, line.input());
  } else {
    image frame(f, source.size());
    read_frame(source, frame);
    gather(frame, line.input());
  }
  repeat_edges(line.input(), source.size());
  line.run();
  const picture colors = to_picture(line.output(), source.size());
  return colors.channels == 4 ? over_checkerboard(colors) : colors;
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
  return colored(source, o.matrix);
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
