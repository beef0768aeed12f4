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
std::optional<selection> find_selection(const catalogue::format& f, std::string_view name) {
  for (std::size_t p = 0; p < f.plane_count(); ++p)
    for (const std::string& component : components_of(f.planes[p]))
      if (same_letters(component, name) || same_letters(text(f.planes[p].name, '.', component), name))
        return selection{p, component};
  for (std::size_t p = 0; p < f.plane_count(); ++p)
    if (same_letters(f.planes[p].name, name)) return selection{p, {}};
  return std::nullopt;
}

[[noreturn]] void unknown_plane(const catalogue::format& f, const std::string& name) {
  std::vector<std::string> names;
  const auto add = [&](const std::string& word) {
    if (std::find(names.begin(), names.end(), word) == names.end()) names.push_back(word);
  };
  for (std::size_t p = 0; p < f.plane_count(); ++p) {
    for (const std::string& component : components_of(f.planes[p])) add(component);
    add(std::string(f.planes[p].name));
  }
  wrong_arguments(f.name, " has no plane or component ", name, "; it has ", joined(names));
}

// The selected samples as grey, a pixel each, in eight bits.
picture grey(const image& source, const selection& wanted) {
  const sample_layout layout(source.plane(wanted.plane));
  const int width = source.size().width;
  std::vector<std::size_t> taken;
  for (std::size_t i = 0; i < layout.row_samples(width); ++i)
    if (layout.pixel(i) < width && wanted.takes(layout.component(i))) taken.push_back(i);
  picture result({static_cast<int>(taken.size()), source.rows(wanted.plane)}, 1);
  std::vector<int> samples;
  for (int y = 0; y < result.size.height; ++y) {
    layout.read(source.row(wanted.plane, y), width, samples);
    for (std::size_t x = 0; x < taken.size(); ++x)
      *result.pixel(static_cast<int>(x), y) = static_cast<std::uint8_t>(samples[taken[x]] >> (layout.bits() - 8));
  }
  return result;
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

picture colored(frame_source& source, const route& way) {
  workers hands(1);
  pipeline line(way, source.size(), hands);
  read_frame(source, line.input());
  line.run();
  const picture colors = to_picture(line.output(), source.size());
  return colors.channels == 4 ? over_checkerboard(colors) : colors;
}

picture grey(frame_source& source, const selection& wanted) {
  image frame(source.format(), source.size(), {});
  read_frame(source, frame);
  return grey(frame, wanted);
}

picture picture_of(frame_source& source, const show_options& o) {
  const catalogue::format& f = source.format();
  if (!o.plane.empty()) {
    const std::optional<selection> wanted = find_selection(f, o.plane);
    if (!wanted) unknown_plane(f, o.plane);
    return grey(source, *wanted);
  }
  if (f.model == catalogue::color_model::luma || f.model == catalogue::color_model::alpha) return grey(source, {});
  if (const std::optional<route> way = find_route_to_rgb(f, o.matrix)) {
    for (const catalogue::format* passed : way->formats()) require_whole_picture(*passed, source.size());
    return colored(source, *way);
  }
  wrong_arguments("no conversion leads from ", f.name, " to RGB; --plane shows one of its planes or components");
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
