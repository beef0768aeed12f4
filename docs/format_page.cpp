// What the checked interface tells of a format, in Markdown.
#include "format_page.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include "format_bits.h"
#include "format_losses.h"

namespace morvane::docs {

namespace {

std::string code(std::string_view text) {
  std::string result = "`";
  return result.append(text).append("`");
}

std::string link_to(format f) {
  const std::string name(name_of(f));
  return '[' + code(name) + "](" + name + ".md)";
}

std::string joined(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) {
    if (!all.empty()) all += ", ";
    all += word;
  }
  return all;
}

// As code, those that blanks separate.
std::vector<std::string> words_of(const char* text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(code(word));
  return words;
}

std::string counted(std::int64_t count, const std::string& what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::vector<morvane_plane_info> planes_of(const morvane_format_info& f) {
  return {f.planes, f.planes + f.plane_count};
}

bool has_floats(const morvane_format_info& f) {
  return f.planes[0].is_float != 0;
}

std::string bytes_per_pixel(const morvane_format_info& f) {
  double bytes = 0;
  for (const morvane_plane_info& p : planes_of(f))
    bytes += static_cast<double>(p.group_bytes) / p.group_pixels / p.image_rows;
  std::array<char, 32> digits{};
  std::snprintf(digits.data(), digits.size(), "%.4g", bytes);
  return digits.data();
}

// How many bits the samples of each component have, in the order in which they are stored first.
std::vector<std::pair<std::string_view, int>> depths_of(const morvane_format_info& f) {
  std::vector<std::pair<std::string_view, int>> depths;
  for (int p = 0; p < f.plane_count; ++p)
    for (const stored_bit& b : bits_of_group(f, p)) {
      if (!b.is_used()) continue;
      auto known = std::find_if(depths.begin(), depths.end(), [&](const auto& d) { return d.first == b.component; });
      if (known == depths.end()) known = depths.insert(known, {b.component, 0});
      known->second = std::max(known->second, b.number + 1);
    }
  return depths;
}

std::string depth_of(const morvane_format_info& f) {
  const auto depths = depths_of(f);
  const int most = std::max_element(depths.begin(), depths.end(), [](const auto& a, const auto& b) {
                     return a.second < b.second;
                   })->second;
  std::string text = counted(most, "bit");
  for (const auto& [component, bits] : depths)
    if (bits != most) text += ", " + std::string(component) + " has " + std::to_string(bits);
  return has_floats(f) ? text + ", floats" : text;
}

// The multiples at which rows begin in files.
std::string rows_of(const morvane_format_info& f) {
  const morvane_plane_layout first = lay_out({.format = f.format, .width = 1, .height = 1}).planes[0];
  std::vector<std::string> rules;
  if (first.stride == first.row_bytes)
    rules.emplace_back("one behind the other, without gaps");
  else
    rules.emplace_back("in files, each begins at a multiple of " + counted(first.stride, "byte"));
  for (const morvane_plane_info& p : planes_of(f))
    if (p.group_pixels > 1)
      rules.emplace_back((f.plane_count == 1 ? "each" : "those of " + code(p.name)) + " with a whole group of " +
                         std::to_string(p.group_pixels) + " pixels at its end");
  return joined(rules);
}

std::string sampling_of(const morvane_format_info& f) {
  if (f.model != MORVANE_YCBCR && f.model != MORVANE_CHROMA) return "of every pixel";
  for (const morvane_plane_info& p : planes_of(f)) {
    if (p.samples[MORVANE_CB_G] == 0) continue;
    const int columns = p.group_pixels / p.samples[MORVANE_CB_G];
    if (columns == 1) return "4:4:4, all components of every pixel";
    if (p.image_rows == 1) return "4:2:2, chroma of every second pixel: of the left one, or between both as an option";
    return "4:2:0, chroma of two by two pixels: of the left ones, or between all as an option; always between two rows";
  }
  return "";
}

std::string range_of(const morvane_format_info& f) {
  if (has_floats(f)) return "from 0 to 1, and chroma from -0.5 to 0.5";
  switch (f.model) {
    case MORVANE_RGB:
      return "full, or video where that is said";
    case MORVANE_ALPHA:
      return "full";
    default:
      return std::string_view(f.planes[0].components) == "L" ? "full" : "video, or full where that is said";
  }
}

std::string alpha_of(const morvane_format_info& f) {
  return f.has_alpha != 0 ? "yes, and colours are not multiplied by it" : "none";
}

std::string facts_of(const morvane_format_info& f) {
  std::ostringstream table;
  table << "| | |\n|-|-|\n";
  const auto row = [&](const char* what, const std::string& fact) {
    if (!fact.empty()) table << "| " << what << " | " << fact << " |\n";
  };
  const auto name = [&](const char* whose, std::string_view called) {
    if (!called.empty()) row(whose, code(called));
  };
  row("bytes per pixel", bytes_per_pixel(f));
  row("samples", depth_of(f));
  row("sampling", sampling_of(f));
  row("range", range_of(f));
  if (f.model != MORVANE_ALPHA) row("alpha", alpha_of(f));
  row("rows", rows_of(f));
  name("FourCC", f.fourcc);
  name("FFmpeg", f.ffmpeg);
  name("GStreamer", f.gstreamer);
  name("V4L2", f.v4l2);
  name("CoreVideo", f.apple);
  row("also called", joined(words_of(f.also)));
  return table.str();
}

std::string sizes_of(const morvane_format_info& f) {
  std::ostringstream table;
  std::string line = "|-|";
  table << "| picture |";
  for (const morvane_plane_info& p : planes_of(f)) {
    table << " rows of " << code(p.name) << " |";
    line += "-|";
  }
  table << " bytes |\n" << line << "-|\n";
  for (const auto& [width, height] : {std::pair(1920, 1080), {1919, 1079}, {7, 5}, {1, 1}}) {
    const morvane_layout layout = lay_out({.format = f.format, .width = width, .height = height});
    table << "| " << width << "x" << height << " |";
    for (int p = 0; p < f.plane_count; ++p)
      table << ' ' << layout.planes[p].rows << " of " << counted(layout.planes[p].stride, "byte") << " |";
    table << ' ' << layout.bytes << " |\n";
  }
  return table.str();
}

std::string losses_of(const morvane_format_info& f) {
  std::vector<std::string> links;
  for (const format to : lossless_from(f.format)) links.push_back(link_to(to));
  if (links.empty()) return "There is no other format that has all of it.";
  return "To these formats and back every sample is what it was" +
         std::string(has_floats(f) ? ", by the 16 bits that floats are converted by" : "") +
         ";\nthe filter is `nearest` where chroma is sampled differently:\n\n" + joined(links) + ".";
}

std::string other_names(const morvane_format_info& f) {
  std::vector<std::string> names;
  const auto add = [&](const std::string& name) {
    const bool is_new = std::find(names.begin(), names.end(), name) == names.end();
    if (is_new && name != code("") && name != code(f.name)) names.push_back(name);
  };
  for (const std::string_view name : {f.fourcc, f.ffmpeg, f.gstreamer, f.v4l2, f.apple}) add(code(name));
  for (const std::string& name : words_of(f.also)) add(name);
  return joined(names);
}

}  // namespace

std::string page_of(const morvane_format_info& f) {
  const std::string name = f.name;
  std::ostringstream page;
  page << "# " << name << "\n\n"
       << f.description << ".\n\n![the bits of " << name << "](images/" << name << ".svg)\n\n"
       << "*Bytes as they follow each other, each from its highest bit to its lowest. In a box are its bits of a "
       << "sample,\nwhose name ends with its pixel where there are more; dashed bits are unused.*\n\n"
       << facts_of(f) << "\n## Sizes in files\n\n"
       << sizes_of(f) << "\n## Without loss\n\n"
       << losses_of(f) << "\n\n[All formats](README.md)\n";
  return page.str();
}

std::string page_of_all_formats() {
  std::ostringstream page;
  page << "# The formats\n\nEach has a page with a picture of its bits. [The rules](../rules.md) say how one becomes "
       << "another; `morvane formats`\nlists them too, and takes any of these names.\n\n"
       << "| format | | bytes per pixel | elsewhere |\n|-|-|-|-|\n";
  for (const format f : formats()) {
    const morvane_format_info info = describe(f);
    page << "| " << link_to(f) << " | " << info.description << " | " << bytes_per_pixel(info) << " | "
         << other_names(info) << " |\n";
  }
  return page.str();
}

}  // namespace morvane::docs
