// Bytes in storage order, four to a row, each from its highest bit to its lowest.
#include "format_picture.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "format_bits.h"

namespace morvane::docs {

namespace {

constexpr int bit_width = 16;
constexpr int byte_width = 8 * bit_width;
constexpr int between_bytes = 6;
constexpr int margin = 8;
constexpr int title_height = 22;
constexpr int caption_height = 18;  // the number of a byte
constexpr int box_height = 36;
constexpr int row_height = caption_height + box_height + 8;

// Bits side by side in a byte and in a sample.
struct run {
  stored_bit first{};
  int count = 0;
};

std::vector<run> runs_of(const std::vector<stored_bit>& bits, std::size_t byte) {
  std::vector<run> runs;
  for (std::size_t i = 8 * byte; i < 8 * byte + 8; ++i) {
    const stored_bit& b = bits[i];
    const bool goes_on = !runs.empty() && runs.back().first.sample == b.sample &&
                         (!b.is_used() || runs.back().first.number - runs.back().count == b.number);
    if (!goes_on) runs.push_back({b, 0});
    ++runs.back().count;
  }
  return runs;
}

std::string numbers_of(const run& r) {
  const int last = r.first.number - r.count + 1;
  return r.count == 1 ? std::to_string(last) : std::to_string(r.first.number) + "–" + std::to_string(last);
}

// The name of a class of the style, one for each kind of component.
std::string kind_of(std::string_view component) {
  if (component.empty()) return "none";
  if (component == "Y" || component == "L") return "grey";
  if (component == "Cb" || component == "B") return "blue";
  if (component == "Cr" || component == "R") return "red";
  return component == "G" ? "green" : "alpha";
}

constexpr const char* style = R"(<style>
text { font: 13px system-ui, sans-serif; fill: #1f2328; text-anchor: middle; }
.title { font-weight: 600; text-anchor: start; }
.weak { font-size: 11px; fill: #59636e; }
.tight { font-size: 11px; }
.ground { fill: #fff; stroke: none; }
path { stroke: #59636e; }
.grey { fill: #dfe3e8; }
.blue { fill: #b6d4fe; }
.red { fill: #ffc9c2; }
.green { fill: #bfe8c8; }
.alpha { fill: #ffe0a3; }
.none { fill: none; stroke-dasharray: 3 3; }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3; }
.weak { fill: #b1bac4; }
.ground { fill: #0d1117; }
path { stroke: #9198a1; }
.grey { fill: #3d444d; }
.blue { fill: #1f4a85; }
.red { fill: #7d2b26; }
.green { fill: #1f5c33; }
.alpha { fill: #6b4d0c; }
}
</style>
)";

class drawing {
 public:
  void plane(const morvane_plane_info& p, const std::vector<stored_bit>& bits) {
    y_ += title_height;
    text(margin, y_ - 6, "title", title_of(p));
    const std::size_t bytes = bits.size() / 8;
    const std::size_t in_row = bytes <= 6 ? bytes : 4;
    for (std::size_t byte = 0; byte < bytes; ++byte) {
      const auto column = static_cast<int>(byte % in_row);
      draw_byte(byte, runs_of(bits, byte), margin + column * (byte_width + between_bytes));
      if (byte % in_row == in_row - 1 || byte == bytes - 1) y_ += row_height;
    }
  }

  std::string finished(const std::string& title) const {
    std::ostringstream all;
    const int width = std::max(width_, least_width);
    all << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << width << ' ' << y_ << "\" width=\"" << width
        << "\" height=\"" << y_ << "\" role=\"img\">\n<title>" << title << "</title>\n"
        << style << "<path class=\"ground\" d=\"M0 0h" << width << 'v' << y_ << "H0z\"/>\n";
    for (const auto& [kind, path] : boxes_) all << "<path class=\"" << kind << "\" d=\"" << path << "\"/>\n";
    all << texts_.str() << "</svg>\n";
    return all.str();
  }

 private:
  static constexpr int least_width = 330;  // of a title

  static std::string counted(int count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
  }

  static std::string title_of(const morvane_plane_info& p) {
    const std::string rows = p.image_rows == 1 ? "" : "x" + std::to_string(p.image_rows);
    const bool is_one = p.group_pixels == 1 && p.image_rows == 1;
    return "plane " + std::string(p.name) + ": " + counted(p.group_bytes, "byte") + " for " +
           std::to_string(p.group_pixels) + rows + (is_one ? " pixel" : " pixels");
  }

  void draw_byte(std::size_t byte, const std::vector<run>& runs, int left) {
    text(left + byte_width / 2, y_ + 12, "weak", std::to_string(byte));
    const int top = y_ + caption_height;
    int x = left;
    for (const run& r : runs) {
      const int width = r.count * bit_width;
      std::ostringstream box;
      box << 'M' << x << ' ' << top << 'h' << width << 'v' << box_height << "h-" << width << 'z';
      boxes_[kind_of(r.first.component)] += box.str();
      if (r.first.is_used()) {
        text(x + width / 2, top + 16, r.count < 3 ? "tight" : "", r.first.sample);
        text(x + width / 2, top + 30, "weak", numbers_of(r));
      }
      x += width;
    }
    width_ = std::max(width_, left + byte_width + margin);
  }

  void text(int x, int y, const std::string& kind, const std::string& words) {
    texts_ << "<text";
    if (!kind.empty()) texts_ << " class=\"" << kind << '"';
    texts_ << " x=\"" << x << "\" y=\"" << y << "\">" << words << "</text>\n";
  }

  int y_ = 0;  // the end of what is drawn
  int width_ = 0;
  std::map<std::string, std::string> boxes_;  // a path for each kind
  std::ostringstream texts_;
};

}  // namespace

std::string picture_of_bits(const morvane_format_info& format) {
  drawing d;
  for (int p = 0; p < format.plane_count; ++p) d.plane(format.planes[p], bits_of_group(format, p));
  return d.finished("The bits of " + std::string(format.name));
}

}  // namespace morvane::docs
